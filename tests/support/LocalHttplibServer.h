// A cpp-httplib server on 127.0.0.1 for the length of a test: it listens
// from its construction, and its handlers may be added afterwards, before the
// requests they answer are made.
#pragma once

#include <QByteArray>
#include <QString>
#include <QUrl>

#include <httplib.h>

#include <string>
#include <thread>

class LocalHttplibServer {
 public:
  LocalHttplibServer();
  ~LocalHttplibServer();
  LocalHttplibServer(const LocalHttplibServer&) = delete;
  LocalHttplibServer& operator=(const LocalHttplibServer&) = delete;

  // Answers `path` (a cpp-httplib pattern) with `body`.
  void serve(const std::string& path, const std::string& body, const std::string& contentType = "text/html",
             int status = 200);
  // Answers `path` with a redirect to `location`.
  void redirect(const std::string& path, const std::string& location, int status = 301);

  QUrl url(const QString& path) const;
  std::string address(const std::string& path) const;

  httplib::Server server;

 private:
  int port_ = 0;
  std::thread thread_;
};

// A port on 127.0.0.1 that was free a moment ago and that nobody listens on.
int closedLoopbackPort();

// Bytes to serve that differ from position to position, so that a misplaced
// piece shows.
QByteArray patternBytes(qsizetype size);
