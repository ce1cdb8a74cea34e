#include "MediaItemSummary.h"

#include <array>

#include "CommonClass/CommonClass.h"
#include "Profile/KMVProfileCatalog.h"

namespace {

constexpr const char* kNoAudio = "No audio";

double lengthShown(const NodeInfo& node) {
  const TrimSettingInfo& trim = node.trimSettingInfo();
  if (trim.endTime() > trim.startTime()) return trim.endTime() - trim.startTime();
  return node.mediaFileInfo().dTotalTime();
}

// A merge group sums its files' sizes in kilobytes.
double bytesOf(const NodeInfo& node) {
  const double size = node.mediaFileInfo().size();
  return node.type() == NodeInfo::kTypeMerged ? size * 1024 : size;
}

}  // namespace

QString MediaItemSummary::sizeText(double bytes) {
  static constexpr std::array<const char*, 4> kUnits{"KB", "MB", "GB", "TB"};
  if (bytes < 1024) return QStringLiteral("%1 B").arg(static_cast<qint64>(bytes));
  double value = bytes / 1024;
  size_t unit = 0;
  while (value >= 1024 && unit + 1 < kUnits.size()) {
    value /= 1024;
    ++unit;
  }
  return QStringLiteral("%1 %2").arg(value, 0, 'f', value < 10 ? 2 : 1).arg(QLatin1String(kUnits[unit]));
}

MediaItemSummary MediaItemSummary::of(const NodeInfo& node) {
  const MediaFileInfo& media = node.mediaFileInfo();
  MediaItemSummary summary;
  summary.name = node.outputFilename();
  summary.duration = CommonClass::formatTimeForDouble(lengthShown(node));
  summary.hasVideo = media.frameWidth() > 0 && media.frameHeight() > 0;
  if (summary.hasVideo) summary.resolution = QStringLiteral("%1x%2").arg(media.frameWidth()).arg(media.frameHeight());
  summary.size = sizeText(bytesOf(node));
  summary.profileName = node.curProfileSetting().profileName();
  // A profile made from the catalogue leaves its picture in the catalogue's entry.
  summary.profileImage = node.curProfileSetting().imageName();
  if (summary.profileImage.isEmpty()) {
    if (const auto entry = KMVProfileCatalog::sharedCatalog().profileNamed(summary.profileName)) {
      summary.profileImage = entry->imageName;
    }
  }
  summary.childCount = node.getChildNodeCount();
  // Adding keeps the thumbnail's path only when the picture was made.
  summary.thumbnailPath = media.imageName();

  const MediaFileInfo::AudioStreamList& streams = media.arrAudioStream();
  if (!streams.isEmpty()) {
    summary.audioStreams.append(QLatin1String(kNoAudio));
    for (const auto& stream : streams) summary.audioStreams.append(stream->audioStreamName());
    const int32_t selected = node.selectAudioStream();
    summary.selectedAudio = selected >= 0 && selected < streams.size() ? selected + 1 : 0;
  }
  return summary;
}

int32_t MediaItemSummary::streamForChoice(const NodeInfo& node, int choice) {
  const MediaFileInfo::AudioStreamList& streams = node.mediaFileInfo().arrAudioStream();
  if (choice <= 0 || choice > streams.size()) return -1;
  return choice - 1;
}
