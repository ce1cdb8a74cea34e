// The analysis worker on the real event loop, against pages and files that
// local servers serve: the size probes, the sort, the choice, the task's
// fields, the thumbnail, the retry, "postId", and a stopped worker.

#include <gtest/gtest.h>

#include <atomic>
#include <condition_variable>
#include <mutex>

#include "ASIHTTP/HttpTestSupport.h"
#include "CommonClass/NotificationCenter.h"
#include "Download/DownloadSettings.h"
#include "Download/GetVideoInfoThread.h"
#include "ScriptedHttpServer.h"
#include "parseurl.h"

namespace {

using Exchange = ScriptedHttpServer::Exchange;

class Analysis : public testing::Test {
 protected:
  void SetUp() override {
    qualityParam = 0;
    NotificationCenter::defaultCenter().addObserver(this, "postId", [this](const Notification& notification) {
      posted.push_back(notification.object.value<std::shared_ptr<VideoInfoObject>>());
    });
  }
  void TearDown() override {
    NotificationCenter::defaultCenter().removeObserver(this);
    qualityParam = 0;
  }

  static std::shared_ptr<VideoInfoObject> taskFor(const QUrl& page) {
    auto task = std::make_shared<VideoInfoObject>();
    task->setHtmUrlStr(page.toString());
    return task;
  }

  // Analyses `task` with `worker` and waits for its "postId".
  bool analyse(GetVideoInfoThread& worker, const std::shared_ptr<VideoInfoObject>& task) {
    const size_t before = posted.size();
    worker.getVideoInfo(task);
    return waitUntil([&] { return posted.size() > before; });
  }

  std::vector<std::shared_ptr<VideoInfoObject>> posted;
};

TEST_F(Analysis, TheFilesAreProbedSortedAndTheChosenOneFillsTheTask) {
  LocalHttplibServer httplib;
  std::mutex mutex;
  QStringList probeAgents;
  httplib.serve("/page.html",
                R"(<html><head><title>A/B &amp;amp; C</title><meta property="og:image" content="/thumb.png">
      <script type="application/ld+json">{"@type": "VideoObject", "contentUrl": "/hd.mp4", "duration": "PT1M35S"}</script>
      </head><body><video><source src="/sd.webm" label="360p"><source src="/hd.flv" label="720p">
      <source src="/hd.mp4" label="1280x720"></video></body></html>)",
                "text/html");
  const auto media = [&](const std::string& path, size_t size) {
    httplib.server.Get(path, [&, size](const httplib::Request& request, httplib::Response& response) {
      std::lock_guard lock(mutex);
      probeAgents << QString::fromStdString(request.get_header_value("User-Agent"));
      response.set_content(std::string(size, 'v'), "video/mp4");
    });
  };
  media("/hd.mp4", 2500000);
  media("/sd.webm", 3000);
  httplib.server.Get("/hd.flv", [](const httplib::Request&, httplib::Response& response) { response.status = 404; });
  httplib.serve("/thumb.png", "picture bytes", "image/png");
  GetVideoInfoThread worker;
  const std::shared_ptr<VideoInfoObject> task = taskFor(httplib.url("/page.html"));

  ASSERT_TRUE(analyse(worker, task));

  ASSERT_EQ(posted, std::vector<std::shared_ptr<VideoInfoObject>>{task});
  EXPECT_TRUE(worker.isFinish());
  // The flv's probe got a 404 and was dropped; the rest sorted by frame.
  ASSERT_EQ(task->arrFileList().size(), 2);
  EXPECT_EQ(task->arrFileList()[0].downloadUrl(), httplib.url("/hd.mp4").toString());
  EXPECT_EQ(task->arrFileList()[0].videoSize(), 2500000);
  EXPECT_EQ(task->arrFileList()[1].downloadUrl(), httplib.url("/sd.webm").toString());
  EXPECT_EQ(task->arrFileList()[1].videoSize(), 3000);
  EXPECT_EQ(task->selectFileIndex(), 0);
  EXPECT_EQ(task->downURLStr(), httplib.url("/hd.mp4").toString());
  EXPECT_EQ(task->strVideoSize(), "2.50 MB");
  EXPECT_EQ(task->videoFormat(), "mp4");
  EXPECT_EQ(task->videoTime(), "95");
  EXPECT_EQ(task->titleStr(), "A B & C");
  EXPECT_EQ(task->imageUrl(), httplib.url("/thumb.png").toString());
  EXPECT_EQ(task->imageData(), "picture bytes");
  EXPECT_EQ(probeAgents, QStringList(2, QString::fromLatin1(kDownloadUserAgents[0])));
}

TEST_F(Analysis, AMissingLengthGivesZeroAFailedProbeDropsTheFileAndAllFailingChoosesNothing) {
  ScriptedHttpServer server([](Exchange& exchange) {
    const QByteArray target = exchange.request().target;
    if (target == "/some.html") {
      exchange.send(ScriptedHttpServer::response(
          200, {"Content-Type: text/html"},
          R"(<video poster="/missing.jpg"><source src="/dead.mp4"><source src="/unsized.mp4"></video>)"));
    } else if (target == "/none.html") {
      exchange.send(ScriptedHttpServer::response(200, {"Content-Type: text/html"},
                                                 R"(<video src="/dead.mp4"></video><video src="/dead.webm"></video>)"));
    } else if (target == "/unsized.mp4") {
      exchange.send(ScriptedHttpServer::responseHead(200, {"Connection: close"}, -1) + "first bytes");
    } else if (target == "/missing.jpg") {
      exchange.send(ScriptedHttpServer::response(404, {}, "not here"));
    }
    // Anything else: the connection closes without an answer.
    exchange.close();
  });
  GetVideoInfoThread worker;

  const std::shared_ptr<VideoInfoObject> some = taskFor(server.url("/some.html"));
  ASSERT_TRUE(analyse(worker, some));
  ASSERT_EQ(some->arrFileList().size(), 1);
  EXPECT_EQ(some->arrFileList()[0].videoSize(), 0);
  EXPECT_EQ(some->downURLStr(), server.url("/unsized.mp4").toString());
  EXPECT_EQ(some->strVideoSize(), "??? MB");
  EXPECT_TRUE(some->imageData().isNull());

  const std::shared_ptr<VideoInfoObject> none = taskFor(server.url("/none.html"));
  ASSERT_TRUE(analyse(worker, none));
  EXPECT_TRUE(none->arrFileList().isEmpty());
  EXPECT_TRUE(none->downURLStr().isNull());
  EXPECT_TRUE(worker.isFinish());
  EXPECT_EQ(posted.back(), none);
}

TEST_F(Analysis, AFailedAnalysisIsTriedOnceMore) {
  LocalHttplibServer httplib;
  std::atomic<int> requests{0};
  httplib.server.Get("/flaky.html", [&](const httplib::Request&, httplib::Response& response) {
    if (++requests == 1) {
      response.status = 500;
      return;
    }
    response.set_content("<video src=/clip.mp4></video>", "text/html");
  });
  std::atomic<int> brokenRequests{0};
  httplib.server.Get("/broken.html", [&](const httplib::Request&, httplib::Response& response) {
    ++brokenRequests;
    response.status = 500;
  });
  httplib.serve("/clip.mp4", "clip", "video/mp4");
  GetVideoInfoThread worker;

  const std::shared_ptr<VideoInfoObject> flaky = taskFor(httplib.url("/flaky.html"));
  ASSERT_TRUE(analyse(worker, flaky));
  EXPECT_EQ(requests, 2);
  EXPECT_EQ(flaky->downURLStr(), httplib.url("/clip.mp4").toString());

  const std::shared_ptr<VideoInfoObject> broken = taskFor(httplib.url("/broken.html"));
  ASSERT_TRUE(analyse(worker, broken));
  EXPECT_EQ(brokenRequests, 2);
  EXPECT_TRUE(broken->downURLStr().isNull());
  EXPECT_EQ(worker.lastParseResult(), PARSE_ERROR_HTTP_STATUS);
}

TEST_F(Analysis, ARestoredIndexEqualToTheCountChoosesNothingAndALargerOneIsReplaced) {
  LocalHttplibServer httplib;
  httplib.serve("/page.html", R"(<video><source src="/a.mp4" label="720p"><source src="/b.mp4" label="360p"></video>)",
                "text/html");
  httplib.serve(R"(/\w\.mp4)", "clip", "video/mp4");
  GetVideoInfoThread worker;

  const std::shared_ptr<VideoInfoObject> restored = taskFor(httplib.url("/page.html"));
  restored->setSelectFileIndex(2);
  restored->setDownURLStr("http://earlier.example.test/clip.mp4");
  ASSERT_TRUE(analyse(worker, restored));
  EXPECT_EQ(restored->selectFileIndex(), 2);
  EXPECT_EQ(restored->downURLStr(), "http://earlier.example.test/clip.mp4");

  qualityParam = 2;
  const std::shared_ptr<VideoInfoObject> beyond = taskFor(httplib.url("/page.html"));
  beyond->setSelectFileIndex(3);
  ASSERT_TRUE(analyse(worker, beyond));
  EXPECT_EQ(beyond->selectFileIndex(), 1);
  EXPECT_EQ(beyond->downURLStr(), httplib.url("/b.mp4").toString());
}

// A server whose /held paths answer only when the test lets them.
class HeldServer : public Analysis {
 protected:
  void SetUp() override {
    Analysis::SetUp();
    const auto held = [this](const httplib::Request& request, httplib::Response& response) {
      std::unique_lock lock(mutex);
      arrived << QString::fromStdString(request.path);
      released.wait(lock, [this] { return letGo; });
      if (request.path == "/held/page.html") {
        response.status = 500;
      } else {
        response.set_content("clip", "video/mp4");
      }
    };
    httplib.server.Get(R"(/held/.*)", held);
    httplib.serve("/two.html", "<video src=/held/first.mp4></video><video src=/second.mp4></video>", "text/html");
    httplib.serve("/other.html", "<video src=/other.mp4></video>", "text/html");
    httplib.server.Get(R"(/(second|other)\.mp4)", [this](const httplib::Request& request, httplib::Response& response) {
      std::lock_guard lock(mutex);
      arrived << QString::fromStdString(request.path);
      response.set_content("clip", "video/mp4");
    });
  }
  void TearDown() override {
    letGoOfEverything();
    Analysis::TearDown();
  }

  void letGoOfEverything() {
    {
      std::lock_guard lock(mutex);
      letGo = true;
    }
    released.notify_all();
  }
  bool hasArrived(const QString& path) {
    std::lock_guard lock(mutex);
    return arrived.contains(path);
  }
  QStringList arrivedPaths() {
    std::lock_guard lock(mutex);
    return arrived;
  }

  // Analyses another page to its end. Analyses run one after another and
  // hand over in order, so whatever the stopped one was to do has been done.
  void runAnotherAnalysis() {
    GetVideoInfoThread other;
    const std::shared_ptr<VideoInfoObject> task = taskFor(httplib.url("/other.html"));
    ASSERT_TRUE(analyse(other, task));
    EXPECT_EQ(posted, std::vector<std::shared_ptr<VideoInfoObject>>{task});
  }

  LocalHttplibServer httplib;
  std::mutex mutex;
  std::condition_variable released;
  bool letGo = false;
  QStringList arrived;
};

TEST_F(HeldServer, AWorkerStoppedDuringTheAnalysisNeitherRetriesNorPosts) {
  GetVideoInfoThread worker;
  worker.getVideoInfo(taskFor(httplib.url("/held/page.html")));
  ASSERT_TRUE(waitUntil([&] { return hasArrived("/held/page.html"); }));

  worker.stopGetVideoInfo();
  letGoOfEverything();
  runAnotherAnalysis();

  EXPECT_EQ(worker.status(), -1);
  EXPECT_EQ(arrivedPaths().count("/held/page.html"), 1);
}

TEST_F(HeldServer, AWorkerReleasedDuringTheProbesStartsNoOtherProbeAndPostsNothing) {
  {
    GetVideoInfoThread worker;
    worker.getVideoInfo(taskFor(httplib.url("/two.html")));
    ASSERT_TRUE(waitUntil([&] { return hasArrived("/held/first.mp4"); }));
  }
  letGoOfEverything();
  runAnotherAnalysis();

  EXPECT_FALSE(arrivedPaths().contains("/second.mp4"));
}

}  // namespace
