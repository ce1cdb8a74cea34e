// Media for every layer's tests, made by the ffmpeg program, and ffprobe's
// view of files, which the tests take as the reference. A recipe runs once
// per build: its file stays in the build folder under a name that carries a
// fingerprint of the recipe, so every test process shares it and a changed
// recipe makes a new file.
#pragma once

#include <QByteArray>
#include <QDir>
#include <QMap>
#include <QString>
#include <QStringList>
#include <QTemporaryDir>

namespace testmedia {

// ffmpeg's input options for a generated source, a lavfi graph such as
// "testsrc=size=320x240:rate=25:duration=2".
QStringList source(const QString& graph);
// A moving test picture, and a steady tone.
QStringList picture(double seconds, const QString& size = QStringLiteral("320x240"), int rate = 25);
QStringList tone(double seconds, int frequency = 440, int sampleRate = 44100);

// The file `ffmpeg <arguments> <file>` makes, named `name` (its extension
// picks the container) after the recipe's fingerprint. Shared by the test
// processes: copy it before changing it. Empty, and a test failure, when
// ffmpeg fails.
QString made(const QString& name, const QStringList& arguments);

// An HLS stream of `seconds` of test picture (160x120, H.264) and tone
// (AAC) in one-second segments: the folder that holds its media playlist
// "stream.m3u8" and the segments "segment0.ts", "segment1.ts", ... Made once
// per build like made(); empty, and a test failure, when ffmpeg fails.
QString hlsStream(double seconds);
// The same as a DASH stream: the folder of its manifest "stream.mpd", whose
// representation "0" is the video and "1" the sound, and their segments.
QString dashStream(double seconds);

struct ProgramOutput {
  int exitCode = -1;  // -1 when it did not start, crashed or hung
  QByteArray output;
  QByteArray errors;
};
ProgramOutput run(const QString& program, const QStringList& arguments);
// Runs `ffmpeg -nostdin -v error -y` with the arguments: its error output
// when it fails, else an empty text.
QString runFfmpeg(const QStringList& arguments);

// ffprobe's "key=value" fields of a section ("format" or "streams"), of the
// first stream `selector` picks ("v:0", "a:1") if one is given. Tags show as
// "TAG:title".
QMap<QString, QString> ffprobe(const QString& path, const QString& section = QStringLiteral("format"),
                               const QString& selector = QString());
double duration(const QString& path);
// Streams of a type ("audio", "video") as ffprobe counts them.
int streamCount(const QString& path, const QString& type);
// The tags of the file and of its first sound stream, keys in lower case.
QMap<QString, QString> tags(const QString& path);

// A temporary folder of test files, removed with everything in it.
class Folder {
 public:
  QString path() const { return dir_.path(); }
  // `name` in this folder; an absolute path as it is.
  QString path(const QString& name) const { return QDir(dir_.path()).filePath(name); }

  // A clip of test picture and `audioStreams` tones at 44.1 kHz, in the
  // container the name's extension names.
  QString clip(const QString& name, double seconds, int audioStreams = 1,
               const QString& size = QStringLiteral("320x240")) const;
  // A stereo tone without picture.
  QString audio(const QString& name, double seconds) const;
  // A 64x48 still picture in the format of the name's extension.
  QString still(const QString& name) const;
  // A one-second clip (test picture and tone in MP4, MOV and MKV, tone only
  // otherwise) with `tags` ("key=value" as ffmpeg's -metadata takes them)
  // and, when a picture format ("png", "jpg") is given, the still picture in
  // that format attached as its cover.
  QString tagged(const QString& name, const QStringList& tags, const QString& coverFormat = QString()) const;

  // A fresh copy of `source` under `name`.
  QString copy(const QString& source, const QString& name) const;
  QString write(const QString& name, const QByteArray& bytes) const;
  QByteArray read(const QString& name) const;

 private:
  QTemporaryDir dir_;
};

}  // namespace testmedia
