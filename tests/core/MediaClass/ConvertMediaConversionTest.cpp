// Real conversions through the job and the runner: generated files, the real
// converter, the end announced through the distributed centre on the real
// event loop, and the outputs judged by ffprobe.
#include <gtest/gtest.h>

#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QThread>
#include <QTimer>

#include "CommonClass/DistributedNotificationCenter.h"
#include "CommonClass/KMVLog.h"
#include "EventLoopWait.h"
#include "GeneratedMedia.h"
#include "MediaClass/ConvertMedia.h"
#include "support/ListItems.h"

namespace {

// Lets everything already queued on the main thread run.
void drainQueuedEvents() {
  bool reached = false;
  QTimer::singleShot(0, [&reached] { reached = true; });
  waitUntil([&reached] { return reached; });
}

class Conversions : public testing::Test {
 protected:
  void SetUp() override {
    const QStringList paths{media.clip(QStringLiteral("movie.mp4"), 2), media.clip(QStringLiteral("long.avi"), 60)};
    files = modeltest::addToList(db, paths, media.path(QStringLiteral("scratch")));
    ASSERT_EQ(files.size(), 2);
    DistributedNotificationCenter::defaultCenter().addObserver(
        this, QLatin1String(ConvertMedia::kConvertEndNotification), [this](const Notification&) {
          ++ends;
          endsOnMainThread = endsOnMainThread && QThread::currentThread() == QCoreApplication::instance()->thread();
        });
  }
  void TearDown() override { DistributedNotificationCenter::defaultCenter().removeObserver(this); }

  NodeInfo::Ptr item(int index, const QString& profile = QStringLiteral("MPEG-4 AVC")) {
    NodeInfo::Ptr node = files.at(index)->copy();
    node->setCurProfileSetting(modeltest::shippedProfile(profile));
    node->setOutputPath(output.path());
    return node;
  }
  bool waitForEnd() {
    const int before = ends;
    return waitUntil([&] { return ends > before; });
  }

  testmedia::Folder media;
  UIInfoDB db;
  NodeInfo::List files;
  testmedia::Folder output;
  int ends = 0;
  bool endsOnMainThread = true;
};

TEST_F(Conversions, AFileIsConvertedAsItsProfileSaysAndTheEndIsAnnouncedOnceOnTheMainThread) {
  const NodeInfo::Ptr node = item(0);
  ConvertMedia job;
  ASSERT_EQ(job.encode(node), 0) << job.refusal().toStdString();
  EXPECT_EQ(node->converterState(), 1);
  EXPECT_EQ(job.videoPath(), output.path(QStringLiteral("movie.mp4")));
  ASSERT_TRUE(waitForEnd());
  drainQueuedEvents();
  EXPECT_EQ(ends, 1);
  EXPECT_TRUE(endsOnMainThread);
  EXPECT_TRUE(job.hasEnded());
  EXPECT_GT(job.getLength(), 1.9e6);
  EXPECT_EQ(job.getCurrentTime(), job.getLength());

  EXPECT_EQ(testmedia::ffprobe(job.videoPath(), "streams", "v:0").value("codec_name"), "h264");
  EXPECT_NEAR(testmedia::duration(job.videoPath()), 2.0, 0.1);

  QString log;
  for (const QFileInfo& day : QDir(KMVLog::folder()).entryInfoList(QDir::Files)) {
    QFile file(day.filePath());
    if (file.open(QIODevice::ReadOnly)) log += QString::fromUtf8(file.readAll());
  }
  EXPECT_TRUE(log.contains(QStringLiteral("enCodeEnd..... waste "))) << log.toStdString();
}

TEST_F(Conversions, StoppingEndsOnceAndKeepsWhatWasWritten) {
  ConvertMedia job;
  ASSERT_EQ(job.encode(item(1)), 0);
  ASSERT_TRUE(waitUntil([&job] { return job.getCurrentTime() > 0; }));
  job.stopEnCode();
  ASSERT_TRUE(waitForEnd());
  drainQueuedEvents();
  EXPECT_EQ(ends, 1);
  EXPECT_LT(job.getCurrentTime(), job.getLength());
  job.deleteVideoName();
  EXPECT_TRUE(QFileInfo(job.videoPath()).size() > 0);
}

}  // namespace
