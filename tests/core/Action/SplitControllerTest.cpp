// The split window's logic on items read from real files: the minutes and
// clips checks with their alerts, moving between items, reset, done and
// cancel.
#include <gtest/gtest.h>

#include "Action/SplitController.h"
#include "GeneratedMedia.h"
#include "RecordingAlertPresenter.h"
#include "support/ListItems.h"

namespace {

class RecordingSplitDelegate : public SplitControllerDelegate {
 public:
  void splitWindowClose(SplitController* /*controller*/) override { ++closes; }
  int closes = 0;
};

class SplitWindow : public testing::Test {
 protected:
  void SetUp() override {
    modeltest::startWithEmptyList(media.path(QStringLiteral("scratch")), media.path(QStringLiteral("engine")));
    controller.setDelegate(&delegate);
  }

  // An item whose file lasts `seconds`: a tiny picture at one frame a second keeps long files cheap.
  NodeInfo::Ptr item(int seconds) {
    const QString file =
        testmedia::made(QStringLiteral("split%1.mkv").arg(seconds),
                        testmedia::source(QStringLiteral("testsrc=size=32x24:rate=1:duration=%1").arg(seconds)));
    const QString copy = media.copy(file, QStringLiteral("split%1.mkv").arg(seconds));
    return modeltest::addToList(db, {copy}, media.path(QStringLiteral("scratch"))).front();
  }

  QStringList alertTexts() const {
    QStringList texts;
    for (const auto& alert : alerts.alerts) texts.append(alert.informativeText);
    return texts;
  }

  testmedia::Folder media;
  UIInfoDB db;
  RecordingAlertPresenter alerts;
  ScopedAlertPresenter installed{&alerts};
  RecordingSplitDelegate delegate;
  SplitController controller;
};

TEST_F(SplitWindow, MinutesCountTheStartedMinutesAndRefuseZeroAndMoreThanTheLength) {
  const NodeInfo::Ptr node = item(630);
  ASSERT_EQ(node->mediaFileInfo().iTotalTime(), 630);
  controller.showWindowModal({node});
  EXPECT_EQ(controller.lengthText(), QStringLiteral("00:10:30"));
  EXPECT_EQ(controller.selectedRow(), SplitController::kRowClips);
  EXPECT_EQ(controller.clipsText(), QStringLiteral("1"));

  controller.radioSelectClick(SplitController::kRowMinutes);
  EXPECT_TRUE(controller.isMinutesEnabled());
  EXPECT_FALSE(controller.isClipsEnabled());
  controller.setMinutesText(QStringLiteral("0"));
  controller.doneButtonClick();
  EXPECT_TRUE(controller.isShown());
  controller.setMinutesText(QStringLiteral("12"));
  controller.doneButtonClick();
  EXPECT_TRUE(controller.isShown());
  EXPECT_EQ(node->VideoMinutes(), 0);
  EXPECT_EQ(alertTexts(), QStringList({QLatin1String(SplitController::kMinutesUnderOne),
                                       QLatin1String(SplitController::kMinutesOverLength)}));

  controller.setMinutesText(QStringLiteral("3"));
  controller.doneButtonClick();
  EXPECT_FALSE(controller.isShown());
  EXPECT_EQ(delegate.closes, 1);
  EXPECT_EQ(node->splitRow(), SplitController::kRowMinutes);
  EXPECT_EQ(node->VideoMinutes(), 3);
  EXPECT_EQ(node->videoClips(), 3);  // 11 started minutes / 3

  // Opened again, the item shows its minutes on the minutes row.
  controller.showWindowModal({node});
  EXPECT_EQ(controller.selectedRow(), SplitController::kRowMinutes);
  EXPECT_EQ(controller.minutesText(), QStringLiteral("3"));
  EXPECT_EQ(controller.clipsText(), QString());
}

TEST_F(SplitWindow, ClipsAreAtMostOneASecondAndAtLeastOne) {
  const NodeInfo::Ptr node = item(90);
  controller.showWindowModal({node});
  controller.setClipsText(QStringLiteral("91"));
  EXPECT_FALSE(controller.saveData());
  EXPECT_EQ(controller.clipsText(), QStringLiteral("1"));
  EXPECT_EQ(controller.minutesText(), QStringLiteral("0"));
  EXPECT_EQ(node->videoClips(), 0);

  controller.setClipsText(QStringLiteral("-2"));
  EXPECT_FALSE(controller.saveData());
  EXPECT_EQ(controller.clipsText(), QStringLiteral("1"));

  controller.setClipsText(QStringLiteral("90"));
  EXPECT_TRUE(controller.saveData());
  EXPECT_EQ(node->videoClips(), 90);
  EXPECT_EQ(node->splitRow(), SplitController::kRowClips);
  EXPECT_EQ(alertTexts(), QStringList({QLatin1String(SplitController::kClipsOverLength),
                                       QLatin1String(SplitController::kClipsUnderOne)}));
}

TEST_F(SplitWindow, LeavingAnItemSavesItAndCancelKeepsOnlyWhatWasSaved) {
  const NodeInfo::Ptr first = item(90);
  const NodeInfo::Ptr second = item(630);
  controller.showWindowModal({first, second}, second);
  EXPECT_EQ(controller.currentNode(), second);
  controller.setClipsText(QStringLiteral("5"));
  controller.itemViewClick(first);
  EXPECT_EQ(second->videoClips(), 5);
  EXPECT_EQ(controller.lengthText(), QStringLiteral("00:01:30"));

  controller.setClipsText(QStringLiteral("7"));
  controller.cancelButtonClick();
  EXPECT_EQ(first->videoClips(), 1);
  EXPECT_EQ(delegate.closes, 1);
}

TEST_F(SplitWindow, ResetAndAnEmptyFieldChangeNothingUntilSaved) {
  const NodeInfo::Ptr node = item(90);
  node->setSplitRow(SplitController::kRowMinutes);
  node->setVideoMinutes(1);
  controller.showWindowModal({node});
  ASSERT_EQ(controller.selectedRow(), SplitController::kRowMinutes);
  controller.resetButtonClick();
  EXPECT_EQ(controller.selectedRow(), SplitController::kRowClips);
  EXPECT_EQ(controller.minutesText(), QString());
  EXPECT_EQ(controller.clipsText(), QStringLiteral("1"));
  EXPECT_EQ(node->VideoMinutes(), 1);

  controller.setClipsText(QString());
  controller.doneButtonClick();
  EXPECT_FALSE(controller.isShown());
  EXPECT_EQ(node->videoClips(), 1);
  EXPECT_EQ(node->VideoMinutes(), 1);
  EXPECT_TRUE(alerts.alerts.empty());
}

}  // namespace
