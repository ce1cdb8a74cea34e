// The keyframe index written beside a probe, against ffprobe's packet list.
#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <sstream>

#include "ExternalTools.h"
#include "Probe.h"
#include "TestMedia.h"

namespace enginetest {
namespace {

namespace fs = std::filesystem;

struct IndexFile {
  std::string header;
  std::vector<std::pair<long long, long long>> entries;  // microseconds, byte position
};

IndexFile readIndex(const std::string& path) {
  std::ifstream input(path);
  IndexFile index;
  std::getline(input, index.header);
  long long time = 0;
  long long position = 0;
  while (input >> time >> position) index.entries.emplace_back(time, position);
  return index;
}

std::string readAll(const std::string& path) {
  std::ostringstream content;
  content << std::ifstream(path).rdbuf();
  return content.str();
}

class KeyframeIndexTest : public testing::Test {
 protected:
  void SetUp() override {
    folder_ = scratchFolder() + "/index-" + testing::UnitTest::GetInstance()->current_test_info()->name();
    fs::create_directories(folder_);
    VideoConverter_SetTempPath(folder_.c_str());
  }
  std::string folder_;
};

TEST_F(KeyframeIndexTest, ListsTheKeyframesFfprobeSeesOnceForTheSameFileAndNoneWithoutAFolder) {
  for (const char* name : {"clip.mp4", "clip.ts", "two-audio.mkv", "clip.webm", "clip.avi"}) {
    SCOPED_TRACE(name);
    const std::string path = sample(name);
    const Probed probed = probeFile(path);
    ASSERT_EQ(probed.code, 0);
    ASSERT_EQ(fs::path(probed.info.m_framesPosFileName).parent_path(), fs::path(folder_));
    const IndexFile index = readIndex(probed.info.m_framesPosFileName);
    EXPECT_EQ(index.header, "VCKEYFRAMES 1");
    const std::vector<Keyframe> expected = ffprobeKeyframes(path);
    ASSERT_EQ(index.entries.size(), expected.size());
    for (size_t i = 0; i < expected.size(); ++i) {
      EXPECT_NEAR(index.entries[i].first, expected[i].seconds * 1e6, 2) << "keyframe " << i;
      EXPECT_EQ(index.entries[i].second, expected[i].bytePosition) << "keyframe " << i;
    }
    std::vector<int64_t> times(expected.size() + 1, -1);
    ASSERT_EQ(VideoConverter_GetKeyframeTimes(probed.info.m_framesPosFileName, times.data(), 1),
              static_cast<int>(expected.size()));
    EXPECT_EQ(times[1], -1);  // nothing written past the capacity
    ASSERT_EQ(VideoConverter_GetKeyframeTimes(probed.info.m_framesPosFileName, times.data(),
                                              static_cast<int>(times.size())),
              static_cast<int>(expected.size()));
    for (size_t i = 0; i < expected.size(); ++i) EXPECT_EQ(times[i], index.entries[i].first) << "keyframe " << i;
  }

  const fs::path copy = fs::path(folder_) / "copy.mp4";
  fs::copy_file(sample("clip.mp4"), copy);
  const std::string first = probeFile(copy).info.m_framesPosFileName;
  const std::string content = readAll(first);
  EXPECT_EQ(probeFile(copy).info.m_framesPosFileName, first);
  EXPECT_EQ(readAll(first), content);

  fs::copy_file(sample("clip.ts"), copy, fs::copy_options::overwrite_existing);
  const std::string replaced = probeFile(copy).info.m_framesPosFileName;
  EXPECT_NE(replaced, first);
  EXPECT_EQ(readIndex(replaced).entries.size(), ffprobeKeyframes(copy).size());

  for (const std::string& folder : {std::string(), folder_ + "/missing"}) {
    SCOPED_TRACE(folder);
    VideoConverter_SetTempPath(folder.c_str());
    const Probed probed = probeFile(sample("clip.mp4"));
    ASSERT_EQ(probed.code, 0);
    EXPECT_STREQ(probed.info.m_framesPosFileName, "");
    EXPECT_EQ(probed.info.m_Width, 320);
  }
  EXPECT_FALSE(fs::exists(folder_ + "/missing"));

  std::ofstream(folder_ + "/damaged.idx") << "VCKEYFRAMES 1\n12 x\n";
  int64_t time = 0;
  EXPECT_EQ(VideoConverter_GetKeyframeTimes((folder_ + "/damaged.idx").c_str(), &time, 1), VC_ERROR_FILE_NOT_FOUND);
  EXPECT_EQ(VideoConverter_GetKeyframeTimes((folder_ + "/none.idx").c_str(), &time, 1), VC_ERROR_FILE_NOT_FOUND);
  EXPECT_EQ(VideoConverter_GetKeyframeTimes(nullptr, &time, 1), VC_ERROR_INVALID_ARGUMENT);
}

}  // namespace
}  // namespace enginetest
