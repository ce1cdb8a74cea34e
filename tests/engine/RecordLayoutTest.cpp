// The records cross between compilers and languages as raw bytes: their
// layout must not depend on who compiles the header.
#include <gtest/gtest.h>

#include "RecordLayoutC.h"
#include "videoconverter.h"

namespace enginetest {
namespace {

TEST(RecordLayout, CAndCppAgree) {
  RecordLayout c{};
  recordLayoutSeenByC(&c);
  EXPECT_EQ(c.decoderInfoSize, 7648u);
  EXPECT_EQ(c.audioStreamInfoSize, 56u);
  EXPECT_EQ(c.mediaItemSize, 11990u);
  EXPECT_EQ(c.outputParamSize, 872u);
  EXPECT_EQ(c.thumbnailOffset, offsetof(DECODER_INFO, m_Thumbnail));
  EXPECT_EQ(c.mediaInfoOffset, offsetof(MediaItem, m_Info));
  EXPECT_EQ(c.watermarkOffset, offsetof(MediaItem, m_watermarkInfo));
  EXPECT_EQ(c.fadeVideoOffset, offsetof(MediaItem, m_fadeVideoInfo));
  EXPECT_EQ(c.hwaccelOffset, offsetof(MediaItem, m_bEnableHwaccel));
  EXPECT_EQ(c.segmentLengthOffset, offsetof(OutputParam, m_SegmentLength));
}

}  // namespace
}  // namespace enginetest
