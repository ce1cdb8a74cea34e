// Several threads probing at once, as the list does while files are added.
#include <gtest/gtest.h>

#include <algorithm>
#include <barrier>
#include <cstring>
#include <thread>

#include "Probe.h"
#include "TestMedia.h"

namespace enginetest {
namespace {

const std::vector<std::string> kSamples = {"clip.mp4",  "two-audio.mkv", "rotated.mov", "clip.ts",
                                           "clip.webm", "song.mp3",      "clip.avi",    "song.flac"};

// The record without its thumbnail path, which differs from call to call.
DECODER_INFO withoutThumbnailPath(DECODER_INFO info) {
  std::memset(info.m_Thumbnail, 0, sizeof info.m_Thumbnail);
  return info;
}

bool sameRecord(const DECODER_INFO& a, const DECODER_INFO& b) {
  const DECODER_INFO left = withoutThumbnailPath(a);
  const DECODER_INFO right = withoutThumbnailPath(b);
  return std::memcmp(&left, &right, sizeof left) == 0;
}

TEST(ConcurrentProbes, EachThreadGetsTheRecordAProbeAloneGivesAndKeepsIt) {
  std::vector<std::string> paths;
  std::vector<DECODER_INFO> expected;
  for (const std::string& name : kSamples) {
    paths.push_back(sample(name));
    const Probed alone = probeFile(paths.back(), scratchFolder() + "/alone-" + name + ".bmp");
    ASSERT_EQ(alone.code, 0) << name;
    expected.push_back(alone.info);
  }
  constexpr int kThreads = 8;
  constexpr int kRounds = 3;
  std::barrier allProbed(kThreads);
  std::vector<const DECODER_INFO*> recordOfThread(kThreads, nullptr);
  std::vector<std::thread> threads;
  for (int t = 0; t < kThreads; ++t) {
    threads.emplace_back([&, t] {
      for (int round = 0; round < kRounds; ++round) {
        const size_t which = (t + round) % kSamples.size();
        const std::string thumbnail =
            scratchFolder() + "/thread" + std::to_string(t) + "-" + std::to_string(round) + ".bmp";
        DECODER_INFO* record = nullptr;
        EXPECT_EQ(VideoConverter_GetMediaInfo(paths[which].c_str(), thumbnail.c_str(), &record, 0), 0);
        recordOfThread[t] = record;
        // Every other thread has probed before this one reads its record again.
        allProbed.arrive_and_wait();
        if (record != nullptr) {
          EXPECT_TRUE(sameRecord(*record, expected[which])) << kSamples[which] << " on thread " << t;
          EXPECT_STREQ(record->m_Thumbnail, expected[which].m_bVideoStream ? thumbnail.c_str() : "");
        }
        allProbed.arrive_and_wait();
      }
    });
  }
  for (std::thread& thread : threads) thread.join();
  std::sort(recordOfThread.begin(), recordOfThread.end());
  EXPECT_EQ(std::adjacent_find(recordOfThread.begin(), recordOfThread.end()), recordOfThread.end())
      << "two threads shared one record";
}

}  // namespace
}  // namespace enginetest
