// What the HTTP client's tests share: waiting on the real event loop, a
// delegate that records what it hears, a cpp-httplib server on 127.0.0.1,
// and a folder for the files of one test.
#pragma once

#include <QByteArray>
#include <QStringList>
#include <QTemporaryDir>
#include <QUrl>

#include <httplib.h>

#include <chrono>
#include <functional>
#include <memory>
#include <thread>
#include <vector>

#include "ASIHTTP/ASIHTTPRequest.h"

// Runs the event loop until `condition` holds; false when `bound` passes first.
bool waitUntil(const std::function<bool()>& condition, std::chrono::milliseconds bound = std::chrono::seconds(30));
// Starts `request` and waits until it has ended and told the main thread.
bool runToEnd(const std::shared_ptr<ASIHTTPRequest>& request);
// Delivers everything that has been posted to the main thread so far.
void deliverPostedCalls();
// Bytes that differ from position to position, so that a misplaced piece shows.
QByteArray patternBytes(qsizetype size);

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

// A cpp-httplib server on 127.0.0.1; add handlers before start().
class LocalHttplibServer {
 public:
  ~LocalHttplibServer();
  void start();
  QUrl url(const QString& path) const;

  httplib::Server server;

 private:
  int port_ = 0;
  std::thread thread_;
};

class TestFolder {
 public:
  QString path(const QString& name) const { return folder_.filePath(name); }
  void write(const QString& name, const QByteArray& bytes) const;
  QByteArray read(const QString& name) const;

 private:
  QTemporaryDir folder_;
};
