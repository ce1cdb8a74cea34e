// The conversion queue on real conversions: tiny clips made by ffmpeg, added
// through the real probe, converted by the engine, with the real event loop
// delivering progress and "CONVERTEND".
#include <gtest/gtest.h>

#include "support/ListItems.h"

#include <QDir>
#include <QFileInfo>

#include <memory>
#include <vector>

#include "Action/ConvertView.h"
#include "Action/ConvertViewList.h"
#include "Action/NodeInfoAction.h"
#include "CommonClass/DistributedNotificationCenter.h"
#include "CommonClass/GlobalSettings.h"
#include "CommonClass/KMVLog.h"
#include "EventLoopWait.h"
#include "GeneratedMedia.h"
#include "TestEnvironment.h"

namespace {

// An output name no output path can hold: the job refuses it before starting.
const QString kNameTooLong(5000, QLatin1Char('n'));

class RecordingMainWindow : public ConvertViewListDelegate {
 public:
  void convertEnd() override { ++endCount; }
  void showMessage(const QString& message) override { messages.append(message); }
  int endCount = 0;
  QStringList messages;
};

class ConversionQueue : public testing::Test {
 protected:
  void SetUp() override {
    clip = media.clip(QStringLiteral("clip.mp4"), 1, 1, QStringLiteral("160x120"));
    modeltest::startWithEmptyList(media.path(QStringLiteral("scratch")), media.path());
    outputFolder = media.path(QStringLiteral("out"));
    QDir().mkpath(outputFolder);
    queue.setDelegate(&window);
  }
  void TearDown() override { TestEnvironment::resetApplicationState(); }

  // Rows for `count` copies of the clip, output names "row0", "row1", ...
  // Each node carries a title to write into its output.
  void makeRows(int count) {
    UIInfoDB db;
    const NodeInfo::List added =
        modeltest::addToList(db, QStringList(count, clip), media.path(QStringLiteral("scratch")));
    ASSERT_EQ(added.size(), count);
    for (int index = 0; index < count; ++index) {
      const NodeInfo::Ptr& node = added[index];
      node->setCurProfileSetting(modeltest::smallProfile());
      node->setMetaEditEnable(true);
      node->metaData().setTitle(QStringLiteral("Title %1").arg(index));
      node->setOutputPath(outputFolder);
      node->setOutputFilename(QStringLiteral("row%1").arg(index));
      auto row = std::make_unique<ConvertView>(node);
      ConvertView* view = row.get();
      QObject::connect(view, &ConvertView::changed, [this, view] { noteChange(view); });
      rows.push_back(std::move(row));
    }
  }

  QList<ConvertView*> rowList() const {
    QList<ConvertView*> list;
    for (const auto& row : rows) list.append(row.get());
    return list;
  }

  // Records the order rows start converting in, and whether two ever ran at once.
  void noteChange(ConvertView* view) {
    int running = 0;
    for (const auto& row : rows) running += row->isConvert() ? 1 : 0;
    if (running > 1) twoRanAtOnce = true;
    if (view->isConvert() && (started.isEmpty() || started.back() != view)) started.append(view);
  }

  QString outputOf(int index) const { return QStringLiteral("%1/row%2.mp4").arg(outputFolder).arg(index); }
  static QString titleIn(const QString& path) { return MediaMetaData::initWithFile(path, QString()).title(); }

  bool waitForEnd() {
    return waitUntil([this] { return window.endCount > 0; });
  }

  testmedia::Folder media;
  QString clip;
  QString outputFolder;
  RecordingMainWindow window;
  ConvertViewList queue;
  std::vector<std::unique_ptr<ConvertView>> rows;
  QList<ConvertView*> started;
  bool twoRanAtOnce = false;
};

TEST_F(ConversionQueue, ConvertsRowsOneAfterAnotherAndAnnouncesTheEndOnce) {
  makeRows(3);
  queue.encode(rowList());
  ASSERT_TRUE(waitForEnd());

  EXPECT_EQ(started, rowList());
  EXPECT_FALSE(twoRanAtOnce);
  EXPECT_EQ(window.endCount, 1);
  EXPECT_FALSE(queue.isConvert());
  EXPECT_TRUE(queue.queuedRows().isEmpty());
  for (int index = 0; index < 3; ++index) {
    SCOPED_TRACE(index);
    const ConvertView& row = *rows[index];
    EXPECT_EQ(row.rateText(), QStringLiteral("100%"));
    EXPECT_EQ(row.progressValue(), row.progressMaximum());
    EXPECT_GT(row.progressMaximum(), 0.5);
    EXPECT_TRUE(row.isStartButtonVisible());
    EXPECT_FALSE(row.isStartButtonEnabled());
    EXPECT_FALSE(row.isStopButtonVisible());
    EXPECT_NEAR(testmedia::duration(outputOf(index)), 1.0, 0.3);
    EXPECT_EQ(titleIn(outputOf(index)), QStringLiteral("Title %1").arg(index));
    EXPECT_EQ(row.outcome(), ConvertView::Outcome::kFinished);
    EXPECT_TRUE(row.outcomeReason().isEmpty());
    EXPECT_EQ(row.outputFiles(), QStringList{outputOf(index)});
    EXPECT_GT(row.elapsedSeconds(), 0);
    EXPECT_TRUE(row.statusLine().startsWith(QStringLiteral("Finished in 00:00:"))) << row.statusLine().toStdString();
  }
  // A late "CONVERTEND" from elsewhere does not end the run a second time.
  DistributedNotificationCenter::defaultCenter().postNotificationName(
      QLatin1String(ConvertMedia::kConvertEndNotification), QString(), true);
  EXPECT_EQ(window.endCount, 1);

  QString log;
  for (const QFileInfo& day : QDir(KMVLog::folder()).entryInfoList(QDir::Files)) log += media.read(day.filePath());
  EXPECT_GE(log.count(QStringLiteral("enCodeEnd..... waste ")), 3) << log.toStdString();
}

TEST_F(ConversionQueue, StoppingRowsLeavesTheOthersRunningAndAStoppedRowPutBackRunsLast) {
  makeRows(4);
  queue.encode(rowList());
  ConvertView& running = *rows[0];
  ConvertView& waiting = *rows[1];
  ConvertView& putBack = *rows[3];
  ASSERT_TRUE(running.isConvert());
  EXPECT_TRUE(waiting.isStopButtonVisible());
  EXPECT_FALSE(waiting.isStartButtonVisible());

  waiting.stopButtonClick();
  EXPECT_TRUE(running.isConvert()) << "stopping a waiting row touched the running one";
  EXPECT_TRUE(waiting.isStartButtonVisible());
  EXPECT_TRUE(waiting.isStartButtonEnabled());
  EXPECT_FALSE(waiting.isStopButtonVisible());
  EXPECT_EQ(waiting.outcome(), ConvertView::Outcome::kStopped);
  putBack.stopButtonClick();
  putBack.encodeButtonClick();
  EXPECT_FALSE(putBack.isStartButtonVisible());
  EXPECT_TRUE(putBack.isStopButtonVisible());
  queue.reConvert(&putBack);  // pressing start again does not queue the row twice
  EXPECT_EQ(queue.queuedRows(), (QList<ConvertView*>{&running, rows[2].get(), &putBack}));

  running.stopButtonClick();
  ASSERT_TRUE(waitForEnd());
  EXPECT_EQ(started, (QList<ConvertView*>{&running, rows[2].get(), &putBack}));
  EXPECT_EQ(window.endCount, 1);
  // The stopped running row: no tags, start enabled, no percentage.
  EXPECT_TRUE(running.isStartButtonEnabled());
  EXPECT_FALSE(running.isStopButtonVisible());
  EXPECT_TRUE(running.rateText().isEmpty());
  EXPECT_TRUE(titleIn(outputOf(0)).isEmpty());
  EXPECT_EQ(running.outcome(), ConvertView::Outcome::kStopped);
  EXPECT_FALSE(QFileInfo::exists(outputOf(1)));
  for (int index : {2, 3}) {
    EXPECT_EQ(rows[index]->rateText(), QStringLiteral("100%")) << index;
    EXPECT_EQ(titleIn(outputOf(index)), QStringLiteral("Title %1").arg(index));
    EXPECT_EQ(rows[index]->outcome(), ConvertView::Outcome::kFinished);
  }
}

TEST_F(ConversionQueue, CancelAllShowsTheInterruptedRowFinishedAndEndsTheRun) {
  makeRows(3);
  queue.encode(rowList());
  ASSERT_TRUE(rows[0]->isConvert());
  queue.cancelConvertAll();
  EXPECT_TRUE(queue.queuedRows().isEmpty());

  ASSERT_TRUE(waitForEnd());
  EXPECT_EQ(started, QList<ConvertView*>{rows[0].get()});
  EXPECT_EQ(window.endCount, 1);
  EXPECT_EQ(rows[0]->rateText(), QStringLiteral("100%"));
  EXPECT_EQ(rows[0]->progressValue(), rows[0]->progressMaximum());
  EXPECT_FALSE(rows[0]->isStartButtonEnabled());
  EXPECT_TRUE(titleIn(outputOf(0)).isEmpty()) << "tags written into a cancelled output";
  EXPECT_FALSE(QFileInfo::exists(outputOf(1)));
  EXPECT_FALSE(QFileInfo::exists(outputOf(2)));
  for (const auto& row : rows) EXPECT_EQ(row->outcome(), ConvertView::Outcome::kCancelled);
  EXPECT_TRUE(rows[0]->outcomeReason().startsWith(QStringLiteral("The conversion was stopped at")))
      << rows[0]->outcomeReason().toStdString();
}

TEST_F(ConversionQueue, RowsThatFailToStartOrInTheConverterEndFailedTheRunGoesOnAndEndsOnceIfNoneStarts) {
  makeRows(3);
  rows[0]->nodeInfo()->curProfileSetting().setVideoEncoder(QStringLiteral("nonesuch"));
  rows[1]->nodeInfo()->setOutputFilename(kNameTooLong);
  QStringList told;
  QObject::connect(&queue, &ConvertViewList::rowStarted,
                   [&](ConvertView* row) { told.append("start " + row->nodeInfo()->outputFilename().left(4)); });
  QObject::connect(&queue, &ConvertViewList::rowEnded,
                   [&](ConvertView* row) { told.append("end " + row->nodeInfo()->outputFilename().left(4)); });
  queue.encode(rowList());

  ASSERT_TRUE(waitForEnd());
  EXPECT_EQ(started, (QList<ConvertView*>{rows[0].get(), rows[2].get()}));
  EXPECT_EQ(told, QStringList({"start row0", "end row0", "end nnnn", "start row2", "end row2"}));
  EXPECT_EQ(window.endCount, 1);
  // Row 0 started, then failed inside the converter.
  EXPECT_EQ(rows[0]->outcome(), ConvertView::Outcome::kFailed);
  EXPECT_TRUE(rows[0]->outcomeReason().contains(QStringLiteral("nonesuch"))) << rows[0]->outcomeReason().toStdString();
  EXPECT_TRUE(rows[0]->outputFiles().isEmpty());
  EXPECT_EQ(rows[0]->statusLine(), QStringLiteral("Failed: ") + rows[0]->outcomeReason());
  EXPECT_FALSE(QFileInfo::exists(outputOf(0)));
  // Row 1 was refused before it started.
  EXPECT_EQ(rows[1]->outcome(), ConvertView::Outcome::kFailed);
  EXPECT_TRUE(rows[1]->outcomeReason().contains(QStringLiteral("output path")))
      << rows[1]->outcomeReason().toStdString();
  EXPECT_TRUE(rows[1]->outputPath().isEmpty());
  EXPECT_TRUE(rows[1]->rateText().isEmpty());
  EXPECT_TRUE(rows[1]->isStartButtonEnabled());
  EXPECT_EQ(rows[2]->outputPath(), outputOf(2));
  EXPECT_EQ(rows[2]->outcome(), ConvertView::Outcome::kFinished);
  EXPECT_TRUE(QFileInfo::exists(outputOf(2)));

  // A run whose every row fails to start still ends once.
  QDir(outputFolder).removeRecursively();
  for (const auto& row : rows) row->nodeInfo()->setOutputFilename(kNameTooLong);
  started.clear();
  window.endCount = 0;
  queue.encode(rowList());
  ASSERT_TRUE(waitForEnd());
  EXPECT_TRUE(started.isEmpty());
  EXPECT_EQ(window.endCount, 1);
  EXPECT_FALSE(queue.isConvert());
  EXPECT_FALSE(QDir(outputFolder).exists());
}

}  // namespace
