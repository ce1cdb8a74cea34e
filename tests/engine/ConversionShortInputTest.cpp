// Inputs that end before their files say they do, as a download cut short or
// a damaged header leaves them: the output ends where the decodable data
// ends, without a frozen picture or silence after it, and the conversion
// finishes with a warning that says where the input stopped.
#include <gtest/gtest.h>

#include <cstdio>
#include <fstream>
#include <iterator>

#include "ConversionFixtures.h"
#include "TestMedia.h"

namespace enginetest {
namespace {

using Outcome = engine::ConversionResult::Outcome;

constexpr double kOneFrame = 1.0 / 25;

std::string clock(double seconds) {
  const int whole = static_cast<int>(seconds);
  char text[16];
  std::snprintf(text, sizeof text, "%02d:%02d:%02d", whole / 3600, whole / 60 % 60, whole % 60);
  return text;
}

// The first 40 % of ten seconds with the index in front: the index still lists all ten.
std::string cutClip() { return firstBytesOf(tenSeconds(), 0.4, "cut.mp4"); }

// How far a file's pictures decode, by the test's own decoder, at 25 a second.
double decodableSeconds(const std::string& path) {
  return static_cast<double>(decodePictures(path).size()) * kOneFrame;
}

std::string twoSecondSong() {
  return generatedMedia("two-seconds.mp3", {"-f", "lavfi", "-i", "sine=r=44100:d=2", "-c:a", "libmp3lame"});
}

// A copy of an MP3 whose frame-count header is damaged to claim 858 seconds.
std::string claimingMinutes(const std::string& song) {
  std::ifstream whole(song, std::ios::binary);
  std::string content((std::istreambuf_iterator<char>(whole)), std::istreambuf_iterator<char>());
  const std::size_t header = content.find("Info");
  EXPECT_NE(header, std::string::npos) << "no frame-count header in " << song;
  if (header == std::string::npos) return song;
  const unsigned frames = 32'846;  // of 1,152 samples at 44.1 kHz
  for (int byte = 0; byte < 4; ++byte) content[header + 8 + byte] = static_cast<char>(frames >> (24 - 8 * byte));
  const std::string path = outputPath("claims-minutes.mp3");
  std::ofstream(path, std::ios::binary) << content;
  return path;
}

TEST(ConversionShortInput, ACutFileEndsWhereItsDataEndsWhateverPartIsAsked) {
  const std::string cut = cutClip();
  const double decodable = decodableSeconds(cut);
  ASSERT_GT(decodable, 2.5);
  ASSERT_LT(decodable, 5.0);
  const struct {
    const char* name;
    int64_t startUs;
    int64_t endUs;  // 0: to the end
    double seconds;
    std::string warning;  // empty: finished whole
  } parts[] = {
      {"whole", 0, 0, decodable, "The input ends at " + clock(decodable) + " of 00:00:10"},
      {"inside the data", 1'000'000, 2'500'000, 1.5, ""},
      {"past the data", 2'000'000, 8'000'000, decodable - 2, "The input ends at " + clock(decodable) + " of 00:00:08"},
  };
  for (const auto& part : parts) {
    SCOPED_TRACE(part.name);
    MediaItem item = recordFor(cut);
    item.m_MediaStartPos = part.startUs;
    item.m_MediaEndPos = part.endUs;
    const std::string output = outputPath(std::string(part.name) + ".mp4");
    const auto result = convert({item}, outputFor(output, "mp4", "libx264", "aac"));
    EXPECT_EQ(result.outcome, part.warning.empty() ? Outcome::kFinished : Outcome::kFinishedWithWarning);
    EXPECT_EQ(result.reason, part.warning);
    EXPECT_NEAR(result.writtenUs / 1e6, part.seconds, kOneFrame);
    EXPECT_NEAR(probedDuration(output, "v:0"), part.seconds, kOneFrame);
    EXPECT_NEAR(probedDuration(output, "a:0"), part.seconds, 2 * kOneFrame);
  }
}

TEST(ConversionShortInput, TheNextInputFollowsRightAfterTheDataOfACutOne) {
  const std::string cut = cutClip();
  const double decodable = decodableSeconds(cut);
  MediaItem second = recordFor(tenSeconds());
  second.m_MediaEndPos = 1'000'000;
  const std::string output = outputPath("cut-then-whole.mp4");
  const auto result = convert({recordFor(cut), second}, outputFor(output, "mp4", "libx264", "aac"));
  EXPECT_EQ(result.outcome, Outcome::kFinishedWithWarning);
  EXPECT_EQ(result.reason, "cut.mp4: The input ends at " + clock(decodable) + " of 00:00:10");
  EXPECT_NEAR(probedDuration(output, "v:0"), decodable + 1, kOneFrame);
  EXPECT_NEAR(probedDuration(output, "a:0"), decodable + 1, 2 * kOneFrame);
}

TEST(ConversionShortInput, AnMp3ThatClaimsMinutesBecomesItsSecondsOfSound) {
  const std::string damaged = claimingMinutes(twoSecondSong());
  ASSERT_NEAR(probedDuration(damaged), 858, 1);
  OutputParam settings = outputFor(outputPath("claimed-minutes.mp3"), "mp3", "", "mp3");
  settings.m_Type = 1;
  const auto result = convert({recordFor(damaged)}, settings);
  EXPECT_EQ(result.outcome, Outcome::kFinishedWithWarning);
  EXPECT_EQ(result.reason, "The input ends at 00:00:02 of 00:14:18");
  // As long as the undamaged song, give or take the two frames of an MP3 encoder's delay and padding.
  EXPECT_NEAR(probedDuration(settings.m_FileName), probedDuration(twoSecondSong()), 2 * 1152 / 44100.0);
  EXPECT_GT(decodeSound(settings.m_FileName).rms(1.5, 1.9), 0.05);
}

}  // namespace
}  // namespace enginetest
