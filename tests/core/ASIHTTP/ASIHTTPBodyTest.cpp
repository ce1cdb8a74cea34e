// Where a body goes: gzip bodies inflated after or while they arrive, into a
// file or memory; damaged gzip; bodies handed to the delegate and not stored;
// the delegate operations a caller picks; text decoding.

#include <gtest/gtest.h>

#include <QFile>

#include <mutex>

#include "HttpTestSupport.h"
#include "ScriptedHttpServer.h"

namespace {

QByteArray longText() {
  QByteArray text;
  for (int line = 0; line < 4000; ++line)
    text += "Line " + QByteArray::number(line) + " of a text that compresses well.\n";
  return text;
}

const QByteArray kText = longText();

// cpp-httplib gzips text bodies for clients that accept gzip.
class CompressingServer : public testing::Test {
 protected:
  void SetUp() override {
    httplib.server.Get("/text", [this](const httplib::Request& request, httplib::Response& response) {
      std::lock_guard lock(mutex);
      acceptEncoding = QByteArray::fromStdString(request.get_header_value("Accept-Encoding"));
      response.set_content(kText.toStdString(), "text/plain");
    });
  }

  LocalHttplibServer httplib;
  std::mutex mutex;
  QByteArray acceptEncoding;
  testmedia::Folder folder;
  RecordingDelegate delegate;
};

TEST_F(CompressingServer, AGzipBodyIsInflatedIntoFileOrMemoryWhetherOrNotItWaitsAndAPlainOneWhenNotAllowed) {
  for (bool waitForTheEnd : {true, false}) {
    SCOPED_TRACE(waitForTheEnd ? "inflated at the end" : "inflated as it arrives");
    const std::shared_ptr<ASIHTTPRequest> toFile = makeRequest(httplib.url("/text"), delegate);
    toFile->setShouldWaitToInflateCompressedResponses(waitForTheEnd);
    toFile->setDownloadDestinationPath(folder.path("text.txt"));
    ASSERT_TRUE(runToEnd(toFile));
    EXPECT_FALSE(toFile->error());
    EXPECT_EQ(acceptEncoding, "gzip");
    EXPECT_EQ(toFile->responseHeaders().value("Content-Encoding"), "gzip");
    EXPECT_LT(toFile->contentLength(), static_cast<quint64>(kText.size()));
    EXPECT_EQ(folder.read("text.txt"), kText);

    const std::shared_ptr<ASIHTTPRequest> toMemory = makeRequest(httplib.url("/text"), delegate);
    toMemory->setShouldWaitToInflateCompressedResponses(waitForTheEnd);
    ASSERT_TRUE(runToEnd(toMemory));
    EXPECT_EQ(toMemory->responseData(), kText);
  }

  // Without compression no gzip is asked for and the body comes plain.
  const std::shared_ptr<ASIHTTPRequest> plain = makeRequest(httplib.url("/text"), delegate);
  plain->setAllowCompressedResponse(false);
  ASSERT_TRUE(runToEnd(plain));
  EXPECT_EQ(acceptEncoding, "");
  EXPECT_EQ(plain->contentLength(), static_cast<quint64>(kText.size()));
  EXPECT_EQ(plain->responseData(), kText);
}

TEST(DamagedGzipBody, FailsWithAConnectionFailureAndLeavesAnOlderDestinationAlone) {
  ScriptedHttpServer server([](ScriptedHttpServer::Exchange& exchange) {
    exchange.send(ScriptedHttpServer::response(200, {"Content-Encoding: gzip"}, "this is not gzip at all"));
  });
  testmedia::Folder folder;
  for (bool waitForTheEnd : {true, false}) {
    SCOPED_TRACE(waitForTheEnd ? "inflated at the end" : "inflated as it arrives");
    folder.write("text.txt", "the older file");
    RecordingDelegate delegate;
    const std::shared_ptr<ASIHTTPRequest> request = makeRequest(server.url("/text"), delegate);
    request->setShouldWaitToInflateCompressedResponses(waitForTheEnd);
    request->setDownloadDestinationPath(folder.path("text.txt"));
    ASSERT_TRUE(runToEnd(request));
    ASSERT_TRUE(request->error());
    EXPECT_EQ(request->error()->code, ASIHTTPErrorCode::ConnectionFailure);
    EXPECT_EQ(folder.read("text.txt"), "the older file");
  }
}

// Takes the body through the default data operation.
class BodyTakingDelegate : public RecordingDelegate, public ASIHTTPRequestDataReceiver {
 public:
  void requestDidReceiveData(ASIHTTPRequest*, const QByteArray& data) override { received += data; }
  QByteArray received;
};

TEST_F(CompressingServer, ADelegateThatTakesTheBodyGetsAllOfItAndNothingIsStored) {
  BodyTakingDelegate taker;
  const std::shared_ptr<ASIHTTPRequest> request = makeRequest(httplib.url("/text"), taker);
  request->setAllowCompressedResponse(false);
  request->setDownloadDestinationPath(folder.path("text.txt"));
  request->setTemporaryFileDownloadPath(folder.path("text.txt.download"));

  ASSERT_TRUE(runToEnd(request));

  EXPECT_EQ(taker.received, kText);
  EXPECT_TRUE(request->responseData().isEmpty());
  EXPECT_FALSE(QFile::exists(folder.path("text.txt")));
  EXPECT_FALSE(QFile::exists(folder.path("text.txt.download")));
}

// A delegate whose operations have names of its own, as a download list item's have.
class DownloadItem : public ASIHTTPRequestDelegate {
 public:
  void requestFinished(ASIHTTPRequest*) override { heard << "default finish"; }
  void fetchComplete(ASIHTTPRequest*) { heard << "fetchComplete"; }
  void fetchFailed(ASIHTTPRequest*) { heard << "fetchFailed"; }
  void sizeProbeData(ASIHTTPRequest* request, const QByteArray&) {
    heard << "sizeProbeData " + QString::number(request->contentLength());
    request->setDelegate(nullptr);
    request->cancel();
  }
  QStringList heard;
};

TEST_F(CompressingServer, TheDelegateOperationsACallerPicksAreTheOnesCalled) {
  DownloadItem item;
  const std::shared_ptr<ASIHTTPRequest> download = ASIHTTPRequest::requestWithURL(httplib.url("/text"));
  download->setDelegate(&item);
  download->setDidFinishSelector(&DownloadItem::fetchComplete);
  download->setDidFailSelector(&DownloadItem::fetchFailed);
  ASSERT_TRUE(runToEnd(download));
  EXPECT_EQ(item.heard, QStringList{"fetchComplete"});
}

TEST(SizeProbe, TheFirstDataGivesTheLengthAndTheRequestIsDroppedUnheard) {
  // The body never completes, so the probe's cancel always comes first.
  ScriptedHttpServer server([](ScriptedHttpServer::Exchange& exchange) {
    exchange.send(ScriptedHttpServer::responseHead(200, {}, 5000) + QByteArray(300, 'v'));
    exchange.staySilent();
  });
  DownloadItem item;
  const std::shared_ptr<ASIHTTPRequest> probe = ASIHTTPRequest::requestWithURL(server.url("/video.mp4"));
  probe->setDelegate(&item);
  probe->setDidReceiveDataSelector(&DownloadItem::sizeProbeData);
  probe->setDidFailSelector(&DownloadItem::fetchFailed);
  probe->startAsynchronous();
  ASSERT_TRUE(waitUntil([&] { return probe->isFinished(); }));
  deliverPostedCalls();
  EXPECT_EQ(item.heard, QStringList{"sizeProbeData 5000"});
  ASSERT_TRUE(probe->error());
  EXPECT_EQ(probe->error()->code, ASIHTTPErrorCode::Cancelled);
}

TEST(ResponseText, IsDecodedInTheCharsetTheResponseNamesOrElseInTheDefault) {
  const QByteArray utf8 = QStringLiteral("Grüße").toUtf8();
  ScriptedHttpServer server([&utf8](ScriptedHttpServer::Exchange& exchange) {
    const QByteArray type =
        exchange.request().target == "/named" ? "Content-Type: text/plain; charset=utf-8" : "Content-Type: text/plain";
    exchange.send(ScriptedHttpServer::response(200, {type}, utf8));
  });
  RecordingDelegate delegate;
  const std::shared_ptr<ASIHTTPRequest> named = makeRequest(server.url("/named"), delegate);
  const std::shared_ptr<ASIHTTPRequest> unnamed = makeRequest(server.url("/unnamed"), delegate);
  ASSERT_TRUE(runToEnd(named));
  ASSERT_TRUE(runToEnd(unnamed));
  EXPECT_EQ(named->responseString(), QStringLiteral("Grüße"));
  EXPECT_EQ(unnamed->responseString(), QString::fromLatin1(utf8));
}

}  // namespace
