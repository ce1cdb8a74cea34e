#include "HttpTestSupport.h"

#include "CommonClass/MainThread.h"

bool runToEnd(const std::shared_ptr<ASIHTTPRequest>& request) {
  request->startAsynchronous();
  return waitUntil([&request] { return request->isFinished(); });
}

void deliverPostedCalls() {
  // Calls posted earlier run before this one.
  bool reached = false;
  MainThread::post([&reached] { reached = true; });
  waitUntil([&reached] { return reached; });
}

std::shared_ptr<ASIHTTPRequest> makeRequest(const QUrl& url, RecordingDelegate& delegate) {
  std::shared_ptr<ASIHTTPRequest> request = ASIHTTPRequest::requestWithURL(url);
  request->setDelegate(&delegate);
  request->setDownloadProgressDelegate(&delegate);
  return request;
}
