#include "AddMetaDataAction.h"

#include <QFileInfo>

#include <cstdio>
#include <cstring>

#include "CommonClass/KMVLog.h"

namespace {

constexpr int32_t kTextKeysBeforeNumbers[] = {
    METADATA_KEY_TITLE,    METADATA_KEY_COMMENT, METADATA_KEY_ARTIST,       METADATA_KEY_GENRE,
    METADATA_KEY_COMPOSER, METADATA_KEY_ALBUM,   METADATA_KEY_ALBUM_ARTIST, METADATA_KEY_IMAGE,
};
constexpr int32_t kTextKeysAfterNumbers[] = {
    METADATA_KEY_GROUPING,   METADATA_KEY_YEAR,          METADATA_KEY_TV_SHOW_NAME, METADATA_KEY_TV_SEASON,
    METADATA_KEY_TV_EPISODE, METADATA_KEY_TV_EPISODE_ID, METADATA_KEY_DESCRIPTION,
};

// The UTF-8 bytes of `text` that fit a value with its terminating zero,
// cut at a character boundary.
QByteArray boundedUtf8(const QString& text) {
  QByteArray bytes = text.toUtf8();
  if (bytes.size() < METADATA_VALUE_SIZE) return bytes;
  qsizetype end = METADATA_VALUE_SIZE - 1;
  while (end > 0 && (static_cast<unsigned char>(bytes.at(end)) & 0xC0) == 0x80) --end;
  bytes.truncate(end);
  return bytes;
}

MetaDataItem& appendEntry(MetaDataInfo& info, int32_t key) {
  MetaDataItem& item = info.items[info.count++];
  item.key = key;
  return item;
}

void appendText(MetaDataInfo& info, int32_t key, const QString& text) {
  if (text.isEmpty()) return;
  const QByteArray bytes = boundedUtf8(text);
  std::memcpy(appendEntry(info, key).value, bytes.constData(), static_cast<size_t>(bytes.size()));
}

// "N", then "/TOTAL" when the total is at least N. The total is put from the
// second byte on, over the current number's other digits: 12 of 20 becomes
// "1/20". Files written so far carry numbers in this form, so it is kept.
void appendNumberPair(MetaDataInfo& info, int32_t key, int32_t current, int32_t total) {
  if (current <= 0) return;
  char* value = appendEntry(info, key).value;
  std::snprintf(value, METADATA_VALUE_SIZE, "%d", current);
  if (total > 0 && total >= current) std::snprintf(value + 1, METADATA_VALUE_SIZE - 1, "/%d", total);
}

// "<path without extension>_<index>.<extension>".
QString partPath(const QString& outputPath, int32_t index) {
  const QFileInfo output(outputPath);
  const QString suffix = output.suffix();
  const QString stem = suffix.isEmpty() ? outputPath : outputPath.left(outputPath.size() - suffix.size() - 1);
  return QStringLiteral("%1_%2.%3").arg(stem, QString::number(index), suffix);
}

}  // namespace

std::unique_ptr<MetaDataInfo> AddMetaDataAction::makeDataInfos(const MediaMetaData& tags) {
  auto info = std::make_unique<MetaDataInfo>();  // value-initialised: all zero
  for (int32_t key : kTextKeysBeforeNumbers) appendText(*info, key, tags.text(key));
  appendNumberPair(*info, METADATA_KEY_TRACK, tags.curTrackNum(), tags.totalTrackNum());
  appendNumberPair(*info, METADATA_KEY_DISK, tags.curDiskNum(), tags.totalDiskNum());
  for (int32_t key : kTextKeysAfterNumbers) appendText(*info, key, tags.text(key));
  return info;
}

int32_t AddMetaDataAction::getNodeSplitNum(const NodeInfo& node) {
  if (node.VideoMinutes() > 0 && node.splitRow() != 1) {
    return node.mediaFileInfo().iTotalTime() / (node.VideoMinutes() * 60) + 1;
  }
  return node.videoClips() > 1 ? node.videoClips() + 1 : 1;
}

QStringList AddMetaDataAction::outputFiles(const NodeInfo& node, const QString& outputPath) {
  const int32_t parts = getNodeSplitNum(node);
  if (parts < 2) return {outputPath};
  QStringList files;
  for (int32_t index = 0; index <= parts; ++index) {
    const QString part = partPath(outputPath, index);
    if (!QFileInfo::exists(part)) break;
    files.append(part);
  }
  return files;
}

AddMetaDataResult AddMetaDataAction::addMetaData(const NodeInfo& node, const QString& outputPath) {
  AddMetaDataResult result;
  if (!node.metaEditEnable()) return result;
  const std::unique_ptr<MetaDataInfo> info = makeDataInfos(node.metaData());
  if (info->count == 0) return result;

  for (const QString& file : outputFiles(node, outputPath)) {
    const int32_t code = SetMetaDataInfo(file.toUtf8().constData(), info.get());
    if (code == METADATA_OK) {
      result.writtenFiles.append(file);
    } else {
      result.failures.append({file, code});
      KMVLog::Log(
          QStringLiteral("Write metadata to %1 fail: %2").arg(file, QString::fromUtf8(GetMetaDataErrorText(code))));
    }
  }
  return result;
}
