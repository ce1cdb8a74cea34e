// videoconverter fetch URL --output FILE [--resume]: downloads one address
// through the HTTP client into FILE by way of FILE.download, which --resume
// continues when an earlier run left it.

#include <QEventLoop>
#include <QFileInfo>
#include <QTextStream>
#include <QUrl>

#include <unistd.h>

#include <optional>

#include "ASIHTTP/ASIHTTPRequest.h"
#include "Commands.h"

namespace {

constexpr int kBarWidth = 30;

struct FetchArguments {
  QUrl url;
  QString output;
  bool resume = false;
};

std::optional<FetchArguments> parseArguments(const QStringList& arguments, QString* problem) {
  FetchArguments parsed;
  QString address;
  for (qsizetype i = 0; i < arguments.size(); ++i) {
    const QString& argument = arguments[i];
    if (argument == QLatin1String("--resume")) {
      parsed.resume = true;
    } else if (argument == QLatin1String("--output") && i + 1 < arguments.size()) {
      parsed.output = arguments[++i];
    } else if (argument.startsWith(QLatin1String("--")) || !address.isEmpty()) {
      *problem = QStringLiteral("unexpected argument '%1'").arg(argument);
      return std::nullopt;
    } else {
      address = argument;
    }
  }
  if (address.isEmpty() || parsed.output.isEmpty()) {
    *problem = QStringLiteral("an address and --output FILE are needed");
    return std::nullopt;
  }
  parsed.url = QUrl(address, QUrl::StrictMode);
  return parsed;
}

QString megabytes(quint64 bytes) { return QString::number(static_cast<double>(bytes) / 1e6, 'f', 1); }

// Shows how far the download is on standard error: a bar redrawn in place on
// a terminal, otherwise a line at each further tenth.
class FetchProgress : public ASIProgressDelegate {
 public:
  FetchProgress(const ASIHTTPRequest& request, bool onTerminal) : request_(request), onTerminal_(onTerminal) {}

  void setDoubleValue(double value) override {
    const int percent = static_cast<int>(value * 100);
    if (!onTerminal_) {
      if (percent / 10 <= lastTenth_) return;
      lastTenth_ = percent / 10;
      err_ << percent << "% " << megabytes(request_.totalBytesRead()) << " MB" << Qt::endl;
      return;
    }
    const int filled = static_cast<int>(value * kBarWidth);
    err_ << '\r' << '[' << QString(filled, QLatin1Char('#')) << QString(kBarWidth - filled, QLatin1Char(' ')) << "] "
         << QStringLiteral("%1%").arg(percent, 3) << "  " << megabytes(request_.totalBytesRead()) << " of "
         << megabytes(request_.contentLength() + request_.partialDownloadSize()) << " MB" << Qt::flush;
    barShown_ = true;
  }

  // Ends the bar's line.
  void finish() {
    if (barShown_) err_ << Qt::endl;
  }

 private:
  const ASIHTTPRequest& request_;
  bool onTerminal_;
  int lastTenth_ = -1;
  bool barShown_ = false;
  QTextStream err_{stderr};
};

// Ends the event loop when the request ends; refuses error pages.
class FetchDelegate : public ASIHTTPRequestDelegate {
 public:
  explicit FetchDelegate(QEventLoop& loop) : loop_(loop) {}

  void requestDidReceiveResponseHeaders(ASIHTTPRequest* request, const ASIHeaderFields&) override {
    // An error page is not the file: the download stops before anything is written.
    if (request->responseStatusCode() >= 400) {
      refusedStatus_ = request->responseStatusCode();
      request->cancel();
    }
  }
  void requestFinished(ASIHTTPRequest*) override { loop_.quit(); }
  void requestFailed(ASIHTTPRequest*) override { loop_.quit(); }

  int refusedStatus() const { return refusedStatus_; }

 private:
  QEventLoop& loop_;
  int refusedStatus_ = 0;
};

}  // namespace

int runFetchCommand(const QStringList& arguments) {
  QTextStream err(stderr);
  QString problem;
  const std::optional<FetchArguments> parsed = parseArguments(arguments, &problem);
  if (!parsed) {
    err << "videoconverter fetch: " << problem << "\nUsage: videoconverter fetch URL --output FILE [--resume]"
        << Qt::endl;
    return 2;
  }

  const QString temporaryPath = parsed->output + QStringLiteral(".download");
  const std::shared_ptr<ASIHTTPRequest> request = ASIHTTPRequest::requestWithURL(parsed->url);
  request->setDownloadDestinationPath(parsed->output);
  request->setTemporaryFileDownloadPath(temporaryPath);
  request->setAllowResumeForFileDownloads(parsed->resume);
  QEventLoop loop;
  FetchDelegate delegate(loop);
  FetchProgress progress(*request, isatty(STDERR_FILENO) != 0);
  request->setDelegate(&delegate);
  request->setDownloadProgressDelegate(&progress);
  request->startAsynchronous();
  loop.exec();
  progress.finish();
  request->setDelegate(nullptr);
  request->setDownloadProgressDelegate(nullptr);

  if (const std::optional<ASIHTTPError> error = request->error()) {
    err << "videoconverter fetch: ";
    if (delegate.refusedStatus() != 0) {
      err << "the server answered with status " << delegate.refusedStatus();
    } else {
      err << error->localizedDescription;
      if (!error->underlyingReason.isEmpty()) err << " (" << error->underlyingReason << ')';
    }
    err << Qt::endl;
    if (QFileInfo::exists(temporaryPath)) {
      err << "The part downloaded so far is in " << temporaryPath << "; run again with --resume to continue."
          << Qt::endl;
    }
    return 1;
  }
  QTextStream(stdout) << "Saved " << parsed->output << " (" << QFileInfo(parsed->output).size() << " bytes)"
                      << Qt::endl;
  return 0;
}
