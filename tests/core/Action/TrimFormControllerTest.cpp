// The trim window's logic on items read from real files, with the real
// preview and the main window's list logic as its delegate: segment numbers,
// markers and steppers, and what closing does to the list in each case.
#include <gtest/gtest.h>

#include <QFileInfo>

#include <algorithm>
#include <cmath>

#include "Action/MainFormController.h"
#include "Action/NodeInfoAction.h"
#include "Action/TrimFormController.h"
#include "CommonClass/NotificationCenter.h"
#include "EventLoopWait.h"
#include "GeneratedMedia.h"
#include "support/ListItems.h"

namespace {

class TrimWindow : public testing::Test {
 protected:
  void SetUp() override {
    modeltest::startWithEmptyList(media.path(QStringLiteral("scratch")), media.path(QStringLiteral("engine")));
    controller.setDelegate(&mainWindow);
    controller.player().setVideoView({nullptr, 160, 120});
  }

  NodeInfo::Ptr item(const QString& name, double seconds = 4) {
    return modeltest::addToList(db, {media.clip(name, seconds, 1, QStringLiteral("160x120"))},
                                media.path(QStringLiteral("scratch")))
        .front();
  }
  NodeInfo::List listed() { return NodeInfoAction::getRootNode(db)->childNode(); }
  QStringList rowTexts(int row) const {
    QStringList texts;
    for (const QString& column : TrimSegmentList::columns()) texts.append(controller.segments().cellText(row, column));
    return texts;
  }
  void setSegment(int row, double start, double end) {
    controller.tableViewSelectDidChange(row);
    controller.startTimeChange(start);
    controller.endTimeChange(end);
  }

  testmedia::Folder media;
  UIInfoDB db;
  MainFormController mainWindow{db};
  TrimFormController controller{db};
};

TEST_F(TrimWindow, AFileOpensWithOneFullSegmentAndClosingUntouchedChangesNothing) {
  const NodeInfo::Ptr node = item(QStringLiteral("whole.mp4"));
  int closes = 0;
  QObject::connect(&controller, &TrimFormController::windowClosed, [&] { ++closes; });
  controller.showWindowModal(TrimFormController::getSuitableNode(db), node);
  EXPECT_TRUE(controller.player().isPlaying());
  EXPECT_TRUE(controller.player().player().isPlayingOriginal());
  ASSERT_EQ(controller.segments().count(), 1);
  EXPECT_EQ(controller.selectedRow(), 0);
  EXPECT_EQ(rowTexts(0), QStringList({QStringLiteral("whole_segment01"), QStringLiteral("00:00:00"),
                                      QStringLiteral("00:00:04"), QStringLiteral("00:00:04")}));
  EXPECT_EQ(controller.segments().at(0)->type(), NodeInfo::kTypeSegment);
  EXPECT_DOUBLE_EQ(controller.rightMarker(), 4);

  controller.cancelButtonClick();
  EXPECT_EQ(closes, 1);
  EXPECT_FALSE(controller.player().isPlaying());
  EXPECT_EQ(listed(), NodeInfo::List({node}));
  EXPECT_EQ(node->type(), NodeInfo::kTypeFile);
  EXPECT_EQ(node->getChildNodeCount(), 0);
  EXPECT_EQ(node->trimSettingInfo().endTime(), 4);
}

TEST_F(TrimWindow, AtTheEndThePreviewGoesBackToTheStart) {
  const NodeInfo::Ptr node = item(QStringLiteral("end.mp4"), 1);
  QList<double> positions;
  const QObject listening;  // goes before `positions`
  QObject::connect(&controller.player(), &PlayVideoAction::sliderChanged, &listening,
                   [&](double, double value, double) { positions.append(value); });
  controller.showWindowModal({node});
  ASSERT_TRUE(waitUntil([&] { return !positions.isEmpty() && positions.back() > 0.98; }));
  ASSERT_TRUE(waitUntil([&] { return positions.back() < 0.9; }));
  EXPECT_TRUE(controller.player().isPlaying());
}

TEST_F(TrimWindow, NumbersContinueAfterTheHighestAndTheTableIsNeverEmpty) {
  const NodeInfo::Ptr node = item(QStringLiteral("count.mp4"));
  controller.showWindowModal({node});
  controller.addSegment();
  controller.addSegment();
  EXPECT_EQ(controller.selectedRow(), 2);
  controller.tableViewSelectDidChange(1);
  controller.deleteSegment();
  EXPECT_EQ(controller.selectedRow(), 1);  // the row after the deleted one
  controller.addSegment();
  EXPECT_EQ(modeltest::outputNames(controller.segments().curVideoChildren()),
            QStringList({QStringLiteral("count_segment01"), QStringLiteral("count_segment03"),
                         QStringLiteral("count_segment04")}));

  for (int left = 3; left > 0; --left) {
    controller.tableViewSelectDidChange(left - 1);
    controller.deleteSegment();
  }
  ASSERT_EQ(controller.segments().count(), 1);
  EXPECT_EQ(controller.segments().at(0)->outputFilename(), QStringLiteral("count_segment01"));
  EXPECT_EQ(controller.segments().at(0)->trimSettingInfo().endTime(), 4);
}

TEST_F(TrimWindow, MarkersWriteTheSelectedSegmentAndSeekOnceTheyRest) {
  const NodeInfo::Ptr node = item(QStringLiteral("markers.mp4"));
  controller.showWindowModal({node});
  controller.pauseButtonClick();
  int tableChanges = 0;
  QObject::connect(&controller, &TrimFormController::tableChanged, [&] { ++tableChanges; });
  NotificationCenter& center = NotificationCenter::defaultCenter();
  center.postNotificationName(QLatin1String(TrimFormController::kStartTimeChange), 0.5);
  center.postNotificationName(QLatin1String(TrimFormController::kStartTimeChange), 1.6);
  center.postNotificationName(QLatin1String(TrimFormController::kEndTimeChange), 3.2);
  EXPECT_EQ(tableChanges, 3);
  EXPECT_EQ(rowTexts(0).mid(1),
            QStringList({QStringLiteral("00:00:01"), QStringLiteral("00:00:03"), QStringLiteral("00:00:02")}));
  EXPECT_EQ(controller.segments().at(0)->mediaFileInfo().iTotalTime(), 2);
  PlayVideo& player = controller.player().player();
  EXPECT_TRUE(waitUntil([&] { return std::abs(player.getCurrentTime() / 1e6 - 3.2) < 0.05; }));

  controller.stepEnd(5);
  EXPECT_DOUBLE_EQ(controller.endStepperValue(), 4);  // held at the file's length
  controller.trimEndOKButtonClick();
  controller.stepStart(1);
  controller.stepStart(1);
  EXPECT_EQ(controller.startStepperText(), QStringLiteral("00:00:03"));  // on from the marker's 1.6
  // OK keeps the in point a second before the out point.
  controller.trimStartOKButtonClick();
  EXPECT_DOUBLE_EQ(controller.leftMarker(), 3);
  EXPECT_EQ(rowTexts(0).mid(1),
            QStringList({QStringLiteral("00:00:03"), QStringLiteral("00:00:04"), QStringLiteral("00:00:01")}));

  controller.player().setCurrentTime(2.5);
  ASSERT_TRUE(waitUntil([&] { return std::abs(player.getCurrentTime() / 1e6 - 2.5) < 0.05; }));
  controller.trimButtonGoLeft();
  EXPECT_EQ(controller.segments().at(0)->trimSettingInfo().startTime(), 2);
}

// Keyframe times as ffprobe lists them, in seconds.
QVector<double> probedKeyframes(const QString& path) {
  const testmedia::ProgramOutput listing =
      testmedia::run(QStringLiteral("ffprobe"), {"-v", "error", "-select_streams", "v:0", "-show_entries",
                                                 "packet=pts_time,flags", "-of", "csv=p=0", path});
  QVector<double> seconds;
  for (const QByteArray& line : listing.output.split('\n')) {
    const QList<QByteArray> fields = line.trimmed().split(',');
    if (fields.size() == 2 && fields[1].startsWith('K')) seconds.append(fields[0].toDouble());
  }
  std::sort(seconds.begin(), seconds.end());
  return seconds;
}

TEST_F(TrimWindow, TheSliderShowsTheKeyframesOfTheFileOnScreen) {
  const QString everySecond = media.path(QStringLiteral("gop25.mp4"));
  ASSERT_EQ(testmedia::runFfmpeg({"-i", media.clip(QStringLiteral("source.mp4"), 4), "-c:v", "libx264", "-g", "25",
                                  "-sc_threshold", "0", "-c:a", "copy", everySecond}),
            QString());
  const NodeInfo::List nodes =
      modeltest::addToList(db, {everySecond, media.clip(QStringLiteral("plain.mp4"), 2)}, media.path(QStringLiteral("scratch")));
  ASSERT_EQ(nodes.size(), 2);
  controller.showWindowModal(nodes);
  const QVector<double> expected = probedKeyframes(everySecond);
  ASSERT_EQ(expected.size(), 4);
  ASSERT_EQ(controller.keyframeTimes().size(), expected.size());
  for (int i = 0; i < expected.size(); ++i) EXPECT_NEAR(controller.keyframeTimes()[i], expected[i], 1e-3);

  controller.itemViewClick(nodes[1]);
  EXPECT_EQ(controller.keyframeTimes().size(), probedKeyframes(nodes[1]->mediaFileInfo().fileName()).size());
  EXPECT_NE(controller.keyframeTimes().size(), expected.size());
}

TEST_F(TrimWindow, SegmentsBecomeItemsAndReopeningContinuesThemUntilTheTrimIsUndone) {
  const NodeInfo::Ptr node = item(QStringLiteral("cut.mp4"));
  const NodeInfo::Ptr other = item(QStringLiteral("other.mp4"));
  controller.showWindowModal(TrimFormController::getSuitableNode(db), node);
  setSegment(0, 0, 1);
  controller.addSegment();
  setSegment(1, 2, 4);
  controller.doneButtonClick();

  const NodeInfo::List rows = listed();
  ASSERT_EQ(rows.size(), 3);
  EXPECT_EQ(rows[0], other);
  EXPECT_EQ(modeltest::outputNames(rows.mid(1)),
            QStringList({QStringLiteral("cut_segment01"), QStringLiteral("cut_segment02")}));
  EXPECT_EQ(node->type(), NodeInfo::kTypeTrimmed);
  EXPECT_EQ(node->childNode(), rows.mid(1));
  for (const NodeInfo::Ptr& segment : rows.mid(1)) {
    EXPECT_EQ(segment->type(), NodeInfo::kTypeFile);
    EXPECT_EQ(segment->trimParentNode(), node);
    EXPECT_TRUE(QFileInfo::exists(segment->mediaFileInfo().imageName()));
  }
  EXPECT_EQ(rows[2]->trimSettingInfo().startTime(), 2);
  EXPECT_EQ(rows[2]->mediaFileInfo().iTotalTime(), 2);
  EXPECT_TRUE(rows[1]->mediaFileInfo().imageName().endsWith(QStringLiteral("cut_segment013.bmp")));

  // Opened from one of its segments, the file shows all of them, and new ones count on.
  EXPECT_EQ(TrimFormController::getSuitableNode(db), NodeInfo::List({other, node}));
  controller.showWindowModal(TrimFormController::getSuitableNode(db), rows[2]);
  EXPECT_EQ(controller.nodeInfo(), node);
  EXPECT_EQ(controller.selectVideoIndex(), 1);
  EXPECT_FALSE(controller.isMergeChecked());
  controller.addSegment();
  EXPECT_EQ(controller.segments().at(2)->outputFilename(), QStringLiteral("cut_segment03"));
  controller.tableViewSelectDidChange(0);
  controller.deleteSegment();
  controller.deleteSegment();
  setSegment(0, 0, 4);
  // Moving to another file applies this one: one full segment puts the file back as it was.
  controller.itemViewClick(other);
  EXPECT_EQ(listed(), NodeInfo::List({other, node}));
  EXPECT_EQ(node->type(), NodeInfo::kTypeFile);
  EXPECT_EQ(node->getChildNodeCount(), 0);
  EXPECT_EQ(node->trimSettingInfo().endTime(), 4);
  controller.windowShouldClose();
  EXPECT_EQ(listed(), NodeInfo::List({other, node}));
}

TEST_F(TrimWindow, MergedSegmentsStayChildrenOfTheOneItem) {
  const NodeInfo::Ptr node = item(QStringLiteral("merge.mp4"));
  node->effectSettingInfo().setBrightness(30);
  controller.showWindowModal({node});
  controller.setMergeChecked(true);
  setSegment(0, 0, 1);
  controller.addSegment();
  setSegment(1, 3, 4);
  controller.doneButtonClick();

  EXPECT_EQ(listed(), NodeInfo::List({node}));
  EXPECT_EQ(node->type(), NodeInfo::kTypeFile);
  ASSERT_EQ(node->getChildNodeCount(), 2);
  EXPECT_EQ(node->getChildNodeAtIndex(1)->trimSettingInfo().startTime(), 3);
  EXPECT_EQ(node->getChildNodeAtIndex(0)->effectSettingInfo(), EffectSettingInfo());
  EXPECT_EQ(node->getChildNodeAtIndex(0)->cropSettingInfo().w(), 160);
  EXPECT_EQ(node->mediaFileInfo().iTotalTime(), 2);
  EXPECT_EQ(node->trimSettingInfo().endTime(), 2);
  EXPECT_EQ(node->effectSettingInfo(), EffectSettingInfo());

  // Reopened, the merge stays ticked, so closing keeps the segments merged.
  controller.showWindowModal({node});
  EXPECT_TRUE(controller.isMergeChecked());
  EXPECT_EQ(controller.segments().count(), 2);
  controller.cancelButtonClick();
  EXPECT_EQ(listed(), NodeInfo::List({node}));
  EXPECT_EQ(node->getChildNodeCount(), 2);
}

}  // namespace
