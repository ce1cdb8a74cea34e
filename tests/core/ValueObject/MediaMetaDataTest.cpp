// Tags read into a node's tag object: the record's reading rules.
#include <gtest/gtest.h>

#include <cstring>
#include <limits>
#include <utility>
#include <vector>

#include "ValueObject/IntValue.h"
#include "ValueObject/MediaMetaData.h"
#include "ValueObject/NodeInfo.h"

namespace {

using Entries = std::vector<std::pair<int32_t, const char*>>;

std::unique_ptr<MetaDataInfo> record(const Entries& entries) {
  auto info = std::make_unique<MetaDataInfo>();
  for (const auto& [key, value] : entries) {
    MetaDataItem& item = info->items[info->count++];
    item.key = key;
    std::strncpy(item.value, value, sizeof item.value - 1);
  }
  return info;
}

MediaMetaData read(const Entries& entries) {
  MediaMetaData tags;
  tags.getValueFromDataInfos(*record(entries));
  return tags;
}

TEST(ReadingTheTagRecord, EachKeyLandsInItsOwnField) {
  Entries entries;
  const std::vector<int32_t> textKeys{1, 2, 3, 4, 5, 6, 7, 8, 9, 12, 13, 14, 15, 16, 17, 18};
  std::vector<QByteArray> values;
  for (int32_t key : textKeys) values.push_back(QStringLiteral("é %1").arg(key).toUtf8());
  for (size_t index = 0; index < textKeys.size(); ++index) entries.emplace_back(textKeys[index], values[index].data());
  const MediaMetaData tags = read(entries);

  const QStringList fields{tags.title(),    tags.comment(),   tags.artist(),      tags.genre(),
                           tags.genres(),   tags.composer(),  tags.album(),       tags.albumArtist(),
                           tags.image(),    tags.grouping(),  tags.year(),        tags.tvShowName(),
                           tags.tvSeason(), tags.tvEpisode(), tags.tvEpisodeId(), tags.metaDescription()};
  QStringList expected;
  for (int32_t key : textKeys) expected.append(QStringLiteral("é %1").arg(key));
  EXPECT_EQ(fields, expected);
  EXPECT_EQ(tags.curTrackNum() + tags.totalTrackNum() + tags.curDiskNum() + tags.totalDiskNum(), 0);
}

TEST(ReadingTheTagRecord, TrackAndDiscSplitAtTheSlashALoneNumberKeepsTheTotalAndNumbersClamp) {
  MediaMetaData tags = read({{10, "3/12"}, {11, "1/2"}});
  EXPECT_EQ(std::pair(tags.curTrackNum(), tags.totalTrackNum()), std::pair(3, 12));
  EXPECT_EQ(std::pair(tags.curDiskNum(), tags.totalDiskNum()), std::pair(1, 2));

  tags.getValueFromDataInfos(*record({{10, "5"}, {11, "1/2/3"}}));
  EXPECT_EQ(std::pair(tags.curTrackNum(), tags.totalTrackNum()), std::pair(5, 12)) << "a lone number keeps the total";
  EXPECT_EQ(std::pair(tags.curDiskNum(), tags.totalDiskNum()), std::pair(1, 2)) << "three parts are ignored";

  tags = read({{10, " 07 / 9 tracks"}, {11, "two/three"}});
  EXPECT_EQ(std::pair(tags.curTrackNum(), tags.totalTrackNum()), std::pair(7, 9));
  EXPECT_EQ(std::pair(tags.curDiskNum(), tags.totalDiskNum()), std::pair(0, 0));

  EXPECT_EQ(intValue(QStringLiteral("42")), 42);
  EXPECT_EQ(intValue(QStringLiteral("  +17abc")), 17);
  EXPECT_EQ(intValue(QStringLiteral("-3/5")), -3);
  EXPECT_EQ(intValue(QStringLiteral("abc")), 0);
  EXPECT_EQ(intValue(QString()), 0);
  EXPECT_EQ(intValue(QStringLiteral("99999999999999999999")), std::numeric_limits<int32_t>::max());
  EXPECT_EQ(intValue(QStringLiteral("-99999999999999999999")), std::numeric_limits<int32_t>::min());
}

TEST(ReadingTheTagRecord, LaterEntriesWinUnknownKeysAndSpareEntriesAreIgnoredAndFullFieldsDoNotRunOver) {
  auto info = record({{1, "First"}, {19, "Not a tag"}, {0, "Nor this"}, {1, "Second"}, {10, "4/8"}, {10, "6"}});
  MetaDataItem& beyondCount = info->items[info->count];
  beyondCount.key = METADATA_KEY_ARTIST;
  std::strcpy(beyondCount.value, "outside the count");

  MediaMetaData tags;
  tags.getValueFromDataInfos(*info);
  EXPECT_EQ(tags.title(), QStringLiteral("Second"));
  EXPECT_EQ(std::pair(tags.curTrackNum(), tags.totalTrackNum()), std::pair(6, 8));
  EXPECT_TRUE(tags.artist().isEmpty());

  MediaMetaData onlyTitle;
  onlyTitle.setTitle(QStringLiteral("Second"));
  onlyTitle.setCurTrackNum(6);
  onlyTitle.setTotalTrackNum(8);
  EXPECT_EQ(tags, onlyTitle) << "keys 0 and 19 changed no field";

  // A value that fills its whole field is read without running over.
  info = record({{1, ""}, {3, "Next entry"}});
  std::memset(info->items[0].value, 'x', sizeof info->items[0].value);
  tags.getValueFromDataInfos(*info);
  EXPECT_EQ(tags.title(), QString(METADATA_VALUE_SIZE, QLatin1Char('x')));
  EXPECT_EQ(tags.artist(), QStringLiteral("Next entry"));
}

TEST(NodeTags, ACopiedNodeCarriesBothTagObjectsAndSharesNeither) {
  const NodeInfo::Ptr node = NodeInfo::create();
  MediaMetaData read;
  read.setTitle(QStringLiteral("As read"));
  read.setCurTrackNum(4);
  MediaMetaData edited = read;
  edited.setTitle(QStringLiteral("Edited"));
  node->setOrgMetaData(read);
  node->setMetaData(edited);

  const NodeInfo::Ptr copy = node->copy();
  EXPECT_EQ(copy->metaData(), edited);
  EXPECT_EQ(copy->orgMetaData(), read);
  copy->metaData().setArtist(QStringLiteral("Only in the copy"));
  EXPECT_TRUE(node->metaData().artist().isEmpty());
}

}  // namespace
