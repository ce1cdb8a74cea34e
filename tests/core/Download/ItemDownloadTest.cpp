// One task's transfer against servers on 127.0.0.1: a whole file with the
// fixed User-Agent, a dropped connection continued with a range until the
// retries run out, a temporary file already whole (416), an error page, a
// stop and a start that continues, and an HLS stream remuxed by the engine.

#include <gtest/gtest.h>

#include <QFile>
#include <QFileInfo>

#include "Download/HttpFileDownload.h"
#include "Download/ItemDownload.h"
#include "Download/VideoInfoObject.h"
#include "DownloadTestServer.h"
#include "EventLoopWait.h"
#include "GeneratedMedia.h"
#include "LocalHttplibServer.h"

namespace {

// Runs a transfer and records how it ends.
class Transfer : public testing::Test {
 protected:
  void SetUp() override { HttpFileDownload::setRetryPause(std::chrono::milliseconds(1)); }

  std::unique_ptr<ItemDownload> make(const QUrl& address, const QString& name = QStringLiteral("clip.mp4")) {
    std::unique_ptr<ItemDownload> download = ItemDownload::forAddress(address, folder.path(name));
    QObject::connect(download.get(), &ItemDownload::didFinish, [this] { ended = QStringLiteral("finished"); });
    QObject::connect(download.get(), &ItemDownload::didFail, [this](const QString& why) {
      ended = QStringLiteral("failed");
      reason = why;
    });
    QObject::connect(download.get(), &ItemDownload::progressChanged, [this](double value) { progress = value; });
    return download;
  }
  bool runToEnd(ItemDownload& download) {
    ended.clear();
    download.start();
    return waitUntil([this] { return !ended.isEmpty(); });
  }

  testmedia::Folder folder;
  DownloadTestServer server;
  QString ended;
  QString reason;
  double progress = 0;
};

TEST_F(Transfer, AWholeFileArrivesUnderItsNameWithTheFixedUserAgent) {
  const std::unique_ptr<ItemDownload> download = make(server.videoAddress("clip"));
  ASSERT_TRUE(runToEnd(*download));
  EXPECT_EQ(ended, "finished");
  EXPECT_EQ(folder.read("clip.mp4"), server.video());
  EXPECT_FALSE(QFileInfo::exists(folder.path("clip.mp4.download")));
  EXPECT_DOUBLE_EQ(progress, 1.0);
  ASSERT_EQ(server.videoRequests("clip").size(), 1);
  EXPECT_EQ(server.videoRequests("clip")[0].headers.value("user-agent"), kDownloadUserAgents[0]);
}

TEST_F(Transfer, ADroppedConnectionIsContinuedWithARange) {
  server.dropHalfway("clip", 2);
  const std::unique_ptr<ItemDownload> resumed = make(server.videoAddress("clip"));
  ASSERT_TRUE(runToEnd(*resumed));
  EXPECT_EQ(ended, "finished");
  EXPECT_EQ(folder.read("clip.mp4"), server.video());
  EXPECT_EQ(server.rangesAsked("clip"), (QList<QByteArray>{"", "bytes=2000-", "bytes=3000-"}));
  EXPECT_EQ(static_cast<HttpFileDownload&>(*resumed).retryCount(), 2);
}

TEST_F(Transfer, AfterThreeRetriesTheDownloadFailsKeepingWhatCame) {
  server.dropHalfway("lost", 100);
  const std::unique_ptr<ItemDownload> lost = make(server.videoAddress("lost"), QStringLiteral("lost.mp4"));
  ASSERT_TRUE(runToEnd(*lost));
  EXPECT_EQ(ended, "failed");
  EXPECT_TRUE(reason.startsWith("A connection failure occurred")) << reason.toStdString();
  EXPECT_EQ(server.rangesAsked("lost").size(), 1 + HttpFileDownload::kMostRetries);
  // What came is kept for a later resume.
  EXPECT_EQ(folder.read("lost.mp4.download"), server.video().left(3750));
  EXPECT_FALSE(QFileInfo::exists(folder.path("lost.mp4")));
}

TEST_F(Transfer, AWholeTemporaryFileIsFinishedAndOneThatIsNotTheServersStartsOver) {
  folder.write("clip.mp4.download", server.video());
  const std::unique_ptr<ItemDownload> whole = make(server.videoAddress("clip"));
  ASSERT_TRUE(runToEnd(*whole));
  EXPECT_EQ(ended, "finished");
  EXPECT_EQ(folder.read("clip.mp4"), server.video());
  EXPECT_EQ(server.rangesAsked("clip"), QList<QByteArray>{"bytes=4000-"});

  folder.write("other.mp4.download", server.video() + "longer than the server's file");
  const std::unique_ptr<ItemDownload> other = make(server.videoAddress("other"), QStringLiteral("other.mp4"));
  ASSERT_TRUE(runToEnd(*other));
  EXPECT_EQ(ended, "finished");
  EXPECT_EQ(folder.read("other.mp4"), server.video());
  EXPECT_EQ(server.rangesAsked("other"), (QList<QByteArray>{"bytes=4029-", ""}));
}

TEST_F(Transfer, AnErrorPageIsRefusedBeforeAnythingIsWritten) {
  const std::unique_ptr<ItemDownload> download =
      make(QUrl(server.pageAddress("missing").replace(".html", ".txt")), QStringLiteral("missing.mp4"));
  ASSERT_TRUE(runToEnd(*download));
  EXPECT_EQ(ended, "failed");
  EXPECT_EQ(reason, "The server answered with status 404");
  EXPECT_FALSE(QFileInfo::exists(folder.path("missing.mp4.download")));
  EXPECT_FALSE(QFileInfo::exists(folder.path("missing.mp4")));
}

TEST_F(Transfer, AStoppedDownloadKeepsItsPartAndContinuesFromItWhenStartedAgain) {
  server.hold("clip");
  const std::unique_ptr<ItemDownload> download = make(server.videoAddress("clip"));
  download->start();
  ASSERT_TRUE(waitUntil([this] { return QFileInfo(folder.path("clip.mp4.download")).size() == 2000; }));
  download->stop();
  server.release("clip");
  EXPECT_EQ(folder.read("clip.mp4.download"), server.video().left(2000));
  EXPECT_TRUE(ended.isEmpty());

  ASSERT_TRUE(runToEnd(*download));
  EXPECT_EQ(ended, "finished");
  EXPECT_EQ(folder.read("clip.mp4"), server.video());
  EXPECT_EQ(server.rangesAsked("clip"), (QList<QByteArray>{"", "bytes=2000-"}));
}

TEST_F(Transfer, AStreamingManifestIsRemuxedIntoMp4FromItsStartEachTime) {
  EXPECT_TRUE(ItemDownload::isStreamingManifest(QUrl("http://host/live/stream.m3u8")));
  EXPECT_TRUE(ItemDownload::isStreamingManifest(QUrl("http://host/Manifest.MPD")));
  EXPECT_TRUE(ItemDownload::isStreamingManifest(QUrl("http://host/manifest?id=4#representation=720p")));
  EXPECT_FALSE(ItemDownload::isStreamingManifest(QUrl("http://host/clip.mp4")));

  const QString stream = testmedia::hlsStream(2);
  ASSERT_FALSE(stream.isEmpty());
  LocalHttplibServer httplib;
  httplib.server.set_mount_point("/live", stream.toStdString());
  // A start never continues what an earlier one left.
  folder.write("live.mp4.download", "left by an earlier start");
  const std::unique_ptr<ItemDownload> download = make(httplib.url("/live/stream.m3u8"), QStringLiteral("live.mp4"));
  ASSERT_TRUE(runToEnd(*download));
  EXPECT_EQ(ended, "finished") << reason.toStdString();
  EXPECT_DOUBLE_EQ(progress, 1.0);
  EXPECT_TRUE(testmedia::ffprobe(folder.path("live.mp4")).value("format_name").contains("mp4"));
  EXPECT_NEAR(testmedia::duration(folder.path("live.mp4")), 2.0, 0.2);
  EXPECT_EQ(testmedia::streamCount(folder.path("live.mp4"), "video"), 1);
  EXPECT_EQ(testmedia::streamCount(folder.path("live.mp4"), "audio"), 1);
  EXPECT_FALSE(QFileInfo::exists(folder.path("live.mp4.download")));

  const std::unique_ptr<ItemDownload> missing = make(httplib.url("/live/missing.m3u8"), QStringLiteral("missing.mp4"));
  ASSERT_TRUE(runToEnd(*missing));
  EXPECT_EQ(ended, "failed");
  EXPECT_TRUE(reason.startsWith("The manifest cannot be opened")) << reason.toStdString();
}

}  // namespace
