#include "GeneratedMedia.h"

#include <QFile>
#include <QJsonArray>
#include <QJsonDocument>
#include <QProcess>

#include <gtest/gtest.h>

namespace modeltest {

namespace {

// Generous: a process that takes this long is stuck, not slow.
constexpr int kProcessBoundMs = 120000;

struct ProcessOutput {
  bool ok = false;
  QByteArray standardOutput;
  QByteArray errorOutput;
};

ProcessOutput run(const QString& program, const QStringList& arguments) {
  QProcess process;
  process.start(program, arguments);
  ProcessOutput output;
  if (!process.waitForStarted(kProcessBoundMs) || !process.waitForFinished(kProcessBoundMs)) {
    output.errorOutput = program.toUtf8() + " did not run: " + process.errorString().toUtf8();
    process.kill();
    return output;
  }
  output.standardOutput = process.readAllStandardOutput();
  output.errorOutput = process.readAllStandardError();
  output.ok = process.exitStatus() == QProcess::NormalExit && process.exitCode() == 0;
  return output;
}

QString generated(const QString& path, const QStringList& arguments) {
  const QString error = runFfmpeg(arguments + QStringList{path});
  if (!error.isEmpty()) {
    ADD_FAILURE() << "ffmpeg could not make " << path.toStdString() << ": " << error.toStdString();
    return {};
  }
  return path;
}

QString seconds(double value) { return QString::number(value, 'f', 3); }

}  // namespace

QString runFfmpeg(const QStringList& arguments) {
  const ProcessOutput output =
      run(QStringLiteral("ffmpeg"), QStringList{"-y", "-hide_banner", "-loglevel", "error"} + arguments);
  if (output.ok) return {};
  return output.errorOutput.isEmpty() ? QStringLiteral("ffmpeg failed") : QString::fromUtf8(output.errorOutput);
}

QString MediaFolder::videoClip(const QString& name, double length, int audioStreams) const {
  QStringList arguments{"-f", "lavfi", "-i", "testsrc=size=320x240:rate=25:duration=" + seconds(length)};
  for (int stream = 0; stream < audioStreams; ++stream) {
    arguments += {
        "-f", "lavfi", "-i",
        QStringLiteral("sine=frequency=%1:sample_rate=44100:duration=%2").arg(440 + 220 * stream).arg(seconds(length))};
  }
  for (int input = 0; input <= audioStreams; ++input) arguments += {"-map", QString::number(input)};
  arguments += {"-pix_fmt", "yuv420p"};
  return generated(path(name), arguments);
}

QString MediaFolder::audioClip(const QString& name, double length) const {
  return generated(path(name), {"-f", "lavfi", "-i", "sine=frequency=440:sample_rate=44100:duration=" + seconds(length),
                                "-ac", "2"});
}

QString MediaFolder::writeFile(const QString& name, const QByteArray& bytes) const {
  QFile file(path(name));
  if (!file.open(QIODevice::WriteOnly) || file.write(bytes) != bytes.size()) {
    ADD_FAILURE() << "cannot write " << file.fileName().toStdString();
    return {};
  }
  return file.fileName();
}

QJsonObject ffprobe(const QString& path) {
  const ProcessOutput output =
      run(QStringLiteral("ffprobe"), {"-v", "error", "-show_format", "-show_streams", "-of", "json", path});
  return output.ok ? QJsonDocument::fromJson(output.standardOutput).object() : QJsonObject();
}

double ffprobeDuration(const QJsonObject& probe) {
  return probe.value(QStringLiteral("format")).toObject().value(QStringLiteral("duration")).toString().toDouble();
}

int ffprobeStreamCount(const QJsonObject& probe, const QString& codecType) {
  int count = 0;
  for (const QJsonValue& stream : probe.value(QStringLiteral("streams")).toArray()) {
    if (stream.toObject().value(QStringLiteral("codec_type")).toString() == codecType) ++count;
  }
  return count;
}

int ffprobeVideoField(const QJsonObject& probe, const QString& field) {
  for (const QJsonValue& stream : probe.value(QStringLiteral("streams")).toArray()) {
    const QJsonObject object = stream.toObject();
    if (object.value(QStringLiteral("codec_type")).toString() == QLatin1String("video")) {
      return object.value(field).toInt();
    }
  }
  return 0;
}

}  // namespace modeltest
