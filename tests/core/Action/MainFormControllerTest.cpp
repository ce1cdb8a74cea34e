// The main window's commands without widgets: real files added through the
// real probe, real conversions through the queue, and recording fakes for
// the alerts, panels and file viewer.
#include <gtest/gtest.h>

#include <QFileInfo>

#include "Action/MainFormController.h"
#include "Action/MainListAction.h"
#include "Action/MediaFileTypes.h"
#include "Action/NodeInfoAction.h"
#include "CommonClass/GlobalSettings.h"
#include "EventLoopWait.h"
#include "GeneratedMedia.h"
#include "RecordingAlertPresenter.h"
#include "TestEnvironment.h"
#include "support/ListItems.h"

namespace {

using WindowState = MainFormController::WindowState;

class RecordingPanels : public FilePanels {
 public:
  QString savePanel(const QString&, const QString&) override { return {}; }
  QString openFolder(const QString& startFolder) override {
    folderStarts.append(startFolder);
    return chosenFolder;
  }
  QString openSingleFile(const QStringList&) override { return {}; }
  QStringList openFiles(const QStringList& extensions) override {
    offeredExtensions = extensions;
    return chosenFiles;
  }
  QStringList chosenFiles;
  QStringList offeredExtensions;
  QString chosenFolder;
  QStringList folderStarts;
};

class MainWindowCommands : public testing::Test {
 protected:
  void SetUp() override {
    for (const char* clip : {"first.mp4", "second.mp4"})
      media.clip(QLatin1String(clip), 1, 1, QStringLiteral("160x120"));
    media.audio(QStringLiteral("song.mp3"), 1);
    media.write(QStringLiteral("broken.mp4"), "not a film");
    media.write(QStringLiteral("notes.avi"), {});
    TestEnvironment::resetApplicationState();
    TestEnvironment::useScratchFolders(media.path());
    DefOutputPath = media.path(QStringLiteral("out"));
    PlatformServices::install(&alerts, &panels, &workspace);
    controller.setOutputFolder(DefOutputPath);
    controller.setCurrentProfile(modeltest::smallProfile());
  }
  void TearDown() override {
    PlatformServices::install(nullptr, nullptr, nullptr);
    TestEnvironment::resetApplicationState();
  }

  QString path(const char* name) const { return media.path(QLatin1String(name)); }
  // Serves events until the files being added have been read.
  void waitForAdding() {
    ASSERT_TRUE(waitUntil([this] { return !controller.isAdding(); }));
  }
  void addFiles(const QStringList& paths) {
    controller.addFilesToMainList(paths);
    waitForAdding();
  }
  void addTwoClips() {
    addFiles({path("first.mp4"), path("second.mp4")});
    ASSERT_EQ(controller.videoData().size(), 2);
  }
  bool waitForIdle() {
    return waitUntil([this] { return !controller.isConverting(); });
  }
  QStringList alertTexts() const {
    QStringList texts;
    for (const auto& alert : alerts.alerts) texts.append(alert.message + QLatin1Char('|') + alert.informativeText);
    return texts;
  }

  testmedia::Folder media;
  RecordingAlertPresenter alerts;
  RecordingPanels panels;
  RecordingWorkspace workspace;
  UIInfoDB db;
  MainFormController controller{db};
};

TEST_F(MainWindowCommands, AddingReportsUndecodableFilesInOneAlertAndKeepsTheRestAndAnEmptyListOnlyAlerts) {
  std::vector<WindowState> states;
  QObject::connect(&controller, &MainFormController::windowStateChanged,
                   [&states](WindowState state) { states.push_back(state); });
  panels.chosenFiles = {path("broken.mp4"), path("first.mp4"), path("notes.avi")};
  MainFormController::lastSelectAllowFiles = 1;
  controller.addFileClick();
  waitForAdding();

  EXPECT_EQ(panels.offeredExtensions, MediaFileTypes::configOpenAllowFileWithIndex(1));
  ASSERT_EQ(alerts.alerts.size(), 1u);
  EXPECT_EQ(alerts.alerts[0].message, QStringLiteral("There are 2 files:\nbroken.mp4\nnotes.avi\n Decode failed"));
  ASSERT_EQ(controller.videoData().size(), 1);
  EXPECT_EQ(controller.videoData()[0]->inputFilename(), path("first.mp4"));
  EXPECT_EQ(controller.videoData()[0]->curProfileSetting().extName(), QStringLiteral("mp4"));
  EXPECT_EQ(DefInputPath, media.path());
  EXPECT_EQ(states, std::vector<WindowState>{WindowState::kReady});

  controller.clearAllFile();
  EXPECT_TRUE(controller.videoData().isEmpty());
  EXPECT_EQ(controller.windowState(), WindowState::kEmpty);
  MainFormController::lastSelectAllowFiles = 0;

  controller.showConverterWindowModal();
  EXPECT_EQ(alertTexts().back(), kProductName + "|Please add files !") << "an empty list only alerts";
  EXPECT_EQ(controller.windowState(), WindowState::kEmpty);
}

TEST_F(MainWindowCommands, DroppingIgnoresUnknownFilesAndOpenEditors) {
  controller.addViewByPbData({path("first.mp4"), path("readme.txt")});
  waitForAdding();
  EXPECT_EQ(controller.videoData().size(), 1);
  EXPECT_TRUE(alerts.alerts.empty());
  controller.setIsShowWindow(true);
  controller.andViewByPb(path("second.mp4"));
  waitForAdding();
  EXPECT_EQ(controller.videoData().size(), 1);
}

TEST_F(MainWindowCommands, MergeRefusalsAndNaming) {
  addFiles({path("first.mp4"), path("song.mp3"), path("second.mp4")});
  const NodeInfo::List items = controller.videoData();
  ASSERT_EQ(items.size(), 3);

  controller.mergeNode({items[0]});
  controller.mergeNode(items);
  EXPECT_EQ(alertTexts(),
            (QStringList{kProductName + "|Merge is effective only when two or more files are chosen",
                         kProductName + "|Merge is effective only when all selected files are video or audio"}));
  EXPECT_EQ(controller.videoData(), items) << "a refused merge changed the list";

  const int32_t number = MainListAction::totalMakeMergeCount;
  controller.mergeNode({items[2], items[0]});
  ASSERT_EQ(controller.videoData().size(), 2);
  const NodeInfo::Ptr group = controller.videoData()[1];
  EXPECT_EQ(group->type(), NodeInfo::kTypeMerged);
  EXPECT_EQ(group->outputFilename(), QStringLiteral("Merge %1").arg(number));
  EXPECT_EQ(group->mediaFileInfo().source(), group->outputFilename());
  EXPECT_EQ(group->childNode(), (NodeInfo::List{items[2], items[0]}));
  EXPECT_EQ(items[0]->type(), NodeInfo::kTypeMergeMember);
  EXPECT_EQ(items[0]->linkedNum(), 1);

  // Numbers are never reused, even after the group is deleted.
  controller.deleteItemView(group);
  addFiles({path("first.mp4"), path("second.mp4")});
  const NodeInfo::List again = controller.videoData();
  controller.mergeNode({again[1], again[2]});
  EXPECT_EQ(controller.videoData().back()->outputFilename(), QStringLiteral("Merge %1").arg(number + 1));
}

TEST_F(MainWindowCommands, ReorderingDeletingAndApplyingAProfileToAll) {
  addFiles({path("first.mp4"), path("second.mp4"), path("song.mp3")});
  const NodeInfo::List items = controller.videoData();
  controller.moveUpClick(items[0]);
  controller.moveNextClick(items[2]);
  EXPECT_EQ(controller.videoData(), items) << "moving past either end changed the list";
  controller.moveNextClick(items[0]);
  controller.moveUpClick(items[2]);
  EXPECT_EQ(controller.videoData(), (NodeInfo::List{items[1], items[2], items[0]}));

  ProfileSettingInfo webm = modeltest::smallProfile(QStringLiteral("webm"), QStringLiteral("webm"));
  items[2]->setCurProfileSetting(webm);
  controller.applyToAll(items[2], false);
  EXPECT_EQ(items[0]->curProfileSetting().extName(), QStringLiteral("mp4"));
  controller.applyToAll(items[2], true);
  for (const NodeInfo::Ptr& item : items) EXPECT_EQ(item->curProfileSetting().extName(), QStringLiteral("webm"));

  controller.deleteItemView(items[1]);
  controller.deleteItemView(items[2]);
  EXPECT_EQ(controller.windowState(), WindowState::kReady);
  controller.deleteItemView(items[0]);
  EXPECT_EQ(controller.windowState(), WindowState::kEmpty);
}

TEST_F(MainWindowCommands, ThumbnailsGoWithTheirItemsAndWithTheList) {
  addFiles({path("first.mp4"), path("second.mp4"), path("first.mp4")});
  const NodeInfo::List items = controller.videoData();
  ASSERT_EQ(items.size(), 3);
  QStringList pictures;
  for (const NodeInfo::Ptr& item : items) pictures.append(item->mediaFileInfo().imageName());
  for (const QString& picture : pictures) ASSERT_TRUE(QFileInfo::exists(picture)) << picture.toStdString();
  const QString userCover = path("first.mp4");
  items[1]->metaData().setImage(userCover);

  controller.deleteItemView(items[1]);
  EXPECT_FALSE(QFileInfo::exists(pictures[1]));
  EXPECT_TRUE(QFileInfo::exists(userCover)) << "a picture outside the thumbnail folder was removed";
  EXPECT_TRUE(QFileInfo::exists(pictures[0]) && QFileInfo::exists(pictures[2]));
  {
    MainFormController another(db);
    EXPECT_EQ(another.videoData().size(), 2);
  }
  EXPECT_FALSE(QFileInfo::exists(pictures[0]) || QFileInfo::exists(pictures[2])) << "the list went away";
}

TEST_F(MainWindowCommands, SnapshotNumbersAdvanceOnlyAfterSuccess) {
  photoOutputPath = path("photos");
  photoOutputFormat = QStringLiteral("jpg");
  const int32_t first = MainFormController::kImageIndex;
  QStringList paths;
  int32_t result = 0;
  auto take = [&](const QString& snapshotPath, int32_t type) {
    EXPECT_EQ(type, 3);
    paths.append(snapshotPath);
    return result;
  };
  EXPECT_FALSE(controller.photoButtonClick(take).isEmpty());
  result = -1;
  EXPECT_TRUE(controller.photoButtonClick(take).isEmpty());
  result = 0;
  EXPECT_FALSE(controller.photoButtonClick(take).isEmpty());
  auto expected = [&](int32_t number) {
    return QString::asprintf("%s/%05d.jpg", qUtf8Printable(photoOutputPath), number);
  };
  EXPECT_EQ(paths, (QStringList{expected(first), expected(first + 1), expected(first + 1)}));
  EXPECT_TRUE(QFileInfo(photoOutputPath).isDir());
}

TEST_F(MainWindowCommands, ACoverGoingIntoWindowsMediaIsAskedAboutOnceAndNoStopsTheRun) {
  addTwoClips();
  const QString cover = media.still(QStringLiteral("cover.png"));
  for (const NodeInfo::Ptr& item : controller.videoData()) {
    item->setCurProfileSetting(modeltest::smallProfile("asf", "wmv", "wmv2", "wmav2"));
    item->metaData().setImage(cover);
  }
  const QString question =
      "The WMV/WMA file you're converting cannot be imported to the early version of Windows Movie Maker because it "
      "includes an album cover.Click \"Yes\" to continue converting, or \"No\" to stop.";
  alerts.answer = 1;  // "NO"
  controller.showConverterWindowModal();
  ASSERT_EQ(alerts.alerts.size(), 1u) << "only the first such item is asked about";
  EXPECT_EQ(alerts.alerts[0].message, question);
  EXPECT_EQ(alerts.alerts[0].informativeText, QString());
  EXPECT_EQ(alerts.alerts[0].buttons, QStringList({"YES", "NO"}));
  EXPECT_EQ(controller.windowState(), WindowState::kReady);

  alerts.answer = 0;  // "YES"
  controller.showConverterWindowModal();
  EXPECT_EQ(controller.windowState(), WindowState::kConverting);
  ASSERT_TRUE(waitForIdle());
  EXPECT_TRUE(QFileInfo::exists(DefOutputPath + "/first.wmv"));
  EXPECT_EQ(alerts.alerts[1].message, question);
}

TEST_F(MainWindowCommands, TheListCannotChangeWhileConverting) {
  addTwoClips();
  controller.showConverterWindowModal();
  EXPECT_EQ(controller.windowState(), WindowState::kConverting);
  controller.downloadFormDidAddFiles({path("first.mp4")});
  controller.clearAllFile();
  EXPECT_EQ(controller.videoData().size(), 2);
  ASSERT_EQ(alertTexts(), QStringList{"Can't import file when the conversion is processing|"});
  ASSERT_TRUE(waitForIdle());
  EXPECT_TRUE(QFileInfo::exists(DefOutputPath + "/second.mp4"));
}

TEST_F(MainWindowCommands, CancellingAsksAndSuppressesTheCompletion) {
  addTwoClips();
  controller.showConverterWindowModal();
  alerts.answer = 1;
  controller.cancelConvertButtonClick();
  EXPECT_EQ(alerts.alerts.back().informativeText, QStringLiteral("Cancel convertion?"));
  EXPECT_EQ(alerts.alerts.back().buttons, (QStringList{"Yes", "No"}));
  EXPECT_EQ(controller.convertViewList()->queuedRows().size(), 2) << "answering No cancelled";
  EXPECT_TRUE(controller.isCancelButtonVisible());

  alerts.answer = 0;
  controller.cancelConvertButtonClick();
  EXPECT_FALSE(controller.isCancelButtonVisible());
  EXPECT_TRUE(controller.isConverting()) << "the window left converting before the queue ended";
  ASSERT_TRUE(waitForIdle());
  EXPECT_FALSE(QFileInfo::exists(DefOutputPath + "/second.mp4"));
  EXPECT_FALSE(alertTexts().contains(kProductName + "|Conversion complete!"));
  EXPECT_TRUE(workspace.revealed.isEmpty());

  // The next conversion that completes shows both again.
  alerts.alerts.clear();
  controller.showConverterWindowModal();
  ASSERT_TRUE(waitForIdle());
  EXPECT_EQ(alertTexts(), QStringList{kProductName + "|Conversion complete!"});
  EXPECT_EQ(workspace.revealed, QStringList{DefOutputPath});
}

}  // namespace
