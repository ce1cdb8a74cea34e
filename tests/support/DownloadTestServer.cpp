#include "DownloadTestServer.h"

#include "LocalHttplibServer.h"

namespace {

using Exchange = ScriptedHttpServer::Exchange;

QString nameOf(const QByteArray& target, const char* extension) {
  const QString path = QString::fromUtf8(target);
  return path.mid(1, path.size() - 1 - qsizetype(qstrlen(extension)));
}

}  // namespace

DownloadTestServer::DownloadTestServer(qsizetype videoSize) : DownloadTestServer(patternBytes(videoSize)) {}

DownloadTestServer::DownloadTestServer(QByteArray video)
    : video_(std::move(video)), server_([this](Exchange& exchange) { answer(exchange); }) {}

DownloadTestServer::~DownloadTestServer() {
  {
    std::lock_guard lock(mutex_);
    closing_ = true;
  }
  released_.notify_all();
}

QString DownloadTestServer::pageAddress(const QString& name) const {
  return server_.url(QLatin1Char('/') + name + QStringLiteral(".html")).toString();
}

QUrl DownloadTestServer::videoAddress(const QString& name) const {
  return server_.url(QLatin1Char('/') + name + QStringLiteral(".mp4"));
}

void DownloadTestServer::setPoster(const QByteArray& picture) {
  std::lock_guard lock(mutex_);
  poster_ = picture;
}

void DownloadTestServer::hold(const QString& name) {
  std::lock_guard lock(mutex_);
  held_.insert(name);
}

void DownloadTestServer::release(const QString& name) {
  {
    std::lock_guard lock(mutex_);
    held_.remove(name);
  }
  released_.notify_all();
}

void DownloadTestServer::dropHalfway(const QString& name, int times) {
  std::lock_guard lock(mutex_);
  drops_[name] = times;
}

QList<ScriptedHttpServer::Request> DownloadTestServer::videoRequests(const QString& name) const {
  QList<ScriptedHttpServer::Request> requests;
  const QByteArray target = QByteArray("/") + name.toUtf8() + ".mp4";
  for (const ScriptedHttpServer::Request& request : server_.requests()) {
    if (request.target.split('?').first() == target) requests.append(request);
  }
  return requests;
}

QList<QByteArray> DownloadTestServer::rangesAsked(const QString& name) const {
  QList<QByteArray> ranges;
  for (const ScriptedHttpServer::Request& request : videoRequests(name)) ranges.append(request.headers.value("range"));
  return ranges;
}

void DownloadTestServer::answer(Exchange& exchange) {
  // The query is not part of the name.
  const QByteArray target = exchange.request().target.split('?').first();
  std::unique_lock lock(mutex_);
  const QByteArray poster = poster_;
  lock.unlock();
  if (target.endsWith(".html")) {
    const QByteArray name = nameOf(target, ".html").toUtf8();
    const QByteArray posterAttribute = poster.isEmpty() ? QByteArray() : " poster=\"/" + name + ".png\"";
    const QByteArray page = "<html><head><title>" + name + "</title></head><body><video" + posterAttribute +
                            " src=\"/" + name + ".mp4\"></video></body></html>";
    exchange.send(ScriptedHttpServer::response(200, {"Content-Type: text/html"}, page));
  } else if (target.endsWith(".png") && !poster.isEmpty()) {
    exchange.send(ScriptedHttpServer::response(200, {"Content-Type: image/png"}, poster));
  } else if (target.endsWith(".mp4")) {
    answerVideo(exchange, nameOf(target, ".mp4"));
  } else {
    exchange.send(ScriptedHttpServer::response(404, {}, "not here"));
  }
}

void DownloadTestServer::answerVideo(Exchange& exchange, const QString& name) {
  const QByteArray range = exchange.request().headers.value("range");
  const QByteArray type = "Content-Type: video/mp4";
  const QByteArray length = QByteArray::number(video_.size());
  const qsizetype from = range.isEmpty() ? 0 : range.mid(qstrlen("bytes=")).chopped(1).toLongLong();
  if (from >= video_.size()) {
    exchange.send(ScriptedHttpServer::response(416, {"Content-Range: bytes */" + length}, {}));
    return;
  }
  const QByteArray rest = video_.mid(from);
  const QByteArray head = range.isEmpty() ? ScriptedHttpServer::responseHead(200, {type}, rest.size())
                                          : ScriptedHttpServer::responseHead(
                                                206,
                                                {type, "Content-Range: bytes " + QByteArray::number(from) + '-' +
                                                           QByteArray::number(video_.size() - 1) + '/' + length},
                                                rest.size());
  std::unique_lock lock(mutex_);
  if (drops_.value(name) > 0) {
    --drops_[name];
    lock.unlock();
    exchange.send(head + rest.left(rest.size() / 2));
    exchange.close();
    return;
  }
  if (!range.isEmpty() || !held_.contains(name)) {
    lock.unlock();
    exchange.send(head + rest);
    return;
  }
  lock.unlock();
  exchange.send(head + rest.left(rest.size() / 2));
  lock.lock();
  released_.wait(lock, [this, &name] { return closing_ || !held_.contains(name); });
  lock.unlock();
  exchange.send(rest.mid(rest.size() / 2));
}
