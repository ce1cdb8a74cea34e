#include "ScriptedHttpServer.h"

#include <arpa/inet.h>
#include <netinet/in.h>
#include <sys/socket.h>
#include <unistd.h>

#include <stdexcept>

namespace {

QByteArray statusText(int status) {
  switch (status) {
    case 200: return "OK";
    case 206: return "Partial Content";
    case 404: return "Not Found";
    default: return "Status";
  }
}

}  // namespace

ScriptedHttpServer::ScriptedHttpServer(Script script) : script_(std::move(script)) {
  listener_ = ::socket(AF_INET, SOCK_STREAM, 0);
  sockaddr_in address{};
  address.sin_family = AF_INET;
  address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
  socklen_t length = sizeof(address);
  if (listener_ < 0 || ::bind(listener_, reinterpret_cast<sockaddr*>(&address), sizeof(address)) != 0 ||
      ::listen(listener_, 16) != 0 || ::getsockname(listener_, reinterpret_cast<sockaddr*>(&address), &length) != 0) {
    throw std::runtime_error("the scripted server cannot listen on 127.0.0.1");
  }
  port_ = ntohs(address.sin_port);
  acceptor_ = std::thread(&ScriptedHttpServer::acceptConnections, this);
}

ScriptedHttpServer::~ScriptedHttpServer() {
  {
    std::lock_guard lock(mutex_);
    stopping_ = true;
    for (int socket : openSockets_) ::shutdown(socket, SHUT_RDWR);
  }
  stopped_.notify_all();
  ::shutdown(listener_, SHUT_RDWR);
  acceptor_.join();
  for (std::thread& connection : connections_) connection.join();
  ::close(listener_);
}

QUrl ScriptedHttpServer::url(const QString& path) const {
  return QUrl(QStringLiteral("http://127.0.0.1:%1%2").arg(port_).arg(path));
}

QList<ScriptedHttpServer::Request> ScriptedHttpServer::requests() const {
  std::lock_guard lock(mutex_);
  return requests_;
}

int ScriptedHttpServer::connectionCount() const {
  std::lock_guard lock(mutex_);
  return connectionCount_;
}

QByteArray ScriptedHttpServer::responseHead(int status, const QList<QByteArray>& fields, qint64 contentLength) {
  QByteArray head = "HTTP/1.1 " + QByteArray::number(status) + ' ' + statusText(status) + "\r\n";
  bool hasLength = false;
  for (const QByteArray& field : fields) {
    head += field + "\r\n";
    hasLength = hasLength || field.toLower().startsWith("content-length:");
  }
  if (!hasLength && contentLength >= 0) head += "Content-Length: " + QByteArray::number(contentLength) + "\r\n";
  return head + "\r\n";
}

QByteArray ScriptedHttpServer::response(int status, const QList<QByteArray>& fields, const QByteArray& body) {
  return responseHead(status, fields, body.size()) + body;
}

void ScriptedHttpServer::Exchange::send(const QByteArray& bytes) {
  qsizetype sent = 0;
  while (sent < bytes.size()) {
    const ssize_t written = ::send(socket_, bytes.constData() + sent, bytes.size() - sent, MSG_NOSIGNAL);
    if (written <= 0) return;
    sent += written;
  }
}

void ScriptedHttpServer::Exchange::staySilent() {
  std::unique_lock lock(server_.mutex_);
  server_.stopped_.wait(lock, [this] { return server_.stopping_; });
  closeAfterwards_ = true;
}

void ScriptedHttpServer::acceptConnections() {
  while (true) {
    const int socket = ::accept(listener_, nullptr, nullptr);
    std::lock_guard lock(mutex_);
    if (socket < 0 || stopping_) {
      if (socket >= 0) ::close(socket);
      return;
    }
    openSockets_.push_back(socket);
    connections_.emplace_back(&ScriptedHttpServer::serveConnection, this, socket, ++connectionCount_);
  }
}

void ScriptedHttpServer::serveConnection(int socket, int connection) {
  QByteArray buffer;
  int requestOnConnection = 0;
  Request request;
  while (readRequest(socket, buffer, request)) {
    request.connection = connection;
    {
      std::lock_guard lock(mutex_);
      requests_.append(request);
    }
    Exchange exchange(*this, socket, request, ++requestOnConnection);
    script_(exchange);
    if (exchange.closeAfterwards_) break;
  }
  std::lock_guard lock(mutex_);
  std::erase(openSockets_, socket);
  ::shutdown(socket, SHUT_RDWR);
  ::close(socket);
}

bool ScriptedHttpServer::readRequest(int socket, QByteArray& buffer, Request& request) {
  qsizetype headEnd = -1;
  char chunk[4096];
  while ((headEnd = buffer.indexOf("\r\n\r\n")) < 0) {
    const ssize_t received = ::recv(socket, chunk, sizeof(chunk), 0);
    if (received <= 0) return false;
    buffer.append(chunk, received);
  }
  const QList<QByteArray> lines = buffer.left(headEnd).split('\n');
  buffer.remove(0, headEnd + 4);
  const QList<QByteArray> requestLine = lines.value(0).trimmed().split(' ');
  request = Request();
  request.method = requestLine.value(0);
  request.target = requestLine.value(1);
  for (qsizetype i = 1; i < lines.size(); ++i) {
    const qsizetype colon = lines[i].indexOf(':');
    if (colon > 0) request.headers.insert(lines[i].left(colon).trimmed().toLower(), lines[i].mid(colon + 1).trimmed());
  }
  // Request bodies are read and dropped.
  qsizetype bodyLeft = request.headers.value("content-length", "0").toLongLong();
  while (bodyLeft > buffer.size()) {
    const ssize_t received = ::recv(socket, chunk, sizeof(chunk), 0);
    if (received <= 0) return false;
    buffer.append(chunk, received);
  }
  buffer.remove(0, bodyLeft);
  return true;
}
