#include "BulkHttpServer.h"

#include <QByteArray>

#include <arpa/inet.h>
#include <netinet/in.h>
#include <sys/socket.h>
#include <unistd.h>

#include <algorithm>

namespace {

constexpr qsizetype kSendBufferSize = 1024 * 1024;

}  // namespace

BulkHttpServer::BulkHttpServer(qint64 bodySize) : bodySize_(bodySize) {
  listener_ = ::socket(AF_INET, SOCK_STREAM, 0);
  sockaddr_in address{};
  address.sin_family = AF_INET;
  address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
  socklen_t length = sizeof(address);
  if (listener_ < 0 || ::bind(listener_, reinterpret_cast<sockaddr*>(&address), sizeof(address)) != 0 ||
      ::listen(listener_, 4) != 0 || ::getsockname(listener_, reinterpret_cast<sockaddr*>(&address), &length) != 0) {
    if (listener_ >= 0) ::close(listener_);
    listener_ = -1;
    return;
  }
  port_ = ntohs(address.sin_port);
  thread_ = std::thread(&BulkHttpServer::serve, this);
}

BulkHttpServer::~BulkHttpServer() {
  if (listener_ < 0) return;
  stopping_ = true;
  ::shutdown(listener_, SHUT_RDWR);
  thread_.join();
  ::close(listener_);
}

QUrl BulkHttpServer::url() const { return QUrl(QStringLiteral("http://127.0.0.1:%1/bulk.bin").arg(port_)); }

void BulkHttpServer::serve() {
  while (!stopping_) {
    const int socket = ::accept(listener_, nullptr, nullptr);
    if (socket < 0) continue;
    answer(socket);
    ::close(socket);
  }
}

void BulkHttpServer::answer(int socket) const {
  // The request head is read and not looked at: every request gets the same body.
  QByteArray request;
  char chunk[4096];
  while (!request.contains("\r\n\r\n")) {
    const ssize_t received = ::recv(socket, chunk, sizeof(chunk), 0);
    if (received <= 0) return;
    request.append(chunk, received);
  }
  const QByteArray head =
      "HTTP/1.1 200 OK\r\nContent-Type: application/octet-stream\r\nContent-Length: " + QByteArray::number(bodySize_) +
      "\r\nConnection: close\r\n\r\n";
  if (::send(socket, head.constData(), head.size(), MSG_NOSIGNAL) != head.size()) return;
  const QByteArray buffer(kSendBufferSize, 'v');
  qint64 left = bodySize_;
  while (left > 0) {
    const ssize_t sent = ::send(socket, buffer.constData(), std::min<qint64>(left, buffer.size()), MSG_NOSIGNAL);
    if (sent <= 0) return;
    left -= sent;
  }
}
