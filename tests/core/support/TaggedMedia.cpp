#include "TaggedMedia.h"

#include <QFile>
#include <QFileInfo>
#include <QJsonArray>
#include <QJsonObject>

#include <gtest/gtest.h>

namespace modeltest {

namespace {

QString made(const QString& path, const QStringList& arguments) {
  const QString error = runFfmpeg(arguments + QStringList{path});
  if (error.isEmpty()) return path;
  ADD_FAILURE() << "ffmpeg could not make " << path.toStdString() << ": " << error.toStdString();
  return {};
}

bool hasPicture(const QString& name) {
  const QString suffix = QFileInfo(name).suffix().toLower();
  return suffix == QLatin1String("mp4") || suffix == QLatin1String("mov") || suffix == QLatin1String("m4v") ||
         suffix == QLatin1String("mkv");
}

QJsonArray streams(const QString& path) { return ffprobe(path).value(QStringLiteral("streams")).toArray(); }

}  // namespace

QString testPicture(const MediaFolder& folder, const QString& name) {
  return made(folder.path(name), {"-f", "lavfi", "-i", "testsrc=size=64x48", "-frames:v", "1"});
}

QString taggedClip(const MediaFolder& folder, const QString& name, const QStringList& tags, const QString& cover) {
  const bool video = hasPicture(name);
  QStringList arguments;
  if (video) arguments += {"-f", "lavfi", "-i", "testsrc=size=160x120:rate=25:duration=1"};
  arguments += {"-f", "lavfi", "-i", "sine=frequency=440:sample_rate=44100:duration=1"};
  if (!cover.isEmpty()) arguments += {"-i", cover};
  const int inputs = (video ? 2 : 1) + (cover.isEmpty() ? 0 : 1);
  for (int input = 0; input < inputs; ++input) arguments += {"-map", QString::number(input)};
  if (video) arguments += {"-pix_fmt:v:0", "yuv420p"};
  if (!cover.isEmpty()) {
    const QString coverStream = video ? QStringLiteral("v:1") : QStringLiteral("v:0");
    arguments += {"-c:" + coverStream, "copy", "-disposition:" + coverStream, "attached_pic"};
  }
  for (const QString& tag : tags) arguments += {"-metadata", tag};
  return made(folder.path(name), arguments);
}

QMap<QString, QString> ffprobeTags(const QString& path) {
  const QJsonObject tags =
      ffprobe(path).value(QStringLiteral("format")).toObject().value(QStringLiteral("tags")).toObject();
  QMap<QString, QString> result;
  for (auto tag = tags.begin(); tag != tags.end(); ++tag) result.insert(tag.key().toLower(), tag.value().toString());
  return result;
}

QString ffprobeCoverCodec(const QString& path) {
  for (const QJsonValue& stream : streams(path)) {
    const QJsonObject object = stream.toObject();
    const QJsonObject disposition = object.value(QStringLiteral("disposition")).toObject();
    if (disposition.value(QStringLiteral("attached_pic")).toInt() == 1) {
      return object.value(QStringLiteral("codec_name")).toString();
    }
  }
  return {};
}

QString ffprobeFirstCodec(const QString& path) {
  const QJsonArray all = streams(path);
  return all.isEmpty() ? QString() : all.first().toObject().value(QStringLiteral("codec_name")).toString();
}

QByteArray fileBytes(const QString& path) {
  QFile file(path);
  return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

}  // namespace modeltest
