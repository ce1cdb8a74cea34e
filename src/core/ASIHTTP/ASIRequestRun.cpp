#include "ASIRequestRun.h"

#include <QDir>
#include <QFile>
#include <QUuid>

#include <algorithm>

#include "ASIProxySettings.h"
#include "CommonClass/KMVLog.h"

namespace {

// How long the loop may wait when no time-out is near.
constexpr std::chrono::seconds kIdleWait(1);

bool isHttpAddress(const QUrl& url) {
  const QString scheme = url.scheme().toLower();
  return url.isValid() && !url.host().isEmpty() &&
         (scheme == QLatin1String("http") || scheme == QLatin1String("https"));
}

}  // namespace

ASIRequestRun::ASIRequestRun(std::shared_ptr<ASIHTTPRequest> request)
    : request_(std::move(request)), settings_(request_->settingsSnapshot()) {}

ASIRequestRun::~ASIRequestRun() = default;

void ASIRequestRun::start(CURLM* multi) {
  multi_ = multi;
  if (request_->isCancelled()) {
    end(ASIHTTPError::cancelled());
    return;
  }
  if (std::optional<ASIHTTPError> error = prepareFirstAttempt()) {
    end(error);
    return;
  }
  request_->deliverStarted();
  if (settings_.shouldResetDownloadProgress) request_->deliverProgress(0);
  startAttempt(false);
}

std::optional<ASIHTTPError> ASIRequestRun::prepareFirstAttempt() {
  if (!isHttpAddress(settings_.url)) {
    return ASIHTTPError::unableToCreateRequest(
        QStringLiteral("'%1' is not an http or https address").arg(settings_.url.toString()));
  }
  bodyGoesToDelegate_ = request_->delegateTakesBody();
  if (!bodyGoesToDelegate_ && !settings_.downloadDestinationPath.isEmpty()) {
    QString& temporaryPath = settings_.temporaryFileDownloadPath;
    if (temporaryPath.isEmpty()) {
      temporaryPath = QDir::temp().filePath(QUuid::createUuid().toString(QUuid::WithoutBraces));
      request_->updateSettings(
          [&temporaryPath](ASIRequestSettings& settings) { settings.temporaryFileDownloadPath = temporaryPath; });
    }
    if (settings_.allowResumeForFileDownloads) {
      if (std::optional<ASIHTTPError> error = ASIBodyFile::existingSize(temporaryPath, &partialSize_)) return error;
    }
    file_.emplace(temporaryPath);
  }
  request_->updateResults([this](ASIHTTPRequest::Results& results) {
    results.partialDownloadSize = partialSize_;
    results.totalBytesRead = partialSize_;
  });
  return std::nullopt;
}

void ASIRequestRun::startAttempt(bool freshConnection) {
  transfer_.reset();
  head_ = ASIResponseHead();
  headReceived_ = false;
  redirect_.reset();
  connectionReuse_ = ASIConnectionReuse();
  rangeSent_ = partialSize_ > 0;
  continuesPartial_ = false;
  bodyStarted_ = false;
  bodyIsGzip_ = false;
  inflater_.reset();
  accurateProgress_ = false;
  contentLength_ = 0;
  attemptBytes_ = 0;
  attemptError_.reset();

  connectionKey_ = ASIPersistentConnectionPool::keyFor(settings_.url);
  const bool mayReuse = settings_.shouldAttemptPersistentConnection && !freshConnection &&
                        ASIPersistentConnectionPool::shared().hasReusableConnection(connectionKey_);
  ASICurlTransfer::Options options;
  options.url = settings_.url;
  options.method = settings_.requestMethod;
  options.headers = headersToSend();
  options.proxy = ASIProxySettings::proxyForURL(settings_.url);
  options.validatesSecureCertificate = settings_.validatesSecureCertificate;
  options.useCookiePersistence = settings_.useCookiePersistence;
  options.freshConnection = !mayReuse;
  options.forbidReuse = !settings_.shouldAttemptPersistentConnection;

  lastActivity_ = Clock::now();
  transfer_ = std::make_unique<ASICurlTransfer>(static_cast<ASICurlTransfer::Listener&>(*this), this);
  if (std::optional<ASIHTTPError> error = transfer_->start(options, multi_)) end(error);
}

ASIHeaderFields ASIRequestRun::headersToSend() const {
  ASIHeaderFields headers = settings_.requestHeaders;
  const QString userAgentField = QStringLiteral("User-Agent");
  if (!headers.contains(userAgentField)) {
    headers.setValue(userAgentField,
                     settings_.userAgent.isEmpty() ? ASIHTTPRequest::defaultUserAgentString() : settings_.userAgent);
  }
  if (settings_.allowCompressedResponse) headers.setValue(QStringLiteral("Accept-Encoding"), QStringLiteral("gzip"));
  if (partialSize_ > 0) headers.setValue(QStringLiteral("Range"), QStringLiteral("bytes=%1-").arg(partialSize_));
  return headers;
}

bool ASIRequestRun::transferReceivedHeaderLine(QByteArrayView line) {
  lastActivity_ = Clock::now();
  if (!head_.addLine(line)) return true;
  headReceived_ = true;
  const bool keepReading = handleResponseHead();
  // Waiting for the main thread is not silence from the server.
  lastActivity_ = Clock::now();
  return keepReading;
}

bool ASIRequestRun::handleResponseHead() {
  const int status = head_.statusCode();
  const ASIHeaderFields& headers = head_.headers();
  request_->updateResults([&](ASIHTTPRequest::Results& results) {
    results.responseStatusCode = status;
    results.responseHeaders = headers;
  });
  connectionReuse_ = ASIPersistentConnection::reuseAfterResponse(head_.httpVersion(), headers,
                                                                 settings_.persistentConnectionTimeoutSeconds);
  if (!connectionReuse_.reusable) transfer_->forbidConnectionReuse();

  if (settings_.shouldRedirect) {
    redirect_ =
        ASIRedirectRule::redirectFor(status, headers, settings_.url, settings_.requestMethod, settings_.requestHeaders);
    if (redirect_) return true;
  }
  if (status == 401 || status == 407) {
    attemptError_ = ASIHTTPError::authenticationNeeded();
    return false;
  }

  bool hasLength = false;
  contentLength_ = headers.value(QStringLiteral("Content-Length")).trimmed().toULongLong(&hasLength);
  accurateProgress_ = settings_.showAccurateProgress && hasLength;
  continuesPartial_ = rangeSent_ && status == 206 && headers.contains(QStringLiteral("Content-Range"));
  // A server that ignored "Range" sends the whole body: it is written from the start.
  if (!continuesPartial_) partialSize_ = 0;
  const QString encoding = headers.value(QStringLiteral("Content-Encoding")).trimmed().toLower();
  bodyIsGzip_ = encoding == QLatin1String("gzip") || encoding == QLatin1String("x-gzip");
  if (bodyIsGzip_ && !settings_.shouldWaitToInflateCompressedResponses) {
    inflater_ = std::make_unique<ASIGzipInflater>();
  }
  request_->updateResults([this](ASIHTTPRequest::Results& results) {
    results.contentLength = contentLength_;
    results.partialDownloadSize = partialSize_;
    results.totalBytesRead = partialSize_;
  });
  request_->deliverResponseHeadersAndWait(headers);
  return !request_->isCancelled();
}

bool ASIRequestRun::transferReceivedBody(const char* data, size_t size) {
  if (request_->isCancelled()) return false;
  lastActivity_ = Clock::now();
  // The body of a redirect is read and dropped, so the connection stays usable.
  if (redirect_) return true;
  if (!bodyStarted_) attemptError_ = beginBody();
  if (attemptError_) return false;

  attemptBytes_ += size;
  request_->updateResults(
      [this](ASIHTTPRequest::Results& results) { results.totalBytesRead = partialSize_ + attemptBytes_; });
  if (inflater_) {
    const ASIGzipInflater::Result inflated = inflater_->inflate(data, size, [this](const char* bytes, size_t count) {
      attemptError_ = storeBody(bytes, count);
      return !attemptError_;
    });
    if (inflated == ASIGzipInflater::Result::Damaged)
      attemptError_ = ASIHTTPError::connectionFailure(inflater_->errorText());
  } else {
    attemptError_ = storeBody(data, size);
  }
  if (attemptError_) return false;
  reportProgress();
  return true;
}

std::optional<ASIHTTPError> ASIRequestRun::beginBody() {
  bodyStarted_ = true;
  if (file_) return file_->begin(continuesPartial_);
  if (!bodyGoesToDelegate_ && !continuesPartial_) {
    request_->updateResults([](ASIHTTPRequest::Results& results) { results.responseData.clear(); });
  }
  return std::nullopt;
}

std::optional<ASIHTTPError> ASIRequestRun::storeBody(const char* data, size_t size) {
  if (bodyGoesToDelegate_) {
    request_->deliverData(QByteArray(data, static_cast<qsizetype>(size)));
    return std::nullopt;
  }
  if (file_) return file_->write(data, size);
  request_->updateResults([data, size](ASIHTTPRequest::Results& results) {
    results.responseData.append(data, static_cast<qsizetype>(size));
  });
  return std::nullopt;
}

void ASIRequestRun::reportProgress() {
  const quint64 total = contentLength_ + partialSize_;
  if (!accurateProgress_ || total == 0) return;
  request_->deliverProgress(std::min(1.0, static_cast<double>(partialSize_ + attemptBytes_) / total));
}

void ASIRequestRun::transferDone(CURLcode result) {
  if (request_->isCancelled()) {
    end(ASIHTTPError::cancelled());
    return;
  }
  if (attemptError_) {
    end(attemptError_);
    return;
  }
  ASIPersistentConnectionPool& pool = ASIPersistentConnectionPool::shared();
  if (result != CURLE_OK) {
    pool.connectionClosed(connectionKey_);
    // A connection kept from an earlier request may have been closed by the
    // server meanwhile: the request gets one more go on a new connection.
    if (transfer_->reusedConnection() && ASICurlTransfer::isLostConnection(result) && request_->retryCount() == 0) {
      retryFromBytesSoFar();
      return;
    }
    end(transfer_->errorFor(result));
    return;
  }
  if (connectionReuse_.reusable) {
    pool.connectionBecameIdle(connectionKey_, connectionReuse_.idleSeconds);
  } else {
    pool.connectionClosed(connectionKey_);
  }
  if (redirect_) {
    followRedirect();
  } else {
    complete();
  }
}

void ASIRequestRun::followRedirect() {
  if (request_->redirectCount() >= ASIRedirectRule::kMaximumRedirects) {
    end(ASIHTTPError::tooManyRedirects());
    return;
  }
  const ASIRedirect redirect = *redirect_;
  settings_.url = redirect.url;
  settings_.requestMethod = redirect.method;
  settings_.requestHeaders = redirect.headers;
  request_->updateSettings([&redirect](ASIRequestSettings& settings) {
    settings.url = redirect.url;
    settings.requestMethod = redirect.method;
    settings.requestHeaders = redirect.headers;
  });
  request_->updateResults([](ASIHTTPRequest::Results& results) { results.redirectCount += 1; });
  request_->deliverWillRedirect(redirect.url);
  startAttempt(false);
}

void ASIRequestRun::retryFromBytesSoFar() {
  // An inflater cannot take up a stream in its middle: such a body starts over.
  if (headReceived_ && !redirect_) partialSize_ = inflater_ ? 0 : partialSize_ + attemptBytes_;
  request_->updateResults([this](ASIHTTPRequest::Results& results) {
    results.retryCount += 1;
    results.partialDownloadSize = partialSize_;
  });
  startAttempt(true);
}

void ASIRequestRun::checkCancelAndTimeOut(Clock::time_point now) {
  if (ended_) return;
  if (request_->isCancelled()) {
    end(ASIHTTPError::cancelled());
    return;
  }
  if (timeLeftBeforeTimeOut(now) > Clock::duration::zero()) return;
  transfer_.reset();
  ASIPersistentConnectionPool::shared().connectionClosed(connectionKey_);
  if (request_->retryCount() < settings_.numberOfTimesToRetryOnTimeout) {
    retryFromBytesSoFar();
    return;
  }
  end(ASIHTTPError::timedOut());
}

void ASIRequestRun::abandon() {
  request_->cancelSilently();
  if (!ended_) end(ASIHTTPError::cancelled());
}

ASIRequestRun::Clock::duration ASIRequestRun::timeLeftBeforeTimeOut(Clock::time_point now) const {
  if (ended_ || settings_.timeOutSeconds <= 0) return kIdleWait;
  const auto timeOut =
      std::chrono::duration_cast<Clock::duration>(std::chrono::duration<double>(settings_.timeOutSeconds));
  return lastActivity_ + timeOut - now;
}

void ASIRequestRun::complete() {
  transfer_.reset();
  if (!request_->claimEnd()) {
    end(ASIHTTPError::cancelled());
    return;
  }
  // From here on the whole body is on disk: it is kept whatever happens next.
  bodyComplete_ = true;
  std::optional<ASIHTTPError> error;
  if (!bodyStarted_) error = beginBody();
  if (!error && inflater_ && !inflater_->isComplete()) {
    error = ASIHTTPError::connectionFailure(QStringLiteral("The gzip body ends before its end"));
  }
  if (!error) error = file_ ? finishFileBody() : finishMemoryBody();
  if (!error) request_->deliverProgress(1.0);
  end(error);
}

std::optional<ASIHTTPError> ASIRequestRun::finishFileBody() {
  file_->close();
  const QString& temporaryPath = settings_.temporaryFileDownloadPath;
  const QString& destinationPath = settings_.downloadDestinationPath;
  if (!bodyIsGzip_ || !settings_.shouldWaitToInflateCompressedResponses) {
    return ASIBodyFile::moveFile(temporaryPath, destinationPath);
  }
  // Inflated beside the temporary file first, so that a damaged body leaves
  // both the download and an older destination file as they were.
  const QString inflatedPath = temporaryPath + QStringLiteral(".inflated");
  std::optional<ASIHTTPError> error;
  if (std::optional<QString> failure = ASIGzipInflater::inflateFile(temporaryPath, inflatedPath)) {
    error = ASIHTTPError::connectionFailure(*failure);
  } else {
    error = ASIBodyFile::moveFile(inflatedPath, destinationPath);
  }
  if (error) {
    QFile::remove(inflatedPath);
    return error;
  }
  return file_->remove();
}

std::optional<ASIHTTPError> ASIRequestRun::finishMemoryBody() {
  if (bodyGoesToDelegate_ || !bodyIsGzip_ || !settings_.shouldWaitToInflateCompressedResponses) return std::nullopt;
  QByteArray inflated;
  if (std::optional<QString> failure = ASIGzipInflater::inflateData(request_->responseData(), &inflated)) {
    return ASIHTTPError::connectionFailure(*failure);
  }
  request_->updateResults([&inflated](ASIHTTPRequest::Results& results) { results.responseData = inflated; });
  return std::nullopt;
}

void ASIRequestRun::end(std::optional<ASIHTTPError> error) {
  ended_ = true;
  transfer_.reset();
  if (!request_->claimEnd()) error = ASIHTTPError::cancelled();
  if (error && file_) {
    // A partial download is kept only when it can be resumed.
    if (settings_.allowResumeForFileDownloads || bodyComplete_) {
      file_->close();
    } else if (std::optional<ASIHTTPError> removal = file_->remove()) {
      KMVLog::Log(removal->localizedDescription);
    }
  }
  if (error && error->code != ASIHTTPErrorCode::Cancelled) {
    KMVLog::Log(QStringLiteral("Request %1 failed: %2 (%3)")
                    .arg(settings_.url.toString(), error->localizedDescription, error->underlyingReason));
  }
  request_->updateResults([&error](ASIHTTPRequest::Results& results) { results.error = error; });
  request_->deliverEnd();
}
