#include "HttpTestSupport.h"

#include <QCoreApplication>
#include <QDeadlineTimer>
#include <QFile>
#include <QTimer>

#include <stdexcept>

#include "CommonClass/MainThread.h"

bool waitUntil(const std::function<bool()>& condition, std::chrono::milliseconds bound) {
  const QDeadlineTimer deadline(bound);
  // Some conditions change on other threads without an event: the ticks make
  // the loop look again.
  QTimer tick;
  tick.start(5);
  while (!condition()) {
    if (deadline.hasExpired()) return false;
    QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
  }
  return true;
}

bool runToEnd(const std::shared_ptr<ASIHTTPRequest>& request) {
  request->startAsynchronous();
  return waitUntil([&request] { return request->isFinished(); });
}

void deliverPostedCalls() {
  // Calls posted earlier run before this one.
  bool reached = false;
  MainThread::post([&reached] { reached = true; });
  waitUntil([&reached] { return reached; });
}

QByteArray patternBytes(qsizetype size) {
  QByteArray bytes(size, Qt::Uninitialized);
  for (qsizetype i = 0; i < size; ++i) bytes[i] = static_cast<char>('a' + (i * 7 + i / 26) % 26);
  return bytes;
}

std::shared_ptr<ASIHTTPRequest> makeRequest(const QUrl& url, RecordingDelegate& delegate) {
  std::shared_ptr<ASIHTTPRequest> request = ASIHTTPRequest::requestWithURL(url);
  request->setDelegate(&delegate);
  request->setDownloadProgressDelegate(&delegate);
  return request;
}

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

void TestFolder::write(const QString& name, const QByteArray& bytes) const {
  QFile file(path(name));
  if (!file.open(QIODevice::WriteOnly) || file.write(bytes) != bytes.size()) {
    throw std::runtime_error("cannot write a test file");
  }
}

QByteArray TestFolder::read(const QString& name) const {
  QFile file(path(name));
  return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}
