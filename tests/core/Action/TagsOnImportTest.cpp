// Tags read when files are added to the list: the node's tags and cover come
// from the real file, and the cover replaces the probe's thumbnail. (Files
// without a cover or without readable tags are added in MainFormActionTest.)
#include <gtest/gtest.h>

#include "support/ListItems.h"

#include <QFileInfo>
#include <QRegularExpression>

#include "CommonClass/GlobalSettings.h"
#include "GeneratedMedia.h"
#include "RecordingAlertPresenter.h"
#include "TestEnvironment.h"

namespace {

class TagsOnImport : public testing::Test {
 protected:
  void SetUp() override { modeltest::startWithEmptyList(media.path(QStringLiteral("scratch")), media.path()); }
  void TearDown() override { TestEnvironment::resetApplicationState(); }

  NodeInfo::Ptr addOne(const QString& path) {
    UIInfoDB db;
    const NodeInfo::List items = modeltest::addToList(db, {path}, media.path(QStringLiteral("scratch")));
    EXPECT_EQ(items.size(), 1);
    return items.value(0);
  }

  testmedia::Folder media;
  RecordingAlertPresenter alerts;
  ScopedAlertPresenter installed{&alerts};
};

TEST_F(TagsOnImport, AnMp4sTagsAndCoverLandInTheNodeAndTheCoverReplacesTheThumbnail) {
  const QString clip = media.tagged(
      QStringLiteral("holiday.mp4"),
      {"title=Holiday", "artist=Family", "album=Summer", "track=3/12", "disc=1/2", "date=2023", "genre=Home Video"},
      "png");
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
  EXPECT_EQ(testmedia::ffprobe(tags.image(), "streams").value("codec_name"), "bmp");
  EXPECT_EQ(node->mediaFileInfo().imageName(), tags.image()) << "the cover replaces the probe thumbnail";
  const QString probeThumbnail = QStringLiteral("%1/holiday%2.bmp").arg(videoImagePath, match.captured(1));
  EXPECT_TRUE(QFileInfo::exists(probeThumbnail)) << "both pictures carry the same time stamp";
}

}  // namespace
