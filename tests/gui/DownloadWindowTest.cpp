// The download window off screen against a video site on 127.0.0.1: the
// model checked by Qt's own tester while rows come and go, the paste
// button, a dropped link, the painted buttons of a row with their tool tips,
// the context menu's copy, imports as the window's signal, the empty-list
// picture, the settings sheet, and a window closed while a download runs.
#include <gtest/gtest.h>

#include <QAbstractItemModelTester>
#include <QApplication>
#include <QButtonGroup>
#include <QClipboard>
#include <QFileInfo>
#include <QLabel>
#include <QLineEdit>
#include <QListView>
#include <QMenu>
#include <QMimeData>
#include <QPushButton>
#include <QRadioButton>
#include <QSignalSpy>
#include <QTest>
#include <QToolTip>

#include "CommonClass/UserDefaults.h"
#include "Download/DownloadSettings.h"
#include "Download/HttpFileDownload.h"
#include "DownloadTestServer.h"
#include "GeneratedMedia.h"
#include "RecordingAlertPresenter.h"
#include "TestEnvironment.h"
#include "download/DownloadItemDelegate.h"
#include "download/DownloadWindow.h"

namespace {

using Element = DrogItemView::Element;

constexpr int kBoundMs = 60000;

class DownloadWindowTest : public testing::Test {
 protected:
  void SetUp() override {
    TestEnvironment::resetApplicationState();
    HttpFileDownload::setRetryPause(std::chrono::milliseconds(1));
    UserDefaults::standardUserDefaults().setObject(folder.path(), DownloadSettings::kSavePathDefault);
    PlatformServices::install(&alerts, nullptr, &workspace);
    window = std::make_unique<DownloadWindow>();
    tester = std::make_unique<QAbstractItemModelTester>(window->downloadList()->model(),
                                                        QAbstractItemModelTester::FailureReportingMode::Fatal);
    window->show();
    ASSERT_TRUE(QTest::qWaitForWindowExposed(window.get()));
  }
  void TearDown() override {
    tester.reset();
    window.reset();
    PlatformServices::install(nullptr, nullptr, nullptr);
    qualityParam = 0;
  }

  QPushButton* button(const char* skinName) const { return window->findChild<QPushButton*>(skinName); }
  DrogItemView* item(int row) const { return window->controller().droglineView().getChildItem().value(row); }
  // Where `element` of the row is drawn, in the list's viewport.
  QPoint centreOf(int row, Element element) const {
    QListView* list = window->downloadList();
    const QRect line = DownloadItemDelegate::lineRect(list->visualRect(list->model()->index(row, 0)));
    return DownloadItemDelegate::elementRect(*item(row), element, line).center();
  }
  void click(int row, Element element, Qt::MouseButton which = Qt::LeftButton) {
    QTest::mouseClick(window->downloadList()->viewport(), which, {}, centreOf(row, element));
  }
  static bool reaches(const DrogItemView* task, qint64 state) {
    return QTest::qWaitFor([task, state] { return task->itemInfo()->videoDownState() == state; }, kBoundMs);
  }

  testmedia::Folder folder;
  DownloadTestServer server;
  RecordingAlertPresenter alerts;
  RecordingWorkspace workspace;
  std::unique_ptr<DownloadWindow> window;
  std::unique_ptr<QAbstractItemModelTester> tester;
};

TEST_F(DownloadWindowTest, PastedAndDroppedLinksBecomeRowsWhoseButtonsWork) {
  auto* picture = window->findChild<QLabel*>("winDownload.imgvMain");
  ASSERT_NE(picture, nullptr);
  EXPECT_TRUE(picture->isVisible());

  QGuiApplication::clipboard()->setText(server.pageAddress("clip"));
  QTest::mouseClick(button("winDownload.btParseURL"), Qt::LeftButton);
  ASSERT_EQ(window->downloadList()->model()->rowCount(), 1);
  EXPECT_FALSE(picture->isVisible());
  ASSERT_TRUE(reaches(item(0), kVideoDownStateFinished));
  EXPECT_EQ(folder.read("clip.mp4"), server.video());

  server.hold("held");
  QMimeData dropped;
  dropped.setUrls({QUrl(server.pageAddress("held"))});
  QDragEnterEvent enter(QPoint(20, 20), Qt::CopyAction, &dropped, Qt::LeftButton, {});
  QApplication::sendEvent(window.get(), &enter);
  EXPECT_TRUE(enter.isAccepted());
  QDropEvent drop(QPointF(20, 20), Qt::CopyAction, &dropped, Qt::LeftButton, {});
  QApplication::sendEvent(window.get(), &drop);
  ASSERT_EQ(window->downloadList()->model()->rowCount(), 2);
  DrogItemView* held = item(0);
  ASSERT_TRUE(QTest::qWaitFor([&] { return QFileInfo(folder.path("held.mp4.download")).size() == 2000; }, kBoundMs));

  // The pause button says what it does, and pauses.
  QHelpEvent help(QEvent::ToolTip, centreOf(0, Element::btPause),
                  window->downloadList()->viewport()->mapToGlobal(centreOf(0, Element::btPause)));
  QApplication::sendEvent(window->downloadList()->viewport(), &help);
  EXPECT_EQ(QToolTip::text(), "Pause");
  click(0, Element::btPause);
  EXPECT_EQ(held->cellState(), kVideoDownStateDownloading);
  EXPECT_TRUE(held->isVisible(Element::btResume));
  EXPECT_TRUE(window->controller().arrCurDownload().isEmpty());
  server.release("held");
  click(0, Element::btResume);
  ASSERT_TRUE(reaches(held, kVideoDownStateFinished));
  EXPECT_EQ(server.rangesAsked("held").last(), "bytes=2000-");

  // Imports leave the window as its signal.
  QSignalSpy imported(window.get(), &DownloadWindow::downloadFormDidAddFiles);
  click(1, Element::btImportToConverter);
  ASSERT_EQ(imported.size(), 1);
  EXPECT_EQ(imported[0][0].toStringList(), QStringList{folder.path("clip.mp4")});
  QTest::mouseClick(button("winDownload.btImort"), Qt::LeftButton);
  EXPECT_EQ(imported[1][0].toStringList(), (QStringList{folder.path("held.mp4"), folder.path("clip.mp4")}));
  click(1, Element::btOpenFile);
  EXPECT_EQ(workspace.revealed, QStringList{folder.path("clip.mp4")});

  // The context menu copies the address of the row clicked.
  click(0, Element::labTitle, Qt::RightButton);
  ASSERT_TRUE(window->contextMenu()->isVisible());
  window->contextMenu()->actions().first()->trigger();
  window->contextMenu()->hide();
  EXPECT_EQ(QGuiApplication::clipboard()->text(), server.pageAddress("held"));

  click(0, Element::btDelete);
  EXPECT_EQ(window->downloadList()->model()->rowCount(), 1);
  EXPECT_EQ(folder.read("held.mp4"), server.video());
  QTest::mouseClick(button("winDownload.btDeleteAll"), Qt::LeftButton);
  EXPECT_EQ(window->downloadList()->model()->rowCount(), 0);
  EXPECT_TRUE(picture->isVisible());
}

TEST_F(DownloadWindowTest, TheSettingsSheetTakesItsFieldsOverAndClosingStopsNothing) {
  QTest::mouseClick(button("winDownload.btSetting"), Qt::LeftButton);
  auto* sheet = window->findChild<QDialog*>("winDownloadSet");
  ASSERT_NE(sheet, nullptr);
  ASSERT_TRUE(QTest::qWaitForWindowExposed(sheet));
  auto* path = sheet->findChild<QLineEdit*>("winDownloadSet.txtfldPath");
  EXPECT_EQ(path->text(), folder.path());
  QList<QRadioButton*> columns = sheet->findChildren<QRadioButton*>();
  ASSERT_EQ(columns.size(), 3);
  EXPECT_TRUE(columns[0]->isChecked());
  QTest::mouseClick(columns[1], Qt::LeftButton);
  path->setText(folder.path("elsewhere"));
  QTest::mouseClick(sheet->findChild<QPushButton*>("winDownloadSet.btOK"), Qt::LeftButton);
  EXPECT_EQ(qualityParam, 1);
  EXPECT_EQ(savePath, folder.path("elsewhere"));
  EXPECT_EQ(DownloadSettings::startSavePath(), folder.path("elsewhere"));

  server.hold("long");
  window->controller().addPageAddress(server.pageAddress("long"));
  ASSERT_TRUE(
      QTest::qWaitFor([&] { return QFileInfo(folder.path("elsewhere/long.mp4.download")).size() == 2000; }, kBoundMs));
  QTest::mouseClick(button("winDownload.btOK"), Qt::LeftButton);
  EXPECT_FALSE(window->isVisible());
  server.release("long");
  ASSERT_TRUE(reaches(item(0), kVideoDownStateFinished));
  EXPECT_EQ(folder.read("elsewhere/long.mp4"), server.video());
}

}  // namespace
