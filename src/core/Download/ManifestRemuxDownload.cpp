#include "ManifestRemuxDownload.h"

#include <QFile>
#include <QPointer>

#include <algorithm>

#include "ASIHTTP/ASIBodyFile.h"
#include "CommonClass/MainThread.h"
#include "Download/VideoInfoObject.h"

namespace {

constexpr int kProgressIntervalMs = 500;
constexpr int kReasonSize = 1024;

}  // namespace

ManifestRemuxDownload::ManifestRemuxDownload(QUrl address, QString destination)
    : ItemDownload(std::move(address), std::move(destination)) {
  progressTimer_.setInterval(kProgressIntervalMs);
  connect(&progressTimer_, &QTimer::timeout, this, &ManifestRemuxDownload::reportProgress);
}

ManifestRemuxDownload::~ManifestRemuxDownload() { release(); }

void ManifestRemuxDownload::start() {
  stop();
  QFile::remove(temporaryPath());
  ++run_;
  const int result = VideoConverter_RemuxStart(address().toString(QUrl::FullyEncoded).toUtf8().constData(),
                                               kDownloadUserAgents[0], temporaryPath().toUtf8().constData(),
                                               &ManifestRemuxDownload::remuxEnded, this, &remux_);
  if (result != 0) {
    remux_ = nullptr;
    // Told after start() has returned, as every other end is.
    QMetaObject::invokeMethod(
        this, [this] { emit didFail(QStringLiteral("The remux of %1 cannot start").arg(address().toString())); },
        Qt::QueuedConnection);
    return;
  }
  progressTimer_.start();
}

void ManifestRemuxDownload::stop() {
  ++run_;
  release();
}

void ManifestRemuxDownload::release() {
  progressTimer_.stop();
  if (remux_ == nullptr) return;
  VideoConverter_RemuxRelease(remux_);
  remux_ = nullptr;
}

void ManifestRemuxDownload::remuxEnded(void* context) {
  // The object lives until the remux's thread has ended: stop() waits for it.
  auto* download = static_cast<ManifestRemuxDownload*>(context);
  MainThread::post([download = QPointer<ManifestRemuxDownload>(download), run = download->run_.load()] {
    if (download) download->remuxDidEnd(run);
  });
}

void ManifestRemuxDownload::remuxDidEnd(uint64_t run) {
  if (run != run_ || remux_ == nullptr) return;
  char reason[kReasonSize] = {};
  const int outcome = VideoConverter_RemuxGetOutcome(remux_, reason, kReasonSize);
  reportProgress();
  release();
  if (outcome == VC_OUTCOME_FINISHED) {
    if (const std::optional<ASIHTTPError> error = ASIBodyFile::moveFile(temporaryPath(), destination())) {
      emit didFail(error->localizedDescription);
      return;
    }
    emit progressChanged(1.0);
    emit didFinish();
  } else if (outcome == VC_OUTCOME_FAILED) {
    emit didFail(QString::fromUtf8(reason));
  }
}

void ManifestRemuxDownload::reportProgress() {
  int64_t position = 0;
  int64_t length = 0;
  if (remux_ == nullptr || VideoConverter_RemuxGetProgress(remux_, &position, &length) != 0 || length <= 0) return;
  emit progressChanged(std::min(1.0, static_cast<double>(position) / static_cast<double>(length)));
}
