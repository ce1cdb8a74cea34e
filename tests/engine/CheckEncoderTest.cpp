// Whether a codec named by its four-character code can be written, against
// the encoders the ffmpeg command of the same installation lists.
#include <gtest/gtest.h>

#include <sstream>

#include "ExternalTools.h"
#include "videoconverter.h"

namespace enginetest {
namespace {

bool ffmpegListsEncoder(const std::string& name) {
  std::istringstream lines(runProcess({"ffmpeg", "-hide_banner", "-encoders"}).output);
  for (std::string line; std::getline(lines, line);) {
    std::istringstream fields(line);
    std::string flags, encoder;
    if (fields >> flags >> encoder && encoder == name) return true;
  }
  return false;
}

TEST(CheckEncoder, ProResCodesFollowTheProResEncoder) {
  const int expected = ffmpegListsEncoder("prores_ks") ? 1 : 0;
  for (const char* code : {"apcn", "apch", "apco", "apcs", "ap4h"}) {
    EXPECT_EQ(VideoConverter_CheckEncoder(code), expected) << code;
  }
}

TEST(CheckEncoder, CodecsWithoutAnEncoderAndUnknownCodesAreRefused) {
  EXPECT_EQ(VideoConverter_CheckEncoder("icod"), 0);
  EXPECT_EQ(VideoConverter_CheckEncoder("zzzz"), 0);
  EXPECT_EQ(VideoConverter_CheckEncoder("apc"), 0);
  EXPECT_EQ(VideoConverter_CheckEncoder("apcnx"), 0);
  EXPECT_EQ(VideoConverter_CheckEncoder(nullptr), 0);
}

TEST(CheckEncoder, OtherCodesAnswerForTheirCodec) {
  EXPECT_EQ(VideoConverter_CheckEncoder("avc1"), ffmpegListsEncoder("libx264") || ffmpegListsEncoder("h264_vaapi"));
  EXPECT_EQ(VideoConverter_CheckEncoder("jpeg"), ffmpegListsEncoder("mjpeg") ? 1 : 0);
}

}  // namespace
}  // namespace enginetest
