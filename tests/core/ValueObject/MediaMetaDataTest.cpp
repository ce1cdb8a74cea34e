// Tags read into a node's tag object: the record's reading rules, and real
// files made by ffmpeg read through the tag library.
#include <gtest/gtest.h>

#include <QFileInfo>

#include <cstring>
#include <limits>
#include <utility>
#include <vector>

#include "ValueObject/IntValue.h"
#include "ValueObject/MediaMetaData.h"
#include "ValueObject/NodeInfo.h"
#include "support/TaggedMedia.h"

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

TEST(ReadingTheTagRecord, TrackAndDiscSplitAtTheSlashAndALoneNumberKeepsTheTotal) {
  MediaMetaData tags = read({{10, "3/12"}, {11, "1/2"}});
  EXPECT_EQ(std::pair(tags.curTrackNum(), tags.totalTrackNum()), std::pair(3, 12));
  EXPECT_EQ(std::pair(tags.curDiskNum(), tags.totalDiskNum()), std::pair(1, 2));

  tags.getValueFromDataInfos(*record({{10, "5"}, {11, "1/2/3"}}));
  EXPECT_EQ(std::pair(tags.curTrackNum(), tags.totalTrackNum()), std::pair(5, 12)) << "a lone number keeps the total";
  EXPECT_EQ(std::pair(tags.curDiskNum(), tags.totalDiskNum()), std::pair(1, 2)) << "three parts are ignored";

  tags = read({{10, " 07 / 9 tracks"}, {11, "two/three"}});
  EXPECT_EQ(std::pair(tags.curTrackNum(), tags.totalTrackNum()), std::pair(7, 9));
  EXPECT_EQ(std::pair(tags.curDiskNum(), tags.totalDiskNum()), std::pair(0, 0));
}

TEST(ReadingTheTagRecord, LaterEntriesWinAndUnknownKeysAndSpareEntriesAreIgnored) {
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
}

TEST(ReadingTheTagRecord, AValueFillingItsWholeFieldIsReadWithoutRunningOver) {
  auto info = record({{1, ""}, {3, "Next entry"}});
  std::memset(info->items[0].value, 'x', sizeof info->items[0].value);
  MediaMetaData tags;
  tags.getValueFromDataInfos(*info);
  EXPECT_EQ(tags.title(), QString(METADATA_VALUE_SIZE, QLatin1Char('x')));
  EXPECT_EQ(tags.artist(), QStringLiteral("Next entry"));
}

TEST(IntegerValueOfText, TakesTheLeadingNumberAndClampsToThirtyTwoBits) {
  EXPECT_EQ(intValue(QStringLiteral("42")), 42);
  EXPECT_EQ(intValue(QStringLiteral("  +17abc")), 17);
  EXPECT_EQ(intValue(QStringLiteral("-3/5")), -3);
  EXPECT_EQ(intValue(QStringLiteral("abc")), 0);
  EXPECT_EQ(intValue(QString()), 0);
  EXPECT_EQ(intValue(QStringLiteral("99999999999999999999")), std::numeric_limits<int32_t>::max());
  EXPECT_EQ(intValue(QStringLiteral("-99999999999999999999")), std::numeric_limits<int32_t>::min());
}

class ReadingAFile : public testing::Test {
 protected:
  modeltest::MediaFolder media;
};

TEST_F(ReadingAFile, TagsAndCoverOfAnMp4AreReadAndTheCoverIsSavedAsAPicture) {
  const QString cover = modeltest::testPicture(media, QStringLiteral("cover.png"));
  const QString clip =
      modeltest::taggedClip(media, QStringLiteral("tagged.mp4"),
                            {"title=Été", "artist=The Band", "album=First", "album_artist=Various", "genre=Jazz",
                             "track=3/12", "disc=2/3", "date=2001", "comment=Made by a test", "composer=Someone"},
                            cover);
  const QString thumbnail = media.path(QStringLiteral("thumbNailtagged.bmp"));

  int32_t code = -1;
  const MediaMetaData tags = MediaMetaData::initWithFile(clip, thumbnail, &code);
  EXPECT_EQ(code, METADATA_OK);
  EXPECT_EQ(tags.title(), QStringLiteral("Été"));
  EXPECT_EQ(tags.artist(), QStringLiteral("The Band"));
  EXPECT_EQ(tags.album(), QStringLiteral("First"));
  EXPECT_EQ(tags.albumArtist(), QStringLiteral("Various"));
  EXPECT_EQ(tags.genre(), QStringLiteral("Jazz"));
  EXPECT_EQ(tags.year(), QStringLiteral("2001"));
  EXPECT_EQ(tags.comment(), QStringLiteral("Made by a test"));
  EXPECT_EQ(tags.composer(), QStringLiteral("Someone"));
  EXPECT_EQ(std::pair(tags.curTrackNum(), tags.totalTrackNum()), std::pair(3, 12));
  EXPECT_EQ(std::pair(tags.curDiskNum(), tags.totalDiskNum()), std::pair(2, 3));
  EXPECT_EQ(tags.image(), thumbnail);
  EXPECT_EQ(modeltest::ffprobeFirstCodec(thumbnail), QStringLiteral("bmp"));
}

TEST_F(ReadingAFile, FilesWithoutReadableTagsGiveEmptyTagsAndTheLibrarysReason) {
  const MediaMetaData none;
  int32_t code = -1;
  EXPECT_EQ(MediaMetaData::initWithFile(media.path(QStringLiteral("gone.mp3")), QString(), &code), none);
  EXPECT_EQ(code, METADATA_ERROR_NO_FILE);

  const QString matroska = modeltest::taggedClip(media, QStringLiteral("tagged.mkv"), {"title=Unreachable"});
  EXPECT_EQ(MediaMetaData::initWithFile(matroska, QString(), &code), none);
  EXPECT_EQ(code, METADATA_ERROR_FORMAT);

  const QString notes = media.writeFile(QStringLiteral("notes.mp4"), "A shopping list, not a film.\n");
  EXPECT_EQ(MediaMetaData::initWithFile(notes, media.path(QStringLiteral("cover.bmp")), &code), none);
  EXPECT_NE(code, METADATA_OK);
  EXPECT_EQ(modeltest::fileBytes(notes), QByteArray("A shopping list, not a film.\n"));
  EXPECT_FALSE(QFileInfo::exists(media.path(QStringLiteral("cover.bmp"))));
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
