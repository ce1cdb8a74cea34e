// Conversions that cannot be done: each fails with a sentence naming the
// cause, writes no output, and leaves the inputs as they were.
#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>

#include "ConversionFixtures.h"
#include "TestMedia.h"

namespace enginetest {
namespace {

namespace fs = std::filesystem;

std::string shortClip() {
  return generatedMedia("short.mp4", {"-f", "lavfi", "-i", "testsrc2=s=160x120:r=25:d=1", "-f", "lavfi", "-i",
                                      "sine=r=44100:d=1", "-c:v", "libx264", "-preset", "ultrafast", "-c:a", "aac"});
}

std::string writtenFile(const std::string& name, const std::string& content) {
  const std::string path = outputPath(name);
  std::ofstream(path, std::ios::binary) << content;
  return path;
}

// The first half of a real file: its index, at the end, is missing.
std::string truncatedClip() { return firstBytesOf(shortClip(), 0.5, "truncated.mp4"); }

void expectCleanFailure(const engine::ConversionResult& result, const std::string& cause, const OutputParam& output) {
  EXPECT_EQ(result.outcome, engine::ConversionResult::Outcome::kFailed);
  EXPECT_NE(result.reason.find(cause), std::string::npos) << result.reason;
  EXPECT_FALSE(fs::exists(output.m_FileName)) << output.m_FileName;
  EXPECT_TRUE(result.files.empty());
}

TEST(ConversionFailure, DamagedInputsFailNamingTheFile) {
  const OutputParam output = outputFor(outputPath("from-damaged.mp4"), "mp4", "libx264", "aac");
  for (const std::string& damaged :
       {writtenFile("garbage.mp4", std::string(4096, '\x5a')), truncatedClip(), outputPath("missing.mp4")}) {
    MediaItem item = recordFor(shortClip());
    setText(item.m_FileName, damaged);
    expectCleanFailure(convert({item}, output), damaged, output);
  }
}

TEST(ConversionFailure, RefusedSettingsAreExplained) {
  const MediaItem item = recordFor(shortClip());
  const OutputParam unknownEncoder = outputFor(outputPath("unknown.mp4"), "mp4", "no-such-encoder", "aac");
  expectCleanFailure(convert({item}, unknownEncoder), "no-such-encoder", unknownEncoder);

  const OutputParam wrongContainer = outputFor(outputPath("wrong.mp4"), "mp4", "libx264", "wmav2");
  expectCleanFailure(convert({item}, wrongContainer), "cannot hold", wrongContainer);

  const OutputParam missingFolder = outputFor(outputPath("no-folder/out.mp4"), "mp4", "libx264", "aac");
  expectCleanFailure(convert({item}, missingFolder), "cannot create", missingFolder);

  MediaItem pastTheEnd = item;
  pastTheEnd.m_MediaStartPos = 5'000'000;
  const OutputParam output = outputFor(outputPath("empty-part.mp4"), "mp4", "libx264", "aac");
  expectCleanFailure(convert({pastTheEnd}, output), "empty", output);

  // Within what the index of a cut file lists, but past the data it holds.
  MediaItem pastTheData = recordFor(firstBytesOf(tenSeconds(), 0.4, "cut.mp4"));
  pastTheData.m_MediaStartPos = 6'000'000;
  expectCleanFailure(convert({pastTheData}, output), "before the part to convert, which starts at 00:00:06", output);
}

TEST(ConversionFailure, AnOutputThatWouldOverwriteItsInputIsRefused) {
  const std::string input = outputPath("precious.mp4");
  fs::copy_file(shortClip(), input, fs::copy_options::overwrite_existing);
  const auto size = fs::file_size(input);
  const auto result = convert({recordFor(input)}, outputFor(input, "mp4", "libx264", "aac"));
  EXPECT_EQ(result.outcome, engine::ConversionResult::Outcome::kFailed);
  EXPECT_NE(result.reason.find("overwrite"), std::string::npos) << result.reason;
  EXPECT_EQ(fs::file_size(input), size);
}

}  // namespace
}  // namespace enginetest
