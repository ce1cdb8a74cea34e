// File downloads: resuming a temporary file, servers that ignore "Range",
// moving the finished file, and the file errors.

#include <gtest/gtest.h>

#include <QDir>
#include <QFileInfo>

#include <mutex>

#include "HttpTestSupport.h"
#include "ScriptedHttpServer.h"

namespace {

const QByteArray kContent = patternBytes(5000);
const QByteArray kEarlierBytes(1000, 'X');

// Serves kContent at /file with cpp-httplib's own "Range" handling.
class RangeServingDownload : public testing::Test {
 protected:
  void SetUp() override {
    httplib.server.Get("/file", [this](const httplib::Request& request, httplib::Response& response) {
      std::lock_guard lock(mutex);
      rangeHeaders.append(QByteArray::fromStdString(request.get_header_value("Range")));
      response.set_content(kContent.toStdString(), "application/octet-stream");
    });
  }

  std::shared_ptr<ASIHTTPRequest> download(const QUrl& url, bool allowResume) {
    std::shared_ptr<ASIHTTPRequest> request = makeRequest(url, delegate);
    request->setDownloadDestinationPath(folder.path("video.mp4"));
    request->setTemporaryFileDownloadPath(folder.path("video.mp4.download"));
    request->setAllowResumeForFileDownloads(allowResume);
    return request;
  }

  LocalHttplibServer httplib;
  std::mutex mutex;
  QList<QByteArray> rangeHeaders;
  testmedia::Folder folder;
  RecordingDelegate delegate;
};

TEST_F(RangeServingDownload, ResumeAppendsTheRestToTheTemporaryFileAndReportsProgressFromThePartialSize) {
  folder.write("video.mp4.download", kEarlierBytes);
  const std::shared_ptr<ASIHTTPRequest> request = download(httplib.url("/file"), true);

  ASSERT_TRUE(runToEnd(request));

  EXPECT_EQ(delegate.events, QStringList({"started", "headers", "finished"}));
  EXPECT_EQ(rangeHeaders, QList<QByteArray>{"bytes=1000-"});
  EXPECT_EQ(request->responseStatusCode(), 206);
  EXPECT_EQ(request->partialDownloadSize(), 1000u);
  EXPECT_EQ(request->contentLength(), 4000u);
  // The 1,000 bytes already there stay; the rest of the content follows them.
  EXPECT_EQ(folder.read("video.mp4"), kEarlierBytes + kContent.mid(1000));
  EXPECT_FALSE(QFileInfo::exists(folder.path("video.mp4.download")));
  // Progress counts the partial file: past the reset to 0 it never shows less than 1000 of 5000.
  ASSERT_FALSE(delegate.progress.empty());
  EXPECT_EQ(delegate.progress.back(), 1.0);
  for (double value : delegate.progress) EXPECT_TRUE(value == 0.0 || value >= 0.2) << value;
}

TEST_F(RangeServingDownload, WithoutResumeAnEarlierTemporaryFileIsWrittenOverAndNoRangeIsAskedFor) {
  folder.write("video.mp4.download", kEarlierBytes);
  folder.write("video.mp4", "an older download of the same name");
  const std::shared_ptr<ASIHTTPRequest> request = download(httplib.url("/file"), false);

  ASSERT_TRUE(runToEnd(request));

  EXPECT_EQ(rangeHeaders, QList<QByteArray>{""});
  EXPECT_EQ(request->partialDownloadSize(), 0u);
  EXPECT_EQ(folder.read("video.mp4"), kContent);
}

TEST_F(RangeServingDownload, WithoutATemporaryPathTheDownloadGoesThroughAUniqueFileInTheTemporaryFolder) {
  std::shared_ptr<ASIHTTPRequest> request = makeRequest(httplib.url("/file"), delegate);
  request->setDownloadDestinationPath(folder.path("video.mp4"));

  ASSERT_TRUE(runToEnd(request));

  const QString temporaryPath = request->temporaryFileDownloadPath();
  EXPECT_EQ(QFileInfo(temporaryPath).absolutePath(), QFileInfo(QDir::tempPath()).absoluteFilePath());
  EXPECT_FALSE(QFileInfo::exists(temporaryPath));
  EXPECT_EQ(folder.read("video.mp4"), kContent);
}

TEST_F(RangeServingDownload, ATemporaryPathWhoseSizeCannotBeReadFailsBeforeAnythingIsSent) {
  folder.write("plain-file", "not a folder");
  std::shared_ptr<ASIHTTPRequest> request = download(httplib.url("/file"), true);
  const QString temporaryPath = folder.path("plain-file/video.mp4.download");
  request->setTemporaryFileDownloadPath(temporaryPath);

  ASSERT_TRUE(runToEnd(request));

  ASSERT_TRUE(request->error());
  EXPECT_EQ(request->error()->code, ASIHTTPErrorCode::FileManagement);
  EXPECT_EQ(request->error()->localizedDescription,
            QStringLiteral("Failed to get attributes for file at path '%1'").arg(temporaryPath));
  EXPECT_TRUE(rangeHeaders.isEmpty());
}

TEST_F(RangeServingDownload, ADestinationThatCannotBeWrittenFailsAndKeepsTheWholeDownload) {
  std::shared_ptr<ASIHTTPRequest> request = download(httplib.url("/file"), false);
  const QString destination = folder.path("missing-folder/video.mp4");
  request->setDownloadDestinationPath(destination);

  ASSERT_TRUE(runToEnd(request));

  ASSERT_TRUE(request->error());
  EXPECT_EQ(request->error()->code, ASIHTTPErrorCode::FileManagement);
  EXPECT_EQ(
      request->error()->localizedDescription,
      QStringLiteral("Failed to move file from '%1' to '%2'").arg(folder.path("video.mp4.download"), destination));
  EXPECT_EQ(folder.read("video.mp4.download"), kContent);
  EXPECT_EQ(delegate.events.last(), "failed");
}

TEST(ResumeAgainstAServerThatIgnoresRange, TheWholeBodyIsWrittenFromTheStart) {
  ScriptedHttpServer server(
      [](ScriptedHttpServer::Exchange& exchange) { exchange.send(ScriptedHttpServer::response(200, {}, kContent)); });
  testmedia::Folder folder;
  folder.write("video.mp4.download", kEarlierBytes);
  RecordingDelegate delegate;
  std::shared_ptr<ASIHTTPRequest> request = makeRequest(server.url("/file"), delegate);
  request->setDownloadDestinationPath(folder.path("video.mp4"));
  request->setTemporaryFileDownloadPath(folder.path("video.mp4.download"));
  request->setAllowResumeForFileDownloads(true);

  ASSERT_TRUE(runToEnd(request));

  EXPECT_EQ(server.requests().value(0).headers.value("range"), "bytes=1000-");
  EXPECT_EQ(request->partialDownloadSize(), 0u);
  EXPECT_EQ(folder.read("video.mp4"), kContent);
  EXPECT_EQ(delegate.progress.back(), 1.0);
}

}  // namespace
