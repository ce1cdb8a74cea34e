// One HTTP request: its address, header fields and options, a delegate told
// of its progress, and for file downloads a destination and a temporary file
// that lets a download be resumed. Requests run on the HTTP client's network
// thread, at most four at a time; the delegate and the progress receiver are
// called on the main thread.
#pragma once

#include <QByteArray>
#include <QString>
#include <QStringConverter>
#include <QUrl>

#include <atomic>
#include <condition_variable>
#include <memory>
#include <mutex>
#include <optional>

#include "ASIHTTPRequestDelegate.h"
#include "ASIHTTPRequestError.h"
#include "ASIHeaderFields.h"

class ASINetworkQueue;

// What a request asks for, with the values a new request starts with.
struct ASIRequestSettings {
  QUrl url;
  QString requestMethod = QStringLiteral("GET");
  // Fields added with addRequestHeader().
  ASIHeaderFields requestHeaders;
  // Sent as "User-Agent" when no such field was added; the class default when empty.
  QString userAgent;
  // Seconds without anything read after which the request times out; 0 or
  // less: never.
  double timeOutSeconds = 10;
  bool shouldRedirect = true;
  // Ask for gzip-encoded bodies.
  bool allowCompressedResponse = true;
  // Inflate a gzip body once it is complete rather than as it arrives.
  bool shouldWaitToInflateCompressedResponses = true;
  bool shouldAttemptPersistentConnection = true;
  // Idle life of a reusable connection when the server names none.
  double persistentConnectionTimeoutSeconds = 60;
  // Progress against the content length; otherwise only the end is reported.
  bool showAccurateProgress = true;
  // Report 0 to the progress receiver when the request starts.
  bool shouldResetDownloadProgress = true;
  int numberOfTimesToRetryOnTimeout = 0;
  // Text encoding of responseString() when the response names none.
  QStringConverter::Encoding defaultResponseEncoding = QStringConverter::Latin1;
  // Keep cookies that servers set for the requests that follow.
  bool useCookiePersistence = true;
  bool validatesSecureCertificate = true;
  // Final file of a file download; the body is kept in memory when empty.
  QString downloadDestinationPath;
  // The file being written; a unique name in the temporary folder when empty.
  QString temporaryFileDownloadPath;
  // Continue an existing temporary file with a "Range" request.
  bool allowResumeForFileDownloads = false;
};

class ASIHTTPRequest : public std::enable_shared_from_this<ASIHTTPRequest> {
  struct ConstructionKey {};

 public:
  static std::shared_ptr<ASIHTTPRequest> requestWithURL(const QUrl& url);
  ASIHTTPRequest(const QUrl& url, ConstructionKey);
  ASIHTTPRequest(const ASIHTTPRequest&) = delete;
  ASIHTTPRequest& operator=(const ASIHTTPRequest&) = delete;

  // Class-wide time-out of new requests, 10 seconds unless changed.
  static double defaultTimeOutSeconds();
  static void setDefaultTimeOutSeconds(double seconds);
  // Class-wide "User-Agent" of requests that set none.
  static QString defaultUserAgentString();
  static void setDefaultUserAgentString(const QString& userAgent);

  // The options; set them before startAsynchronous(). The address, method and
  // header fields change when a redirect is followed.
  QUrl url() const { return setting(&ASIRequestSettings::url); }
  QString requestMethod() const { return setting(&ASIRequestSettings::requestMethod); }
  void setRequestMethod(const QString& method) { setSetting(&ASIRequestSettings::requestMethod, method); }
  ASIHeaderFields requestHeaders() const { return setting(&ASIRequestSettings::requestHeaders); }
  void addRequestHeader(const QString& header, const QString& value);
  QString userAgent() const { return setting(&ASIRequestSettings::userAgent); }
  void setUserAgent(const QString& userAgent) { setSetting(&ASIRequestSettings::userAgent, userAgent); }
  double timeOutSeconds() const { return setting(&ASIRequestSettings::timeOutSeconds); }
  void setTimeOutSeconds(double seconds) { setSetting(&ASIRequestSettings::timeOutSeconds, seconds); }
  bool shouldRedirect() const { return setting(&ASIRequestSettings::shouldRedirect); }
  void setShouldRedirect(bool value) { setSetting(&ASIRequestSettings::shouldRedirect, value); }
  bool allowCompressedResponse() const { return setting(&ASIRequestSettings::allowCompressedResponse); }
  void setAllowCompressedResponse(bool value) { setSetting(&ASIRequestSettings::allowCompressedResponse, value); }
  bool shouldWaitToInflateCompressedResponses() const {
    return setting(&ASIRequestSettings::shouldWaitToInflateCompressedResponses);
  }
  void setShouldWaitToInflateCompressedResponses(bool value) {
    setSetting(&ASIRequestSettings::shouldWaitToInflateCompressedResponses, value);
  }
  bool shouldAttemptPersistentConnection() const {
    return setting(&ASIRequestSettings::shouldAttemptPersistentConnection);
  }
  void setShouldAttemptPersistentConnection(bool value) {
    setSetting(&ASIRequestSettings::shouldAttemptPersistentConnection, value);
  }
  double persistentConnectionTimeoutSeconds() const {
    return setting(&ASIRequestSettings::persistentConnectionTimeoutSeconds);
  }
  void setPersistentConnectionTimeoutSeconds(double seconds) {
    setSetting(&ASIRequestSettings::persistentConnectionTimeoutSeconds, seconds);
  }
  bool showAccurateProgress() const { return setting(&ASIRequestSettings::showAccurateProgress); }
  void setShowAccurateProgress(bool value) { setSetting(&ASIRequestSettings::showAccurateProgress, value); }
  bool shouldResetDownloadProgress() const { return setting(&ASIRequestSettings::shouldResetDownloadProgress); }
  void setShouldResetDownloadProgress(bool value) {
    setSetting(&ASIRequestSettings::shouldResetDownloadProgress, value);
  }
  int numberOfTimesToRetryOnTimeout() const { return setting(&ASIRequestSettings::numberOfTimesToRetryOnTimeout); }
  void setNumberOfTimesToRetryOnTimeout(int times) {
    setSetting(&ASIRequestSettings::numberOfTimesToRetryOnTimeout, times);
  }
  QStringConverter::Encoding defaultResponseEncoding() const {
    return setting(&ASIRequestSettings::defaultResponseEncoding);
  }
  void setDefaultResponseEncoding(QStringConverter::Encoding encoding) {
    setSetting(&ASIRequestSettings::defaultResponseEncoding, encoding);
  }
  bool useCookiePersistence() const { return setting(&ASIRequestSettings::useCookiePersistence); }
  void setUseCookiePersistence(bool value) { setSetting(&ASIRequestSettings::useCookiePersistence, value); }
  bool validatesSecureCertificate() const { return setting(&ASIRequestSettings::validatesSecureCertificate); }
  void setValidatesSecureCertificate(bool value) { setSetting(&ASIRequestSettings::validatesSecureCertificate, value); }
  QString downloadDestinationPath() const { return setting(&ASIRequestSettings::downloadDestinationPath); }
  void setDownloadDestinationPath(const QString& path) {
    setSetting(&ASIRequestSettings::downloadDestinationPath, path);
  }
  QString temporaryFileDownloadPath() const { return setting(&ASIRequestSettings::temporaryFileDownloadPath); }
  void setTemporaryFileDownloadPath(const QString& path) {
    setSetting(&ASIRequestSettings::temporaryFileDownloadPath, path);
  }
  bool allowResumeForFileDownloads() const { return setting(&ASIRequestSettings::allowResumeForFileDownloads); }
  void setAllowResumeForFileDownloads(bool value) {
    setSetting(&ASIRequestSettings::allowResumeForFileDownloads, value);
  }

  // Neither is retained: clear them before they go away.
  ASIHTTPRequestDelegate* delegate() const { return delegate_.load(); }
  void setDelegate(ASIHTTPRequestDelegate* delegate) { delegate_.store(delegate); }
  ASIProgressDelegate* downloadProgressDelegate() const { return downloadProgressDelegate_.load(); }
  void setDownloadProgressDelegate(ASIProgressDelegate* receiver) { downloadProgressDelegate_.store(receiver); }

  // The delegate operations the events go to.
  void setDidStartSelector(const ASIRequestSelector& selector) { setSelector(&Selectors::didStart, selector); }
  void setDidReceiveResponseHeadersSelector(const ASIHeadersSelector& selector) {
    setSelector(&Selectors::didReceiveResponseHeaders, selector);
  }
  void setWillRedirectSelector(const ASIRedirectSelector& selector) { setSelector(&Selectors::willRedirect, selector); }
  void setDidFinishSelector(const ASIRequestSelector& selector) { setSelector(&Selectors::didFinish, selector); }
  void setDidFailSelector(const ASIRequestSelector& selector) { setSelector(&Selectors::didFail, selector); }
  // When the delegate responds to it, the body goes to it and is not stored.
  void setDidReceiveDataSelector(const ASIDataSelector& selector) { setSelector(&Selectors::didReceiveData, selector); }

  // Hands the request to the shared queue; a request is started once.
  void startAsynchronous();
  // Hands the request to `queue` instead, which must outlive it.
  void startAsynchronous(ASINetworkQueue& queue);
  // Stops the request, which ends failed with code 4, told to the delegate
  // only if one is still set. The temporary file is kept when resume is
  // allowed and removed otherwise.
  void cancel();
  bool isCancelled() const { return cancelled_.load(); }
  // True once the request has ended (finished, failed or cancelled) and the
  // main thread has been told.
  bool isFinished() const;

  // What the response said, and how far the body got.
  int responseStatusCode() const { return result(&Results::responseStatusCode); }
  ASIHeaderFields responseHeaders() const { return result(&Results::responseHeaders); }
  // "Content-Length" of the response: the bytes still to come.
  quint64 contentLength() const { return result(&Results::contentLength); }
  // Bytes that were in the temporary file when the body started.
  quint64 partialDownloadSize() const { return result(&Results::partialDownloadSize); }
  // Bytes of the body so far, partial download included.
  quint64 totalBytesRead() const { return result(&Results::totalBytesRead); }
  int redirectCount() const { return result(&Results::redirectCount); }
  int retryCount() const { return result(&Results::retryCount); }
  std::optional<ASIHTTPError> error() const { return result(&Results::error); }
  // The body of a request without a destination file.
  QByteArray responseData() const { return result(&Results::responseData); }
  // responseData() as text, in the charset the response names or the default.
  QString responseString() const;

 private:
  friend class ASIRequestRun;
  friend class ASINetworkQueue;

  struct Selectors {
    ASIRequestSelector didStart = &ASIHTTPRequestDelegate::requestStarted;
    ASIHeadersSelector didReceiveResponseHeaders = &ASIHTTPRequestDelegate::requestDidReceiveResponseHeaders;
    ASIRedirectSelector willRedirect = &ASIHTTPRequestDelegate::requestWillRedirectToURL;
    ASIRequestSelector didFinish = &ASIHTTPRequestDelegate::requestFinished;
    ASIRequestSelector didFail = &ASIHTTPRequestDelegate::requestFailed;
    ASIDataSelector didReceiveData = &ASIHTTPRequestDataReceiver::requestDidReceiveData;
  };

  struct Results {
    int responseStatusCode = 0;
    ASIHeaderFields responseHeaders;
    quint64 contentLength = 0;
    quint64 partialDownloadSize = 0;
    quint64 totalBytesRead = 0;
    int redirectCount = 0;
    int retryCount = 0;
    std::optional<ASIHTTPError> error;
    QByteArray responseData;
  };

  enum class Stage { Ready, Queued, Ended };

  template <class T>
  T setting(T ASIRequestSettings::*field) const {
    std::lock_guard lock(mutex_);
    return settings_.*field;
  }
  template <class T>
  void setSetting(T ASIRequestSettings::*field, const T& value) {
    std::lock_guard lock(mutex_);
    settings_.*field = value;
  }
  template <class T>
  T result(T Results::*field) const {
    std::lock_guard lock(mutex_);
    return results_.*field;
  }
  template <class T>
  void setSelector(T Selectors::*field, const T& selector) {
    std::lock_guard lock(mutex_);
    selectors_.*field = selector;
  }

  // Used by the network thread.
  ASIRequestSettings settingsSnapshot() const;
  Selectors selectorsSnapshot() const;
  template <class Change>
  void updateSettings(Change change) {
    std::lock_guard lock(mutex_);
    change(settings_);
  }
  template <class Change>
  void updateResults(Change change) {
    std::lock_guard lock(mutex_);
    change(results_);
  }
  // True when the delegate takes the body itself.
  bool delegateTakesBody() const;
  // Ends without telling anyone; used when the network thread shuts down.
  void cancelSilently();
  bool isSilenced() const { return silenced_.load(); }
  // Marks the request ended, so that a later cancel() does nothing. False
  // when it had been cancelled first.
  bool claimEnd();

  // Calls made on the main thread for the network thread.
  void deliverStarted();
  // Waits until the main thread has been told, or the request is cancelled.
  void deliverResponseHeadersAndWait(const ASIHeaderFields& headers);
  void deliverWillRedirect(const QUrl& newURL);
  void deliverData(const QByteArray& data);
  void deliverProgress(double fraction);
  void deliverEnd();

  mutable std::mutex mutex_;
  ASIRequestSettings settings_;
  Selectors selectors_;
  Results results_;
  Stage stage_ = Stage::Ready;
  bool endDelivered_ = false;
  bool headersDelivered_ = false;
  std::condition_variable headersDeliveredCondition_;

  std::atomic<ASIHTTPRequestDelegate*> delegate_{nullptr};
  std::atomic<ASIProgressDelegate*> downloadProgressDelegate_{nullptr};
  std::atomic<bool> cancelled_{false};
  // The queue it was handed to, which a cancel wakes.
  std::atomic<ASINetworkQueue*> queue_{nullptr};
  std::atomic<bool> silenced_{false};
  std::atomic<bool> progressPending_{false};
  std::atomic<double> latestProgress_{0};
};
