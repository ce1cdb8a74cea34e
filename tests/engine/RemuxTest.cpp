// The remux of a streaming manifest through the library's C functions: an
// HLS stream that a server on 127.0.0.1 serves becomes one MP4 file with its
// video and sound, a DASH representation is taken by its id, progress is
// told, abort ends a remux that waits on the network, and failures say why.
#include <gtest/gtest.h>

#include <chrono>
#include <condition_variable>
#include <filesystem>
#include <mutex>
#include <set>

#include "ExternalTools.h"
#include "GeneratedMedia.h"
#include "LocalHttplibServer.h"
#include "TestMedia.h"
#include "videoconverter.h"

namespace enginetest {
namespace {

// Generous: a remux that has not ended by then hangs.
constexpr auto kEndBound = std::chrono::seconds(120);

// Counts the end calls of one remux and lets the test wait for the first.
struct EndWatch {
  std::mutex mutex;
  std::condition_variable changed;
  int calls = 0;

  static void ended(void* context) {
    auto* watch = static_cast<EndWatch*>(context);
    std::lock_guard lock(watch->mutex);
    ++watch->calls;
    watch->changed.notify_all();
  }
  bool waitForEnd() {
    std::unique_lock lock(mutex);
    return changed.wait_for(lock, kEndBound, [this] { return calls > 0; });
  }
};

std::string outcomeReason(VideoConverter_Remux* remux, int* outcome) {
  char reason[512] = "unchanged";
  *outcome = VideoConverter_RemuxGetOutcome(remux, reason, sizeof reason);
  return reason;
}

TEST(Remux, AnHlsStreamOverHttpBecomesOneMp4WithItsVideoAndSound) {
  const std::string stream = testmedia::hlsStream(2).toStdString();
  ASSERT_FALSE(stream.empty());
  LocalHttplibServer server;
  std::mutex agentsMutex;
  std::set<std::string> agents;
  server.server.set_logger([&](const httplib::Request& request, const httplib::Response&) {
    std::lock_guard lock(agentsMutex);
    agents.insert(request.get_header_value("User-Agent"));
  });
  server.server.set_mount_point("/live", stream);
  const std::string output = scratchFolder() + "/remuxed.mp4.download";

  EndWatch watch;
  VideoConverter_Remux* remux = nullptr;
  ASSERT_EQ(VideoConverter_RemuxStart(server.address("/live/stream.m3u8").c_str(), "Agent/1.0", output.c_str(),
                                      &EndWatch::ended, &watch, &remux),
            0);
  ASSERT_TRUE(watch.waitForEnd());
  int outcome = 0;
  EXPECT_EQ(outcomeReason(remux, &outcome), "");
  EXPECT_EQ(outcome, VC_OUTCOME_FINISHED);
  int64_t position = 0;
  int64_t length = 0;
  EXPECT_EQ(VideoConverter_RemuxGetProgress(remux, &position, &length), 0);
  EXPECT_NEAR(length / 1e6, 2.0, 0.2);
  EXPECT_NEAR(position / 1e6, 2.0, 0.2);
  EXPECT_EQ(VideoConverter_RemuxRelease(remux), 0);
  EXPECT_EQ(watch.calls, 1);

  EXPECT_NE(ffprobeFields(output, "format")["format_name"].find("mp4"), std::string::npos);
  EXPECT_EQ(ffprobeFields(output, "streams", "v:0")["codec_name"], "h264");
  EXPECT_EQ(ffprobeFields(output, "streams", "a:0")["codec_name"], "aac");
  EXPECT_NEAR(std::stod(ffprobeFields(output, "format")["duration"]), 2.0, 0.2);
  EXPECT_EQ(agents, std::set<std::string>{"Agent/1.0"});
}

TEST(Remux, ADashRepresentationIsTakenByItsIdWithTheBestSound) {
  const std::string stream = testmedia::dashStream(2).toStdString();
  ASSERT_FALSE(stream.empty());
  LocalHttplibServer server;
  server.server.set_mount_point("/dash", stream);
  const std::string output = scratchFolder() + "/dash.mp4.download";

  EndWatch watch;
  VideoConverter_Remux* remux = nullptr;
  ASSERT_EQ(VideoConverter_RemuxStart(server.address("/dash/stream.mpd#representation=0").c_str(), nullptr,
                                      output.c_str(), &EndWatch::ended, &watch, &remux),
            0);
  ASSERT_TRUE(watch.waitForEnd());
  int outcome = 0;
  EXPECT_EQ(outcomeReason(remux, &outcome), "");
  EXPECT_EQ(outcome, VC_OUTCOME_FINISHED);
  VideoConverter_RemuxRelease(remux);
  EXPECT_EQ(ffprobeFields(output, "streams", "v:0")["width"], "160");
  EXPECT_EQ(ffprobeFields(output, "streams", "a:0")["codec_name"], "aac");
  EXPECT_NEAR(std::stod(ffprobeFields(output, "format")["duration"]), 2.0, 0.2);

  // The sound's representation is no video.
  EndWatch soundWatch;
  ASSERT_EQ(VideoConverter_RemuxStart(server.address("/dash/stream.mpd#representation=1").c_str(), nullptr,
                                      output.c_str(), &EndWatch::ended, &soundWatch, &remux),
            0);
  ASSERT_TRUE(soundWatch.waitForEnd());
  EXPECT_EQ(outcomeReason(remux, &outcome), "The manifest has no video representation 1");
  EXPECT_EQ(outcome, VC_OUTCOME_FAILED);
  VideoConverter_RemuxRelease(remux);
}

TEST(Remux, AbortEndsARemuxThatWaitsForTheNetwork) {
  LocalHttplibServer server;
  std::mutex mutex;
  std::condition_variable released;
  bool asked = false;
  bool letGo = false;
  server.server.Get("/held.m3u8", [&](const httplib::Request&, httplib::Response& response) {
    std::unique_lock lock(mutex);
    asked = true;
    released.notify_all();
    released.wait(lock, [&] { return letGo; });
    response.status = 404;
  });
  EndWatch watch;
  VideoConverter_Remux* remux = nullptr;
  const std::string output = scratchFolder() + "/held.mp4.download";
  ASSERT_EQ(VideoConverter_RemuxStart(server.address("/held.m3u8").c_str(), nullptr, output.c_str(), &EndWatch::ended,
                                      &watch, &remux),
            0);
  {
    std::unique_lock lock(mutex);
    ASSERT_TRUE(released.wait_for(lock, kEndBound, [&] { return asked; }));
  }
  EXPECT_EQ(VideoConverter_RemuxAbort(remux), 0);
  ASSERT_TRUE(watch.waitForEnd());
  int outcome = 0;
  EXPECT_EQ(outcomeReason(remux, &outcome), "");
  EXPECT_EQ(outcome, VC_OUTCOME_ABORTED);
  {
    std::lock_guard lock(mutex);
    letGo = true;
  }
  released.notify_all();
  EXPECT_EQ(VideoConverter_RemuxRelease(remux), 0);
}

TEST(Remux, FailuresSayWhy) {
  LocalHttplibServer server;
  server.serve("/page.m3u8", "<html>not a playlist</html>", "text/html");
  const std::string output = scratchFolder() + "/failed.mp4.download";

  for (const std::string& failing : {server.address("/missing.m3u8"), server.address("/page.m3u8")}) {
    EndWatch watch;
    VideoConverter_Remux* remux = nullptr;
    ASSERT_EQ(VideoConverter_RemuxStart(failing.c_str(), "", output.c_str(), &EndWatch::ended, &watch, &remux), 0);
    ASSERT_TRUE(watch.waitForEnd());
    int outcome = 0;
    EXPECT_EQ(outcomeReason(remux, &outcome).rfind("The manifest cannot be opened: ", 0), 0u) << failing;
    EXPECT_EQ(outcome, VC_OUTCOME_FAILED);
    VideoConverter_RemuxRelease(remux);
  }

  VideoConverter_Remux* remux = nullptr;
  EXPECT_EQ(VideoConverter_RemuxStart("", nullptr, output.c_str(), &EndWatch::ended, nullptr, &remux),
            VC_ERROR_INVALID_ARGUMENT);
  EXPECT_EQ(VideoConverter_RemuxStart("http://127.0.0.1/x.m3u8", nullptr, output.c_str(), nullptr, nullptr, &remux),
            VC_ERROR_INVALID_ARGUMENT);
  EXPECT_EQ(VideoConverter_RemuxGetOutcome(nullptr, nullptr, 0), VC_ERROR_INVALID_ARGUMENT);
  EXPECT_EQ(VideoConverter_RemuxRelease(nullptr), VC_ERROR_INVALID_ARGUMENT);
}

}  // namespace
}  // namespace enginetest
