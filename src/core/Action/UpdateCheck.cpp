#include "UpdateCheck.h"

#include <QDomDocument>
#include <QVersionNumber>

#include "CommonClass/GlobalSettings.h"
#include "CommonClass/PlatformServices.h"
#include "ProjectVersion.h"

namespace {

constexpr double kFeedTimeOutSeconds = 20;

}  // namespace

UpdateCheck::~UpdateCheck() {
  if (request_ == nullptr) return;
  request_->setDelegate(nullptr);
  request_->cancel();
}

void UpdateCheck::check(const QUrl& feed, bool interactive) {
  if (request_ != nullptr) return;
  interactive_ = interactive;
  if (!feed.isValid() || feed.isEmpty()) {
    end(std::nullopt, QStringLiteral("No address is set for the update feed."));
    return;
  }
  request_ = ASIHTTPRequest::requestWithURL(feed);
  request_->setTimeOutSeconds(kFeedTimeOutSeconds);
  request_->setDelegate(this);
  request_->startAsynchronous();
}

std::optional<UpdateCheck::Release> UpdateCheck::newestRelease(const QByteArray& feed) {
  QDomDocument document;
  if (!document.setContent(feed)) return std::nullopt;
  std::optional<Release> newest;
  const QDomNodeList items = document.elementsByTagName(QStringLiteral("item"));
  for (int index = 0; index < items.size(); ++index) {
    const QDomElement item = items.at(index).toElement();
    const QString version = item.firstChildElement(QStringLiteral("version")).text().trimmed();
    const QUrl address(item.firstChildElement(QStringLiteral("link")).text().trimmed());
    if (QVersionNumber::fromString(version).isNull() || !address.isValid()) continue;
    if (!newest || isNewer(version, newest->version)) newest = Release{version, address};
  }
  return newest;
}

bool UpdateCheck::isNewer(const QString& version, const QString& current) {
  return QVersionNumber::compare(QVersionNumber::fromString(version), QVersionNumber::fromString(current)) > 0;
}

void UpdateCheck::requestFinished(ASIHTTPRequest* request) {
  if (request->responseStatusCode() != 200) {
    end(std::nullopt, QStringLiteral("The update feed answered %1.").arg(request->responseStatusCode()));
    return;
  }
  const std::optional<Release> newest = newestRelease(request->responseData());
  if (!newest) {
    end(std::nullopt, QStringLiteral("The update feed lists no release."));
    return;
  }
  end(isNewer(newest->version, QLatin1String(kBundleVersion)) ? newest : std::nullopt, QString());
}

void UpdateCheck::requestFailed(ASIHTTPRequest* /*request*/) {
  end(std::nullopt, QStringLiteral("The update feed could not be reached."));
}

void UpdateCheck::end(const std::optional<Release>& newer, const QString& failure) {
  request_.reset();
  AlertPresenter* alerts = PlatformServices::alerts();
  if (alerts != nullptr && newer) {
    const QString text = QStringLiteral("Version %1 is available; this is version %2.")
                             .arg(newer->version, QLatin1String(kBundleVersion));
    const QStringList buttons{QLatin1String(kDownloadButton), QLatin1String(kLaterButton)};
    if (alerts->ask(kProductName, text, buttons) == 0 && PlatformServices::workspace() != nullptr) {
      PlatformServices::workspace()->openAddress(newer->address.toString());
    }
  } else if (alerts != nullptr && interactive_) {
    alerts->showMessage(kProductName, failure.isEmpty() ? QStringLiteral("This is the newest version (%1).")
                                                                 .arg(QLatin1String(kBundleVersion))
                                                           : failure);
  }
  emit finished(newer);
}
