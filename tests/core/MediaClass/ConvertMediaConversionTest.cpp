// Real conversions through the job and the runner: generated files, the real
// converter, the end announced through the distributed centre on the real
// event loop, and the outputs judged by ffprobe.
#include <gtest/gtest.h>

#include <QCoreApplication>
#include <QDir>
#include <QEventLoop>
#include <QFile>
#include <QJsonArray>
#include <QTemporaryDir>
#include <QThread>
#include <QTimer>

#include <functional>

#include "CommonClass/DistributedNotificationCenter.h"
#include "CommonClass/KMVLog.h"
#include "MediaClass/ConvertMedia.h"
#include "support/GeneratedMedia.h"
#include "support/ListItems.h"

namespace {

// A bound for a wait that only a hang would reach.
constexpr int kHangMs = 120000;

// Runs the event loop until `done` holds, looking again every few milliseconds.
bool runLoopUntil(const std::function<bool()>& done) {
  if (done()) return true;
  QEventLoop loop;
  QTimer look;
  QObject::connect(&look, &QTimer::timeout, &loop, [&] {
    if (done()) loop.quit();
  });
  look.start(20);
  QTimer::singleShot(kHangMs, &loop, &QEventLoop::quit);
  loop.exec();
  return done();
}

// Lets everything already queued on the main thread run.
void drainQueuedEvents() {
  bool reached = false;
  QTimer::singleShot(0, [&reached] { reached = true; });
  runLoopUntil([&reached] { return reached; });
}

QString streamField(const QJsonObject& probe, const QString& type, const QString& field) {
  for (const QJsonValue& stream : probe.value(QStringLiteral("streams")).toArray()) {
    const QJsonObject object = stream.toObject();
    if (object.value(QStringLiteral("codec_type")).toString() == type)
      return object.value(field).toVariant().toString();
  }
  return {};
}

class Conversions : public testing::Test {
 protected:
  static void SetUpTestSuite() {
    media = new modeltest::MediaFolder;
    const QStringList paths{media->videoClip(QStringLiteral("movie.mp4"), 2),
                            media->videoClip(QStringLiteral("long.avi"), 60)};
    db = new UIInfoDB;
    files = new NodeInfo::List(modeltest::addToList(*db, paths, media->path(QStringLiteral("scratch"))));
  }
  static void TearDownTestSuite() {
    delete files;
    delete db;
    delete media;
  }
  void SetUp() override {
    ASSERT_EQ(files->size(), 2);
    DistributedNotificationCenter::defaultCenter().addObserver(
        this, QLatin1String(ConvertMedia::kConvertEndNotification), [this](const Notification&) {
          ++ends;
          endsOnMainThread = endsOnMainThread && QThread::currentThread() == QCoreApplication::instance()->thread();
        });
  }
  void TearDown() override { DistributedNotificationCenter::defaultCenter().removeObserver(this); }

  NodeInfo::Ptr item(int index, const QString& profile = QStringLiteral("MPEG-4 AVC")) {
    NodeInfo::Ptr node = files->at(index)->copy();
    node->setCurProfileSetting(modeltest::shippedProfile(profile));
    node->setOutputPath(output.path());
    return node;
  }
  bool waitForEnd() {
    const int before = ends;
    return runLoopUntil([&] { return ends > before; });
  }

  static modeltest::MediaFolder* media;
  static NodeInfo::List* files;
  static inline UIInfoDB* db = nullptr;
  QTemporaryDir output;
  int ends = 0;
  bool endsOnMainThread = true;
};
modeltest::MediaFolder* Conversions::media = nullptr;
NodeInfo::List* Conversions::files = nullptr;

TEST_F(Conversions, AFileIsConvertedAsItsProfileSaysAndTheEndIsAnnouncedOnceOnTheMainThread) {
  const NodeInfo::Ptr node = item(0);
  ConvertMedia job;
  ASSERT_EQ(job.encode(node), 0) << job.refusal().toStdString();
  EXPECT_EQ(node->converterState(), 1);
  EXPECT_EQ(job.videoPath(), output.filePath(QStringLiteral("movie.mp4")));
  ASSERT_TRUE(waitForEnd());
  drainQueuedEvents();
  EXPECT_EQ(ends, 1);
  EXPECT_TRUE(endsOnMainThread);
  EXPECT_TRUE(job.hasEnded());
  EXPECT_GT(job.getLength(), 1.9e6);
  EXPECT_EQ(job.getCurrentTime(), job.getLength());

  const QJsonObject probe = modeltest::ffprobe(job.videoPath());
  EXPECT_EQ(streamField(probe, "video", "codec_name"), QStringLiteral("h264"));
  EXPECT_EQ(streamField(probe, "video", "width"), QStringLiteral("320"));
  EXPECT_EQ(streamField(probe, "video", "height"), QStringLiteral("240"));
  EXPECT_EQ(streamField(probe, "video", "r_frame_rate"), QStringLiteral("30000/1001"));
  EXPECT_EQ(streamField(probe, "audio", "codec_name"), QStringLiteral("aac"));
  EXPECT_EQ(streamField(probe, "audio", "sample_rate"), QStringLiteral("44100"));
  EXPECT_NEAR(modeltest::ffprobeDuration(probe), 2.0, 0.1);

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
  ASSERT_TRUE(runLoopUntil([&job] { return job.getCurrentTime() > 0; }));
  job.stopEnCode();
  ASSERT_TRUE(waitForEnd());
  drainQueuedEvents();
  EXPECT_EQ(ends, 1);
  EXPECT_LT(job.getCurrentTime(), job.getLength());
  job.deleteVideoName();
  EXPECT_TRUE(QFileInfo(job.videoPath()).size() > 0);
}

}  // namespace
