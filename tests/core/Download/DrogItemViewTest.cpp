// One line of the download list and its container: what each state shows,
// the commands and their notifications, the speed and size texts from the
// temporary file, the saved name, a task without an address, and the
// container's insertion, selection and deletion.

#include <gtest/gtest.h>

#include <QFile>
#include <QFileInfo>
#include <QPointer>

#include "CommonClass/NotificationCenter.h"
#include "Download/DownloadFileName.h"
#include "Download/DroglineView.h"
#include "Download/TiffImage.h"
#include "EventLoopWait.h"
#include "GeneratedMedia.h"
#include "RecordingAlertPresenter.h"

namespace {

using Element = DrogItemView::Element;

std::shared_ptr<VideoInfoObject> taskIn(qint64 state) {
  auto task = std::make_shared<VideoInfoObject>();
  task->setVideoDownState(state);
  return task;
}

// The elements a state decides on, as "1" (shown) and "." (hidden), in this order.
constexpr Element kDecided[] = {Element::progressBar,      Element::btPause,         Element::btResume,
                                Element::imgvFail,         Element::labFail,         Element::imgvWait,
                                Element::labWait,          Element::btReParam,       Element::labVideoTime,
                                Element::labVideoSize,     Element::btOpenFile,      Element::btImportToConverter,
                                Element::labDownloadSpeed, Element::labDownloadSize, Element::btDelete};

std::string shown(const DrogItemView& item) {
  std::string marks;
  for (const Element element : kDecided) marks += item.isVisible(element) ? '1' : '.';
  return marks;
}

TEST(DrogItemView, EachStateShowsItsElements) {
  DrogItemView item(taskIn(1));
  struct Expected {
    int32_t code;
    std::string marks;
  };
  for (const Expected& expected :
       {Expected{1, "1.............1"}, Expected{2, "11..........111"}, Expected{3, "........1111..1"},
        Expected{4, "...11..1......1"}, Expected{6, ".1...11.......1"}}) {
    item.cellState(expected.code);
    EXPECT_EQ(shown(item), expected.marks) << "state " << expected.code;
  }
  item.cellState(1);
  EXPECT_TRUE(item.isProgressIndeterminate());
  EXPECT_TRUE(item.isProgressAnimating());
  EXPECT_FALSE(item.isReParamEnabled());
  item.cellState(4);
  EXPECT_FALSE(item.isProgressAnimating());
  EXPECT_TRUE(item.isReParamEnabled());
  item.cellState(2);
  EXPECT_FALSE(item.isProgressIndeterminate());

  EXPECT_EQ(DrogItemView::skinName(Element::btImportToConverter), "winDownload.list.btImportToConverter");
  EXPECT_EQ(DrogItemView::toolTip(Element::btOpenFile), "Show in Finder");
  EXPECT_EQ(DrogItemView::toolTip(Element::btReParam), "Re-analyze");
  EXPECT_EQ(DrogItemView::toolTip(Element::labTitle), "");
}

// Records the notifications items post.
class ItemCommands : public testing::Test {
 protected:
  void SetUp() override {
    for (const char* name : {DrogItemView::kResumeNotification, DrogItemView::kPauseNotification,
                             DrogItemView::kReParamNotification, DrogItemView::kImportNotification}) {
      NotificationCenter::defaultCenter().addObserver(this, QLatin1String(name), [this](const Notification& posted) {
        heard << posted.name + QLatin1Char(' ') + (posted.object.value<QObject*>() == item ? "item" : "other");
      });
    }
    PlatformServices::install(nullptr, nullptr, &workspace);
  }
  void TearDown() override {
    NotificationCenter::defaultCenter().removeObserver(this);
    PlatformServices::install(nullptr, nullptr, nullptr);
  }

  DroglineView list;
  DrogItemView* item = nullptr;
  QStringList heard;
  RecordingWorkspace workspace;
};

TEST_F(ItemCommands, CommandsAnnounceThemselvesAndShowTheOtherButton) {
  list.addItemView(new DrogItemView(taskIn(2)), 0);
  item = new DrogItemView(taskIn(2));
  list.addItemView(item, 1);
  item->itemInfo()->setSavePath("/videos/clip.mp4");
  item->cellState(2);
  ASSERT_NE(list.getSeleteView(), item);

  item->pausePrograss(false);
  EXPECT_EQ(heard, QStringList{"pauseURL item"});
  EXPECT_TRUE(item->isVisible(Element::btResume));
  EXPECT_FALSE(item->isVisible(Element::btPause));
  EXPECT_FALSE(item->isVisible(Element::labDownloadSpeed));
  EXPECT_EQ(item->cellState(), 2);
  EXPECT_NE(list.getSeleteView(), item);

  item->cellState(6);
  item->startPrograss(true);
  EXPECT_EQ(heard.last(), "resumeURL item");
  EXPECT_TRUE(item->isVisible(Element::btPause));
  EXPECT_FALSE(item->isVisible(Element::btResume));
  EXPECT_TRUE(item->isVisible(Element::imgvWait));
  EXPECT_EQ(list.getSeleteView(), item);
  EXPECT_TRUE(item->isSeleted());
  EXPECT_TRUE(item->isVisible(Element::imgvHighBg));

  list.setSeleteView(list.getChildItem().first());
  item->startParam();
  EXPECT_EQ(heard.last(), "reParamURL item");
  EXPECT_EQ(list.getSeleteView(), item);
  item->importToConverter(true);
  EXPECT_EQ(heard.last(), "importToConverter item");
  item->openFile();
  EXPECT_EQ(workspace.revealed, QStringList{"/videos/clip.mp4"});
}

TEST(DrogItemView, TheSpeedAndDownloadedSizeFollowTheTemporaryFile) {
  testmedia::Folder folder;
  DrogItemView item(taskIn(2));
  item.itemInfo()->setSavePath(folder.path("clip.mp4"));
  item.itemInfo()->setStrVideoSize("??? MB");
  QFile part(folder.path("clip.mp4.download"));
  ASSERT_TRUE(part.open(QIODevice::WriteOnly));
  ASSERT_TRUE(part.resize(12345678));
  item.updateDownloadInfo();
  EXPECT_EQ(item.downloadSize(), "12.35 MB");
  EXPECT_EQ(item.downloadSpeed(), "12345.68 Kb/s");

  ASSERT_TRUE(part.resize(12845678));
  item.itemInfo()->setStrVideoSize("20.00 MB");
  item.updateDownloadInfo();
  EXPECT_EQ(item.downloadSize(), "12.85 MB/20.00 MB");
  EXPECT_EQ(item.downloadSpeed(), "500.00 Kb/s");
}

TEST(DrogItemView, ADownloadTakesAFreeNameNumberedFromZero) {
  testmedia::Folder folder;
  EXPECT_EQ(freeDownloadPath(folder.path(), "clip", "mp4"), folder.path("clip.mp4"));
  folder.write("clip.mp4", "taken");
  EXPECT_EQ(freeDownloadPath(folder.path(), "clip", "mp4"), folder.path("clip(0).mp4"));
  folder.write("clip(0).mp4", "taken");
  EXPECT_EQ(freeDownloadPath(folder.path(), "clip", "mp4"), folder.path("clip(1).mp4"));
  EXPECT_EQ(freeDownloadPath(folder.path(), "%1 100%", "mp4"), folder.path("%1 100%.mp4"));
}

TEST(DrogItemView, TheDisplayComesFromTheTaskAndATaskWithoutAddressFailsAtOnce) {
  DrogItemView analysing(taskIn(1));
  analysing.initViewValue();
  EXPECT_EQ(analysing.blogSkinImage(), "blogImage.gif");
  EXPECT_EQ(analysing.title(), " ");

  QImage picture(400, 300, QImage::Format_RGB888);
  picture.fill(QColor(10, 200, 30));
  const std::shared_ptr<VideoInfoObject> finished = taskIn(3);
  finished->setBlogData(TiffImage::encode(picture));
  finished->setTitleStr("clip");
  finished->setVideoTime("00:01:35");
  DrogItemView shown(finished);
  shown.initViewValue();
  EXPECT_TRUE(shown.blogSkinImage().isEmpty());
  // Kept no larger than a line shows it.
  EXPECT_EQ(shown.getBlogImage().size(), QSize(160, 120));
  EXPECT_EQ(shown.getBlogImage().pixelColor(80, 60), QColor(10, 200, 30));
  EXPECT_EQ(shown.title(), "clip");
  EXPECT_EQ(shown.videoTime(), "00:01:35");
  EXPECT_EQ(shown.videoFormat(), " ");

  QObject target;
  DrogItemView failing(taskIn(1));
  QString reason;
  failing.setTarget(&target);
  failing.setDownloadFailAction([&reason](DrogItemView*, const QString& why) { reason = why; });
  failing.initDownloadRequest();
  EXPECT_EQ(failing.blogSkinImage(), "downFail");
  EXPECT_EQ(failing.cellState(), 4);
  EXPECT_EQ(failing.itemInfo()->videoDownState(), 4);
  // The target hears of it on the main thread's next turn.
  EXPECT_TRUE(reason.isEmpty());
  ASSERT_TRUE(waitUntil([&reason] { return !reason.isEmpty(); }));
}

// Records what the container tells its delegate.
class RecordingListDelegate : public DroglineViewDelegate {
 public:
  void droglineViewDidRemoveItemView(DroglineView* list, DrogItemView* item) override {
    removed.append(item);
    countAtRemoval = list->getChildItem().size();
  }
  QList<DrogItemView*> removed;
  qsizetype countAtRemoval = -1;
};

TEST(DroglineView, ItemsGoInAtTheirPlaceAndADeletedOneIsReleasedAfterTheDelegateHeard) {
  DroglineView list;
  RecordingListDelegate delegate;
  list.setDelegate(&delegate);
  auto* first = new DrogItemView(taskIn(3));
  list.addItemView(first, 0);
  EXPECT_EQ(list.getSeleteView(), first);
  auto* top = new DrogItemView(taskIn(3));
  list.addItemView(top, 0);
  auto* bottom = new DrogItemView(taskIn(3));
  list.addItemView(bottom, 2);
  EXPECT_EQ(list.getChildItem(), (QList<DrogItemView*>{top, first, bottom}));
  EXPECT_EQ(list.getSeleteView(), first);
  EXPECT_EQ(list.getViewById(bottom->itemInfo().get()), bottom);
  EXPECT_EQ(list.getViewById(nullptr), nullptr);

  const QPointer<DrogItemView> deleted = first;
  first->deleteItemView();
  EXPECT_EQ(delegate.removed, QList<DrogItemView*>{first});
  EXPECT_EQ(delegate.countAtRemoval, 2);
  // The item now at the deleted one's place is selected.
  EXPECT_EQ(list.getSeleteView(), bottom);
  EXPECT_TRUE(bottom->isSeleted());
  EXPECT_FALSE(deleted.isNull());
  EXPECT_TRUE(waitUntil([&deleted] { return deleted.isNull(); }));

  bottom->deleteItemView();
  EXPECT_EQ(list.getSeleteView(), top);
  list.removeAllItems();
  EXPECT_TRUE(list.getChildItem().isEmpty());
  EXPECT_EQ(list.getSeleteView(), nullptr);
  EXPECT_EQ(delegate.removed.size(), 2);
}

}  // namespace
