// The conversion through the library's C functions: one conversion at a
// time, an end callback exactly once whatever the outcome, the outcome and
// the files kept readable when it comes, abort, and conversions one after
// another in the same process.
#include <gtest/gtest.h>

#include <chrono>
#include <condition_variable>
#include <filesystem>
#include <mutex>

#include "ConversionFixtures.h"
#include "TestMedia.h"

namespace enginetest {
namespace {

namespace fs = std::filesystem;

// Generous: a conversion that has not ended by then hangs.
constexpr auto kEndBound = std::chrono::seconds(120);

ConvertOutcome currentOutcome() {
  ConvertOutcome outcome{};
  outcome.m_cbsize = VC_CONVERT_OUTCOME_SIZE;
  EXPECT_EQ(VideoConverter_GetConvertOutcome(&outcome), 0);
  return outcome;
}

// What the plain C end callback saw.
struct EndCalls {
  std::mutex mutex;
  std::condition_variable changed;
  int count = 0;
  ConvertOutcome outcome{};  // as read in the last call
} endCalls;

void countEnd() {
  const ConvertOutcome outcome = currentOutcome();
  std::lock_guard lock(endCalls.mutex);
  ++endCalls.count;
  endCalls.outcome = outcome;
  endCalls.changed.notify_all();
}

ConvertOutcome outcomeAtTheEnd() {
  std::lock_guard lock(endCalls.mutex);
  return endCalls.outcome;
}

std::string outputFile(int index) {
  char path[1024] = {};
  EXPECT_EQ(VideoConverter_GetOutputFile(index, path, sizeof path), 0) << index;
  return path;
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
  const ConvertOutcome outcome = outcomeAtTheEnd();
  EXPECT_EQ(outcome.m_Outcome, VC_OUTCOME_ABORTED);
  EXPECT_EQ(std::string(outcome.m_Reason).find("The conversion was stopped at 00:00:"), 0u) << outcome.m_Reason;
  EXPECT_EQ(outcome.m_WrittenUs, VideoConverter_GetCurrentTime());
  VideoConverter_Destory();
  EXPECT_EQ(endsSinceStart(), 1);
  EXPECT_EQ(currentOutcome().m_Outcome, VC_OUTCOME_ABORTED);  // kept after the conversion is released
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

TEST_F(ConversionApi, TwoConversionsOneAfterTheOtherTellTheFilesTheyKept) {
  const struct {
    const char* name;
    const char* format;
    int64_t segmentLengthUs;
    std::vector<std::string> files;
  } conversions[] = {{"first.mp4", "mp4", 0, {"first.mp4"}},
                     {"second.mkv", "matroska", 600'000, {"second_0.mkv", "second_1.mkv"}}};
  for (const auto& conversion : conversions) {
    SCOPED_TRACE(conversion.name);
    const int endsBefore = endsSinceStart();
    OutputParam output = outputFor(outputPath(conversion.name), conversion.format, "libx264", "aac");
    output.m_SegmentLength = conversion.segmentLengthUs;
    ASSERT_EQ(start(recordFor(shortClip()), output), 0);
    ASSERT_TRUE(waitForEndsSinceStart(endsBefore + 1));
    EXPECT_EQ(VideoConverter_GetCurrentTime(), VideoConverter_GetDuration());
    const ConvertOutcome outcome = outcomeAtTheEnd();
    EXPECT_EQ(outcome.m_Outcome, VC_OUTCOME_FINISHED);
    EXPECT_STREQ(outcome.m_Reason, "");
    EXPECT_EQ(outcome.m_WrittenUs, VideoConverter_GetDuration());
    ASSERT_EQ(outcome.m_FileCount, static_cast<int>(conversion.files.size()));
    EXPECT_EQ(outcome.m_FirstFile, outputPath(conversion.files.front()));
    VideoConverter_Destory();
    std::size_t pictures = 0;
    for (std::size_t index = 0; index < conversion.files.size(); ++index) {
      EXPECT_EQ(outputFile(static_cast<int>(index)), outputPath(conversion.files[index]));
      pictures += decodePictures(outputPath(conversion.files[index])).size();
    }
    EXPECT_EQ(pictures, 25u);
    char tooSmall[8];
    EXPECT_EQ(VideoConverter_GetOutputFile(0, tooSmall, sizeof tooSmall), VC_ERROR_INVALID_ARGUMENT);
    EXPECT_EQ(VideoConverter_GetOutputFile(outcome.m_FileCount, tooSmall, sizeof tooSmall), VC_ERROR_INVALID_ARGUMENT);
  }
  EXPECT_EQ(endsSinceStart(), 2);
  EXPECT_TRUE(outputTemporaries().empty());
}

TEST_F(ConversionApi, ACutInputEndsWithAWarningAndTheLengthItReallyHas) {
  const std::string cut = firstBytesOf(tenSeconds(), 0.4, "cut-api.mp4");
  const std::string output = outputPath("from-cut.mp4");
  ASSERT_EQ(start(recordFor(cut), outputFor(output, "mp4", "libx264", "aac")), 0);
  ASSERT_TRUE(waitForEndsSinceStart(1));
  const ConvertOutcome outcome = outcomeAtTheEnd();
  EXPECT_EQ(outcome.m_Outcome, VC_OUTCOME_WARNING);
  EXPECT_EQ(std::string(outcome.m_Reason).find("The input ends at 00:00:0"), 0u) << outcome.m_Reason;
  // Progress reaches the end of what the output really holds.
  EXPECT_LT(VideoConverter_GetDuration(), 5'000'000);
  EXPECT_EQ(VideoConverter_GetCurrentTime(), VideoConverter_GetDuration());
  EXPECT_EQ(outcome.m_WrittenUs, VideoConverter_GetDuration());
  EXPECT_EQ(outcome.m_FirstFile, output);
}

TEST_F(ConversionApi, AFailureEndsWithOneCallbackAndNoOutput) {
  MediaItem item = recordFor(shortClip());
  const std::string missing = outputPath("gone.mp4");
  setText(item.m_FileName, missing);
  const std::string output = outputPath("never.mp4");
  ASSERT_EQ(start(item, outputFor(output, "mp4", "libx264", "aac")), 0);
  ASSERT_TRUE(waitForEndsSinceStart(1));
  const ConvertOutcome outcome = outcomeAtTheEnd();
  EXPECT_EQ(outcome.m_Outcome, VC_OUTCOME_FAILED);
  EXPECT_NE(std::string(outcome.m_Reason).find(missing), std::string::npos) << outcome.m_Reason;
  EXPECT_EQ(outcome.m_FileCount, 0);
  EXPECT_STREQ(outcome.m_FirstFile, "");
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
  EXPECT_EQ(currentOutcome().m_Outcome, VC_OUTCOME_RUNNING);
  EXPECT_EQ(currentOutcome().m_FileCount, 0);
  ConvertOutcome unsizedOutcome{};
  EXPECT_EQ(VideoConverter_GetConvertOutcome(&unsizedOutcome), VC_ERROR_INVALID_ARGUMENT);
  EXPECT_EQ(VideoConverter_GetConvertOutcome(nullptr), VC_ERROR_INVALID_ARGUMENT);
  char path[1024];
  EXPECT_EQ(VideoConverter_GetOutputFile(0, path, sizeof path), VC_ERROR_INVALID_ARGUMENT);
  VideoConverter_Abort();
  ASSERT_TRUE(waitForEndsSinceStart(1));
  VideoConverter_Destory();
  EXPECT_EQ(endsSinceStart(), 1);
  EXPECT_FALSE(fs::exists(output.m_FileName));
}

}  // namespace
}  // namespace enginetest
