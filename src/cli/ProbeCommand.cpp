// videoconverter probe FILE... [--json]: probes each file the way adding it
// to the list does and prints its properties, or the reason it cannot be
// added. The exit code is 1 when any file failed.

#include <QDateTime>
#include <QFileInfo>
#include <QJsonArray>
#include <QJsonObject>
#include <QTextStream>

#include "Action/ApplicationLifecycle.h"
#include "MediaClass/MediaFileImporter.h"
#include "Commands.h"
#include "FileReportCommand.h"
#include "CommonClass/CommonClass.h"
#include "MediaClass/PlayVideo.h"

namespace {

struct AudioReport {
  QString name;
  int sampleRate = 0;
  int channels = 0;
};

// What the command prints about one file.
struct ProbeReport {
  QString path;
  int code = 0;
  QString message;
  qint64 durationUs = 0;
  qint64 sizeBytes = 0;
  int width = 0;
  int height = 0;
  double frameRate = 0;
  bool hasVideo = false;
  int defaultAudioStream = -1;
  QList<AudioReport> audioStreams;
  QString thumbnail;
};

ProbeReport probeFile(const QString& path) {
  ProbeReport report;
  report.path = path;
  const QString thumbnail =
      MediaFileImporter::thumbnailPath(path, ApplicationLifecycle::timeStampUTC8(QDateTime::currentDateTimeUtc()));
  PlayVideo probe;
  report.code = probe.getMediaInfo(path, thumbnail);
  if (report.code != 0) {
    report.message = probe.message().isEmpty() ? QStringLiteral("No file given.") : probe.message();
    return report;
  }
  const DECODER_INFO* info = probe.decoderInfo();
  report.durationUs = info->m_Duration;
  report.sizeBytes = CommonClass::getFileSizeByBytes(path);
  report.width = probe.getWidth();
  report.height = probe.getHeight();
  report.hasVideo = probe.videoStream() != 0;
  if (report.hasVideo && info->m_FrameRateDen > 0) {
    report.frameRate = static_cast<double>(info->m_FrameRateNum) / info->m_FrameRateDen;
  }
  report.defaultAudioStream = probe.getDefaultAudioStream();
  for (int index = 0; index < probe.getAudioSteamCnt(); ++index) {
    const AudioStremInfo& stream = probe.getAudioStreamInfo()[index];
    report.audioStreams.append({QString::fromUtf8(stream.m_audioStreamName), stream.m_SampleRate, stream.m_nChannel});
  }
  if (!thumbnail.isEmpty() && QFileInfo::exists(thumbnail)) report.thumbnail = thumbnail;
  return report;
}

QJsonObject toJson(const ProbeReport& report) {
  QJsonObject object{{QStringLiteral("file"), report.path}};
  if (report.code != 0) {
    object.insert(QStringLiteral("error"), report.message);
    object.insert(QStringLiteral("code"), report.code);
    return object;
  }
  QJsonArray streams;
  for (const AudioReport& stream : report.audioStreams) {
    streams.append(QJsonObject{{QStringLiteral("name"), stream.name},
                               {QStringLiteral("sample_rate"), stream.sampleRate},
                               {QStringLiteral("channels"), stream.channels}});
  }
  object.insert(QStringLiteral("duration_us"), report.durationUs);
  object.insert(QStringLiteral("size_bytes"), report.sizeBytes);
  object.insert(QStringLiteral("width"), report.width);
  object.insert(QStringLiteral("height"), report.height);
  object.insert(QStringLiteral("frame_rate"), report.frameRate);
  object.insert(QStringLiteral("has_video"), report.hasVideo);
  object.insert(QStringLiteral("default_audio_stream"), report.defaultAudioStream);
  object.insert(QStringLiteral("audio_streams"), streams);
  object.insert(QStringLiteral("thumbnail"), report.thumbnail.isEmpty() ? QJsonValue() : QJsonValue(report.thumbnail));
  return object;
}

void printText(QTextStream& out, QTextStream& err, const ProbeReport& report) {
  if (report.code != 0) {
    err << report.path << Qt::endl << "  " << report.message << Qt::endl;
    return;
  }
  const auto row = [&out](const char* label, const QString& value) {
    out << QStringLiteral("  %1 %2").arg(QLatin1String(label), -16).arg(value) << Qt::endl;
  };
  out << report.path << Qt::endl;
  row("Duration:", QStringLiteral("%1 (%2 us)")
                       .arg(CommonClass::formatTimeForDouble(report.durationUs / 1000000.0))
                       .arg(report.durationUs));
  row("Size:", QStringLiteral("%1 bytes").arg(report.sizeBytes));
  row("Video:", report.hasVideo
                    ? QStringLiteral("%1x%2, %3 fps").arg(report.width).arg(report.height).arg(report.frameRate)
                    : QStringLiteral("none"));
  row("Audio streams:", QString::number(report.audioStreams.size()));
  for (int index = 0; index < report.audioStreams.size(); ++index) {
    const AudioReport& stream = report.audioStreams.at(index);
    out << QStringLiteral("    %1%2: %3, %4 Hz, %5 channels")
               .arg(index == report.defaultAudioStream ? QStringLiteral("*") : QStringLiteral(" "))
               .arg(index)
               .arg(stream.name)
               .arg(stream.sampleRate)
               .arg(stream.channels)
        << Qt::endl;
  }
  row("Thumbnail:", report.thumbnail.isEmpty() ? QStringLiteral("none") : report.thumbnail);
}

}  // namespace

int runProbeCommand(const QStringList& arguments) {
  static const FileReportCommand<ProbeReport> command{
      "probe", probeFile, [](const ProbeReport& report) { return report.code != 0; }, toJson, printText};
  return command.run(arguments);
}
