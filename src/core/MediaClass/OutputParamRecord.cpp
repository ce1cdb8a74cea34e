#include "OutputParamRecord.h"

#include <QFileInfo>

#include <cstring>
#include <utility>

#include "MediaClass/OutputResolution.h"
#include "MediaClass/RecordFields.h"

namespace OutputParamRecord {

namespace {

constexpr int64_t kMicrosecondsPerSecond = 1000000;
constexpr int32_t kBitsPerSample = 16;

// A profile name and the field it goes into, for the length check.
QString nameTooLong(const char* what, const QString& name, std::size_t fieldSize) {
  if (RecordFields::fitsTerminated(name.toUtf8(), fieldSize)) return {};
  return QStringLiteral("The profile's %1 name is longer than the converter takes (at most %2 bytes): %3")
      .arg(QLatin1String(what))
      .arg(fieldSize - 1)
      .arg(name);
}

}  // namespace

FrameRate frameRate(double framesPerSecond) {
  // Exact comparisons: these are the values the profile catalogue lists.
  if (framesPerSecond == 23.97) return {24000, 1001};
  if (framesPerSecond == 29.97) return {30000, 1001};
  if (framesPerSecond <= 0) return {30, 1};
  if (framesPerSecond == 59.94) return {60000, 1001};
  return {static_cast<int32_t>(framesPerSecond), 1};
}

int64_t segmentLengthUs(const NodeInfo& node) {
  int64_t seconds = 0;
  if (node.VideoMinutes() > 0 && node.splitRow() != 1) {
    seconds = node.VideoMinutes() * 60;
  } else if (node.videoClips() >= 2) {
    const int32_t total = node.mediaFileInfo().iTotalTime();
    const int32_t quotient = total / node.videoClips();
    // A file shorter than one second per clip stays whole.
    if (quotient > 0) seconds = total % quotient != 0 ? quotient + 1 : quotient;
  }
  return seconds * kMicrosecondsPerSecond;
}

QString freeOutputPath(const QString& folder, const QString& name, const QString& extension, bool cutIntoPieces) {
  const auto taken = [cutIntoPieces](const QString& path) {
    return QFileInfo::exists(path) || (cutIntoPieces && QFileInfo::exists(piecePath(path, 0)));
  };
  QString path = QStringLiteral("%1/%2.%3").arg(folder, name, extension);
  for (int number = 0; taken(path); ++number) {
    path = QStringLiteral("%1/%2(%3).%4").arg(folder, name, QString::number(number), extension);
  }
  return path;
}

QString piecePath(const QString& outputPath, int index) {
  const QFileInfo output(outputPath);
  return QStringLiteral("%1/%2_%3.%4")
      .arg(output.path(), output.completeBaseName(), QString::number(index), output.suffix());
}

QStringList writtenFiles(const QString& outputPath) {
  if (QFileInfo::exists(outputPath)) return {outputPath};
  QStringList pieces;
  for (int index = 0; QFileInfo::exists(piecePath(outputPath, index)); ++index) pieces.append(piecePath(outputPath, index));
  return pieces;
}

QString whyRefused(const NodeInfo& node, const QString& outputPath) {
  constexpr std::size_t kPathBytes = sizeof(OutputParam::m_FileName);
  const QByteArray path = outputPath.toUtf8();
  if (!RecordFields::fitsTerminated(path, kPathBytes)) {
    return QStringLiteral("The output path is longer than the converter takes (%1 bytes, at most %2): %3")
        .arg(path.size())
        .arg(kPathBytes - 1)
        .arg(outputPath);
  }
  const ProfileSettingInfo& profile = node.curProfileSetting();
  for (const auto& [what, name] :
       {std::pair{"container", profile.format()}, std::pair{"video encoder", profile.videoEncoder()},
        std::pair{"audio encoder", profile.audioEncoder()}}) {
    if (QString reason = nameTooLong(what, name, sizeof(OutputParam::m_Format)); !reason.isEmpty()) return reason;
  }
  return {};
}

void fill(const NodeInfo& node, const QString& outputPath, OutputParam& param) {
  const ProfileSettingInfo& profile = node.curProfileSetting();
  std::memset(&param, 0, sizeof param);
  param.m_cbsize = VC_OUTPUT_PARAM_SIZE;
  RecordFields::copyTerminated(param.m_FileName, outputPath.toUtf8());
  RecordFields::copyTerminated(param.m_Format, profile.format().toUtf8());
  // The format options, the reserved fields and those at 596 and 600 stay zero.
  param.m_Device = profile.device();
  param.m_Type = profile.type();
  param.m_SegmentLength = segmentLengthUs(node);
  param.m_SampleAspectNum = 1;
  param.m_SampleAspectDen = 1;

  if (profile.type() == ProfileSettingInfo::kTypeVideo) {
    RecordFields::copyTerminated(param.m_VideoEncoder, profile.videoEncoder().toUtf8());
    param.m_VideoBitrate = profile.videoBitrate();
    const FrameRate rate = frameRate(profile.videoFrameRate());
    param.m_FrameRateNum = rate.numerator;
    param.m_FrameRateDen = rate.denominator;
    const QSizeF size = OutputResolution::forNode(node);
    param.m_Width = static_cast<int32_t>(size.width());
    param.m_Height = static_cast<int32_t>(size.height());
  }

  param.m_VideoQuality = profile.videoQuality();
  RecordFields::copyTerminated(param.m_AudioEncoder, profile.audioEncoder().toUtf8());
  param.m_AudioBitrate = profile.audioBitrate();
  param.m_SampleRate = profile.audioSampleRate();
  param.m_Channels = profile.audioChannels();
  param.m_BitsPerSample = kBitsPerSample;
}

}  // namespace OutputParamRecord
