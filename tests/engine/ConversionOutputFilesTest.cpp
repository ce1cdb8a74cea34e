// What a conversion leaves under the output's names: a stopped output stays,
// playable, under its final name; a failure leaves nothing; and a process
// killed midway leaves only hidden temporaries, never a broken file under a
// final name, for one output file and for the pieces of a split one alike.
#include <gtest/gtest.h>
#include <signal.h>
#include <sys/wait.h>
#include <unistd.h>

#include <filesystem>
#include <fstream>

#include "ConversionFixtures.h"
#include "OutputSink.h"

namespace enginetest {
namespace {

namespace fs = std::filesystem;

constexpr double kOneFrame = 1.0 / 25;

// A copy of an MP4 file with its index in front whose media data are all
// zeros: it opens and lists its frames, but not one picture decodes.
std::string zeroedMediaData(const std::string& source, const std::string& name) {
  std::ifstream whole(source, std::ios::binary);
  std::string content((std::istreambuf_iterator<char>(whole)), std::istreambuf_iterator<char>());
  const std::size_t data = content.find("mdat");
  if (data != std::string::npos) std::fill(content.begin() + data + 4, content.end(), '\0');
  const std::string path = outputPath(name);
  std::ofstream(path, std::ios::binary) << content;
  return path;
}

template <typename Record>
std::string storedRecord(const std::string& name, const Record& record) {
  const std::string path = outputPath(name);
  std::ofstream(path, std::ios::binary).write(reinterpret_cast<const char*>(&record), sizeof record);
  return path;
}

// Runs the conversion in a helper process until it has written `writtenUs`
// of output, then kills it outright. False when the helper never got there.
bool convertAndKill(const MediaItem& item, const OutputParam& output, int64_t writtenUs) {
  const StartedProcess helper = startProcess({ENGINE_CONVERT_UNTIL_KILLED, storedRecord("item.record", item),
                                              storedRecord("output.record", output), std::to_string(writtenUs)});
  if (helper.pid < 0) return false;
  std::string said;
  char character = 0;
  while (said.size() < 8 && read(helper.output, &character, 1) == 1) said += character;
  kill(helper.pid, SIGKILL);
  waitpid(helper.pid, nullptr, 0);
  close(helper.output);
  return said == "written\n";
}

void removeTemporaries() {
  for (const std::string& file : outputTemporaries()) fs::remove(file);
}

TEST(ConversionOutputFiles, AnAbortKeepsWhatWasWrittenUnderTheFinalName) {
  const std::string output = outputPath("partial.mp4");
  engine::Transcoder transcoder({recordFor(longClip())}, outputFor(output, "mp4", "libx264", "aac"));
  transcoder.setProgressObserver([&](int64_t writtenUs) {
    if (writtenUs >= 500'000) transcoder.abort();
  });
  const engine::ConversionResult result = transcoder.run();
  EXPECT_EQ(result.outcome, engine::ConversionResult::Outcome::kAborted);
  EXPECT_EQ(result.files, std::vector<std::string>{output});
  const double written = probedDuration(output, "v:0");
  EXPECT_GT(written, 0.4);
  EXPECT_LT(written, 30);
  EXPECT_NEAR(written, result.writtenUs / 1e6, 0.2);  // counted in decoding order
  EXPECT_FALSE(decodePictures(output).empty());
  EXPECT_TRUE(outputTemporaries().empty());
}

TEST(ConversionOutputFiles, AFailureMidwayLeavesNothing) {
  // The first input writes most of the output before the second turns out to have nothing to decode.
  const std::string zeroed = zeroedMediaData(tenSeconds(), "zeroed.mp4");
  const OutputParam output = outputFor(outputPath("failed-midway.mp4"), "mp4", "libx264", "aac");
  const auto result = convert({recordFor(longClip()), recordFor(zeroed)}, output);
  EXPECT_EQ(result.outcome, engine::ConversionResult::Outcome::kFailed);
  EXPECT_NE(result.reason.find("no picture could be decoded from " + zeroed), std::string::npos) << result.reason;
  EXPECT_TRUE(result.files.empty());
  EXPECT_FALSE(fs::exists(output.m_FileName));
  EXPECT_TRUE(outputTemporaries().empty());
}

TEST(ConversionOutputFiles, AKilledConversionLeavesNoBrokenFileUnderAFinalName) {
  const MediaItem item = recordFor(longClip());
  const std::string whole = outputPath("killed.mp4");
  ASSERT_TRUE(convertAndKill(item, outputFor(whole, "mp4", "libx264", "aac"), 500'000));
  EXPECT_FALSE(fs::exists(whole));
  EXPECT_EQ(outputTemporaries().size(), 1u);
  removeTemporaries();

  // Killed some pieces into a split output: the pieces under final names are whole ones.
  const std::string split = outputPath("killed-pieces.mp4");
  OutputParam pieces = outputFor(split, "mp4", "libx264", "aac");
  pieces.m_SegmentLength = 1'000'000;
  ASSERT_TRUE(convertAndKill(item, pieces, 5'000'000));
  EXPECT_FALSE(outputTemporaries().empty());
  int finished = 0;
  for (int piece = 0; piece < 30; ++piece) {
    const std::string path = engine::OutputSink::piecePath(split, piece);
    if (!fs::exists(path)) continue;
    ++finished;
    EXPECT_NEAR(probedDuration(path, "v:0"), 1.0, kOneFrame) << path;
  }
  EXPECT_GE(finished, 1);
  EXPECT_LT(finished, 30);
  removeTemporaries();
}

}  // namespace
}  // namespace enginetest
