// Writing a node's tags into the outputs of its conversion: the record it
// hands the tag library, and the split parts it finds among real outputs
// made by ffmpeg. (The tag library's own tests write every format.)
#include <gtest/gtest.h>

#include <QDir>
#include <QFile>
#include <QFileInfo>

#include <utility>
#include <vector>

#include "CommonClass/KMVLog.h"
#include "GeneratedMedia.h"
#include "MediaClass/AddMetaDataAction.h"

namespace {

using Entries = std::vector<std::pair<int32_t, QString>>;

Entries entriesOf(const MetaDataInfo& info) {
  Entries entries;
  for (int32_t index = 0; index < info.count; ++index) {
    entries.emplace_back(info.items[index].key, QString::fromUtf8(info.items[index].value));
  }
  return entries;
}

QString numberEntry(int32_t current, int32_t total) {
  MediaMetaData tags;
  tags.setCurTrackNum(current);
  tags.setTotalTrackNum(total);
  const Entries entries = entriesOf(*AddMetaDataAction::makeDataInfos(tags));
  return entries.empty() ? QStringLiteral("<none>") : entries.front().second;
}

MediaMetaData everyTag() {
  MediaMetaData tags;
  for (int32_t key = METADATA_FIRST_KEY; key <= METADATA_LAST_KEY; ++key) {
    tags.setText(key, QStringLiteral("value %1").arg(key));
  }
  tags.setCurTrackNum(3);
  tags.setTotalTrackNum(12);
  tags.setCurDiskNum(1);
  tags.setTotalDiskNum(2);
  return tags;
}

TEST(TagRecordForWriting, HoldsTheTagsInWritingOrderWithoutTheReadOnlyGenresEmptyTextsOrZeros) {
  const Entries entries = entriesOf(*AddMetaDataAction::makeDataInfos(everyTag()));
  std::vector<int32_t> keys;
  for (const auto& entry : entries) keys.push_back(entry.first);
  EXPECT_EQ(keys, (std::vector<int32_t>{1, 2, 3, 4, 6, 7, 8, 9, 10, 11, 12, 13, 14, 15, 16, 17, 18}));
  for (const auto& [key, value] : entries) {
    if (key == METADATA_KEY_TRACK || key == METADATA_KEY_DISK) continue;
    EXPECT_EQ(value, QStringLiteral("value %1").arg(key));
  }

  MediaMetaData tags;
  tags.setAlbum(QStringLiteral("Album"));
  tags.setTitle(QString(""));
  tags.setTotalTrackNum(9);
  tags.setCurDiskNum(2);
  tags.setYear(QStringLiteral("2024"));
  EXPECT_EQ(entriesOf(*AddMetaDataAction::makeDataInfos(tags)),
            (Entries{{METADATA_KEY_ALBUM, "Album"}, {METADATA_KEY_DISK, "2"}, {METADATA_KEY_YEAR, "2024"}}));
  EXPECT_EQ(AddMetaDataAction::makeDataInfos(MediaMetaData())->count, 0);
}

TEST(TagRecordForWriting, PutsTheTotalAfterTheFirstDigitOfTheCurrentNumber) {
  EXPECT_EQ(numberEntry(7, 9), QStringLiteral("7/9"));
  EXPECT_EQ(numberEntry(7, 7), QStringLiteral("7/7"));
  EXPECT_EQ(numberEntry(12, 20), QStringLiteral("1/20"));
  EXPECT_EQ(numberEntry(123, 456), QStringLiteral("1/456"));
  EXPECT_EQ(numberEntry(7, 5), QStringLiteral("7")) << "a smaller total is not written";
  EXPECT_EQ(numberEntry(12, 0), QStringLiteral("12"));
  EXPECT_EQ(numberEntry(0, 20), QStringLiteral("<none>"));
  EXPECT_EQ(numberEntry(-4, 20), QStringLiteral("<none>"));
}

QByteArray firstValueWrittenFor(const QString& comment) {
  MediaMetaData tags;
  tags.setComment(comment);
  return QByteArray(AddMetaDataAction::makeDataInfos(tags)->items[0].value);
}

TEST(TagRecordForWriting, CutsAnOverlongValueAtACharacterBoundaryWithinItsField) {
  const QChar twoBytes(0x00E9);
  const QByteArray even = firstValueWrittenFor(QString(3000, twoBytes));
  EXPECT_EQ(even, QString(2047, twoBytes).toUtf8()) << "4,095 bytes would end inside a character";
  const QByteArray odd = firstValueWrittenFor(QStringLiteral("a") + QString(3000, twoBytes));
  EXPECT_EQ(odd, (QStringLiteral("a") + QString(2047, twoBytes)).toUtf8());
  EXPECT_EQ(odd.size(), METADATA_VALUE_SIZE - 1);
  const QString fits(METADATA_VALUE_SIZE - 1, QLatin1Char('x'));
  EXPECT_EQ(firstValueWrittenFor(fits), fits.toUtf8());
}

TEST(SplitCount, FollowsTheSplitLengthOrTheClipCount) {
  struct Case {
    int32_t minutes, row, clips, seconds, parts;
  };
  const Case cases[] = {
      {2, 0, 1, 250, 3},                     // 250 s every 2 minutes
      {2, 2, 1, 240, 3},                     // the count runs one over when the length divides evenly
      {1, 0, 1, 59, 1},  {2, 1, 1, 250, 1},  // mode 1 ignores the length
      {2, 1, 4, 250, 5}, {0, 0, 3, 250, 4}, {0, 0, 2, 250, 3}, {0, 0, 1, 250, 1}, {0, 0, 0, 250, 1},
  };
  for (const Case& c : cases) {
    NodeInfo node;
    node.setVideoMinutes(c.minutes);
    node.setSplitRow(c.row);
    node.setVideoClips(c.clips);
    node.mediaFileInfo().setITotalTime(c.seconds);
    EXPECT_EQ(AddMetaDataAction::getNodeSplitNum(node), c.parts)
        << c.minutes << " min, row " << c.row << ", " << c.clips << " clips, " << c.seconds << " s";
  }
}

// A node whose profile writes `extension` files, with tags to write.
NodeInfo::Ptr nodeWritingTo(const QString& extension, const MediaMetaData& tags) {
  NodeInfo::Ptr node = NodeInfo::create();
  ProfileSettingInfo profile;
  profile.setExtName(extension);
  node->setCurProfileSetting(profile);
  node->setMetaData(tags);
  node->mediaFileInfo().setITotalTime(250);
  return node;
}

class WritingIntoParts : public testing::Test {
 protected:
  QString part(const QString& name) { return media.tagged(name, {"title=Untouched"}); }
  static QString titleOf(const QString& path) { return MediaMetaData::initWithFile(path, QString()).title(); }
  testmedia::Folder media;
};

TEST_F(WritingIntoParts, SplitOutputsAreWrittenInOrderUpToTheFirstMissingPartAndAWholeOneAlone) {
  const QString first = part(QStringLiteral("movie_0.mp4"));
  const QString second = part(QStringLiteral("movie_1.mp4"));
  const QString afterGap = part(QStringLiteral("movie_3.mp4"));
  const QByteArray afterGapBytes = media.read(afterGap);
  MediaMetaData tags;
  tags.setTitle(QStringLiteral("Part of a movie"));
  const NodeInfo::Ptr node = nodeWritingTo(QStringLiteral("mp4"), tags);
  node->setVideoMinutes(2);
  node->setSplitRow(0);

  const QString outputPath = media.path(QStringLiteral("movie.mp4"));
  const AddMetaDataResult result = AddMetaDataAction::addMetaData(*node, outputPath);
  EXPECT_TRUE(result.succeeded());
  EXPECT_EQ(result.writtenFiles, QStringList({first, second}));
  EXPECT_EQ(titleOf(first), QStringLiteral("Part of a movie"));
  EXPECT_EQ(titleOf(second), QStringLiteral("Part of a movie"));
  EXPECT_EQ(media.read(afterGap), afterGapBytes) << "parts after a gap are not the node's";
  EXPECT_FALSE(QFileInfo::exists(outputPath));

  // Split into clips the same way; unsplit, only the output itself.
  const QString whole = part(QStringLiteral("movie.mp4"));
  node->setSplitRow(1);
  node->setVideoClips(2);
  EXPECT_EQ(AddMetaDataAction::addMetaData(*node, whole).writtenFiles, QStringList({first, second}));
  node->setVideoClips(1);
  EXPECT_EQ(AddMetaDataAction::addMetaData(*node, whole).writtenFiles, QStringList{whole});
  EXPECT_EQ(titleOf(whole), QStringLiteral("Part of a movie"));
}

TEST_F(WritingIntoParts, NothingIsWrittenForAProfileWithoutTagsOrANodeWithoutTags) {
  const QString file = part(QStringLiteral("plain.mp4"));
  const QByteArray before = media.read(file);

  MediaMetaData tags;
  tags.setTitle(QStringLiteral("Should not appear"));
  const NodeInfo::Ptr refused = nodeWritingTo(QStringLiteral("avi"), tags);
  EXPECT_FALSE(refused->metaEditEnable());
  AddMetaDataResult result = AddMetaDataAction::addMetaData(*refused, file);
  EXPECT_TRUE(result.writtenFiles.isEmpty() && result.failures.isEmpty());

  MediaMetaData onlyReadOnly;
  onlyReadOnly.setGenres(QStringLiteral("Not written"));
  result = AddMetaDataAction::addMetaData(*nodeWritingTo(QStringLiteral("mp4"), onlyReadOnly), file);
  EXPECT_TRUE(result.writtenFiles.isEmpty() && result.failures.isEmpty());
  EXPECT_EQ(media.read(file), before);
}

TEST_F(WritingIntoParts, AReadOnlyPartIsReportedAndLeftIntactWhileTheOthersAreWritten) {
  const QString locked = part(QStringLiteral("show_0.mp4"));
  const QString open = part(QStringLiteral("show_1.mp4"));
  ASSERT_TRUE(QFile::setPermissions(locked, QFile::ReadOwner | QFile::ReadGroup | QFile::ReadOther));
  const QByteArray lockedBytes = media.read(locked);
  MediaMetaData tags;
  tags.setTitle(QStringLiteral("Episode"));
  const NodeInfo::Ptr node = nodeWritingTo(QStringLiteral("mp4"), tags);
  node->setVideoClips(2);

  const AddMetaDataResult result = AddMetaDataAction::addMetaData(*node, media.path(QStringLiteral("show.mp4")));
  EXPECT_FALSE(result.succeeded());
  ASSERT_EQ(result.failures.size(), 1);
  EXPECT_EQ(result.failures[0].path, locked);
  EXPECT_EQ(result.failures[0].code, METADATA_ERROR_READ_ONLY);
  EXPECT_EQ(result.writtenFiles, QStringList{open});
  EXPECT_EQ(media.read(locked), lockedBytes);
  EXPECT_EQ(titleOf(open), QStringLiteral("Episode"));

  QString log;
  for (const QFileInfo& day : QDir(KMVLog::folder()).entryInfoList({"*.txt"}, QDir::Files)) {
    log += QString::fromUtf8(media.read(day.filePath()));
  }
  EXPECT_TRUE(log.contains(locked)) << "the failure is logged with the file's path";
}

}  // namespace
