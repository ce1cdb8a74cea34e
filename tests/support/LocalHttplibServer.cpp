#include "LocalHttplibServer.h"

#include <stdexcept>

LocalHttplibServer::~LocalHttplibServer() {
  server.stop();
  if (thread_.joinable()) thread_.join();
}

void LocalHttplibServer::start() {
  port_ = server.bind_to_any_port("127.0.0.1");
  if (port_ <= 0) throw std::runtime_error("cpp-httplib cannot listen on 127.0.0.1");
  thread_ = std::thread([this] { server.listen_after_bind(); });
  // The socket already listens; stop() needs the accepting loop to be running.
  while (!server.is_running()) std::this_thread::yield();
}

QUrl LocalHttplibServer::url(const QString& path) const {
  return QUrl(QStringLiteral("http://127.0.0.1:%1%2").arg(port_).arg(path));
}

QByteArray patternBytes(qsizetype size) {
  QByteArray bytes(size, Qt::Uninitialized);
  for (qsizetype i = 0; i < size; ++i) bytes[i] = static_cast<char>('a' + (i * 7 + i / 26) % 26);
  return bytes;
}
