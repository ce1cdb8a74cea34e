#include "MediaProperties.h"

#include <QCoreApplication>
#include <QDir>
#include <QFileInfo>

#include <algorithm>

#include "Action/MediaItemSummary.h"
#include "CommonClass/CommonClass.h"
#include "videoconverter.h"

namespace {

QString tr(const char* text) { return QCoreApplication::translate("MediaProperties", text); }

void addRow(PropertySection& section, const char* label, const QString& value) {
  if (!value.isEmpty()) section.rows.append({tr(label), value});
}

QString yesOrNo(bool yes) { return yes ? tr("Yes") : tr("No"); }

QString codecName(int32_t codecId) { return QString::fromUtf8(VideoConverter_GetCodecName(codecId)); }

QString frameRate(const DECODER_INFO& probed) {
  if (probed.m_FrameRateNum <= 0 || probed.m_FrameRateDen <= 0) return {};
  const double rate = static_cast<double>(probed.m_FrameRateNum) / probed.m_FrameRateDen;
  return tr("%1 frames per second").arg(QString::number(rate, 'g', 5));
}

PropertySection fileSection(const NodeInfo& item, const DECODER_INFO& probed) {
  PropertySection file{tr("File"), {}};
  const QFileInfo path(item.inputFilename());
  addRow(file, "Name", path.fileName());
  addRow(file, "Folder", QDir::toNativeSeparators(path.absolutePath()));
  addRow(file, "Size", MediaItemSummary::sizeText(static_cast<double>(CommonClass::getFileSizeByBytes(path.filePath()))));
  addRow(file, "Length", CommonClass::formatTimeForDouble(probed.m_Duration / 1e6));
  addRow(file, "Seekable", yesOrNo(probed.m_Seekable != 0));
  return file;
}

PropertySection pictureSection(const DECODER_INFO& probed) {
  PropertySection picture{tr("Picture"), {}};
  addRow(picture, "Codec", codecName(probed.m_VideoFormat));
  addRow(picture, "Size", QStringLiteral("%1x%2").arg(probed.m_Width).arg(probed.m_Height));
  if (probed.m_CodecWidth != probed.m_Width || probed.m_CodecHeight != probed.m_Height) {
    addRow(picture, "Stored size", QStringLiteral("%1x%2").arg(probed.m_CodecWidth).arg(probed.m_CodecHeight));
  }
  addRow(picture, "Frame rate", frameRate(probed));
  addRow(picture, "Interlaced", yesOrNo(probed.m_Can_Deinterlace != 0));
  return picture;
}

PropertySection soundSection(const DECODER_INFO& probed, int index) {
  const AudioStremInfo& stream = probed.m_AudioStreamInfo[index];
  QString title = tr("Audio stream %1").arg(index + 1);
  if (index == probed.m_defaultAudioStream) title += tr(" (default)");
  PropertySection sound{title, {}};
  addRow(sound, "Name", QString::fromUtf8(stream.m_audioStreamName));
  addRow(sound, "Codec", codecName(stream.m_AudioFormat));
  if (stream.m_SampleRate > 0) addRow(sound, "Sample rate", tr("%1 Hz").arg(stream.m_SampleRate));
  if (stream.m_nChannel > 0) addRow(sound, "Channels", QString::number(stream.m_nChannel));
  if (stream.m_BitsPerSample > 0) addRow(sound, "Bits per sample", QString::number(stream.m_BitsPerSample));
  if (stream.m_bAudioStream == 0) addRow(sound, "Playable", yesOrNo(false));
  return sound;
}

PropertySection tagSection(const MediaMetaData& tags) {
  PropertySection section{tr("Tags"), {}};
  addRow(section, "Title", tags.title());
  addRow(section, "Artist", tags.artist());
  addRow(section, "Album", tags.album());
  addRow(section, "Year", tags.year());
  addRow(section, "Genre", tags.genre());
  addRow(section, "Comment", tags.comment());
  return section;
}

}  // namespace

QList<PropertySection> mediaPropertiesOf(const NodeInfo& item) {
  const DECODER_INFO& probed = *item.decoderInfo();
  QList<PropertySection> sections{fileSection(item, probed)};
  if (probed.m_bVideoStream > 0) sections.append(pictureSection(probed));
  const int streams = std::clamp(probed.m_AudioSteamCnt, 0, VC_MAX_AUDIO_STREAMS);
  for (int index = 0; index < streams; ++index) sections.append(soundSection(probed, index));
  if (PropertySection tags = tagSection(item.orgMetaData()); !tags.rows.isEmpty()) sections.append(tags);
  return sections;
}
