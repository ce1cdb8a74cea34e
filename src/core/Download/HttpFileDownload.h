// A file downloaded over HTTP with resume: the request continues the
// temporary file with a "Range" request, and a connection that drops or
// goes silent is tried again from where it stopped, up to three times with
// a growing pause. A temporary file that is already whole (the server
// answers 416 with its length) is finished as it is. An error page is
// refused before anything is written.
#pragma once

#include <QTimer>

#include <chrono>
#include <memory>

#include "ASIHTTP/ASIHTTPRequestDelegate.h"
#include "Download/ItemDownload.h"

class ASIHTTPRequest;

class HttpFileDownload : public ItemDownload, private ASIHTTPRequestDelegate, private ASIProgressDelegate {
  Q_OBJECT

 public:
  static constexpr int kMostRetries = 3;

  // The pause before the first retry; the n-th retry waits n times as long.
  // Two seconds unless changed (tests make it short).
  static std::chrono::milliseconds retryPause();
  static void setRetryPause(std::chrono::milliseconds pause);

  HttpFileDownload(QUrl address, QString destination);
  ~HttpFileDownload() override;

  void start() override;
  void stop() override;
  // Retries made since start().
  int retryCount() const { return retries_; }

 private:
  void startRequest();
  // Stops the request without hearing from it again.
  void dropRequest();
  void retryOrFail(const QString& reason);
  // The server refused the range: the temporary file may already be whole.
  void rangeRefused(ASIHTTPRequest* request);

  void requestDidReceiveResponseHeaders(ASIHTTPRequest* request, const ASIHeaderFields& headers) override;
  void requestFinished(ASIHTTPRequest* request) override;
  void requestFailed(ASIHTTPRequest* request) override;
  void setDoubleValue(double value) override;

  std::shared_ptr<ASIHTTPRequest> request_;
  QTimer retryTimer_;
  int retries_ = 0;
};
