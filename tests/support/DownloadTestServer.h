// A video site on 127.0.0.1 for the download tests: the page /<name>.html
// (whatever its query), titled <name>, holds the one video /<name>.mp4,
// whose bytes differ from place to place. Videos are served with ranges (416 beyond their end), and
// a video can be held halfway until released, or dropped halfway.
#pragma once

#include <QByteArray>
#include <QMap>
#include <QSet>
#include <QString>
#include <QUrl>

#include <condition_variable>
#include <mutex>

#include "ScriptedHttpServer.h"

class DownloadTestServer {
 public:
  explicit DownloadTestServer(qsizetype videoSize = 4000);
  // Serves `video` as every video.
  explicit DownloadTestServer(QByteArray video);
  // Lets every held video go, so that the server can stop.
  ~DownloadTestServer();

  QString pageAddress(const QString& name) const;
  QUrl videoAddress(const QString& name) const;
  const QByteArray& video() const { return video_; }

  // Pages from now on show `picture` (a PNG) as their video's poster, served as /<name>.png.
  void setPoster(const QByteArray& picture);
  // Whole downloads of <name>.mp4 send half the video, then wait for release().
  void hold(const QString& name);
  void release(const QString& name);
  // The next `times` requests for <name>.mp4 send half of what they ask for
  // and close the connection.
  void dropHalfway(const QString& name, int times);
  // The requests for <name>.mp4 so far.
  QList<ScriptedHttpServer::Request> videoRequests(const QString& name) const;
  // Their "Range" fields, empty for whole downloads.
  QList<QByteArray> rangesAsked(const QString& name) const;

 private:
  void answer(ScriptedHttpServer::Exchange& exchange);
  void answerVideo(ScriptedHttpServer::Exchange& exchange, const QString& name);

  QByteArray video_;
  QByteArray poster_;
  mutable std::mutex mutex_;
  std::condition_variable released_;
  QSet<QString> held_;
  QMap<QString, int> drops_;
  bool closing_ = false;
  ScriptedHttpServer server_;
};
