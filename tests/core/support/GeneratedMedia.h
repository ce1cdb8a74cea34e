// Media for the model's tests, made by the ffmpeg command in a temporary
// folder, and the reference answers of ffprobe about it.
#pragma once

#include <QJsonObject>
#include <QString>
#include <QStringList>
#include <QTemporaryDir>

namespace modeltest {

// A temporary folder of generated files, removed with the object.
class MediaFolder {
 public:
  QString folder() const { return dir_.path(); }
  QString path(const QString& name) const { return dir_.filePath(name); }

  // A clip of `seconds` with a 320x240 test picture and `audioStreams` tones,
  // in the container of the name's extension; empty (and a test failure)
  // when ffmpeg cannot make it.
  QString videoClip(const QString& name, double seconds, int audioStreams = 1) const;
  // A tone of `seconds` without picture.
  QString audioClip(const QString& name, double seconds) const;
  // A file holding exactly `bytes`.
  QString writeFile(const QString& name, const QByteArray& bytes) const;

 private:
  QTemporaryDir dir_;
};

// Runs `ffmpeg -y -hide_banner -loglevel error` with the arguments; its error
// output when it fails, else an empty text.
QString runFfmpeg(const QStringList& arguments);

// ffprobe's view of a file (-show_format -show_streams); empty when it fails.
QJsonObject ffprobe(const QString& path);
double ffprobeDuration(const QJsonObject& probe);
int ffprobeStreamCount(const QJsonObject& probe, const QString& codecType);
// Width and height of the first video stream.
int ffprobeVideoField(const QJsonObject& probe, const QString& field);

}  // namespace modeltest
