// The sound of a conversion: volume, fades, the stream chosen, and outputs
// with or without sound, judged on the decoded samples of the output.
#include <gtest/gtest.h>

#include "ConversionFixtures.h"

namespace enginetest {
namespace {

// Two seconds of pictures and a steady 440 Hz tone.
std::string tone() {
  return generatedMedia("tone.mkv", {"-f", "lavfi", "-i", "testsrc2=s=160x120:r=25:d=2", "-f", "lavfi", "-i",
                                     "sine=f=440:r=44100:d=2", "-c:v", "ffv1", "-c:a", "pcm_s16le"});
}

// Pictures and two sound streams: 300 Hz first, 1000 Hz second.
std::string twoTones() {
  return generatedMedia("two-tones.mkv", {"-f",   "lavfi",    "-i",   "testsrc2=s=160x120:r=25:d=1",
                                          "-f",   "lavfi",    "-i",   "sine=f=300:r=44100:d=1",
                                          "-f",   "lavfi",    "-i",   "sine=f=1000:r=44100:d=1",
                                          "-map", "0",        "-map", "1",
                                          "-map", "2",        "-c:v", "ffv1",
                                          "-c:a", "pcm_s16le"});
}

Sound convertedSound(const MediaItem& item, const std::string& name) {
  const OutputParam output = losslessOutput(name);
  const auto result = convert({item}, output);
  EXPECT_EQ(result.outcome, engine::ConversionResult::Outcome::kFinished) << result.reason;
  return decodeSound(output.m_FileName);
}

TEST(ConversionSound, HalfVolumeHalvesTheAmplitude) {
  MediaItem item = recordFor(tone());
  const double full = convertedSound(item, "full-volume.mkv").rms(0.1, 1.9);
  item.m_volume = 128;
  const double half = convertedSound(item, "half-volume.mkv").rms(0.1, 1.9);
  ASSERT_GT(full, 0.05);
  EXPECT_NEAR(half / full, 0.5, 0.01);
  item.m_volume = 512;
  EXPECT_NEAR(convertedSound(item, "double-volume.mkv").rms(0.1, 1.9) / full, 2.0, 0.04);
}

TEST(ConversionSound, FadesStartFromSilenceAndEndInSilence) {
  MediaItem item = recordFor(tone());
  item.m_fadeIn_len = 1'000'000;
  item.m_fadeOut_len = 500'000;
  const Sound sound = convertedSound(item, "faded.mkv");
  const double full = sound.rms(1.1, 1.4);
  ASSERT_GT(full, 0.05);
  EXPECT_LT(sound.rms(0, 0.02), full * 0.03);
  EXPECT_NEAR(sound.rms(0.45, 0.55), full * 0.5, full * 0.06);  // a linear rise
  EXPECT_LT(sound.rms(1.98, 2.0), full * 0.03);
  EXPECT_NEAR(sound.seconds(), 2.0, 0.001);
}

TEST(ConversionSound, TheChosenStreamIsTheOneConverted) {
  MediaItem item = recordFor(twoTones());
  item.m_audioStreamIndex = 1;
  EXPECT_NEAR(convertedSound(item, "second-stream.mkv").crossingsPerSecond(0.1, 0.9), 2000, 20);
  item.m_audioStreamIndex = 0;
  EXPECT_NEAR(convertedSound(item, "first-stream.mkv").crossingsPerSecond(0.1, 0.9), 600, 20);
}

TEST(ConversionSound, DroppedSoundAndSoundOnlyOutputs) {
  MediaItem item = recordFor(tone());
  item.m_AudioDisable = 1;
  const OutputParam silent = outputFor(outputPath("no-sound.mp4"), "mp4", "libx264", "aac");
  ASSERT_EQ(convert({item}, silent).outcome, engine::ConversionResult::Outcome::kFinished);
  EXPECT_EQ(ffprobeStreamCount(silent.m_FileName, "audio"), 0);
  EXPECT_EQ(ffprobeStreamCount(silent.m_FileName, "video"), 1);

  item.m_AudioDisable = 0;
  item.m_VideoDisable = 1;
  OutputParam song = outputFor(outputPath("song.mp3"), "mp3", "", "mp3");  // the encoder by its short name
  song.m_Type = 1;
  song.m_AudioBitrate = 192;
  const auto result = convert({item}, song);
  ASSERT_EQ(result.outcome, engine::ConversionResult::Outcome::kFinished) << result.reason;
  EXPECT_EQ(ffprobeStreamCount(song.m_FileName, "video"), 0);
  EXPECT_EQ(ffprobeFields(song.m_FileName, "streams", "a:0")["codec_name"], "mp3");
  EXPECT_EQ(ffprobeFields(song.m_FileName, "streams", "a:0")["bit_rate"], "192000");
  EXPECT_NEAR(probedDuration(song.m_FileName), 2.0, 0.06);
}

}  // namespace
}  // namespace enginetest
