// A raw HTTP server on 127.0.0.1 whose answers are scripted byte by byte, for
// servers that misbehave: silent ones, ones that drop the connection in the
// middle of a body, ones that ignore "Range". Each connection runs on a thread
// of its own and is served request after request until the script closes it.
#pragma once

#include <QByteArray>
#include <QList>
#include <QMap>
#include <QUrl>

#include <condition_variable>
#include <functional>
#include <mutex>
#include <thread>
#include <vector>

class ScriptedHttpServer {
 public:
  struct Request {
    QByteArray method;
    QByteArray target;
    // Field names in lower case.
    QMap<QByteArray, QByteArray> headers;
    // Counted from 1 in the order connections were accepted.
    int connection = 0;
  };

  // One request on one connection, as the script sees it.
  class Exchange {
   public:
    const Request& request() const { return request_; }
    // How many requests this connection has carried, this one included.
    int requestOnConnection() const { return requestOnConnection_; }
    void send(const QByteArray& bytes);
    // Closes the connection once the script returns.
    void close() { closeAfterwards_ = true; }
    // Says nothing more until the server stops.
    void staySilent();

   private:
    friend class ScriptedHttpServer;
    Exchange(ScriptedHttpServer& server, int socket, Request request, int requestOnConnection)
        : server_(server), socket_(socket), request_(std::move(request)), requestOnConnection_(requestOnConnection) {}

    ScriptedHttpServer& server_;
    int socket_;
    Request request_;
    int requestOnConnection_;
    bool closeAfterwards_ = false;
  };

  using Script = std::function<void(Exchange&)>;

  explicit ScriptedHttpServer(Script script);
  ~ScriptedHttpServer();

  QUrl url(const QString& path) const;
  QList<Request> requests() const;
  int connectionCount() const;

  // A complete response: status line, the fields, "Content-Length" of the
  // body unless a field gives it, and the body.
  static QByteArray response(int status, const QList<QByteArray>& fields, const QByteArray& body);
  // The same without the body.
  static QByteArray responseHead(int status, const QList<QByteArray>& fields, qint64 contentLength);

 private:
  void acceptConnections();
  void serveConnection(int socket, int connection);
  bool readRequest(int socket, QByteArray& buffer, Request& request);

  Script script_;
  int listener_ = -1;
  quint16 port_ = 0;
  mutable std::mutex mutex_;
  std::condition_variable stopped_;
  bool stopping_ = false;
  QList<Request> requests_;
  int connectionCount_ = 0;
  // Sockets of the connections still being served.
  std::vector<int> openSockets_;
  std::vector<std::thread> connections_;
  std::thread acceptor_;
};
