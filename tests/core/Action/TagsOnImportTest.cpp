// Tags read when files are added to the list: the node's tags and cover come
// from the real file, the cover replaces the probe's thumbnail, and files the
// tag library cannot read are still added, without tags.
#include <gtest/gtest.h>

#include "support/ListItems.h"

#include <QDir>
#include <QFileInfo>
#include <QRegularExpression>

#include "Action/MainFormAction.h"
#include "Action/NodeInfoAction.h"
#include "CommonClass/GlobalSettings.h"
#include "RecordingAlertPresenter.h"
#include "TestEnvironment.h"
#include "support/TaggedMedia.h"

namespace {

class TagsOnImport : public testing::Test {
 protected:
  void SetUp() override { modeltest::startWithEmptyList(media.path(QStringLiteral("scratch")), media.folder()); }
  void TearDown() override { modeltest::endWithEmptyList(); }

  NodeInfo::Ptr addOne(const QString& path) {
    UIInfoDB db;
    const NodeInfo::List items = modeltest::addToList(db, {path}, media.path(QStringLiteral("scratch")));
    EXPECT_EQ(items.size(), 1);
    return items.value(0);
  }

  modeltest::MediaFolder media;
  RecordingAlertPresenter alerts;
  ScopedAlertPresenter installed{&alerts};
};

TEST_F(TagsOnImport, AnMp4sTagsAndCoverLandInTheNodeAndTheCoverReplacesTheThumbnail) {
  const QString cover = modeltest::testPicture(media, QStringLiteral("cover.png"));
  const QString clip = modeltest::taggedClip(
      media, QStringLiteral("holiday.mp4"),
      {"title=Holiday", "artist=Family", "album=Summer", "track=3/12", "disc=1/2", "date=2023", "genre=Home Video"},
      cover);
  const NodeInfo::Ptr node = addOne(clip);
  ASSERT_TRUE(node);

  const MediaMetaData& tags = node->metaData();
  EXPECT_EQ(tags.title(), QStringLiteral("Holiday"));
  EXPECT_EQ(tags.artist(), QStringLiteral("Family"));
  EXPECT_EQ(tags.album(), QStringLiteral("Summer"));
  EXPECT_EQ(tags.year(), QStringLiteral("2023"));
  EXPECT_EQ(tags.genre(), QStringLiteral("Home Video"));
  EXPECT_EQ(std::pair(tags.curTrackNum(), tags.totalTrackNum()), std::pair(3, 12));
  EXPECT_EQ(std::pair(tags.curDiskNum(), tags.totalDiskNum()), std::pair(1, 2));
  EXPECT_EQ(node->orgMetaData(), tags) << "the tags before editing are the tags read";

  const QRegularExpression coverName(
      QStringLiteral("^%1/thumbNailholiday(\\d{14})\\.bmp$").arg(QRegularExpression::escape(videoImagePath)));
  const auto match = coverName.match(tags.image());
  ASSERT_TRUE(match.hasMatch()) << tags.image().toStdString();
  EXPECT_EQ(modeltest::ffprobeFirstCodec(tags.image()), QStringLiteral("bmp"));
  EXPECT_EQ(node->mediaFileInfo().imageName(), tags.image()) << "the cover replaces the probe thumbnail";
  const QString probeThumbnail = QStringLiteral("%1/holiday%2.bmp").arg(videoImagePath, match.captured(1));
  EXPECT_TRUE(QFileInfo::exists(probeThumbnail)) << "both pictures carry the same time stamp";
}

TEST_F(TagsOnImport, AnMp3sJpegCoverAndTagsAreReadLikeAVideos) {
  const QString cover = modeltest::testPicture(media, QStringLiteral("cover.jpg"));
  const QString song =
      modeltest::taggedClip(media, QStringLiteral("song.mp3"), {"title=Song", "album_artist=Choir", "track=5"}, cover);
  const NodeInfo::Ptr node = addOne(song);
  ASSERT_TRUE(node);
  EXPECT_EQ(node->metaData().title(), QStringLiteral("Song"));
  EXPECT_EQ(node->metaData().albumArtist(), QStringLiteral("Choir"));
  EXPECT_EQ(std::pair(node->metaData().curTrackNum(), node->metaData().totalTrackNum()), std::pair(5, 0));
  EXPECT_TRUE(node->metaData().image().startsWith(videoImagePath + QStringLiteral("/thumbNailsong")));
  EXPECT_EQ(node->mediaFileInfo().imageName(), node->metaData().image());
  EXPECT_EQ(modeltest::ffprobeFirstCodec(node->metaData().image()), QStringLiteral("bmp"));
}

TEST_F(TagsOnImport, WithoutACoverTheThumbnailStaysAndTheTagsHaveNoPicture) {
  const QString clip = modeltest::taggedClip(media, QStringLiteral("plain.mp4"), {"title=Plain"});
  const NodeInfo::Ptr node = addOne(clip);
  ASSERT_TRUE(node);
  EXPECT_EQ(node->metaData().title(), QStringLiteral("Plain"));
  EXPECT_TRUE(node->metaData().image().isNull());
  EXPECT_TRUE(node->mediaFileInfo().imageName().startsWith(videoImagePath + QStringLiteral("/plain")));
  EXPECT_TRUE(QFileInfo::exists(node->mediaFileInfo().imageName()));
  EXPECT_TRUE(QDir(videoImagePath).entryList({"thumbNail*"}, QDir::Files).isEmpty());
}

TEST_F(TagsOnImport, AContainerTheTagLibraryCannotReadIsAddedWithEmptyTags) {
  const QString clip = modeltest::taggedClip(media, QStringLiteral("tagged.mkv"), {"title=Only in Matroska"});
  const NodeInfo::Ptr node = addOne(clip);
  ASSERT_TRUE(node);
  EXPECT_EQ(node->metaData(), MediaMetaData());
  EXPECT_EQ(node->orgMetaData(), MediaMetaData());
  EXPECT_TRUE(alerts.alerts.empty());
}

}  // namespace
