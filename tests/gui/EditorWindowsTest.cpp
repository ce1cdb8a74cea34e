// The trim, split and editor windows off screen over real files added to
// the main window's list: what they show, clicks, keys and drags reaching
// their logic, the segment table checked by Qt's model tester, and closing.
#include <gtest/gtest.h>

#include <QAbstractItemModelTester>
#include <QAbstractButton>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QPushButton>
#include <QSignalSpy>
#include <QSlider>
#include <QTabWidget>
#include <QTableView>
#include <QTest>
#include <QToolButton>

#include <cmath>

#include "Action/MainFormController.h"
#include "EventLoopWait.h"
#include "GeneratedMedia.h"
#include "RecordingAlertPresenter.h"
#include "TestEnvironment.h"
#include "editor/EditorDialog.h"
#include "split/SplitDialog.h"
#include "trim/TrimDialog.h"
#include "widgets/PreviewView.h"
#include "widgets/TrimMarkers.h"

namespace {

template <class Button>
Button* buttonNamed(QWidget* window, const QString& textOrToolTip) {
  for (Button* button : window->findChildren<Button*>()) {
    if (button->text() == textOrToolTip || button->toolTip() == textOrToolTip) return button;
  }
  ADD_FAILURE() << "no button " << textOrToolTip.toStdString();
  return nullptr;
}

template <class Widget>
Widget* childNamed(QWidget* window, const QString& accessibleName) {
  for (Widget* child : window->findChildren<Widget*>()) {
    if (child->accessibleName() == accessibleName) return child;
  }
  ADD_FAILURE() << "no control " << accessibleName.toStdString();
  return nullptr;
}

class EditorWindowsTest : public testing::Test {
 protected:
  void SetUp() override {
    TestEnvironment::resetApplicationState();
    TestEnvironment::useScratchFolders(media.path());
    PlatformServices::install(&alerts, nullptr, nullptr);
    QSignalSpy finished(&main, &MainFormController::addingFinished);
    main.addFilesToMainList({media.clip(QStringLiteral("first.mp4"), 4, 1, QStringLiteral("320x240")),
                             media.clip(QStringLiteral("second.mp4"), 2, 1, QStringLiteral("160x120"))});
    ASSERT_TRUE(finished.wait(30000));
    ASSERT_EQ(main.videoData().size(), 2);
  }
  void TearDown() override {
    PlatformServices::install(nullptr, nullptr, nullptr);
    TestEnvironment::resetApplicationState();
  }

  void show(QDialog& dialog) {
    dialog.show();
    ASSERT_TRUE(QTest::qWaitForWindowExposed(&dialog));
    EXPECT_TRUE(main.isShowWindow());
  }

  testmedia::Folder media;
  RecordingAlertPresenter alerts;
  UIInfoDB db;
  MainFormController main{db};
};

TEST_F(EditorWindowsTest, SplitWindowRefusesTooManyClipsThenStoresAndCloses) {
  const NodeInfo::Ptr first = main.videoData().front();
  SplitDialog dialog(main, first);
  show(dialog);
  auto* clips = childNamed<QLineEdit>(&dialog, QStringLiteral("Clips"));
  ASSERT_TRUE(clips->isEnabled());
  EXPECT_EQ(clips->text(), QStringLiteral("1"));
  clips->clear();
  QTest::keyClicks(clips, QStringLiteral("99"));
  buttonNamed<QPushButton>(&dialog, QStringLiteral("Done"))->click();
  EXPECT_TRUE(dialog.isVisible());
  ASSERT_EQ(alerts.alerts.size(), 1u);
  EXPECT_EQ(alerts.alerts[0].informativeText, QLatin1String(SplitController::kClipsOverLength));
  EXPECT_EQ(clips->text(), QStringLiteral("1"));

  clips->clear();
  QTest::keyClicks(clips, QStringLiteral("3"));
  buttonNamed<QPushButton>(&dialog, QStringLiteral("Done"))->click();
  EXPECT_FALSE(dialog.isVisible());
  EXPECT_EQ(first->videoClips(), 3);
  EXPECT_FALSE(main.isShowWindow());
}

TEST_F(EditorWindowsTest, TrimWindowDrawsItsSegmentsAndMarkersAndCommitsOnDone) {
  const NodeInfo::Ptr first = main.videoData().front();
  TrimDialog dialog(main, first);
  auto* table = dialog.findChild<QTableView*>();
  QAbstractItemModelTester tester(table->model(), QAbstractItemModelTester::FailureReportingMode::Warning);
  show(dialog);
  ASSERT_EQ(table->model()->rowCount(), 1);
  EXPECT_EQ(table->model()->index(0, 0).data().toString(), QStringLiteral("first_segment01"));
  EXPECT_EQ(table->model()->index(0, 3).data().toString(), QStringLiteral("00:00:04"));
  auto* strip = dialog.findChild<QListWidget*>();
  EXPECT_EQ(strip->count(), 2);
  EXPECT_EQ(strip->currentRow(), 0);

  // Dragging the in marker to the middle of the track writes the segment's start.
  auto* markers = dialog.findChild<TrimMarkers*>();
  const int left = 8;
  const int right = markers->width() - 8;
  const QPoint inMarker(left, markers->height() - 6);
  QTest::mousePress(markers, Qt::LeftButton, {}, inMarker);
  QTest::mouseMove(markers, QPoint((left + right) / 2, markers->height() - 6));
  QTest::mouseRelease(markers, Qt::LeftButton, {}, QPoint((left + right) / 2, markers->height() - 6));
  EXPECT_EQ(table->model()->index(0, 1).data().toString(), QStringLiteral("00:00:02"));
  EXPECT_NEAR(dialog.controller().leftMarker(), 2.0, 0.1);

  buttonNamed<QPushButton>(&dialog, QStringLiteral("Add segment"))->click();
  EXPECT_EQ(table->model()->rowCount(), 2);
  EXPECT_EQ(table->currentIndex().row(), 1);
  dialog.activateWindow();
  ASSERT_TRUE(QTest::qWaitForWindowActive(&dialog));
  QTest::keyClick(&dialog, Qt::Key_Delete);
  EXPECT_EQ(table->model()->rowCount(), 1);
  buttonNamed<QPushButton>(&dialog, QStringLiteral("Add segment"))->click();

  buttonNamed<QPushButton>(&dialog, QStringLiteral("Done"))->click();
  EXPECT_FALSE(dialog.isVisible());
  EXPECT_FALSE(main.isShowWindow());
  const QStringList names = [&] {
    QStringList list;
    for (const NodeInfo::Ptr& item : main.videoData()) list.append(item->outputFilename());
    return list;
  }();
  EXPECT_EQ(names, QStringList({QStringLiteral("second"), QStringLiteral("first_segment01"),
                                QStringLiteral("first_segment03")}));
  EXPECT_EQ(main.videoData()[1]->trimSettingInfo().startTime(), 2);
}

TEST_F(EditorWindowsTest, TrimWindowKeysPauseMarkAndMoveThePlayback) {
  const NodeInfo::Ptr first = main.videoData().front();
  TrimDialog dialog(main, first);
  show(dialog);
  dialog.activateWindow();
  ASSERT_TRUE(QTest::qWaitForWindowActive(&dialog));
  TrimFormController& trim = dialog.controller();
  const PlayVideo& player = trim.player().player();
  const auto reaches = [&](double seconds) {
    return waitUntil([&] { return std::abs(player.getCurrentTime() / 1e6 - seconds) < 0.05; });
  };
  auto* play = buttonNamed<QAbstractButton>(&dialog, QStringLiteral("Play"));
  EXPECT_FALSE(play->isEnabled());

  QTest::keyClick(&dialog, Qt::Key_K);
  EXPECT_TRUE(play->isEnabled());
  trim.player().setCurrentTime(2.5);
  ASSERT_TRUE(reaches(2.5));
  QTest::keyClick(&dialog, Qt::Key_I);
  EXPECT_EQ(trim.segments().at(0)->trimSettingInfo().startTime(), 2);
  QTest::keyClick(&dialog, Qt::Key_J);
  EXPECT_TRUE(reaches(1.5));
  trim.player().setCurrentTime(3.5);
  ASSERT_TRUE(reaches(3.5));
  QTest::keyClick(&dialog, Qt::Key_O);
  EXPECT_EQ(trim.segments().at(0)->trimSettingInfo().endTime(), 3);

  // The arrows step the picture the preview shows.
  const double before = player.getCurrentTime();
  QTest::keyClick(dialog.findChild<PreviewView*>(), Qt::Key_Right);
  EXPECT_TRUE(waitUntil([&] { return player.getCurrentTime() > before; }));
  QTest::keyClick(&dialog, Qt::Key_L);
  EXPECT_FALSE(play->isEnabled());
  buttonNamed<QPushButton>(&dialog, QStringLiteral("Cancel"))->click();
  EXPECT_EQ(main.videoData().size(), 2u);
  EXPECT_EQ(main.videoData().back()->trimSettingInfo().startTime(), 2);
}

TEST_F(EditorWindowsTest, EditorWindowTurnsSlidesAndResetsTheItemAndClosesOnCancel) {
  const NodeInfo::Ptr second = main.videoData().back();
  EditorDialog dialog(main, second);
  show(dialog);
  auto* tabs = dialog.findChild<QTabWidget*>();
  EXPECT_EQ(tabs->currentIndex(), EditFormController::kTabCrop);
  auto* strip = dialog.findChild<QListWidget*>();
  EXPECT_EQ(strip->currentRow(), 1);

  // A margin typed and confirmed with Return crops at once; one too large is held to the limit.
  auto* top = childNamed<QLineEdit>(&dialog, QStringLiteral("Top:"));
  ASSERT_NE(top, nullptr);
  top->setFocus();
  top->selectAll();
  QTest::keyClicks(top, QStringLiteral("999"));
  QTest::keyClick(top, Qt::Key_Return);
  EXPECT_TRUE(dialog.isVisible()) << "Return confirms the field, not the window";
  EXPECT_EQ(top->text(), QStringLiteral("88"));  // 120 - 32
  EXPECT_EQ(second->cropSettingInfo().y(), 88);
  EXPECT_EQ(second->cropSettingInfo().h(), 32);

  buttonNamed<QToolButton>(&dialog, QStringLiteral("Rotate left"))->click();
  EXPECT_EQ(second->effectSettingInfo().rotateAngle(), 90);
  buttonNamed<QToolButton>(&dialog, QStringLiteral("Flip horizontal"))->click();
  EXPECT_EQ(second->effectSettingInfo().rotateFlipX(), 1);

  tabs->setCurrentIndex(EditFormController::kTabAudio);
  auto* volume = childNamed<QSlider>(&dialog, QStringLiteral("Volume:"));
  ASSERT_NE(volume, nullptr);
  EXPECT_EQ(volume->value(), 100);
  volume->setValue(160);
  EXPECT_EQ(second->effectSettingInfo().volume(), 160);
  bool labelShown = false;
  for (QLabel* label : dialog.findChildren<QLabel*>()) labelShown |= label->text() == QStringLiteral("Volume: 160%");
  EXPECT_TRUE(labelShown);

  // Another item from the strip; the rotation there starts from its own angle.
  strip->setCurrentRow(0);
  EXPECT_EQ(dialog.controller().currentNode(), main.videoData().front());
  EXPECT_EQ(volume->value(), 100);
  buttonNamed<QPushButton>(&dialog, QStringLiteral("Cancel"))->click();
  EXPECT_FALSE(dialog.isVisible());
  EXPECT_FALSE(main.isShowWindow());
  EXPECT_EQ(second->effectSettingInfo().volume(), 160);
}

}  // namespace
