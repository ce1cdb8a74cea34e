// Files that are not media, or not whole: a clear failure code, no crash, no
// hang, no thumbnail, and the file itself left as it was.
#include <gtest/gtest.h>
#include <sys/stat.h>

#include <filesystem>
#include <fstream>
#include <sstream>

#include "Probe.h"
#include "TestMedia.h"

namespace enginetest {
namespace {

namespace fs = std::filesystem;

std::string contentOf(const fs::path& path) {
  std::ostringstream content;
  content << std::ifstream(path, std::ios::binary).rdbuf();
  return content.str();
}

fs::path writeFile(const std::string& name, const std::string& content) {
  const fs::path path = fs::path(scratchFolder()) / name;
  std::ofstream(path, std::ios::binary) << content;
  return path;
}

struct BadFile {
  std::string description;
  fs::path path;
  int expectedCode;
};

TEST(BadInput, FailsWithACodeThatSaysWhyAndChangesNothingButAFileCutAfterItsIndexShowsWhatItHas) {
  const fs::path fifo = fs::path(scratchFolder()) / "pipe.mp4";
  ASSERT_EQ(mkfifo(fifo.c_str(), 0600), 0);  // opening it would block for ever
  const fs::path zeros = writeFile("zeros.ts", "");
  fs::resize_file(zeros, 20'000'000);
  const std::vector<BadFile> files = {
      {"missing", fs::path(scratchFolder()) / "absent.mp4", VC_ERROR_FILE_NOT_FOUND},
      {"a folder", scratchFolder(), VC_ERROR_FILE_NOT_FOUND},
      {"a pipe", fifo, VC_ERROR_FILE_NOT_FOUND},
      {"empty", writeFile("empty.mp4", ""), VC_ERROR_UNKNOWN_FORMAT},
      {"text", writeFile("notes.mp4", "These are not moving pictures.\nJust a list of things to buy.\n"),
       VC_ERROR_UNKNOWN_FORMAT},
      {"20 MB of zeros", zeros, VC_ERROR_UNKNOWN_FORMAT},
      {"cut before its index", firstBytesOf(sample("clip.mp4"), 0.4, "truncated.mp4"), VC_ERROR_UNKNOWN_FORMAT},
  };
  for (const BadFile& file : files) {
    SCOPED_TRACE(file.description);
    const bool regular = fs::is_regular_file(file.path);
    const std::string before = regular ? contentOf(file.path) : "";
    const fs::path thumbnail = fs::path(scratchFolder()) / ("thumb of " + file.description + ".bmp");
    DECODER_INFO stale{};
    DECODER_INFO* record = &stale;  // must not survive a failure
    EXPECT_EQ(VideoConverter_GetMediaInfo(file.path.c_str(), thumbnail.c_str(), &record, 0), file.expectedCode);
    EXPECT_EQ(record, nullptr);
    EXPECT_FALSE(fs::exists(thumbnail));
    if (regular) {
      EXPECT_EQ(contentOf(file.path), before);
    }
  }

  // With the index at the front, half a file still describes the whole clip.
  const fs::path half = firstBytesOf(sample("front-index.mp4"), 0.5, "half.mp4");
  const Probed probed = probeFile(half, (fs::path(scratchFolder()) / "half.bmp").string());
  ASSERT_EQ(probed.code, 0);
  EXPECT_EQ(probed.info.m_Width, 320);
  EXPECT_NEAR(probed.info.m_Duration, 2'000'000, 50'000);
  EXPECT_TRUE(fs::exists(probed.info.m_Thumbnail));
}

TEST(BadInput, MissingArgumentsAreRefusedAndAPictureOpensButHoldsNoStreams) {
  DECODER_INFO* record = nullptr;
  DECODER_INFO info{};
  const std::string clip = sample("clip.mp4");
  EXPECT_EQ(VideoConverter_GetMediaInfo(nullptr, nullptr, &record, 0), VC_ERROR_INVALID_ARGUMENT);
  EXPECT_EQ(VideoConverter_GetMediaInfo("", nullptr, &record, 0), VC_ERROR_INVALID_ARGUMENT);
  EXPECT_EQ(VideoConverter_GetMediaInfo(clip.c_str(), nullptr, nullptr, 0), VC_ERROR_INVALID_ARGUMENT);
  EXPECT_EQ(VideoConverter_GetMediaInfo2(clip.c_str(), nullptr, nullptr, 0), VC_ERROR_INVALID_ARGUMENT);
  EXPECT_EQ(VideoConverter_GetMediaInfo2(nullptr, nullptr, &info, 0), VC_ERROR_INVALID_ARGUMENT);
  const std::string tooLong(1024, 'x');
  EXPECT_EQ(VideoConverter_GetMediaInfo(clip.c_str(), tooLong.c_str(), &record, 0), VC_ERROR_INVALID_ARGUMENT);
  EXPECT_EQ(VideoConverter_SetTempPath(nullptr), -1);

  const Probed probed = probeFile(sample("picture.png"), scratchFolder() + "/picture-thumb.bmp");
  ASSERT_EQ(probed.code, 0);
  EXPECT_EQ(probed.info.m_bVideoStream, 0);
  EXPECT_EQ(probed.info.m_AudioSteamCnt, 0);
  EXPECT_STREQ(probed.info.m_Thumbnail, "");
}

}  // namespace
}  // namespace enginetest
