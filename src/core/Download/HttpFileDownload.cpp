#include "HttpFileDownload.h"

#include <QFile>
#include <QFileInfo>
#include <QRegularExpression>

#include <atomic>

#include "ASIHTTP/ASIBodyFile.h"
#include "ASIHTTP/ASIHTTPRequest.h"
#include "ASIHTTP/ASINetworkQueue.h"
#include "Download/DownloadFormController.h"
#include "Download/VideoInfoObject.h"

namespace {

std::atomic<std::chrono::milliseconds::rep> retryPauseMs{2000};

constexpr int kRangeNotSatisfiable = 416;

// Downloads run in a queue of their own, as wide as the most downloads the
// window runs, so that they neither wait for nor hold up the short requests
// of page analyses in the shared queue.
ASINetworkQueue& downloadQueue() {
  static ASINetworkQueue queue(DownloadFormController::kMostDownloads);
  return queue;
}

QString describe(const ASIHTTPError& error) {
  if (error.underlyingReason.isEmpty()) return error.localizedDescription;
  return QStringLiteral("%1 (%2)").arg(error.localizedDescription, error.underlyingReason);
}

// Whether another try may get further: the connection dropped or went silent.
bool isDroppedConnection(const ASIHTTPError& error) {
  return error.code == ASIHTTPErrorCode::ConnectionFailure || error.code == ASIHTTPErrorCode::TimedOut;
}

// The complete length of "Content-Range: bytes */<length>"; -1 when not given.
qint64 completeLength(const QString& contentRange) {
  static const QRegularExpression pattern(QStringLiteral("^\\s*bytes\\s+[^/]*/\\s*(\\d+)\\s*$"));
  const QRegularExpressionMatch match = pattern.match(contentRange);
  return match.hasMatch() ? match.captured(1).toLongLong() : -1;
}

}  // namespace

std::chrono::milliseconds HttpFileDownload::retryPause() { return std::chrono::milliseconds(retryPauseMs.load()); }

void HttpFileDownload::setRetryPause(std::chrono::milliseconds pause) { retryPauseMs.store(pause.count()); }

HttpFileDownload::HttpFileDownload(QUrl address, QString destination)
    : ItemDownload(std::move(address), std::move(destination)) {
  retryTimer_.setSingleShot(true);
  connect(&retryTimer_, &QTimer::timeout, this, &HttpFileDownload::startRequest);
}

HttpFileDownload::~HttpFileDownload() {
  retryTimer_.stop();
  dropRequest();
}

void HttpFileDownload::start() {
  stop();
  retries_ = 0;
  startRequest();
}

void HttpFileDownload::stop() {
  retryTimer_.stop();
  dropRequest();
}

void HttpFileDownload::startRequest() {
  request_ = ASIHTTPRequest::requestWithURL(address());
  request_->addRequestHeader(QStringLiteral("User-Agent"), QString::fromLatin1(kDownloadUserAgents[0]));
  request_->setDownloadDestinationPath(destination());
  request_->setTemporaryFileDownloadPath(temporaryPath());
  request_->setAllowResumeForFileDownloads(true);
  request_->setDelegate(this);
  request_->setDownloadProgressDelegate(this);
  request_->startAsynchronous(downloadQueue());
}

void HttpFileDownload::dropRequest() {
  if (!request_) return;
  request_->setDelegate(nullptr);
  request_->setDownloadProgressDelegate(nullptr);
  request_->cancel();
  request_.reset();
}

void HttpFileDownload::retryOrFail(const QString& reason) {
  if (retries_ >= kMostRetries) {
    emit didFail(reason);
    return;
  }
  ++retries_;
  retryTimer_.start(retryPause() * retries_);
}

void HttpFileDownload::requestDidReceiveResponseHeaders(ASIHTTPRequest* request, const ASIHeaderFields&) {
  const int status = request->responseStatusCode();
  if (status == kRangeNotSatisfiable) {
    rangeRefused(request);
  } else if (status >= 400) {
    // An error page is not the file: nothing of it reaches the temporary file.
    dropRequest();
    emit didFail(QStringLiteral("The server answered with status %1").arg(status));
  }
}

void HttpFileDownload::rangeRefused(ASIHTTPRequest* request) {
  const qint64 length = completeLength(request->responseHeaders().value(QStringLiteral("Content-Range")));
  dropRequest();
  const qint64 kept = QFileInfo(temporaryPath()).size();
  if (length > 0 && kept == length) {
    if (const std::optional<ASIHTTPError> error = ASIBodyFile::moveFile(temporaryPath(), destination())) {
      emit didFail(describe(*error));
      return;
    }
    emit progressChanged(1.0);
    emit didFinish();
    return;
  }
  // The temporary file does not belong to the server's file: start afresh.
  QFile::remove(temporaryPath());
  retryOrFail(QStringLiteral("The server refused to continue the download at byte %1").arg(kept));
}

void HttpFileDownload::requestFinished(ASIHTTPRequest* request) {
  if (request != request_.get()) return;
  request_.reset();
  emit didFinish();
}

void HttpFileDownload::requestFailed(ASIHTTPRequest* request) {
  if (request != request_.get()) return;
  const ASIHTTPError error = request->error().value_or(ASIHTTPError::connectionFailure(QString()));
  request_.reset();
  if (isDroppedConnection(error)) {
    retryOrFail(describe(error));
  } else {
    emit didFail(describe(error));
  }
}

void HttpFileDownload::setDoubleValue(double value) { emit progressChanged(value); }
