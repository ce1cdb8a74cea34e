// A cpp-httplib server on 127.0.0.1 for the length of a test.
#pragma once

#include <QByteArray>
#include <QString>
#include <QUrl>

#include <httplib.h>

#include <thread>

class LocalHttplibServer {
 public:
  ~LocalHttplibServer();
  // Listens; add the handlers to `server` first.
  void start();
  QUrl url(const QString& path) const;

  httplib::Server server;

 private:
  int port_ = 0;
  std::thread thread_;
};

// Bytes to serve that differ from position to position, so that a misplaced
// piece shows.
QByteArray patternBytes(qsizetype size);
