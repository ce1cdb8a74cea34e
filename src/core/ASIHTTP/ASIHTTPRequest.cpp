#include "ASIHTTPRequest.h"

#include <QCoreApplication>
#include <QRegularExpression>
#include <QStringDecoder>
#include <QSysInfo>

#include "ASINetworkQueue.h"
#include "CommonClass/MainThread.h"

namespace {

std::mutex& classSettingsMutex() {
  static std::mutex mutex;
  return mutex;
}

double& classDefaultTimeOut() {
  static double seconds = 10;
  return seconds;
}

QString& classDefaultUserAgent() {
  static QString userAgent;
  return userAgent;
}

// Progress receivers are set under one class-wide lock.
std::mutex& progressLock() {
  static std::mutex mutex;
  return mutex;
}

}  // namespace

std::shared_ptr<ASIHTTPRequest> ASIHTTPRequest::requestWithURL(const QUrl& url) {
  return std::make_shared<ASIHTTPRequest>(url, ConstructionKey{});
}

ASIHTTPRequest::ASIHTTPRequest(const QUrl& url, ConstructionKey) {
  settings_.url = url;
  settings_.timeOutSeconds = defaultTimeOutSeconds();
}

double ASIHTTPRequest::defaultTimeOutSeconds() {
  std::lock_guard lock(classSettingsMutex());
  return classDefaultTimeOut();
}

void ASIHTTPRequest::setDefaultTimeOutSeconds(double seconds) {
  std::lock_guard lock(classSettingsMutex());
  classDefaultTimeOut() = seconds;
}

QString ASIHTTPRequest::defaultUserAgentString() {
  std::lock_guard lock(classSettingsMutex());
  QString& userAgent = classDefaultUserAgent();
  if (userAgent.isEmpty()) {
    // "Name Version (Linux; architecture)" of the running application.
    userAgent = QStringLiteral("%1 %2 (%3; %4)")
                    .arg(QCoreApplication::applicationName(), QCoreApplication::applicationVersion(),
                         QSysInfo::kernelType(), QSysInfo::currentCpuArchitecture())
                    .simplified();
  }
  return userAgent;
}

void ASIHTTPRequest::setDefaultUserAgentString(const QString& userAgent) {
  std::lock_guard lock(classSettingsMutex());
  classDefaultUserAgent() = userAgent;
}

void ASIHTTPRequest::addRequestHeader(const QString& header, const QString& value) {
  std::lock_guard lock(mutex_);
  settings_.requestHeaders.setValue(header, value);
}

void ASIHTTPRequest::startAsynchronous() { startAsynchronous(ASINetworkQueue::sharedQueue()); }

void ASIHTTPRequest::startAsynchronous(ASINetworkQueue& queue) {
  {
    std::lock_guard lock(mutex_);
    if (stage_ != Stage::Ready) return;
    stage_ = Stage::Queued;
    queue_.store(&queue);
  }
  queue.addOperation(shared_from_this());
}

void ASIHTTPRequest::cancel() {
  bool neverStarted = false;
  {
    std::lock_guard lock(mutex_);
    if (stage_ == Stage::Ended) return;
    cancelled_.store(true);
    neverStarted = stage_ == Stage::Ready;
    if (neverStarted) {
      stage_ = Stage::Ended;
      results_.error = ASIHTTPError::cancelled();
    }
  }
  headersDeliveredCondition_.notify_all();
  if (neverStarted) {
    deliverEnd();
  } else {
    ASINetworkQueue* queue = queue_.load();
    (queue != nullptr ? *queue : ASINetworkQueue::sharedQueue()).wakeUp();
  }
}

void ASIHTTPRequest::cancelSilently() {
  silenced_.store(true);
  {
    std::lock_guard lock(mutex_);
    cancelled_.store(true);
  }
  headersDeliveredCondition_.notify_all();
}

bool ASIHTTPRequest::claimEnd() {
  std::lock_guard lock(mutex_);
  stage_ = Stage::Ended;
  return !cancelled_.load();
}

bool ASIHTTPRequest::isFinished() const {
  std::lock_guard lock(mutex_);
  return endDelivered_;
}

QString ASIHTTPRequest::responseString() const {
  std::lock_guard lock(mutex_);
  static const QRegularExpression charsetPattern(QStringLiteral("charset\\s*=\\s*\"?([^\";\\s]+)"),
                                                 QRegularExpression::CaseInsensitiveOption);
  const QString contentType = results_.responseHeaders.value(QStringLiteral("Content-Type"));
  const QRegularExpressionMatch charset = charsetPattern.match(contentType);
  if (charset.hasMatch()) {
    QStringDecoder decoder(charset.captured(1).toLatin1().constData());
    if (decoder.isValid()) return decoder.decode(results_.responseData);
  }
  QStringDecoder fallback(settings_.defaultResponseEncoding);
  return fallback.decode(results_.responseData);
}

ASIRequestSettings ASIHTTPRequest::settingsSnapshot() const {
  std::lock_guard lock(mutex_);
  return settings_;
}

ASIHTTPRequest::Selectors ASIHTTPRequest::selectorsSnapshot() const {
  std::lock_guard lock(mutex_);
  return selectors_;
}

bool ASIHTTPRequest::delegateTakesBody() const {
  std::lock_guard lock(mutex_);
  return selectors_.didReceiveData.respondsTo(delegate_.load());
}

void ASIHTTPRequest::deliverStarted() {
  MainThread::post(
      [self = shared_from_this()] { self->selectorsSnapshot().didStart.perform(self->delegate(), self.get()); });
}

void ASIHTTPRequest::deliverResponseHeadersAndWait(const ASIHeaderFields& headers) {
  {
    std::lock_guard lock(mutex_);
    headersDelivered_ = false;
  }
  MainThread::post([self = shared_from_this(), headers] {
    self->selectorsSnapshot().didReceiveResponseHeaders.perform(self->delegate(), self.get(), headers);
    {
      std::lock_guard lock(self->mutex_);
      self->headersDelivered_ = true;
    }
    self->headersDeliveredCondition_.notify_all();
  });
  std::unique_lock lock(mutex_);
  headersDeliveredCondition_.wait(lock, [this] { return headersDelivered_ || cancelled_.load(); });
}

void ASIHTTPRequest::deliverWillRedirect(const QUrl& newURL) {
  MainThread::post([self = shared_from_this(), newURL] {
    self->selectorsSnapshot().willRedirect.perform(self->delegate(), self.get(), newURL);
  });
}

void ASIHTTPRequest::deliverData(const QByteArray& data) {
  MainThread::post([self = shared_from_this(), data] {
    self->selectorsSnapshot().didReceiveData.perform(self->delegate(), self.get(), data);
  });
}

void ASIHTTPRequest::deliverProgress(double fraction) {
  latestProgress_.store(fraction);
  // One update at a time is queued; it shows the latest fraction when it runs.
  if (progressPending_.exchange(true)) return;
  MainThread::post([self = shared_from_this()] {
    self->progressPending_.store(false);
    ASIProgressDelegate* receiver = self->downloadProgressDelegate();
    if (receiver == nullptr) return;
    std::lock_guard lock(progressLock());
    receiver->setDoubleValue(self->latestProgress_.load());
  });
}

void ASIHTTPRequest::deliverEnd() {
  if (isSilenced()) return;
  MainThread::post([self = shared_from_this()] {
    {
      std::lock_guard lock(self->mutex_);
      self->endDelivered_ = true;
    }
    const Selectors selectors = self->selectorsSnapshot();
    const ASIRequestSelector& selector = self->error() ? selectors.didFail : selectors.didFinish;
    selector.perform(self->delegate(), self.get());
  });
}
