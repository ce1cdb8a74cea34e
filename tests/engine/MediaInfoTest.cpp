// The probed record against ffprobe's view of the same files.
#include <gtest/gtest.h>

#include <filesystem>

#include "ExternalTools.h"
#include "Probe.h"
#include "TestMedia.h"

extern "C" {
#include <libavcodec/codec_desc.h>
}

namespace enginetest {
namespace {

int codecIdNamed(const std::string& name) {
  const AVCodecDescriptor* descriptor = avcodec_descriptor_get_by_name(name.c_str());
  return descriptor != nullptr ? descriptor->id : -1;
}

std::pair<int, int> ratio(const std::string& text) {
  const auto slash = text.find('/');
  return {std::stoi(text.substr(0, slash)), std::stoi(text.substr(slash + 1))};
}

struct Sample {
  const char* name;
  int displayWidth;  // as a player shows it: 0 without video
  int displayHeight;
};

void PrintTo(const Sample& sample, std::ostream* out) { *out << sample.name; }

class ProbedLikeFfprobe : public testing::TestWithParam<Sample> {};

TEST_P(ProbedLikeFfprobe, AgreesOnDurationPictureAndEveryStream) {
  const std::string path = sample(GetParam().name);
  const Probed probed = probeFile(path);
  ASSERT_EQ(probed.code, 0);
  const DECODER_INFO& info = probed.info;

  EXPECT_NEAR(info.m_Duration, std::stod(ffprobeFields(path, "format").at("duration")) * 1e6, 1000);
  EXPECT_EQ(info.m_Seekable, 1);
  EXPECT_EQ(info.m_Width, GetParam().displayWidth);
  EXPECT_EQ(info.m_Height, GetParam().displayHeight);
  EXPECT_EQ(info.m_bVideoStream > 0, ffprobeStreamCount(path, "video") > 0);
  if (info.m_bVideoStream > 0) {
    const auto video = ffprobeFields(path, "streams", "v:0");
    EXPECT_EQ(info.m_VideoFormat, codecIdNamed(video.at("codec_name")));
    EXPECT_EQ(info.m_CodecWidth, std::stoi(video.at("width")));
    EXPECT_EQ(info.m_CodecHeight, std::stoi(video.at("height")));
    const auto [rateNum, rateDen] = ratio(video.at("r_frame_rate"));
    EXPECT_DOUBLE_EQ(static_cast<double>(info.m_FrameRateNum) / info.m_FrameRateDen,
                     static_cast<double>(rateNum) / rateDen);
    const std::string fieldOrder = video.count("field_order") ? video.at("field_order") : "unknown";
    EXPECT_EQ(info.m_Can_Deinterlace != 0, fieldOrder != "progressive" && fieldOrder != "unknown");
  }

  ASSERT_EQ(info.m_AudioSteamCnt, ffprobeStreamCount(path, "audio"));
  for (int i = 0; i < info.m_AudioSteamCnt; ++i) {
    SCOPED_TRACE("audio stream " + std::to_string(i));
    const AudioStremInfo& entry = info.m_AudioStreamInfo[i];
    const auto audio = ffprobeFields(path, "streams", "a:" + std::to_string(i));
    EXPECT_EQ(entry.m_audioSteamId, std::stoi(audio.at("index")));
    EXPECT_EQ(entry.m_bAudioStream, 1);
    EXPECT_EQ(entry.m_AudioFormat, codecIdNamed(audio.at("codec_name")));
    EXPECT_EQ(entry.m_SampleRate, std::stoi(audio.at("sample_rate")));
    EXPECT_EQ(entry.m_nChannel, std::stoi(audio.at("channels")));
    EXPECT_GT(entry.m_BitsPerSample, 0);
  }
}

INSTANTIATE_TEST_SUITE_P(Containers, ProbedLikeFfprobe,
                         testing::Values(Sample{"clip.mp4", 320, 240}, Sample{"two-audio.mkv", 160, 120},
                                         Sample{"rotated.mov", 120, 160}, Sample{"anamorphic.mp4", 320, 120},
                                         Sample{"clip.avi", 176, 144}, Sample{"clip.ts", 160, 120},
                                         Sample{"clip.webm", 160, 120}, Sample{"interlaced.mpg", 176, 144},
                                         Sample{"song.mp3", 0, 0}, Sample{"song.flac", 0, 0}, Sample{"song.wav", 0, 0}),
                         [](const testing::TestParamInfo<Sample>& info) {
                           std::string name = info.param.name;
                           for (char& c : name) c = std::isalnum(static_cast<unsigned char>(c)) ? c : '_';
                           return name;
                         });

TEST(MediaInfo, AudioOnlyProbesHaveNoPictureThumbnailOrIndexAndANonAsciiNameProbesLikeItsSource) {
  for (const auto& [name, audioOnly] :
       {std::pair{"song.mp3", 0}, std::pair{"song.flac", 0}, std::pair{"song.wav", 0}, std::pair{"clip.mp4", 1}}) {
    SCOPED_TRACE(name);
    const std::string thumbnail = scratchFolder() + "/" + name + ".bmp";
    const Probed probed = probeFile(sample(name), thumbnail, audioOnly);
    ASSERT_EQ(probed.code, 0);
    EXPECT_EQ(probed.info.m_bVideoStream, 0);
    EXPECT_EQ(probed.info.m_Width, 0);
    EXPECT_EQ(probed.info.m_defaultAudioStream, 0);
    EXPECT_STREQ(probed.info.m_Thumbnail, "");
    EXPECT_STREQ(probed.info.m_framesPosFileName, "");
    EXPECT_FALSE(std::filesystem::exists(thumbnail));
    if (std::string(name) == "song.flac" || std::string(name) == "song.wav") {
      EXPECT_EQ(probed.info.m_AudioStreamInfo[0].m_BitsPerSample, 16) << "the exact depth of lossless sound";
    }
  }

  const std::filesystem::path copy = std::filesystem::path(scratchFolder()) / "Ünïcode clip – 日本語 (1).mp4";
  std::filesystem::copy_file(sample("clip.mp4"), copy, std::filesystem::copy_options::overwrite_existing);
  const Probed original = probeFile(sample("clip.mp4"));
  const Probed renamed = probeFile(copy, (copy.parent_path() / "Vorschaubild ä.bmp").string());
  ASSERT_EQ(renamed.code, 0);
  EXPECT_EQ(renamed.info.m_Duration, original.info.m_Duration);
  EXPECT_EQ(renamed.info.m_Width, original.info.m_Width);
  EXPECT_EQ(renamed.info.m_AudioSteamCnt, original.info.m_AudioSteamCnt);
  EXPECT_STREQ(renamed.info.m_Thumbnail, (copy.parent_path() / "Vorschaubild ä.bmp").c_str());
  EXPECT_TRUE(std::filesystem::exists(renamed.info.m_Thumbnail));
}

}  // namespace
}  // namespace enginetest
