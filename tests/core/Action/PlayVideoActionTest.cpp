// The preview player on real files: records filled from nodes, the slider
// and the label, edits and dragged rectangles, the end, snapshots and
// thumbnails, all through the real library and the real event loop.
#include <gtest/gtest.h>

#include <QFileInfo>

#include "Action/PlayVideoAction.h"
#include "CommonClass/NotificationCenter.h"
#include "EventLoopWait.h"
#include "GeneratedMedia.h"
#include "ValueObject/UIInfoDB.h"
#include "support/ListItems.h"

namespace {

class PlayVideoActionTest : public testing::Test, public PlayVideoActionDelegate {
 protected:
  void SetUp() override {
    modeltest::startWithEmptyList(media.path(QStringLiteral("scratch")), media.path(QStringLiteral("engine")));
    action.setDelegate(this);
    action.setVideoView({nullptr, 160, 120});
    action.setEffectView({nullptr, 160, 120});
  }
  void TearDown() override { NotificationCenter::defaultCenter().removeObserver(this); }

  void playVideoEnd() override { ++ends; }

  NodeInfo::Ptr item(const QString& name, double seconds) {
    return modeltest::addToList(db, {media.clip(name, seconds)}, media.path(QStringLiteral("scratch"))).front();
  }

  testmedia::Folder media;
  UIInfoDB db;
  PlayVideoAction action;
  int ends = 0;
};

TEST_F(PlayVideoActionTest, PlayingFillsTheSliderAndTheLabelAndStoppingTwiceOnlyResetsThem) {
  const NodeInfo::Ptr node = item(QStringLiteral("two.mp4"), 2);
  node->watermarkInfo().setM_watermarkType(WatermarkInfo::kTypeText);
  node->watermarkInfo().setM_text(QStringLiteral("mark"));
  std::vector<double> maxima;
  QObject::connect(&action, &PlayVideoAction::sliderChanged,
                   [&](double, double, double maximum) { maxima.push_back(maximum); });
  action.playVideo(node);
  ASSERT_TRUE(action.isPlaying());
  EXPECT_DOUBLE_EQ(action.sliderMaximum(), 2.0);
  const MediaItem& record = action.player().mediaData(0);
  EXPECT_EQ(+record.m_watermarkInfo.m_changed_flag, 12);
  EXPECT_EQ(+record.m_VideoDisable, 0);
  EXPECT_EQ(+record.m_bEnableHwaccel, 1);

  action.pauseVideo();
  action.setCurrentTime(1.2);
  ASSERT_FALSE(action.getImage().isNull());  // waits for the seek to arrive
  action.getVideoCurrentTime();
  EXPECT_EQ(action.timeLabel(), QStringLiteral("00:00:01|00:00:02"));
  EXPECT_NEAR(action.sliderValue(), 1.2, 0.05);

  action.stopPlay();
  action.stopPlay();
  EXPECT_FALSE(action.isPlaying());
  EXPECT_EQ(action.timeLabel(), QLatin1String(PlayVideoAction::kStoppedLabel));
  EXPECT_EQ(action.sliderMaximum(), 0);
  EXPECT_EQ(maxima.front(), 2.0);
  EXPECT_EQ(maxima.back(), 0);
  EXPECT_TRUE(action.getImage().isNull());
}

TEST_F(PlayVideoActionTest, AMergedItemPlaysAsOneSequenceAndANodeWithoutRecordsDoesNothing) {
  const NodeInfo::Ptr merged = NodeInfo::create();
  merged->addChildNode(item(QStringLiteral("one.mp4"), 1));
  merged->addChildNode(item(QStringLiteral("two.mp4"), 2));
  action.playVideo(merged);
  EXPECT_EQ(action.player().mediaDataCount(), 2);
  EXPECT_DOUBLE_EQ(action.sliderMaximum(), 3.0);
  action.stopPlay();

  int sliderChanges = 0;
  QObject::connect(&action, &PlayVideoAction::sliderChanged, [&] { ++sliderChanges; });
  action.playVideo(NodeInfo::create());  // no file at all
  EXPECT_FALSE(action.isPlaying());
  EXPECT_EQ(sliderChanges, 0);
}

TEST_F(PlayVideoActionTest, EditsReachThePlayingRecordsAndDraggedRectanglesComeBackToTheNode) {
  const NodeInfo::Ptr node = item(QStringLiteral("edit.mp4"), 2);
  node->watermarkInfo().setM_watermarkType(WatermarkInfo::kTypePicture);
  node->watermarkInfo().setM_imagePath(media.still(QStringLiteral("mark.png")));
  action.playEffectVideo(node);
  ASSERT_TRUE(action.isPlaying());
  action.pauseVideo();
  ASSERT_FALSE(action.getImage().isNull());

  node->effectSettingInfo().setBrightness(40);
  action.updateMediaData(node);
  EXPECT_EQ(+action.player().mediaData(0).m_brightness, 40);

  int cropReads = 0;
  int watermarkReads = 0;
  NotificationCenter::defaultCenter().addObserver(this, QLatin1String(PlayVideo::kReadCropInfo),
                                                  [&](const Notification&) {
                                                    ++cropReads;
                                                    action.cropInfo(node);
                                                  });
  NotificationCenter::defaultCenter().addObserver(this, QLatin1String(PlayVideo::kReadWatermarkInfo),
                                                  [&](const Notification&) {
                                                    ++watermarkReads;
                                                    action.watermarkInfo(node);
                                                  });
  ASSERT_EQ(VideoConverter_Render_DragCrop(16, 8, 200, 150), 0);
  ASSERT_TRUE(waitUntil([&] { return cropReads == 1; }));
  EXPECT_EQ(node->cropSettingInfo().x(), 16);
  EXPECT_EQ(node->cropSettingInfo().h(), 150);
  EXPECT_EQ(+action.player().mediaData(0).m_cropW, 200);

  ASSERT_EQ(VideoConverter_Render_DragWatermark(10, 20, 30, 40), 0);
  ASSERT_TRUE(waitUntil([&] { return watermarkReads == 1; }));
  EXPECT_EQ(node->watermarkInfo().m_imgX(), 10);
  EXPECT_EQ(node->watermarkInfo().m_imgH(), 40);
  node->watermarkInfo().setM_watermarkType(WatermarkInfo::kTypeText);
  node->watermarkInfo().setM_text(QStringLiteral("mark"));
  action.updateMediaData(node);
  ASSERT_EQ(VideoConverter_Render_DragWatermark(1, 2, 3, 4), 0);
  ASSERT_TRUE(waitUntil([&] { return watermarkReads == 2; }));
  EXPECT_EQ(node->watermarkInfo().m_x(), 1);
  EXPECT_EQ(node->watermarkInfo().m_imgX(), 10);
}

TEST_F(PlayVideoActionTest, TheEndIsToldAndASliderMovedAfterItDoesNotSeek) {
  const NodeInfo::Ptr node = item(QStringLiteral("short.mp4"), 1);
  action.playOrigisVideo(node);
  ASSERT_TRUE(action.player().isPlayingOriginal());
  ASSERT_TRUE(waitUntil([&] { return ends > 0; }));
  EXPECT_TRUE(action.isEnded());
  action.playSlideChange(0.2);
  action.getVideoCurrentTime();
  EXPECT_DOUBLE_EQ(action.sliderValue(), 1.0);
}

TEST_F(PlayVideoActionTest, SnapshotsAndThumbnailsAreWrittenWhereTheyBelong) {
  const NodeInfo::Ptr node = item(QStringLiteral("shot.mp4"), 2);
  const QString path = media.path(QStringLiteral("00001.png"));
  EXPECT_EQ(action.photoCurFile(path, 4), 1);  // nothing plays yet
  action.playVideo(node);
  action.pauseVideo();
  action.setCurrentTime(0.5);
  ASSERT_EQ(action.photoCurFile(path, 4), 0);
  const QMap<QString, QString> shot = testmedia::ffprobe(path, QStringLiteral("streams"));
  EXPECT_EQ(shot.value(QStringLiteral("codec_name")), QStringLiteral("png"));
  EXPECT_EQ(shot.value(QStringLiteral("width")), QStringLiteral("320"));
  EXPECT_EQ(action.photoCurFile(media.path(QStringLiteral("no/such/00002.jpg")), 3), 1);

  ASSERT_EQ(action.getCurrentImage(node, 0), 0);
  EXPECT_EQ(QFileInfo(node->mediaFileInfo().imageName()).fileName(), node->outputFilename() + QStringLiteral("3.bmp"));
  EXPECT_TRUE(QFileInfo::exists(node->mediaFileInfo().imageName()));
}

}  // namespace
