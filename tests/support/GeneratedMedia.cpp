#include "GeneratedMedia.h"

#include <QCoreApplication>
#include <QCryptographicHash>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QProcess>
#include <QSet>

#include <functional>

#include <gtest/gtest.h>

namespace testmedia {

namespace {

// Generous: a program that takes this long is stuck, not slow.
constexpr int kStuckMs = 120000;

QString seconds(double value) { return QString::number(value, 'f', 3); }

QString stillPicture(const QString& format) {
  return made("still." + format, source(QStringLiteral("testsrc=size=64x48")) + QStringList{"-frames:v", "1"});
}

bool carriesPicture(const QString& name) {
  static const QStringList pictureContainers{"mp4", "mov", "m4v", "mkv"};
  return pictureContainers.contains(QFileInfo(name).suffix().toLower());
}

}  // namespace

QStringList source(const QString& graph) { return {"-f", "lavfi", "-i", graph}; }

QStringList picture(double length, const QString& size, int rate) {
  return source(QStringLiteral("testsrc=size=%1:rate=%2:duration=%3").arg(size).arg(rate).arg(seconds(length)));
}

QStringList tone(double length, int frequency, int sampleRate) {
  return source(QStringLiteral("sine=frequency=%1:sample_rate=%2:duration=%3")
                    .arg(frequency)
                    .arg(sampleRate)
                    .arg(seconds(length)));
}

QString made(const QString& name, const QStringList& arguments) {
  const QString folder = QStringLiteral(TEST_MEDIA_CACHE);
  const QString fingerprint =
      QCryptographicHash::hash(arguments.join(QLatin1Char('\n')).toUtf8(), QCryptographicHash::Sha1).toHex().left(12);
  const QString target = folder + QLatin1Char('/') + fingerprint + QLatin1Char('-') + name;
  if (QFileInfo::exists(target)) return target;
  QDir().mkpath(folder);
  // Made under a name of this process and renamed, so that a process beside
  // this one never sees half a file.
  const QString part =
      QStringLiteral("%1/.part-%2-%3-%4").arg(folder).arg(QCoreApplication::applicationPid()).arg(fingerprint, name);
  const QString error = runFfmpeg(arguments + QStringList{part});
  if (error.isEmpty() && (QFile::rename(part, target) || QFileInfo::exists(target))) {
    QFile::remove(part);
    return target;
  }
  QFile::remove(part);
  ADD_FAILURE() << "ffmpeg could not make " << name.toStdString() << ": " << error.toStdString();
  return {};
}

namespace {

// The files that `ffmpeg <recipe> <outputs(folder)>` writes into a folder of
// the cache named after the recipe and `kind`, made once like made(): the
// folder, empty when ffmpeg fails.
QString madeFolder(const QString& kind, const QStringList& recipe, const QString& mainFile,
                   const std::function<QStringList(const QString&)>& outputs) {
  const QString folder = QStringLiteral(TEST_MEDIA_CACHE);
  const QString fingerprint =
      QCryptographicHash::hash(recipe.join(QLatin1Char('\n')).toUtf8(), QCryptographicHash::Sha1).toHex().left(12);
  const QString target = QStringLiteral("%1/%2-%3").arg(folder, fingerprint, kind);
  if (QFileInfo::exists(target + QLatin1Char('/') + mainFile)) return target;
  // Made in a folder of this process and renamed, as made() does with files.
  const QString part =
      QStringLiteral("%1/.part-%2-%3-%4").arg(folder).arg(QCoreApplication::applicationPid()).arg(fingerprint, kind);
  QDir(part).removeRecursively();
  QDir().mkpath(part);
  const QString error = runFfmpeg(recipe + outputs(part));
  if (error.isEmpty() && (QDir().rename(part, target) || QFileInfo::exists(target + QLatin1Char('/') + mainFile))) {
    QDir(part).removeRecursively();
    return target;
  }
  QDir(part).removeRecursively();
  ADD_FAILURE() << "ffmpeg could not make a " << kind.toStdString() << " stream: " << error.toStdString();
  return {};
}

QStringList streamRecipe(double length) {
  return picture(length, QStringLiteral("160x120")) + tone(length) +
         QStringList{"-c:v", "libx264", "-preset", "ultrafast", "-g", "25", "-c:a", "aac"};
}

}  // namespace

QString hlsStream(double length) {
  return madeFolder(QStringLiteral("hls"),
                    streamRecipe(length) +
                        QStringList{"-f", "hls", "-hls_time", "1", "-hls_list_size", "0", "-hls_playlist_type", "vod"},
                    QStringLiteral("stream.m3u8"), [](const QString& folder) {
                      return QStringList{"-hls_segment_filename", folder + QStringLiteral("/segment%d.ts"),
                                         folder + QStringLiteral("/stream.m3u8")};
                    });
}

QString dashStream(double length) {
  return madeFolder(QStringLiteral("dash"),
                    streamRecipe(length) +
                        QStringList{"-f", "dash", "-seg_duration", "1", "-use_template", "1", "-use_timeline", "0"},
                    QStringLiteral("stream.mpd"),
                    [](const QString& folder) { return QStringList{folder + QStringLiteral("/stream.mpd")}; });
}

ProgramOutput run(const QString& program, const QStringList& arguments) {
  QProcess process;
  process.start(program, arguments);
  ProgramOutput output;
  if (!process.waitForStarted(kStuckMs) || !process.waitForFinished(kStuckMs)) {
    output.errors = program.toUtf8() + " did not run to its end: " + process.errorString().toUtf8();
    process.kill();
    process.waitForFinished();
    return output;
  }
  output.output = process.readAllStandardOutput();
  output.errors = process.readAllStandardError();
  if (process.exitStatus() == QProcess::NormalExit) output.exitCode = process.exitCode();
  return output;
}

QString runFfmpeg(const QStringList& arguments) {
  const ProgramOutput output = run(QStringLiteral("ffmpeg"), QStringList{"-nostdin", "-v", "error", "-y"} + arguments);
  if (output.exitCode == 0) return {};
  return output.errors.isEmpty() ? QStringLiteral("ffmpeg failed") : QString::fromUtf8(output.errors);
}

QMap<QString, QString> ffprobe(const QString& path, const QString& section, const QString& selector) {
  QStringList arguments{"-v", "error", "-of", "default=noprint_wrappers=1", "-show_" + section};
  if (!selector.isEmpty()) arguments += {"-select_streams", selector};
  QMap<QString, QString> fields;
  for (const QString& line : QString::fromUtf8(run(QStringLiteral("ffprobe"), arguments << path).output).split('\n')) {
    const qsizetype equals = line.indexOf(QLatin1Char('='));
    if (equals > 0 && !fields.contains(line.left(equals))) fields.insert(line.left(equals), line.mid(equals + 1));
  }
  return fields;
}

double duration(const QString& path) { return ffprobe(path).value(QStringLiteral("duration")).toDouble(); }

int streamCount(const QString& path, const QString& type) {
  const QByteArray listed = run(QStringLiteral("ffprobe"),
                                {"-v", "error", "-show_entries", "stream=index,codec_type", "-of", "csv=p=0", path})
                                .output;
  // A transport stream lists its streams under their program too, hence the set.
  QSet<QByteArray> indexes;
  for (const QByteArray& line : listed.split('\n')) {
    const QList<QByteArray> fields = line.split(',');
    if (fields.size() > 1 && fields[1] == type.toUtf8()) indexes.insert(fields[0]);
  }
  return static_cast<int>(indexes.size());
}

QMap<QString, QString> tags(const QString& path) {
  QMap<QString, QString> found;
  // Containers such as Ogg keep their tags with the sound stream, not the file.
  for (const QMap<QString, QString>& fields : {ffprobe(path), ffprobe(path, QStringLiteral("streams"), "a:0")}) {
    for (auto field = fields.begin(); field != fields.end(); ++field) {
      const QString key = field.key().mid(4).toLower();
      if (field.key().startsWith(QLatin1String("TAG:")) && !found.contains(key)) found.insert(key, field.value());
    }
  }
  return found;
}

QString Folder::clip(const QString& name, double length, int audioStreams, const QString& size) const {
  QStringList arguments = picture(length, size);
  for (int stream = 0; stream < audioStreams; ++stream) arguments += tone(length, 440 + 220 * stream);
  for (int input = 0; input <= audioStreams; ++input) arguments += {"-map", QString::number(input)};
  arguments += {"-pix_fmt", "yuv420p"};
  return copy(made("clip." + QFileInfo(name).suffix(), arguments), name);
}

QString Folder::audio(const QString& name, double length) const {
  return copy(made("tone." + QFileInfo(name).suffix(), tone(length) + QStringList{"-ac", "2"}), name);
}

QString Folder::still(const QString& name) const { return copy(stillPicture(QFileInfo(name).suffix()), name); }

QString Folder::tagged(const QString& name, const QStringList& tags, const QString& coverFormat) const {
  const bool video = carriesPicture(name);
  const QString cover = coverFormat.isEmpty() ? QString() : stillPicture(coverFormat);
  QStringList arguments = video ? picture(1, QStringLiteral("160x120")) : QStringList();
  arguments += tone(1);
  if (!cover.isEmpty()) arguments += {"-i", cover};
  const int inputs = (video ? 2 : 1) + (cover.isEmpty() ? 0 : 1);
  for (int input = 0; input < inputs; ++input) arguments += {"-map", QString::number(input)};
  if (video) arguments += {"-pix_fmt:v:0", "yuv420p"};
  if (!cover.isEmpty()) {
    const QString coverStream = video ? QStringLiteral("v:1") : QStringLiteral("v:0");
    arguments += {"-c:" + coverStream, "copy", "-disposition:" + coverStream, "attached_pic"};
  }
  for (const QString& tag : tags) arguments += {"-metadata", tag};
  return copy(made("tagged." + QFileInfo(name).suffix(), arguments), name);
}

QString Folder::copy(const QString& source, const QString& name) const {
  const QString target = path(name);
  QFile::remove(target);
  if (source.isEmpty() || !QFile::copy(source, target)) {
    ADD_FAILURE() << "cannot copy " << source.toStdString() << " to " << target.toStdString();
    return {};
  }
  return target;
}

QString Folder::write(const QString& name, const QByteArray& bytes) const {
  QFile file(path(name));
  if (!file.open(QIODevice::WriteOnly) || file.write(bytes) != bytes.size()) {
    ADD_FAILURE() << "cannot write " << file.fileName().toStdString();
    return {};
  }
  return file.fileName();
}

QByteArray Folder::read(const QString& name) const {
  QFile file(path(name));
  return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

}  // namespace testmedia
