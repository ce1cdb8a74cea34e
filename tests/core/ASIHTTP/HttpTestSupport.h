// What the HTTP client's tests share: running a request on the real event
// loop and a delegate that records what it hears.
#pragma once

#include <QStringList>
#include <QUrl>

#include <memory>
#include <vector>

#include "ASIHTTP/ASIHTTPRequest.h"
#include "EventLoopWait.h"
#include "GeneratedMedia.h"
#include "LocalHttplibServer.h"

// Starts `request` and waits until it has ended and told the main thread.
bool runToEnd(const std::shared_ptr<ASIHTTPRequest>& request);
// Delivers everything that has been posted to the main thread so far.
void deliverPostedCalls();

class RecordingDelegate : public ASIHTTPRequestDelegate, public ASIProgressDelegate {
 public:
  void requestStarted(ASIHTTPRequest*) override { events << QStringLiteral("started"); }
  void requestDidReceiveResponseHeaders(ASIHTTPRequest*, const ASIHeaderFields&) override {
    events << QStringLiteral("headers");
  }
  void requestWillRedirectToURL(ASIHTTPRequest*, const QUrl& url) override {
    events << QStringLiteral("redirect ") + url.toString();
  }
  void requestFinished(ASIHTTPRequest*) override { events << QStringLiteral("finished"); }
  void requestFailed(ASIHTTPRequest*) override { events << QStringLiteral("failed"); }
  void setDoubleValue(double value) override { progress.push_back(value); }

  QStringList events;
  std::vector<double> progress;
};

// A request for `url` reporting to `delegate`, which also receives progress.
std::shared_ptr<ASIHTTPRequest> makeRequest(const QUrl& url, RecordingDelegate& delegate);
