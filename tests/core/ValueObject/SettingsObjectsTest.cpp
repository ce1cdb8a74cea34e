#include <gtest/gtest.h>

#include "ValueObject/MediaFileInfo.h"
#include "ValueObject/ProfileSettingInfo.h"
#include "ValueObject/SplitLimits.h"

namespace {

// A profile with a distinct value in every field.
ProfileSettingInfo fullyFilledProfile() {
  ProfileSettingInfo profile;
  profile.setProfileName(QStringLiteral("Custom"));
  profile.setFormat(QStringLiteral("matroska"));
  profile.setExtName(QStringLiteral("mkv"));
  profile.setType(ProfileSettingInfo::kTypeWithoutAudio);
  profile.setDevice(7);
  profile.setVideoEncoder(QStringLiteral("libx264"));
  profile.setVideoResolution(QStringLiteral("640x480"));
  profile.setCurVideoEncoder(QStringLiteral("mpeg4"));
  profile.setCurVideoResolution(QStringLiteral("320x240"));
  profile.setVideoFrameRate(29.97);
  profile.setVideoBitrate(1500);
  profile.setAudioEncoder(QStringLiteral("aac"));
  profile.setAudioSampleRate(48000);
  profile.setAudioBitrate(192);
  profile.setAudioChannels(6);
  profile.setImageName(QStringLiteral("profile_mkv"));
  profile.setMinWidth(16);
  profile.setMinHeight(12);
  profile.setMaxWidth(1920);
  profile.setMaxHeight(1080);
  profile.setVideoQuality(30);
  return profile;
}

TEST(ProfileSettingInfo, InitWithProfileLeavesThePanelChoicesAndPictureOutButACopyKeepsThem) {
  const ProfileSettingInfo source = fullyFilledProfile();

  const ProfileSettingInfo copy = source;
  EXPECT_EQ(copy, source);

  const ProfileSettingInfo made = ProfileSettingInfo::initWithProfileSettingInfo(source);
  EXPECT_TRUE(made.curVideoEncoder().isEmpty());
  EXPECT_TRUE(made.curVideoResolution().isEmpty());
  EXPECT_TRUE(made.imageName().isEmpty());
  ProfileSettingInfo withPanelFields = made;
  withPanelFields.setCurVideoEncoder(source.curVideoEncoder());
  withPanelFields.setCurVideoResolution(source.curVideoResolution());
  withPanelFields.setImageName(source.imageName());
  EXPECT_EQ(withPanelFields, source) << "every other field is taken over";
}

TEST(ProfileSettingInfo, TagEditingFollowsWhatTheTagLibrarySaysOfTheExtension) {
  ProfileSettingInfo profile;
  for (const char* taggable : {"mp4", "m4a", "mp3", "flac"}) {
    profile.setExtName(QLatin1String(taggable));
    EXPECT_TRUE(profile.isCanEditMeta()) << taggable;
  }
  for (const char* untaggable : {"mkv", "avi", "ts", "gif", ""}) {
    profile.setExtName(QLatin1String(untaggable));
    EXPECT_FALSE(profile.isCanEditMeta()) << untaggable;
  }
}

TEST(MediaFileInfo, ACopySharesItsAudioStreamsButNotTheListAndSplitsAreBoundByTheLength) {
  MediaFileInfo source;
  auto stream = std::make_shared<AudioStream>();
  stream->setAudioStreamName(QStringLiteral("eng AAC stereo"));
  source.addAudioStream(stream);

  MediaFileInfo copy = source;
  copy.arrAudioStream().first()->setAudioStreamName(QStringLiteral("renamed"));
  EXPECT_EQ(source.arrAudioStream().first()->audioStreamName(), QStringLiteral("renamed"));

  copy.addAudioStream(std::make_shared<AudioStream>());
  EXPECT_EQ(source.arrAudioStream().size(), 1);
  EXPECT_EQ(copy.arrAudioStream().size(), 2);

  struct Case {
    int32_t seconds;
    int32_t startedMinutes;
  };
  for (const Case& length : {Case{0, 0}, Case{1, 1}, Case{60, 1}, Case{61, 2}, Case{120, 2}, Case{630, 11}}) {
    EXPECT_EQ(SplitLimits::startedMinutes(length.seconds), length.startedMinutes) << length.seconds;
    EXPECT_EQ(SplitLimits::minutesRange(length.seconds).maximum, length.startedMinutes);
  }
  EXPECT_TRUE(SplitLimits::clipsRange(90).contains(90));
  EXPECT_FALSE(SplitLimits::clipsRange(90).contains(91));
  EXPECT_FALSE(SplitLimits::clipsRange(90).contains(0));
  EXPECT_FALSE(SplitLimits::minutesRange(630).contains(0));
}

}  // namespace
