// Audio streams as the user picks among them: names, order and the default.
#include <gtest/gtest.h>

#include "Probe.h"
#include "TestMedia.h"

namespace enginetest {
namespace {

TEST(AudioStreams, NamedByLanguageTitleCodecAndLayoutInFileOrder) {
  const Probed probed = probeFile(sample("two-audio.mkv"));
  ASSERT_EQ(probed.code, 0);
  ASSERT_EQ(probed.info.m_AudioSteamCnt, 2);
  const AudioStremInfo& commentary = probed.info.m_AudioStreamInfo[0];
  const AudioStremInfo& surround = probed.info.m_AudioStreamInfo[1];
  EXPECT_STREQ(surround.m_audioStreamName, "eng AAC 5.1");
  EXPECT_EQ(surround.m_nChannel, 6);
  EXPECT_EQ(commentary.m_nChannel, 1);
  // "ger " and a title of fourteen two-byte letters do not fit in 31 bytes:
  // the cut falls before the letter that would be split.
  EXPECT_STREQ(commentary.m_audioStreamName, "ger ééééééééééééé");
  EXPECT_LT(commentary.m_audioSteamId, surround.m_audioSteamId);
  // Streams without tags are still named by codec and layout.
  EXPECT_STREQ(probeFile(sample("song.wav")).info.m_AudioStreamInfo[0].m_audioStreamName, "PCM mono");
  EXPECT_STREQ(probeFile(sample("song.mp3")).info.m_AudioStreamInfo[0].m_audioStreamName, "MP3 stereo");
  EXPECT_STREQ(probeFile(sample("clip.ts")).info.m_AudioStreamInfo[0].m_audioStreamName, "MP2 mono");
}

TEST(AudioStreams, DefaultIsTheStreamMarkedDefaultNotTheFirstAndNoneWithoutSound) {
  EXPECT_EQ(probeFile(sample("two-audio.mkv")).info.m_defaultAudioStream, 1);
  EXPECT_EQ(probeFile(sample("clip.mp4")).info.m_defaultAudioStream, 0);
  const Probed probed = probeFile(sample("rotated.mov"));
  ASSERT_EQ(probed.code, 0);
  EXPECT_EQ(probed.info.m_AudioSteamCnt, 0);
  EXPECT_EQ(probed.info.m_defaultAudioStream, -1);
}

}  // namespace
}  // namespace enginetest
