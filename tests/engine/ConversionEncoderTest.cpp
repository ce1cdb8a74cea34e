// Encoders as the profile catalogue names them, and the rate and format
// settings of the output record, checked with ffprobe.
#include <gtest/gtest.h>

#include <map>

#include "ConversionFixtures.h"

namespace enginetest {
namespace {

std::string clip() {
  return generatedMedia("encoder-source.mp4",
                        {"-f", "lavfi", "-i", "testsrc2=s=160x120:r=25:d=1", "-f", "lavfi", "-i", "sine=r=48000:d=1",
                         "-c:v", "libx264", "-preset", "ultrafast", "-c:a", "aac"});
}

std::map<std::string, std::string> convertedVideo(const std::string& name, const std::string& format,
                                                  const std::string& encoder) {
  const OutputParam output = outputFor(outputPath(name), format, encoder, "pcm_s16le");
  const auto result = convert({recordFor(clip())}, output);
  EXPECT_EQ(result.outcome, engine::ConversionResult::Outcome::kFinished) << encoder << ": " << result.reason;
  return ffprobeFields(output.m_FileName, "streams", "v:0");
}

TEST(ConversionEncoders, CatalogueNamesReachTheirEncodersAndProfiles) {
  auto hq = convertedVideo("hq.mov", "mov", "apch");
  EXPECT_EQ(hq["codec_name"], "prores");
  EXPECT_EQ(hq["profile"], "HQ");
  auto full = convertedVideo("4444.mov", "mov", "ap4h");
  EXPECT_EQ(full["profile"], "4444");
  EXPECT_EQ(full["pix_fmt"].rfind("yuv444p", 0), 0u) << full["pix_fmt"];  // full colour resolution
  EXPECT_EQ(convertedVideo("short-name.mov", "mov", "x264")["codec_name"], "h264");
  EXPECT_EQ(convertedVideo("codec-name.mkv", "matroska", "hevc")["codec_name"], "hevc");

  const OutputParam missing = outputFor(outputPath("icod.mov"), "mov", "icod", "pcm_s16le");
  const auto result = convert({recordFor(clip())}, missing);
  EXPECT_EQ(result.outcome, engine::ConversionResult::Outcome::kFailed);
  EXPECT_NE(result.reason.find("icod"), std::string::npos) << result.reason;
}

TEST(ConversionEncoders, RatesAndSizesComeFromTheOutputRecord) {
  OutputParam output = outputFor(outputPath("ntsc.mp4"), "mp4", "libx264", "aac");
  output.m_FrameRateNum = 30000;
  output.m_FrameRateDen = 1001;
  output.m_Width = 321;  // made even for the encoder
  output.m_Height = 180;
  output.m_SampleRate = 22050;
  output.m_Channels = 1;
  output.m_AudioBitrate = 64;
  const auto result = convert({recordFor(clip())}, output);
  ASSERT_EQ(result.outcome, engine::ConversionResult::Outcome::kFinished) << result.reason;
  auto video = ffprobeFields(output.m_FileName, "streams", "v:0");
  EXPECT_EQ(video["r_frame_rate"], "30000/1001");
  EXPECT_EQ(video["width"], "320");
  EXPECT_EQ(video["height"], "180");
  EXPECT_EQ(video["sample_aspect_ratio"], "1:1");
  auto sound = ffprobeFields(output.m_FileName, "streams", "a:0");
  EXPECT_EQ(sound["sample_rate"], "22050");
  EXPECT_EQ(sound["channels"], "1");
  EXPECT_NEAR(std::stoi(sound["bit_rate"]), 64000, 8000);
}

}  // namespace
}  // namespace enginetest
