// A request while it runs on the network thread: its attempts on the
// transport, the response head, where the body goes, redirects, time-outs and
// retries, and how it ends.
#pragma once

#include <chrono>
#include <memory>
#include <optional>

#include "ASIBodyFile.h"
#include "ASICurlTransfer.h"
#include "ASIGzipInflater.h"
#include "ASIHTTPRequest.h"
#include "ASIPersistentConnection.h"
#include "ASIRedirectRule.h"
#include "ASIResponseHead.h"

class ASIRequestRun : private ASICurlTransfer::Listener {
 public:
  using Clock = std::chrono::steady_clock;

  explicit ASIRequestRun(std::shared_ptr<ASIHTTPRequest> request);
  ~ASIRequestRun();
  ASIRequestRun(const ASIRequestRun&) = delete;
  ASIRequestRun& operator=(const ASIRequestRun&) = delete;

  // Starts the first attempt on `multi`; the run may end at once.
  void start(CURLM* multi);
  // The transport ended the current attempt with `result`.
  void transferDone(CURLcode result);
  // Ends a cancelled request and times out a silent one.
  void checkCancelAndTimeOut(Clock::time_point now);
  // How long the current attempt may stay silent from `now`.
  Clock::duration timeLeftBeforeTimeOut(Clock::time_point now) const;
  bool hasEnded() const { return ended_; }
  // Ends the request without telling anyone, as the network thread stops.
  void abandon();

 private:
  bool transferReceivedHeaderLine(QByteArrayView line) override;
  bool transferReceivedBody(const char* data, size_t size) override;

  std::optional<ASIHTTPError> prepareFirstAttempt();
  void startAttempt(bool freshConnection);
  ASIHeaderFields headersToSend() const;
  bool handleResponseHead();
  std::optional<ASIHTTPError> beginBody();
  std::optional<ASIHTTPError> storeBody(const char* data, size_t size);
  void reportProgress();

  void followRedirect();
  // Another attempt on a new connection, asking with "Range" for what the
  // attempts so far have not brought.
  void retryFromBytesSoFar();
  void complete();
  std::optional<ASIHTTPError> finishFileBody();
  std::optional<ASIHTTPError> finishMemoryBody();
  void endWithError(ASIHTTPError error);
  void end(std::optional<ASIHTTPError> error);

  std::shared_ptr<ASIHTTPRequest> request_;
  ASIRequestSettings settings_;
  CURLM* multi_ = nullptr;
  std::unique_ptr<ASICurlTransfer> transfer_;
  QString connectionKey_;
  bool bodyGoesToDelegate_ = false;
  std::optional<ASIBodyFile> file_;
  bool bodyComplete_ = false;
  bool ended_ = false;

  // Bytes of the body that earlier responses left (resumed file, attempts
  // before a retry); "Range" asks for the rest.
  quint64 partialSize_ = 0;

  // The current attempt.
  Clock::time_point lastActivity_;
  ASIResponseHead head_;
  bool headReceived_ = false;
  std::optional<ASIRedirect> redirect_;
  ASIConnectionReuse connectionReuse_;
  bool rangeSent_ = false;
  bool continuesPartial_ = false;
  bool bodyStarted_ = false;
  bool bodyIsGzip_ = false;
  std::unique_ptr<ASIGzipInflater> inflater_;
  bool accurateProgress_ = false;
  quint64 contentLength_ = 0;
  quint64 attemptBytes_ = 0;
  std::optional<ASIHTTPError> attemptError_;
};
