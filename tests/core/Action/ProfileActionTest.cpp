#include <gtest/gtest.h>

#include "Action/ProfileAction.h"
#include "CommonClass/GlobalSettings.h"
#include "RecordingAlertPresenter.h"
#include "TestEnvironment.h"

namespace {

KMVProfileDataInfo webEntry() {
  KMVProfileDataInfo entry;
  entry.identifier = 1205;
  entry.DisplayName = QStringLiteral("Web 720p");
  entry.Format = QStringLiteral("mp4");
  entry.ExtName = QStringLiteral("mp4");
  entry.type = 0;
  entry.Device = 2;
  entry.minWidth = 16;
  entry.minHeight = 12;
  entry.maxWidth = 1280;
  entry.maxHeight = 720;
  entry.imageName = QStringLiteral("profile_web");
  entry.subs = {
      {"s", {"640x480,1280x720", "1"}},    {"r", {"23.97,29.97,59.94", "2"}}, {"vcodec", {"libx264", "0"}},
      {"b", {"1500,2500", "1"}},           {"ar", {"44100,48000", " 1 "}},    {"ac", {"1,2", "1"}},
      {"acodec", {"aac,libmp3lame", "1"}}, {"ab", {"96,128,192", "2"}},
  };
  return entry;
}

class ProfileChoice : public testing::Test {
 protected:
  void SetUp() override { TestEnvironment::resetApplicationState(); }
  void TearDown() override { TestEnvironment::resetApplicationState(); }

  RecordingAlertPresenter alerts;
  ScopedAlertPresenter installed{&alerts};
  NodeInfo node;
  const KMVProfileDataInfo web = webEntry();
};

TEST_F(ProfileChoice, AnEntryGivesTheNodeItsDefaultChoices) {
  ASSERT_TRUE(ProfileAction::initProfileSettingInfo(node, &web));
  const ProfileSettingInfo& profile = node.curProfileSetting();
  EXPECT_EQ(profile.profileName(), QStringLiteral("Web 720p"));
  EXPECT_EQ(profile.format(), QStringLiteral("mp4"));
  EXPECT_EQ(profile.extName(), QStringLiteral("mp4"));
  EXPECT_EQ(profile.device(), 2);
  EXPECT_EQ(profile.minWidth(), 16);
  EXPECT_EQ(profile.maxHeight(), 720);
  EXPECT_EQ(profile.videoResolution(), QStringLiteral("1280x720"));
  EXPECT_EQ(profile.videoFrameRate(), 59.94);
  EXPECT_EQ(profile.videoEncoder(), QStringLiteral("libx264"));
  EXPECT_EQ(profile.videoBitrate(), 2500);
  EXPECT_EQ(profile.audioSampleRate(), 48000);
  EXPECT_EQ(profile.audioChannels(), 2);
  EXPECT_EQ(profile.audioEncoder(), QStringLiteral("libmp3lame"));
  EXPECT_EQ(profile.audioBitrate(), 192);
  EXPECT_EQ(profile.videoQuality(), 27);
  EXPECT_TRUE(profile.imageName().isEmpty());
  EXPECT_TRUE(node.metaEditEnable()) << "mp4 takes tags";
  EXPECT_TRUE(alerts.alerts.empty());

  // The same profile again, or no entry, keeps what the settings panel changed since.
  node.curProfileSetting().setVideoBitrate(777);
  EXPECT_TRUE(ProfileAction::initProfileSettingInfo(node, &web));
  EXPECT_TRUE(ProfileAction::initProfileSettingInfo(node, nullptr));
  EXPECT_EQ(node.curProfileSetting().videoBitrate(), 777);
}

TEST_F(ProfileChoice, OptionsWithoutAUsableDefaultLeaveTheirFieldUnset) {
  KMVProfileDataInfo entry = webEntry();
  entry.subs.remove(QStringLiteral("r"));
  entry.subs[QStringLiteral("s")].DefaultValue = QStringLiteral("-1");
  entry.subs[QStringLiteral("b")].DefaultValue = QStringLiteral("2");
  entry.subs[QStringLiteral("acodec")].DefaultValue = QStringLiteral("seven");
  entry.subs[QStringLiteral("ab")].DefaultValue = QStringLiteral("3");

  ASSERT_TRUE(ProfileAction::initProfileSettingInfo(node, &entry));
  const ProfileSettingInfo& profile = node.curProfileSetting();
  EXPECT_TRUE(profile.videoResolution().isEmpty());
  EXPECT_EQ(profile.videoFrameRate(), 0.0);
  EXPECT_EQ(profile.videoBitrate(), 0) << "an index past the end is no choice";
  EXPECT_EQ(profile.audioEncoder(), QStringLiteral("aac")) << "text that is no number reads as 0";
  EXPECT_EQ(profile.audioBitrate(), 0);
}

TEST_F(ProfileChoice, AnEntryWithoutAudioBitratesIsADamagedCatalogue) {
  kProductName = QStringLiteral("Converter");
  kProfileName = QStringLiteral("Web 720p");
  ASSERT_TRUE(ProfileAction::initProfileSettingInfo(node, &web));

  for (const QString& damage : {QStringLiteral("missing"), QStringLiteral("empty")}) {
    KMVProfileDataInfo entry = webEntry();
    entry.DisplayName = QStringLiteral("Broken");
    if (damage == QLatin1String("missing")) {
      entry.subs.remove(QStringLiteral("ab"));
    } else {
      entry.subs[QStringLiteral("ab")].ListValue.clear();
    }
    alerts.alerts.clear();
    kProfileName = QStringLiteral("Broken");

    EXPECT_FALSE(ProfileAction::initProfileSettingInfo(node, &entry)) << damage.toStdString();
    EXPECT_EQ(kProfileName, QStringLiteral("MPEG-4 AVC"));
    ASSERT_EQ(alerts.alerts.size(), 1u);
    EXPECT_EQ(alerts.alerts[0].message, QStringLiteral("Converter"));
    EXPECT_EQ(alerts.alerts[0].informativeText, QStringLiteral("System error, please restart the program."));
    EXPECT_EQ(node.curProfileSetting().profileName(), QStringLiteral("Web 720p")) << "the node keeps its profile";
  }
}

}  // namespace
