// From the editors to the files written: segments cut in the trim window and
// an item edited in the editor window, converted by the main window's queue
// with the real engine, against ffprobe and against the command line.
#include <gtest/gtest.h>

#include <QCheckBox>
#include <QDir>
#include <QImage>
#include <QLineEdit>
#include <QPushButton>
#include <QSignalSpy>
#include <QSlider>
#include <QTabWidget>
#include <QTest>
#include <QToolButton>

#include <cmath>
#include <memory>

#include "Action/MainFormController.h"
#include "EventLoopWait.h"
#include "GeneratedMedia.h"
#include "ProgramRun.h"
#include "RecordingAlertPresenter.h"
#include "TestEnvironment.h"
#include "editor/EditorDialog.h"
#include "main/MainWindow.h"
#include "trim/TrimDialog.h"

namespace {

template <class Widget>
Widget* widgetWith(QWidget* window, const QString& textOrName) {
  for (Widget* widget : window->findChildren<Widget*>()) {
    if (widget->accessibleName() == textOrName || widget->toolTip() == textOrName) return widget;
    if constexpr (std::is_base_of_v<QAbstractButton, Widget>) {
      if (widget->text() == textOrName) return widget;
    }
  }
  ADD_FAILURE() << "nothing named " << textOrName.toStdString();
  return nullptr;
}

// Seconds of the first video stream of a file.
double videoSeconds(const QString& path) {
  return testmedia::ffprobe(path, QStringLiteral("streams"), QStringLiteral("v:0"))
      .value(QStringLiteral("duration"))
      .toDouble();
}

// The picture of a file at one second, as ffmpeg decodes it.
QImage pictureAtOneSecond(const QString& path) {
  const QString picture = path + QStringLiteral(".png");
  EXPECT_EQ(testmedia::runFfmpeg({"-ss", "1", "-i", path, "-frames:v", "1", picture}), QString());
  return QImage(picture).convertToFormat(QImage::Format_RGB32);
}

// Mean difference of the colour channels of two pictures of the same size.
double meanDifference(const QImage& first, const QImage& second) {
  double sum = 0;
  for (int y = 0; y < first.height(); ++y) {
    const auto* a = reinterpret_cast<const QRgb*>(first.constScanLine(y));
    const auto* b = reinterpret_cast<const QRgb*>(second.constScanLine(y));
    for (int x = 0; x < first.width(); ++x) {
      sum += std::abs(qRed(a[x]) - qRed(b[x])) + std::abs(qGreen(a[x]) - qGreen(b[x])) +
             std::abs(qBlue(a[x]) - qBlue(b[x]));
    }
  }
  return sum / (3.0 * first.width() * first.height());
}

class EditedItemsConvertTest : public testing::Test {
 protected:
  void SetUp() override {
    TestEnvironment::resetApplicationState();
    TestEnvironment::useScratchFolders(media.path());
    PlatformServices::install(&alerts, nullptr, &workspace);
    // The main window as the program starts it: its catalogue gives new items their profile.
    window = std::make_unique<MainWindow>(db);
    window->startUp();
    QDir().mkpath(outputFolder);
    main().setOutputFolder(outputFolder);
  }
  void TearDown() override {
    window.reset();
    PlatformServices::install(nullptr, nullptr, nullptr);
    TestEnvironment::resetApplicationState();
  }

  MainFormController& main() const { return window->controller(); }
  NodeInfo::Ptr add(const QString& path) {
    QSignalSpy finished(&main(), &MainFormController::addingFinished);
    main().addFilesToMainList({path});
    EXPECT_TRUE(finished.wait(30000));
    return main().videoData().value(0);
  }
  void show(QDialog& dialog) {
    dialog.show();
    ASSERT_TRUE(QTest::qWaitForWindowExposed(&dialog));
  }
  // Runs the main window's conversion over the list; the written files, by name.
  QStringList convertTheList() {
    main().showConverterWindowModal();
    EXPECT_TRUE(waitUntil([this] { return !main().isConverting(); }));
    return QDir(outputFolder).entryList({QStringLiteral("*.mp4")}, QDir::Files, QDir::Name);
  }

  testmedia::Folder media;
  QString outputFolder = media.path(QStringLiteral("out"));
  RecordingAlertPresenter alerts;
  RecordingWorkspace workspace;
  UIInfoDB db;
  std::unique_ptr<MainWindow> window;
};

TEST_F(EditedItemsConvertTest, SegmentsCutInTheTrimWindowConvertToTheirLengthsOrMergedIntoTheirSum) {
  const QString clip = media.clip(QStringLiteral("cut.mp4"), 6, 1, QStringLiteral("160x120"));
  const struct {
    double start, end;
  } segments[] = {{0, 1}, {2, 4}, {4, 6}};

  for (const bool merge : {false, true}) {
    SCOPED_TRACE(merge ? "merged" : "one file each");
    main().clearAllFile();
    QDir(outputFolder).removeRecursively();
    QDir().mkpath(outputFolder);
    const NodeInfo::Ptr node = add(clip);
    ASSERT_NE(node, nullptr);

    TrimDialog dialog(main(), node);
    show(dialog);
    TrimFormController& trim = dialog.controller();
    for (int row = 0; row < 3; ++row) {
      if (row > 0) QTest::mouseClick(widgetWith<QPushButton>(&dialog, QStringLiteral("Add segment")), Qt::LeftButton);
      ASSERT_EQ(trim.segments().count(), row + 1);
      trim.tableViewSelectDidChange(row);
      trim.endTimeChange(segments[row].end);
      trim.startTimeChange(segments[row].start);
    }
    if (merge) QTest::mouseClick(widgetWith<QCheckBox>(&dialog, QStringLiteral("Merge into one file")), Qt::LeftButton);
    QTest::mouseClick(widgetWith<QPushButton>(&dialog, QStringLiteral("Done")), Qt::LeftButton);
    ASSERT_FALSE(dialog.isVisible());

    const QStringList written = convertTheList();
    if (merge) {
      ASSERT_EQ(written.size(), 1) << written.join(' ').toStdString();
      EXPECT_NEAR(videoSeconds(QDir(outputFolder).filePath(written[0])), 5.0, 0.04);
      continue;
    }
    ASSERT_EQ(written, QStringList({"cut_segment01.mp4", "cut_segment02.mp4", "cut_segment03.mp4"}));
    for (int row = 0; row < 3; ++row) {
      EXPECT_NEAR(videoSeconds(QDir(outputFolder).filePath(written[row])), segments[row].end - segments[row].start,
                  0.04)
          << written[row].toStdString();
    }
  }
}

TEST_F(EditedItemsConvertTest, AnItemEditedInTheEditorWindowConvertsToThePictureOfTheCommandLine) {
  const QString clip = media.clip(QStringLiteral("edit.mp4"), 2, 1, QStringLiteral("320x240"));
  const NodeInfo::Ptr node = add(clip);
  ASSERT_NE(node, nullptr);

  EditorDialog dialog(main(), node);
  show(dialog);
  for (const auto& [field, value] : {std::pair{"Top:", "20"}, std::pair{"Left:", "40"}}) {
    auto* margin = widgetWith<QLineEdit>(&dialog, QLatin1String(field));
    ASSERT_NE(margin, nullptr);
    margin->setFocus();
    margin->selectAll();
    QTest::keyClicks(margin, QLatin1String(value));
    QTest::keyClick(margin, Qt::Key_Return);
  }
  QTest::mouseClick(widgetWith<QToolButton>(&dialog, QStringLiteral("Rotate left")), Qt::LeftButton);
  dialog.findChild<QTabWidget*>()->setCurrentIndex(EditFormController::kTabEffect);
  widgetWith<QSlider>(&dialog, QStringLiteral("Brightness:"))->setValue(40);
  QTest::mouseClick(widgetWith<QPushButton>(&dialog, QStringLiteral("Done")), Qt::LeftButton);
  const CropSettingInfo& crop = node->cropSettingInfo();
  ASSERT_EQ(QRect(crop.x(), crop.y(), crop.w(), crop.h()), QRect(40, 20, 280, 220));
  ASSERT_EQ(node->effectSettingInfo().rotateAngle(), 90);
  ASSERT_EQ(node->effectSettingInfo().brightness(), 40);

  const QStringList written = convertTheList();
  ASSERT_EQ(written, QStringList{"edit.mp4"});

  const QString commandLineFolder = media.path(QStringLiteral("command-line"));
  const ProgramResult run = runProgramAs(
      homeEnvironment(media.path(QStringLiteral("home"))),
      {"convert", clip, "--profile", node->curProfileSetting().profileName(), "--output", commandLineFolder, "--crop",
       "40,20,280,220", "--rotate", "90", "--brightness", "40"});
  ASSERT_EQ(run.exitCode, 0) << run.errorOutput.toStdString();

  const QImage fromWindow = pictureAtOneSecond(QDir(outputFolder).filePath(written[0]));
  const QImage fromCommandLine = pictureAtOneSecond(commandLineFolder + QStringLiteral("/edit.mp4"));
  ASSERT_FALSE(fromWindow.isNull());
  ASSERT_EQ(fromWindow.size(), fromCommandLine.size());
  EXPECT_LT(meanDifference(fromWindow, fromCommandLine), 1.0);
  // Turned a quarter: the kept 280x220 stands upright.
  EXPECT_LT(fromWindow.width(), fromWindow.height());
}

}  // namespace
