// A local HTTP server that answers every GET with the same number of bytes,
// sent from one buffer as fast as the socket takes them.
#pragma once

#include <QUrl>

#include <atomic>
#include <thread>

class BulkHttpServer {
 public:
  explicit BulkHttpServer(qint64 bodySize);
  ~BulkHttpServer();
  BulkHttpServer(const BulkHttpServer&) = delete;
  BulkHttpServer& operator=(const BulkHttpServer&) = delete;

  bool isListening() const { return listener_ >= 0; }
  QUrl url() const;

 private:
  void serve();
  void answer(int socket) const;

  qint64 bodySize_;
  int listener_ = -1;
  quint16 port_ = 0;
  std::atomic<bool> stopping_{false};
  std::thread thread_;
};
