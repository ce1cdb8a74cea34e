#include "LocalHttplibServer.h"

#include <arpa/inet.h>
#include <netinet/in.h>
#include <sys/socket.h>
#include <unistd.h>

#include <stdexcept>

LocalHttplibServer::LocalHttplibServer() {
  port_ = server.bind_to_any_port("127.0.0.1");
  if (port_ <= 0) throw std::runtime_error("cpp-httplib cannot listen on 127.0.0.1");
  thread_ = std::thread([this] { server.listen_after_bind(); });
  // The socket already listens; stop() needs the accepting loop to be running.
  while (!server.is_running()) std::this_thread::yield();
}

LocalHttplibServer::~LocalHttplibServer() {
  server.stop();
  thread_.join();
}

void LocalHttplibServer::serve(const std::string& path, const std::string& body, const std::string& contentType,
                               int status) {
  server.Get(path, [body, contentType, status](const httplib::Request&, httplib::Response& response) {
    response.status = status;
    response.set_content(body, contentType);
  });
}

void LocalHttplibServer::redirect(const std::string& path, const std::string& location, int status) {
  server.Get(path, [location, status](const httplib::Request&, httplib::Response& response) {
    response.status = status;
    response.set_header("Location", location);
  });
}

QUrl LocalHttplibServer::url(const QString& path) const {
  return QUrl(QStringLiteral("http://127.0.0.1:%1%2").arg(port_).arg(path));
}

std::string LocalHttplibServer::address(const std::string& path) const {
  return "http://127.0.0.1:" + std::to_string(port_) + path;
}

int closedLoopbackPort() {
  const int probe = ::socket(AF_INET, SOCK_STREAM, 0);
  sockaddr_in address{};
  address.sin_family = AF_INET;
  address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
  socklen_t length = sizeof(address);
  ::bind(probe, reinterpret_cast<sockaddr*>(&address), sizeof(address));
  ::getsockname(probe, reinterpret_cast<sockaddr*>(&address), &length);
  ::close(probe);
  return ntohs(address.sin_port);
}

QByteArray patternBytes(qsizetype size) {
  QByteArray bytes(size, Qt::Uninitialized);
  for (qsizetype i = 0; i < size; ++i) bytes[i] = static_cast<char>('a' + (i * 7 + i / 26) % 26);
  return bytes;
}
