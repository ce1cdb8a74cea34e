// Servers that go silent or drop the connection: time-outs, retries that go
// on from the bytes already read, the one restart of a request whose reused
// connection was lost, and cancelling: what happens to the temporary file,
// and who hears about it.

#include <gtest/gtest.h>

#include <QFile>
#include <QFileInfo>

#include "HttpTestSupport.h"
#include "ScriptedHttpServer.h"

namespace {

using Exchange = ScriptedHttpServer::Exchange;

const QByteArray kContent = patternBytes(1000);
constexpr double kShortTimeOut = 0.5;

// Answers a "Range" request with the rest of kContent, anything else in full.
void answerWithRange(Exchange& exchange) {
  const QByteArray range = exchange.request().headers.value("range");
  if (range.isEmpty()) {
    exchange.send(ScriptedHttpServer::response(200, {}, kContent));
    return;
  }
  const qsizetype from = range.mid(QByteArray("bytes=").size()).chopped(1).toLongLong();
  const QByteArray contentRange = "Content-Range: bytes " + QByteArray::number(from) + '-' +
                                  QByteArray::number(kContent.size() - 1) + '/' + QByteArray::number(kContent.size());
  exchange.send(ScriptedHttpServer::response(206, {contentRange}, kContent.mid(from)));
}

// The head of kContent and its first 300 bytes, then nothing.
void sendThePartThenStaySilent(Exchange& exchange) {
  exchange.send(ScriptedHttpServer::responseHead(200, {}, kContent.size()) + kContent.left(300));
  exchange.staySilent();
}

class SilentOrDroppingServer : public testing::Test {
 protected:
  std::shared_ptr<ASIHTTPRequest> download(const QUrl& url) {
    std::shared_ptr<ASIHTTPRequest> request = makeRequest(url, delegate);
    request->setDownloadDestinationPath(folder.path("clip.mp4"));
    request->setTemporaryFileDownloadPath(folder.path("clip.mp4.download"));
    return request;
  }
  // Starts a download and waits until the first 300 bytes are in its temporary file.
  std::shared_ptr<ASIHTTPRequest> startHalfway(const QUrl& url, bool allowResume) {
    std::shared_ptr<ASIHTTPRequest> request = download(url);
    request->setAllowResumeForFileDownloads(allowResume);
    request->startAsynchronous();
    EXPECT_TRUE(waitUntil([this] { return QFileInfo(folder.path("clip.mp4.download")).size() == 300; }));
    return request;
  }

  testmedia::Folder folder;
  RecordingDelegate delegate;
};

TEST_F(SilentOrDroppingServer, ASilentServerTimesTheRequestOutOnceEveryRetryIsSpent) {
  ScriptedHttpServer server([](Exchange& exchange) { exchange.staySilent(); });
  const std::shared_ptr<ASIHTTPRequest> once = download(server.url("/clip"));
  once->setTimeOutSeconds(kShortTimeOut);
  ASSERT_TRUE(runToEnd(once));
  ASSERT_TRUE(once->error());
  EXPECT_EQ(once->error()->code, ASIHTTPErrorCode::TimedOut);
  EXPECT_EQ(once->error()->localizedDescription, "The request timed out");
  EXPECT_EQ(server.connectionCount(), 1);

  const std::shared_ptr<ASIHTTPRequest> retried = download(server.url("/clip"));
  retried->setTimeOutSeconds(kShortTimeOut);
  retried->setNumberOfTimesToRetryOnTimeout(2);
  ASSERT_TRUE(runToEnd(retried));
  EXPECT_EQ(retried->error()->code, ASIHTTPErrorCode::TimedOut);
  EXPECT_EQ(retried->retryCount(), 2);
  EXPECT_EQ(server.connectionCount(), 1 + 3);
}

TEST_F(SilentOrDroppingServer, ARetryAfterATimeOutAsksForTheRestWithRange) {
  ScriptedHttpServer server([](Exchange& exchange) {
    if (exchange.request().connection == 1) {
      sendThePartThenStaySilent(exchange);
    } else {
      answerWithRange(exchange);
    }
  });
  const std::shared_ptr<ASIHTTPRequest> request = download(server.url("/clip"));
  request->setTimeOutSeconds(kShortTimeOut);
  request->setNumberOfTimesToRetryOnTimeout(1);

  ASSERT_TRUE(runToEnd(request));

  EXPECT_FALSE(request->error());
  EXPECT_EQ(request->retryCount(), 1);
  ASSERT_EQ(server.requests().size(), 2);
  EXPECT_EQ(server.requests()[1].headers.value("range"), "bytes=300-");
  EXPECT_EQ(folder.read("clip.mp4"), kContent);
}

TEST_F(SilentOrDroppingServer, AConnectionDroppedInTheBodyFailsAndAResumableDownloadKeepsWhatArrived) {
  ScriptedHttpServer server([](Exchange& exchange) {
    if (exchange.request().connection == 1) {
      exchange.send(ScriptedHttpServer::responseHead(200, {}, kContent.size()) + kContent.left(300));
      exchange.close();
    } else {
      answerWithRange(exchange);
    }
  });
  const std::shared_ptr<ASIHTTPRequest> dropped = download(server.url("/clip"));
  dropped->setAllowResumeForFileDownloads(true);
  ASSERT_TRUE(runToEnd(dropped));
  ASSERT_TRUE(dropped->error());
  EXPECT_EQ(dropped->error()->code, ASIHTTPErrorCode::ConnectionFailure);
  EXPECT_EQ(dropped->error()->localizedDescription, "A connection failure occurred");
  // A fresh connection that fails is not tried again.
  EXPECT_EQ(server.connectionCount(), 1);
  EXPECT_EQ(folder.read("clip.mp4.download"), kContent.left(300));
  EXPECT_FALSE(QFile::exists(folder.path("clip.mp4")));

  const std::shared_ptr<ASIHTTPRequest> resumed = download(server.url("/clip"));
  resumed->setAllowResumeForFileDownloads(true);
  ASSERT_TRUE(runToEnd(resumed));
  EXPECT_FALSE(resumed->error());
  EXPECT_EQ(folder.read("clip.mp4"), kContent);
}

TEST_F(SilentOrDroppingServer, ALostReusedConnectionIsReplacedOnceAndTheBodyGoesOnFromWhereItStopped) {
  ScriptedHttpServer server([](Exchange& exchange) {
    if (exchange.request().connection == 1 && exchange.requestOnConnection() == 1) {
      exchange.send(ScriptedHttpServer::response(200, {"Keep-Alive: timeout=30, max=100"}, "first"));
    } else if (exchange.request().connection == 1) {
      exchange.send(ScriptedHttpServer::responseHead(200, {}, kContent.size()) + kContent.left(300));
      exchange.close();
    } else {
      answerWithRange(exchange);
    }
  });
  const std::shared_ptr<ASIHTTPRequest> first = makeRequest(server.url("/first"), delegate);
  ASSERT_TRUE(runToEnd(first));
  ASSERT_EQ(first->responseData(), "first");

  const std::shared_ptr<ASIHTTPRequest> second = download(server.url("/clip"));
  ASSERT_TRUE(runToEnd(second));

  EXPECT_FALSE(second->error());
  EXPECT_EQ(second->retryCount(), 1);
  const QList<ScriptedHttpServer::Request> requests = server.requests();
  ASSERT_EQ(requests.size(), 3);
  EXPECT_EQ(requests[1].connection, 1);
  EXPECT_EQ(requests[2].connection, 2);
  EXPECT_EQ(requests[2].headers.value("range"), "bytes=300-");
  EXPECT_EQ(folder.read("clip.mp4"), kContent);
}

TEST_F(SilentOrDroppingServer, ACancelReportsItselfAndKeepsTheTemporaryFileOnlyForResuming) {
  ScriptedHttpServer server(sendThePartThenStaySilent);
  for (const bool allowResume : {true, false}) {
    SCOPED_TRACE(allowResume ? "resumable" : "not resumable");
    const std::shared_ptr<ASIHTTPRequest> request = startHalfway(server.url("/clip"), allowResume);
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

TEST_F(SilentOrDroppingServer, ADelegateClearedBeforeCancelHearsNothingMore) {
  ScriptedHttpServer server(sendThePartThenStaySilent);
  const std::shared_ptr<ASIHTTPRequest> request = startHalfway(server.url("/clip"), true);
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

TEST_F(SilentOrDroppingServer, ARequestCancelledBeforeItStartsFailsAndNeverReachesTheServer) {
  ScriptedHttpServer server(sendThePartThenStaySilent);
  const std::shared_ptr<ASIHTTPRequest> request = makeRequest(server.url("/clip"), delegate);
  request->cancel();
  request->startAsynchronous();
  ASSERT_TRUE(waitUntil([&] { return request->isFinished(); }));

  EXPECT_EQ(delegate.events, QStringList{"failed"});
  EXPECT_EQ(request->error()->code, ASIHTTPErrorCode::Cancelled);
  EXPECT_EQ(server.connectionCount(), 0);
}

}  // namespace
