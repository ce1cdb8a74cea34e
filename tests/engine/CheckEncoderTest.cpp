// Whether a codec named by its four-character code can be written, against
// the encoders the ffmpeg command of the same installation lists, and the
// names of the codecs a probe reports.
#include <gtest/gtest.h>

#include <sstream>

#include "ExternalTools.h"
#include "Probe.h"
#include "TestMedia.h"
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

TEST(CheckEncoder, CodesAnswerForTheEncoderOfTheirCodecAndUnknownOnesAreRefused) {
  const int prores = ffmpegListsEncoder("prores_ks") ? 1 : 0;
  for (const char* code : {"apcn", "apch", "apco", "apcs", "ap4h"})
    EXPECT_EQ(VideoConverter_CheckEncoder(code), prores) << code;
  EXPECT_EQ(VideoConverter_CheckEncoder("avc1"), ffmpegListsEncoder("libx264") || ffmpegListsEncoder("h264_vaapi"));
  EXPECT_EQ(VideoConverter_CheckEncoder("jpeg"), ffmpegListsEncoder("mjpeg") ? 1 : 0);
  for (const char* refused : {"icod", "zzzz", "apc", "apcnx"})
    EXPECT_EQ(VideoConverter_CheckEncoder(refused), 0) << refused;
  EXPECT_EQ(VideoConverter_CheckEncoder(nullptr), 0);
}

TEST(CodecName, TheProbedCodecNumbersReadAsFfmpegNamesThemAndUnknownOnesAsNothing) {
  const Probed probed = probeFile(sample("clip.mp4"));
  ASSERT_EQ(probed.code, 0);
  EXPECT_EQ(std::string(VideoConverter_GetCodecName(probed.info.m_VideoFormat)).rfind("H.264", 0), 0u);
  EXPECT_EQ(std::string(VideoConverter_GetCodecName(probed.info.m_AudioStreamInfo[0].m_AudioFormat)).rfind("AAC", 0),
            0u);
  EXPECT_STREQ(VideoConverter_GetCodecName(-3), "");
  EXPECT_STREQ(VideoConverter_GetCodecName(0x7fffffff), "");
}

}  // namespace
}  // namespace enginetest
