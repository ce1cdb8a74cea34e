// Trimming, joining and splitting: the output's length, frame count and
// piece files, checked with ffprobe and by decoding the output.
#include <gtest/gtest.h>

#include <filesystem>

#include "ConversionFixtures.h"

namespace enginetest {
namespace {

constexpr double kOneFrame = 1.0 / 25;

// One second of red, then one of blue, at 25 frames a second, with a tone.
std::string redThenBlue() {
  return generatedMedia("red-then-blue.mp4", {"-f",
                                              "lavfi",
                                              "-i",
                                              "color=red:s=320x240:r=25:d=1",
                                              "-f",
                                              "lavfi",
                                              "-i",
                                              "color=blue:s=320x240:r=25:d=1",
                                              "-f",
                                              "lavfi",
                                              "-i",
                                              "sine=f=440:r=44100:d=2",
                                              "-filter_complex",
                                              "[0][1]concat=n=2,format=yuv420p[v]",
                                              "-map",
                                              "[v]",
                                              "-map",
                                              "2",
                                              "-c:v",
                                              "libx264",
                                              "-preset",
                                              "ultrafast",
                                              "-g",
                                              "10",
                                              "-c:a",
                                              "aac"});
}

// Another size, rate and sound layout: 160 x 120 at 30 frames a second, mono at 48 kHz.
std::string smallMono() {
  return generatedMedia("small-mono.mkv", {"-f", "lavfi", "-i", "testsrc2=s=160x120:r=30:d=1", "-f", "lavfi", "-i",
                                           "sine=f=880:r=48000:d=1", "-ac", "1", "-c:v", "libx264", "-preset",
                                           "ultrafast", "-c:a", "aac"});
}

bool isRed(const RgbPicture& picture) {
  const auto colour = picture.meanColour(0, 0, picture.width, picture.height);
  return colour[0] > 150 && colour[2] < 80;
}

bool isBlue(const RgbPicture& picture) {
  const auto colour = picture.meanColour(0, 0, picture.width, picture.height);
  return colour[2] > 150 && colour[0] < 80;
}

TEST(ConversionTimeline, TrimStartsAtTheFrameShownAtItsStartAndLastsItsLength) {
  MediaItem item = recordFor(redThenBlue());
  item.m_MediaStartPos = 920'000;  // frame 23: two red frames are left before the blue ones
  item.m_MediaEndPos = 1'600'000;
  const std::string output = outputPath("trimmed.mp4");
  const auto result = convert({item}, outputFor(output, "mp4", "libx264", "aac"));
  ASSERT_EQ(result.outcome, engine::ConversionResult::Outcome::kFinished) << result.reason;

  const std::vector<RgbPicture> pictures = decodePictures(output);
  ASSERT_EQ(pictures.size(), 17u);  // 0.68 s at 25 frames a second
  EXPECT_TRUE(isRed(pictures[0]));
  EXPECT_TRUE(isRed(pictures[1]));
  EXPECT_TRUE(isBlue(pictures[2]));
  EXPECT_NEAR(probedDuration(output, "v:0"), 0.68, kOneFrame);
  EXPECT_NEAR(probedDuration(output, "a:0"), 0.68, kOneFrame);
}

TEST(ConversionTimeline, JoinedInputsOfDifferentShapesFollowOneAnother) {
  MediaItem firstSecond = recordFor(redThenBlue());
  firstSecond.m_MediaStartPos = 500'000;
  firstSecond.m_MediaEndPos = 1'500'000;
  MediaItem small = recordFor(smallMono());
  small.m_MediaEndPos = 1'000'000;  // its sound runs a little longer than its pictures
  const MediaItem whole = recordFor(redThenBlue());
  const std::string output = outputPath("joined.mp4");
  const auto result = convert({firstSecond, small, whole}, outputFor(output, "mp4", "libx264", "aac"));
  ASSERT_EQ(result.outcome, engine::ConversionResult::Outcome::kFinished) << result.reason;

  const std::vector<RgbPicture> pictures = decodePictures(output);
  ASSERT_EQ(pictures.size(), 100u);   // 1 + 1 + 2 seconds
  EXPECT_EQ(pictures[0].width, 320);  // the first input's size
  EXPECT_EQ(pictures[0].height, 240);
  EXPECT_TRUE(isRed(pictures[0]));
  EXPECT_TRUE(isBlue(pictures[24]));
  EXPECT_FALSE(isRed(pictures[37]) || isBlue(pictures[37]));  // the middle input
  EXPECT_TRUE(isRed(pictures[50]));
  EXPECT_TRUE(isBlue(pictures[99]));
  EXPECT_NEAR(probedDuration(output, "v:0"), 4.0, kOneFrame);
  EXPECT_NEAR(probedDuration(output, "a:0"), 4.0, kOneFrame);
  const Sound sound = decodeSound(output);
  EXPECT_EQ(sound.channels, 2);
  EXPECT_GT(sound.rms(1.2, 1.8), 0.05);  // the mono input's tone is in the joined sound
}

TEST(ConversionTimeline, SegmentLengthSplitsTheOutputIntoNumberedPieces) {
  const std::string source = generatedMedia(
      "three-seconds.mp4", {"-f", "lavfi", "-i", "testsrc2=s=160x120:r=25:d=3", "-f", "lavfi", "-i", "sine=r=44100:d=3",
                            "-c:v", "libx264", "-preset", "ultrafast", "-c:a", "aac"});
  const std::string output = outputPath("split.mp4");
  OutputParam settings = outputFor(output, "mp4", "libx264", "aac");
  settings.m_SegmentLength = 1'000'000;
  const auto result = convert({recordFor(source)}, settings);
  ASSERT_EQ(result.outcome, engine::ConversionResult::Outcome::kFinished) << result.reason;

  EXPECT_FALSE(std::filesystem::exists(output));
  EXPECT_FALSE(std::filesystem::exists(outputPath("split_3.mp4")));
  std::size_t frames = 0;
  for (const char* piece : {"split_0.mp4", "split_1.mp4", "split_2.mp4"}) {
    const std::string path = outputPath(piece);
    ASSERT_TRUE(std::filesystem::exists(path)) << piece;
    EXPECT_NEAR(probedDuration(path, "v:0"), 1.0, kOneFrame) << piece;
    EXPECT_NEAR(probedDuration(path, "a:0"), 1.0, 2 * kOneFrame) << piece;
    frames += decodePictures(path).size();
  }
  EXPECT_EQ(frames, 75u);
}

}  // namespace
}  // namespace enginetest
