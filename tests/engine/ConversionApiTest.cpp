// The conversion through the library's C functions: one conversion at a
// time, an end callback exactly once whatever the outcome, abort, and
// conversions one after another in the same process.
#include <gtest/gtest.h>

#include <chrono>
#include <condition_variable>
#include <filesystem>
#include <mutex>

#include "ConversionFixtures.h"

namespace enginetest {
namespace {

namespace fs = std::filesystem;

// Generous: a conversion that has not ended by then hangs.
constexpr auto kEndBound = std::chrono::seconds(120);

// What the plain C end callback saw.
struct EndCalls {
  std::mutex mutex;
  std::condition_variable changed;
  int count = 0;
} endCalls;

void countEnd() {
  std::lock_guard lock(endCalls.mutex);
  ++endCalls.count;
  endCalls.changed.notify_all();
}

int endCount() {
  std::lock_guard lock(endCalls.mutex);
  return endCalls.count;
}

bool waitForEnds(int count) {
  std::unique_lock lock(endCalls.mutex);
  return endCalls.changed.wait_for(lock, kEndBound, [&] { return endCalls.count >= count; });
}

std::string shortClip() {
  return generatedMedia("short-api.mp4",
                        {"-f", "lavfi", "-i", "testsrc2=s=160x120:r=25:d=1", "-f", "lavfi", "-i", "sine=r=44100:d=1",
                         "-c:v", "libx264", "-preset", "ultrafast", "-c:a", "aac"});
}

class ConversionApi : public testing::Test {
 protected:
  void SetUp() override { startCount_ = endCount(); }
  void TearDown() override { VideoConverter_Destory(); }

  // Starts a conversion the way the conversion job does.
  int start(MediaItem item, OutputParam output) {
    const int result = VideoConverter_Convert(&item, 1, &output, nullptr, 640, 480, 0);
    VideoConverter_ConvertEndCallBack(&countEnd);
    return result;
  }
  int endsSinceStart() const { return endCount() - startCount_; }
  bool waitForEndsSinceStart(int count) { return waitForEnds(startCount_ + count); }

  int startCount_ = 0;
};

TEST_F(ConversionApi, AbortEndsTheConversionWithOneCallback) {
  const std::string output = outputPath("aborted.mp4");
  ASSERT_EQ(start(recordFor(longClip()), outputFor(output, "mp4", "libx264", "aac")), 0);
  EXPECT_EQ(VideoConverter_Abort(), 0);
  ASSERT_TRUE(waitForEndsSinceStart(1));
  EXPECT_LT(VideoConverter_GetCurrentTime(), VideoConverter_GetDuration());
  EXPECT_NEAR(VideoConverter_GetDuration() / 1e6, probedDuration(longClip()), 0.05);
  VideoConverter_Destory();
  EXPECT_EQ(endsSinceStart(), 1);
}

TEST_F(ConversionApi, AnAbortThatComesOnceTheLastSoundIsEncodedStillFinishes) {
  // The packet that reaches the whole length is written while the encoder is
  // being flushed, after every input sample was taken: nothing is left to stop.
  const std::string output = outputPath("late-abort.mp3");
  engine::Transcoder transcoder({recordFor(shortClip())}, outputFor(output, "mp3", "", "mp3"));
  bool abortSent = false;
  transcoder.setProgressObserver([&](int64_t writtenUs) {
    if (abortSent || writtenUs < transcoder.durationUs()) return;
    abortSent = true;
    transcoder.abort();
  });
  const engine::ConversionResult result = transcoder.run();
  ASSERT_TRUE(abortSent);
  EXPECT_EQ(result.outcome, engine::ConversionResult::Outcome::kFinished);
  EXPECT_EQ(transcoder.currentTimeUs(), transcoder.durationUs());
}

TEST_F(ConversionApi, TwoConversionsOneAfterTheOther) {
  for (const char* name : {"first.mp4", "second.mkv"}) {
    const int endsBefore = endsSinceStart();
    const std::string output = outputPath(name);
    const std::string format = fs::path(name).extension() == ".mkv" ? "matroska" : "mp4";
    ASSERT_EQ(start(recordFor(shortClip()), outputFor(output, format, "libx264", "aac")), 0) << name;
    ASSERT_TRUE(waitForEndsSinceStart(endsBefore + 1)) << name;
    EXPECT_EQ(VideoConverter_GetCurrentTime(), VideoConverter_GetDuration());
    VideoConverter_Destory();
    EXPECT_EQ(decodePictures(output).size(), 25u) << name;
  }
  EXPECT_EQ(endsSinceStart(), 2);
}

TEST_F(ConversionApi, AFailureEndsWithOneCallbackAndNoOutput) {
  MediaItem item = recordFor(shortClip());
  const std::string missing = outputPath("gone.mp4");
  setText(item.m_FileName, missing);
  const std::string output = outputPath("never.mp4");
  ASSERT_EQ(start(item, outputFor(output, "mp4", "libx264", "aac")), 0);
  ASSERT_TRUE(waitForEndsSinceStart(1));
  VideoConverter_Destory();
  EXPECT_EQ(endsSinceStart(), 1);
  EXPECT_FALSE(fs::exists(output));
}

TEST_F(ConversionApi, BadRequestsAndASecondConversionAtOnceAreRefused) {
  MediaItem item = recordFor(shortClip());
  OutputParam output = outputFor(outputPath("refused.mp4"), "mp4", "libx264", "aac");
  EXPECT_EQ(VideoConverter_Convert(nullptr, 1, &output, nullptr, 640, 480, 0), VC_ERROR_INVALID_ARGUMENT);
  EXPECT_EQ(VideoConverter_Convert(&item, 0, &output, nullptr, 640, 480, 0), VC_ERROR_INVALID_ARGUMENT);
  EXPECT_EQ(VideoConverter_Convert(&item, VC_MAX_MEDIA_ITEMS + 1, &output, nullptr, 640, 480, 0),
            VC_ERROR_INVALID_ARGUMENT);
  MediaItem unsized = item;
  unsized.m_cbsize = 0;
  EXPECT_EQ(VideoConverter_Convert(&unsized, 1, &output, nullptr, 640, 480, 0), VC_ERROR_INVALID_ARGUMENT);

  ASSERT_EQ(start(recordFor(longClip()), outputFor(outputPath("running.mp4"), "mp4", "libx264", "aac")), 0);
  EXPECT_EQ(VideoConverter_Convert(&item, 1, &output, nullptr, 640, 480, 0), VC_ERROR_BUSY);
  VideoConverter_Abort();
  ASSERT_TRUE(waitForEndsSinceStart(1));
  VideoConverter_Destory();
  EXPECT_EQ(endsSinceStart(), 1);
  EXPECT_FALSE(fs::exists(output.m_FileName));
}

}  // namespace
}  // namespace enginetest
