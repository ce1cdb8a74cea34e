// The download window's logic on the real event loop, against a video site
// on 127.0.0.1 that the real page analysis reads: pasted addresses and the
// two alerts, five downloads at a time with the rest waiting in order,
// pause, resume and delete, the list after a restart, the commands on all
// items, imports, a failure, the rename on finish, a streaming manifest, and
// the settings sheet.

#include <gtest/gtest.h>

#include <QDir>
#include <QFile>
#include <QFileInfo>

#include "CommonClass/KMVLog.h"
#include "CommonClass/Pasteboard.h"
#include "CommonClass/UserDefaults.h"
#include "Download/DownloadFormController.h"
#include "Download/DownloadSettingFormController.h"
#include "Download/DownloadSettings.h"
#include "Download/HttpFileDownload.h"
#include "Download/PublicAction.h"
#include "DownloadTestServer.h"
#include "EventLoopWait.h"
#include "GeneratedMedia.h"
#include "LocalHttplibServer.h"
#include "RecordingAlertPresenter.h"
#include "TestEnvironment.h"

namespace {

using Element = DrogItemView::Element;

class FakePasteboard : public Pasteboard {
 public:
  QString string() const override { return text; }
  void setString(const QString& value) override { text = value; }
  QString text;
};

class RecordingImports : public DownloadFormControllerDelegate {
 public:
  void downloadFormDidAddFiles(const QStringList& paths) override { imports.append(paths); }
  QList<QStringList> imports;
};

class FolderPanel : public FilePanels {
 public:
  QString savePanel(const QString&, const QString&) override { return {}; }
  QString openFolder(const QString& startFolder) override {
    asked.append(startFolder);
    return chosen;
  }
  QString openSingleFile(const QStringList&) override { return {}; }
  QStringList openFiles(const QStringList&) override { return {}; }
  QStringList asked;
  QString chosen;
};

class DownloadWindow : public testing::Test {
 protected:
  void SetUp() override {
    TestEnvironment::resetApplicationState();
    HttpFileDownload::setRetryPause(std::chrono::milliseconds(1));
    UserDefaults::standardUserDefaults().setObject(folder.path(), DownloadSettings::kSavePathDefault);
    PlatformServices::install(&alerts, &panels, &workspace);
  }
  void TearDown() override {
    controller.reset();
    PlatformServices::install(nullptr, nullptr, nullptr);
    qualityParam = 0;
    savePath.clear();
  }

  DownloadFormController& open() {
    controller = std::make_unique<DownloadFormController>(&pasteboard);
    controller->setDelegate(&imports);
    controller->windowDidLoad();
    return *controller;
  }
  DrogItemView* paste(const QString& text) {
    pasteboard.text = text;
    const qsizetype before = controller->droglineView().getChildItem().size();
    controller->getVideoDownloadURL();
    const QList<DrogItemView*>& items = controller->droglineView().getChildItem();
    return items.size() > before ? items.first() : nullptr;
  }
  static bool reaches(const DrogItemView* item, qint64 state) {
    return waitUntil([item, state] { return item->itemInfo()->videoDownState() == state; });
  }
  QStringList pageAddresses() const {
    QStringList addresses;
    for (const DrogItemView* item : controller->droglineView().getChildItem()) {
      addresses.append(item->itemInfo()->htmUrlStr());
    }
    return addresses;
  }
  static QString logText() {
    QString text;
    for (const QFileInfo& file : QDir(KMVLog::folder()).entryInfoList(QDir::Files)) {
      QFile log(file.filePath());
      if (log.open(QIODevice::ReadOnly)) text += QString::fromUtf8(log.readAll());
    }
    return text;
  }

  testmedia::Folder folder;
  DownloadTestServer server;
  FakePasteboard pasteboard;
  RecordingAlertPresenter alerts;
  FolderPanel panels;
  RecordingWorkspace workspace;
  RecordingImports imports;
  std::unique_ptr<DownloadFormController> controller;
};

TEST_F(DownloadWindow, PastedAddressesBecomeTasksAndWhatIsNoLinkIsSaid) {
  EXPECT_EQ(DownloadFormController::pageAddressOf("example.org/watch?v=1"), "http://example.org/watch?v=1");
  EXPECT_EQ(DownloadFormController::pageAddressOf(" https://example.org/a b\n"), "https://example.org/ab");
  open();
  EXPECT_TRUE(controller->isEmptyListPictureVisible());
  EXPECT_EQ(savePath, folder.path());

  for (const QString& noLink : {QStringLiteral("http://example.org"), QStringLiteral("  "), QString()}) {
    EXPECT_EQ(paste(noLink), nullptr);
    ASSERT_EQ(alerts.alerts.size(), 1u);
    EXPECT_EQ(alerts.alerts.back().message, "No links in clipboard");
    EXPECT_EQ(alerts.alerts.back().informativeText,
              "First,copy a link from the address bar and paste it into the program.");
    alerts.alerts.clear();
  }

  const QString address = server.pageAddress("clip");
  DrogItemView* item = paste(address.mid(QStringLiteral("http://").size()));
  ASSERT_NE(item, nullptr);
  EXPECT_EQ(item->itemInfo()->htmUrlStr(), address);
  EXPECT_FALSE(controller->isEmptyListPictureVisible());
  EXPECT_EQ(controller->droglineView().getSeleteView(), item);
  ASSERT_TRUE(reaches(item, kVideoDownStateFinished));
  EXPECT_EQ(folder.read("clip.mp4"), server.video());
  EXPECT_EQ(item->title(), "clip");
  EXPECT_EQ(item->videoFormat(), "mp4");
  EXPECT_EQ(item->videoSize(), "0.00 MB");
  EXPECT_EQ(item->cellState(), kVideoDownStateFinished);

  // The same address again is a question; "Continue download" leaves it be.
  alerts.answer = 0;
  EXPECT_EQ(paste(address), nullptr);
  ASSERT_EQ(alerts.alerts.size(), 1u);
  EXPECT_EQ(alerts.alerts[0].message,
            "The task has been exsit, you can \"Continue download\" or \"Re-download the file\"");
  EXPECT_EQ(alerts.alerts[0].informativeText, "Re-download will remove orginal file");
  EXPECT_EQ(alerts.alerts[0].buttons, (QStringList{"Continue download", "Re-download"}));
  EXPECT_EQ(server.rangesAsked("clip").size(), 2);  // the size probe and the download
  EXPECT_EQ(item->cellState(), kVideoDownStateFinished);

  // "Re-download" removes the file and downloads it again under the same name.
  alerts.answer = 1;
  QFile::remove(folder.path("clip.mp4"));
  folder.write("clip.mp4", "an older download");
  EXPECT_EQ(paste(address), nullptr);
  EXPECT_EQ(item->cellState(), kVideoDownStateAnalysing);
  ASSERT_TRUE(reaches(item, kVideoDownStateFinished));
  EXPECT_EQ(item->itemInfo()->savePath(), folder.path("clip.mp4"));
  EXPECT_EQ(folder.read("clip.mp4"), server.video());
  EXPECT_EQ(server.rangesAsked("clip").size(), 4);

  pasteboard.text.clear();
  controller->copyUrlClick();
  EXPECT_EQ(pasteboard.text, address);
}

TEST_F(DownloadWindow, FiveDownloadsRunAndTheRestWaitFirstInFirstOut) {
  open();
  QList<DrogItemView*> items;
  for (int i = 0; i < 7; ++i) {
    server.hold(QStringLiteral("clip%1").arg(i));
    items.append(paste(server.pageAddress(QStringLiteral("clip%1").arg(i))));
  }
  ASSERT_TRUE(waitUntil([this] { return controller->arrWaitForDownload().size() == 2; }));
  EXPECT_EQ(controller->arrCurDownload(), items.mid(0, 5));
  EXPECT_EQ(controller->arrWaitForDownload(), items.mid(5, 2));
  EXPECT_TRUE(controller->isDisplayTimerRunning());
  for (const DrogItemView* waiting : items.mid(5)) {
    EXPECT_EQ(waiting->cellState(), kVideoDownStateWaiting);
    EXPECT_TRUE(waiting->isVisible(Element::labWait));
    EXPECT_TRUE(waiting->isVisible(Element::imgvWait));
  }
  // Newest first on the screen.
  EXPECT_EQ(controller->droglineView().getChildItem().first(), items.last());

  // A finished download lets the oldest waiting one start.
  server.release("clip0");
  ASSERT_TRUE(reaches(items[0], kVideoDownStateFinished));
  ASSERT_TRUE(reaches(items[5], kVideoDownStateDownloading));
  EXPECT_EQ(controller->arrWaitForDownload(), QList<DrogItemView*>{items[6]});

  // A pause keeps the state and the part downloaded, and frees the slot.
  ASSERT_TRUE(waitUntil([&] { return QFileInfo(folder.path("clip1.mp4.download")).size() == 2000; }));
  items[1]->pausePrograss(true);
  EXPECT_EQ(items[1]->cellState(), kVideoDownStateDownloading);
  EXPECT_TRUE(items[1]->isVisible(Element::btResume));
  EXPECT_FALSE(controller->arrCurDownload().contains(items[1]));
  EXPECT_EQ(items[6]->cellState(), kVideoDownStateDownloading);
  EXPECT_TRUE(controller->arrWaitForDownload().isEmpty());

  // Deleting removes the temporary file.
  ASSERT_TRUE(waitUntil([&] { return QFileInfo::exists(folder.path("clip2.mp4.download")); }));
  items[2]->deleteItemView();
  EXPECT_FALSE(QFileInfo::exists(folder.path("clip2.mp4.download")));
  EXPECT_FALSE(controller->arrCurDownload().contains(items[2]));

  // A resumed download goes on from its part.
  server.release("clip1");
  items[1]->startPrograss(true);
  EXPECT_TRUE(controller->arrCurDownload().contains(items[1]));
  for (int i = 3; i < 7; ++i) server.release(QStringLiteral("clip%1").arg(i));
  for (const int i : {1, 3, 4, 5, 6}) ASSERT_TRUE(reaches(items[i], kVideoDownStateFinished)) << i;
  EXPECT_EQ(folder.read("clip1.mp4"), server.video());
  EXPECT_EQ(server.rangesAsked("clip1").last(), "bytes=2000-");
  // The window hears of each end on the main thread's next turn.
  ASSERT_TRUE(waitUntil([this] { return controller->arrCurDownload().isEmpty(); }));
  EXPECT_FALSE(controller->isDisplayTimerRunning());
}

TEST_F(DownloadWindow, AfterARestartDownloadsComeBackPausedAndAnalysesStartAgain) {
  const auto task = [this](const QString& name, qint64 state) {
    auto made = std::make_shared<VideoInfoObject>();
    made->setHtmUrlStr(server.pageAddress(name));
    made->setDownURLStr(server.videoAddress(name).toString());
    made->setTitleStr(name);
    made->setVideoFormat("mp4");
    made->setStrVideoSize("0.00 MB");
    made->setSavePath(folder.path(name + ".mp4"));
    made->setVideoDownState(state);
    return made;
  };
  folder.write("running.mp4.download", server.video().left(2000));
  folder.write("done.mp4", server.video());
  {
    DrogItemView analysing(task("analysing", 1));
    DrogItemView running(task("running", 2));
    DrogItemView waiting(task("waiting", 6));
    DrogItemView done(task("done", 3));
    DrogItemView failed(task("failed", 4));
    ASSERT_TRUE(PublicAction::saveDownloadList({&analysing, &running, &waiting, &done, &failed}));
  }

  open();
  const QList<DrogItemView*> items = controller->droglineView().getChildItem();
  ASSERT_EQ(items.size(), 5);
  EXPECT_EQ(pageAddresses(),
            (QStringList{server.pageAddress("analysing"), server.pageAddress("running"), server.pageAddress("waiting"),
                         server.pageAddress("done"), server.pageAddress("failed")}));
  EXPECT_FALSE(controller->isEmptyListPictureVisible());
  for (const DrogItemView* paused : {items[1], items[2]}) {
    EXPECT_TRUE(paused->isVisible(Element::btResume));
    EXPECT_FALSE(paused->isVisible(Element::btPause));
  }
  EXPECT_EQ(items[1]->cellState(), kVideoDownStateDownloading);
  EXPECT_EQ(items[2]->cellState(), kVideoDownStateWaiting);
  EXPECT_EQ(items[3]->cellState(), kVideoDownStateFinished);
  EXPECT_EQ(items[4]->cellState(), kVideoDownStateFailed);
  EXPECT_TRUE(items[4]->isVisible(Element::btReParam));
  ASSERT_TRUE(reaches(items[0], kVideoDownStateFinished));
  EXPECT_EQ(folder.read("analysing.mp4"), server.video());
  // Nothing that was paused started by itself.
  EXPECT_TRUE(server.rangesAsked("running").isEmpty());
  EXPECT_TRUE(server.rangesAsked("waiting").isEmpty());

  // Resume all starts the paused ones and retries the failed one.
  controller->resumeAllClick();
  for (const DrogItemView* item : items) ASSERT_TRUE(reaches(item, kVideoDownStateFinished));
  ASSERT_TRUE(waitUntil([this] { return controller->arrCurDownload().isEmpty(); }));
  EXPECT_EQ(server.rangesAsked("running"), QList<QByteArray>{"bytes=2000-"});
  EXPECT_EQ(folder.read("running.mp4"), server.video());

  controller->importAllClick();
  QStringList everyFile;
  for (const QString name : {"analysing", "running", "waiting", "done", "failed"})
    everyFile << folder.path(name + ".mp4");
  EXPECT_EQ(imports.imports, QList<QStringList>{everyFile});
  items[3]->importToConverter(true);
  EXPECT_EQ(imports.imports.last(), QStringList{folder.path("done.mp4")});

  // The list on disk is the list on the screen.
  const QList<std::shared_ptr<VideoInfoObject>> saved = PublicAction::readDownloadList();
  ASSERT_EQ(saved.size(), 5);
  for (const std::shared_ptr<VideoInfoObject>& each : saved) EXPECT_EQ(each->videoDownState(), 3);
}

TEST_F(DownloadWindow, PauseAllAndDeleteAllStopEverythingAndKeepFinishedFiles) {
  open();
  DrogItemView* finished = paste(server.pageAddress("finished"));
  ASSERT_TRUE(reaches(finished, kVideoDownStateFinished));
  server.hold("held");
  DrogItemView* held = paste(server.pageAddress("held"));
  ASSERT_TRUE(waitUntil([&] { return QFileInfo(folder.path("held.mp4.download")).size() == 2000; }));

  controller->pauseAllClick();
  EXPECT_TRUE(controller->arrCurDownload().isEmpty());
  EXPECT_TRUE(held->isVisible(Element::btResume));
  EXPECT_FALSE(finished->isVisible(Element::btResume));
  EXPECT_FALSE(controller->isDisplayTimerRunning());

  controller->deleteAllClick();
  EXPECT_TRUE(controller->droglineView().getChildItem().isEmpty());
  EXPECT_TRUE(controller->isEmptyListPictureVisible());
  EXPECT_FALSE(QFileInfo::exists(folder.path("held.mp4.download")));
  EXPECT_EQ(folder.read("finished.mp4"), server.video());
  EXPECT_TRUE(PublicAction::readDownloadList().isEmpty());
  EXPECT_TRUE(QFileInfo::exists(PublicAction::downloadListPath()));
}

TEST_F(DownloadWindow, AFailureIsLoggedAndShownAndOneSiteGetsItsFormatAppended) {
  open();
  server.dropHalfway("lost", 100);
  DrogItemView* lost = paste(server.pageAddress("lost"));
  ASSERT_TRUE(reaches(lost, kVideoDownStateFailed));
  EXPECT_TRUE(lost->isVisible(Element::labFail));
  EXPECT_EQ(QString::fromLatin1(DrogItemView::kFailText), "Sorry! Fail to download.");
  EXPECT_TRUE(lost->isVisible(Element::btReParam));
  ASSERT_TRUE(waitUntil([this] { return controller->arrCurDownload().isEmpty(); }));
  EXPECT_TRUE(logText().contains("An error occurred: A connection failure occurred"));
  EXPECT_TRUE(QFileInfo::exists(folder.path("lost.mp4.download")));

  DrogItemView* renamed = paste(server.pageAddress("clip") + "?from=http://www.LiveLeak.com/view");
  ASSERT_TRUE(reaches(renamed, kVideoDownStateFinished));
  ASSERT_TRUE(waitUntil([this] { return QFileInfo::exists(folder.path("clip.mp4mp4")); }));
  EXPECT_EQ(folder.read("clip.mp4mp4"), server.video());
  EXPECT_EQ(renamed->itemInfo()->savePath(), folder.path("clip.mp4"));
}

TEST_F(DownloadWindow, AVideoGivenAsAStreamingManifestIsRemuxedIntoMp4) {
  const QString stream = testmedia::hlsStream(2);
  ASSERT_FALSE(stream.isEmpty());
  LocalHttplibServer site;
  site.serve("/live.html", "<html><head><title>live</title></head><video src=\"/hls/stream.m3u8\"></video></html>");
  site.server.set_mount_point("/hls", stream.toStdString());
  open();
  DrogItemView* item = paste(site.url("/live.html").toString());
  ASSERT_TRUE(reaches(item, kVideoDownStateFinished)) << item->failureReason().toStdString();
  EXPECT_EQ(item->itemInfo()->savePath(), folder.path("live.mp4"));
  EXPECT_NEAR(testmedia::duration(folder.path("live.mp4")), 2.0, 0.2);
  EXPECT_EQ(testmedia::streamCount(folder.path("live.mp4"), "video"), 1);
}

TEST_F(DownloadWindow, TheSettingsSheetSetsTheQualityAndTheFolderForTheNextStart) {
  open();
  qualityParam = 2;
  DownloadSettingFormController sheet;
  sheet.showSheet();
  EXPECT_EQ(sheet.selectedQuality(), 2);
  EXPECT_EQ(sheet.pathField(), folder.path());

  panels.chosen = folder.path("chosen");
  sheet.selectPathClick();
  EXPECT_EQ(panels.asked, QStringList{folder.path()});
  EXPECT_EQ(sheet.pathField(), folder.path("chosen"));
  sheet.openFolderClick();
  EXPECT_EQ(workspace.revealed, QStringList{folder.path("chosen")});

  sheet.setSelectedQuality(1);
  sheet.okClick();
  EXPECT_EQ(qualityParam, 1);
  EXPECT_EQ(savePath, folder.path("chosen"));
  EXPECT_EQ(DownloadSettings::startSavePath(), folder.path("chosen"));
  // Taken as it is: neither checked nor created.
  EXPECT_FALSE(QFileInfo::exists(folder.path("chosen")));
}

}  // namespace
