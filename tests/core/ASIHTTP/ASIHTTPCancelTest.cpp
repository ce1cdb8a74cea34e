// Cancelling: what happens to the temporary file, and who hears about it.

#include <gtest/gtest.h>

#include <QFile>
#include <QFileInfo>

#include "HttpTestSupport.h"
#include "ScriptedHttpServer.h"

namespace {

const QByteArray kContent = patternBytes(1000);

// Every request gets the head and 300 bytes of the body, then silence.
class HalfwayServer : public testing::Test {
 protected:
  std::shared_ptr<ASIHTTPRequest> startDownload(bool allowResume) {
    std::shared_ptr<ASIHTTPRequest> request = makeRequest(server.url("/clip"), delegate);
    request->setDownloadDestinationPath(folder.path("clip.mp4"));
    request->setTemporaryFileDownloadPath(folder.path("clip.mp4.download"));
    request->setAllowResumeForFileDownloads(allowResume);
    request->startAsynchronous();
    return request;
  }

  bool waitForTheFirstBytes() {
    return waitUntil([this] { return QFileInfo(folder.path("clip.mp4.download")).size() == 300; });
  }

  ScriptedHttpServer server{[](ScriptedHttpServer::Exchange& exchange) {
    exchange.send(ScriptedHttpServer::responseHead(200, {}, kContent.size()) + kContent.left(300));
    exchange.staySilent();
  }};
  testmedia::Folder folder;
  RecordingDelegate delegate;
};

TEST_F(HalfwayServer, ACancelReportsItselfAndKeepsTheTemporaryFileOnlyForResuming) {
  for (const bool allowResume : {true, false}) {
    SCOPED_TRACE(allowResume ? "resumable" : "not resumable");
    const std::shared_ptr<ASIHTTPRequest> request = startDownload(allowResume);
    ASSERT_TRUE(waitForTheFirstBytes());

    request->cancel();
    ASSERT_TRUE(waitUntil([&] { return request->isFinished(); }));

    EXPECT_EQ(delegate.events.last(), "failed");
    ASSERT_TRUE(request->error());
    EXPECT_EQ(request->error()->code, ASIHTTPErrorCode::Cancelled);
    EXPECT_EQ(request->error()->localizedDescription, "The request was cancelled");
    EXPECT_EQ(QFile::exists(folder.path("clip.mp4.download")), allowResume);
    if (allowResume) EXPECT_EQ(folder.read("clip.mp4.download"), kContent.left(300));
    EXPECT_FALSE(QFile::exists(folder.path("clip.mp4")));
    QFile::remove(folder.path("clip.mp4.download"));
  }
}

TEST_F(HalfwayServer, ADelegateClearedBeforeCancelHearsNothingMore) {
  const std::shared_ptr<ASIHTTPRequest> request = startDownload(true);
  ASSERT_TRUE(waitForTheFirstBytes());
  deliverPostedCalls();
  const QStringList heardBefore = delegate.events;
  const size_t progressBefore = delegate.progress.size();

  request->setDelegate(nullptr);
  request->setDownloadProgressDelegate(nullptr);
  request->cancel();
  ASSERT_TRUE(waitUntil([&] { return request->isFinished(); }));
  deliverPostedCalls();

  EXPECT_EQ(delegate.events, heardBefore);
  EXPECT_EQ(delegate.progress.size(), progressBefore);
  EXPECT_EQ(request->error()->code, ASIHTTPErrorCode::Cancelled);
}

TEST_F(HalfwayServer, ARequestCancelledBeforeItStartsFailsAndNeverReachesTheServer) {
  const std::shared_ptr<ASIHTTPRequest> request = makeRequest(server.url("/clip"), delegate);
  request->cancel();
  request->startAsynchronous();
  ASSERT_TRUE(waitUntil([&] { return request->isFinished(); }));

  EXPECT_EQ(delegate.events, QStringList{"failed"});
  EXPECT_EQ(request->error()->code, ASIHTTPErrorCode::Cancelled);
  EXPECT_EQ(server.connectionCount(), 0);
}

}  // namespace
