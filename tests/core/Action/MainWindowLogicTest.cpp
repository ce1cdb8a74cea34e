// The logic behind the main window's smaller parts: editing an item's output
// name, the settings panel over the shipped catalogue, the missing-codec
// refusal and the update check against a feed served on 127.0.0.1.
#include <gtest/gtest.h>

#include <QCoreApplication>
#include <QEventLoop>

#include <optional>

#include "Action/ItemNameEditing.h"
#include "Action/MainFormController.h"
#include "Action/MediaItemSummary.h"
#include "Action/ProfileAction.h"
#include "Action/SettingFormAction.h"
#include "Action/UpdateCheck.h"
#include "CommonClass/StandardPaths.h"
#include "LocalHttplibServer.h"
#include "Profile/KMVProfileCatalog.h"
#include "ProjectVersion.h"
#include "RecordingAlertPresenter.h"
#include "TestEnvironment.h"
#include "support/ListItems.h"

namespace {

using List = SettingFormAction::List;
using modeltest::shippedCatalog;

NodeInfo::Ptr itemWithProfile(int32_t identifier) {
  auto node = std::make_shared<NodeInfo>();
  const auto entry = shippedCatalog().profileWithIdentifier(identifier);
  EXPECT_NE(entry, nullptr) << identifier;
  if (entry != nullptr) {
    EXPECT_TRUE(ProfileAction::initProfileSettingInfo(*node, entry.get()));
  }
  return node;
}

class MainWindowLogic : public testing::Test {
 protected:
  void SetUp() override { PlatformServices::install(&alerts, nullptr, nullptr); }
  void TearDown() override { PlatformServices::install(nullptr, nullptr, nullptr); }
  RecordingAlertPresenter alerts;
};

TEST(ItemNameRules, RefusesForbiddenCharactersAndEnds) {
  for (const char* accepted : {"holiday", "a.b", "a b c", "x.", "a ", "Über-Clip_2", "a/b"}) {
    EXPECT_TRUE(ItemNameEditing::checkString(QString::fromUtf8(accepted))) << accepted;
  }
  for (const char* refused : {".hidden", " lead", ",x", "/root", "abc.", "abc ", "a?b", "a:b", "a'b", "a|b", "a,b"}) {
    EXPECT_FALSE(ItemNameEditing::checkString(QString::fromUtf8(refused))) << refused;
  }
  EXPECT_TRUE(ItemNameEditing::checkString(QString(255, QLatin1Char('n'))));
  EXPECT_FALSE(ItemNameEditing::checkString(QString(256, QLatin1Char('n'))));
}

TEST(MediaItemRow, ShowsTrimmedLengthSizesAndTheAudioChoice) {
  NodeInfo node;
  node.setType(NodeInfo::kTypeFile);
  MediaFileInfo& media = node.mediaFileInfo();
  media.setDTotalTime(3725.6);
  media.setFrameWidth(1280);
  media.setFrameHeight(720);
  media.setSize(5.5 * 1024 * 1024);
  for (const char* name : {"English", "Deutsch"}) {
    auto stream = std::make_shared<AudioStream>();
    stream->setAudioStreamName(QLatin1String(name));
    media.addAudioStream(stream);
  }
  node.setSelectAudioStream(1);
  MediaItemSummary row = MediaItemSummary::of(node);
  EXPECT_EQ(row.duration, QStringLiteral("01:02:05"));
  EXPECT_EQ(row.resolution, QStringLiteral("1280x720"));
  EXPECT_EQ(row.size, QStringLiteral("5.50 MB"));
  EXPECT_EQ(row.audioStreams, (QStringList{"No audio", "English", "Deutsch"}));
  EXPECT_EQ(row.selectedAudio, 2);
  EXPECT_EQ(MediaItemSummary::streamForChoice(node, 0), -1);
  EXPECT_EQ(MediaItemSummary::streamForChoice(node, 2), 1);

  node.trimSettingInfo().setStartTime(10);
  node.trimSettingInfo().setEndTime(70);
  node.setSelectAudioStream(-1);
  media.setFrameWidth(0);
  row = MediaItemSummary::of(node);
  EXPECT_EQ(row.duration, QStringLiteral("00:01:00"));
  EXPECT_TRUE(row.resolution.isEmpty());
  EXPECT_EQ(row.selectedAudio, 0);

  // A merge group counts its size in kilobytes.
  node.setType(NodeInfo::kTypeMerged);
  media.setSize(2048);
  EXPECT_EQ(MediaItemSummary::of(node).size, QStringLiteral("2.00 MB"));
  EXPECT_EQ(MediaItemSummary::sizeText(512), QStringLiteral("512 B"));
}

TEST_F(MainWindowLogic, SettingsPanelShowsAProfileAndWritesItBack) {
  const auto entry = shippedCatalog().profileWithIdentifier(1001);
  ASSERT_NE(entry, nullptr);
  NodeInfo::Ptr item = itemWithProfile(1001);
  SettingFormAction panel;
  panel.setDefaultValue(*entry);
  EXPECT_EQ(panel.list(List::VideoResolution).values.back(), QStringLiteral("custom"));
  EXPECT_EQ(panel.list(List::VideoFrameRate).values.value(panel.list(List::VideoFrameRate).selected),
            QStringLiteral("29.97"));

  // A size that no item lists is shown as the custom one.
  item->curProfileSetting().setVideoResolution(QStringLiteral("1000x600"));
  item->curProfileSetting().setVideoFrameRate(30);
  panel.displayWithProfileSettingInfo(item->curProfileSetting());
  EXPECT_TRUE(panel.isCustomResolution());
  EXPECT_EQ(panel.customWidth(), QStringLiteral("1000"));
  EXPECT_EQ(panel.customHeight(), QStringLiteral("600"));
  EXPECT_EQ(panel.list(List::VideoFrameRate).values.value(panel.list(List::VideoFrameRate).selected),
            QStringLiteral("30"));

  panel.select(List::AudioBitrate, panel.list(List::AudioBitrate).values.indexOf(QStringLiteral("320")));
  panel.setQualityColumn(0);
  panel.setCustomSize(QStringLiteral("640"), QStringLiteral("360"));
  ASSERT_TRUE(panel.settingFinish(*item));
  EXPECT_EQ(item->curProfileSetting().videoResolution(), QStringLiteral("640x360"));
  EXPECT_EQ(item->curProfileSetting().audioBitrate(), 320);
  EXPECT_EQ(item->curProfileSetting().videoQuality(), 25);
  EXPECT_TRUE(alerts.alerts.empty());
}

TEST_F(MainWindowLogic, CustomSizeOutsideTheProfileIsRefusedWithNothingWritten) {
  const auto entry = shippedCatalog().profileWithIdentifier(1001);
  NodeInfo::Ptr item = itemWithProfile(1001);
  SettingFormAction panel;
  panel.setDefaultValue(*entry);
  panel.displayWithProfileSettingInfo(item->curProfileSetting());
  panel.select(List::VideoResolution, static_cast<int>(panel.list(List::VideoResolution).values.size()) - 1);
  const QString before = item->curProfileSetting().videoResolution();
  for (const auto& [width, height] : {std::pair{"642", "360"}, {"16", "16"}, {"abc", "360"}, {"8192", "4320"}}) {
    panel.setCustomSize(QLatin1String(width), QLatin1String(height));
    EXPECT_FALSE(panel.settingFinish(*item)) << width << "x" << height;
  }
  EXPECT_EQ(item->curProfileSetting().videoResolution(), before);
  ASSERT_EQ(alerts.alerts.size(), 4u);
  EXPECT_EQ(alerts.alerts[0].message, QStringLiteral(" "));
  EXPECT_EQ(alerts.alerts[0].informativeText,
            QStringLiteral("Please input an appropriate resolution (Both values must be multiples of 4 and range from "
                           "{32x32} to {4096x2304})."));
}

TEST_F(MainWindowLogic, AudioProfilesDisableThePictureListsAndOneWhoseCodecIsMissingIsRefused) {
  const auto audio = std::find_if(shippedCatalog().profiles().begin(), shippedCatalog().profiles().end(),
                                  [](const auto& entry) { return entry->type == ProfileSettingInfo::kTypeAudioOnly; });
  ASSERT_NE(audio, shippedCatalog().profiles().end());
  NodeInfo::Ptr item = itemWithProfile((*audio)->identifier);
  SettingFormAction panel;
  panel.setDefaultValue(**audio);
  panel.displayWithProfileSettingInfo(item->curProfileSetting());
  EXPECT_FALSE(panel.list(List::VideoResolution).enabled);
  EXPECT_EQ(panel.list(List::VideoEncoder).selected, -1);
  EXPECT_TRUE(panel.list(List::AudioBitrate).enabled);
  EXPECT_GE(panel.list(List::AudioBitrate).selected, 0);
  EXPECT_TRUE(panel.settingFinish(*item));

  const auto missing = shippedCatalog().profileWithIdentifier(1610);
  const auto present = shippedCatalog().profileWithIdentifier(1001);
  ASSERT_NE(missing, nullptr);
  EXPECT_TRUE(MainFormController::itemCanSelectProfile(*present));
  EXPECT_FALSE(MainFormController::itemCanSelectProfile(*missing));
  EXPECT_TRUE(alerts.alerts.empty()) << "the alert waits for the event loop";
  QCoreApplication::processEvents();
  ASSERT_EQ(alerts.alerts.size(), 1u);
  EXPECT_EQ(alerts.alerts[0].message, QStringLiteral("The Apple ProRes Codec is missing"));
  EXPECT_EQ(alerts.alerts[0].buttons, (QStringList{QStringLiteral("Click to download"), QStringLiteral("Close")}));
}

QByteArray feedWith(const QStringList& versions) {
  QByteArray feed = "<?xml version=\"1.0\"?><rss><channel><title>Releases</title>";
  for (const QString& version : versions) {
    feed += "<item><title>Release</title><version>" + version.toUtf8() +
            "</version><link>https://example.invalid/release-" + version.toUtf8() + "</link></item>";
  }
  return feed + "</channel></rss>";
}

TEST(UpdateFeed, PicksTheNewestReleaseByVersionNumber) {
  const auto newest = UpdateCheck::newestRelease(feedWith({"2.9", "2.10", "2.1"}));
  ASSERT_TRUE(newest);
  EXPECT_EQ(newest->version, QStringLiteral("2.10"));
  EXPECT_EQ(newest->address.toString(), QStringLiteral("https://example.invalid/release-2.10"));
  EXPECT_FALSE(UpdateCheck::newestRelease("<rss><channel/></rss>"));
  EXPECT_FALSE(UpdateCheck::newestRelease("not xml <"));
  EXPECT_FALSE(UpdateCheck::isNewer(QStringLiteral("1.9.9"), QStringLiteral("1.10")));
}

// A feed served on 127.0.0.1 for the length of a test.
struct FeedServer : LocalHttplibServer {
  FeedServer(int status, const QByteArray& body) {
    serve("/appcast.xml", body.toStdString(), "application/rss+xml", status);
  }
  QUrl feed() const { return url(QStringLiteral("/appcast.xml")); }
};

std::optional<UpdateCheck::Release> runCheck(UpdateCheck& check, const QUrl& feed, bool interactive) {
  std::optional<UpdateCheck::Release> answer;
  QEventLoop loop;
  QObject::connect(&check, &UpdateCheck::finished, &loop, [&](const std::optional<UpdateCheck::Release>& newer) {
    answer = newer;
    loop.quit();
  });
  check.check(feed, interactive);
  if (check.isChecking()) loop.exec();
  return answer;
}

TEST_F(MainWindowLogic, UpdateCheckOffersANewerReleaseAndOnlySpeaksWhenAsked) {
  UpdateCheck check;
  {
    FeedServer newer(200, feedWith({QStringLiteral("999.0")}));
    alerts.answer = 1;  // Later
    ASSERT_TRUE(runCheck(check, newer.feed(), false));
    ASSERT_EQ(alerts.alerts.size(), 1u);
    EXPECT_EQ(alerts.alerts[0].informativeText,
              QStringLiteral("Version 999.0 is available; this is version %1.").arg(QLatin1String(kBundleVersion)));
    EXPECT_EQ(alerts.alerts[0].buttons, (QStringList{QStringLiteral("Download"), QStringLiteral("Later")}));
  }
  alerts.alerts.clear();
  {
    FeedServer same(200, feedWith({QLatin1String(kBundleVersion)}));
    EXPECT_FALSE(runCheck(check, same.feed(), false));
    EXPECT_TRUE(alerts.alerts.empty()) << "a background check is silent without news";
    EXPECT_FALSE(runCheck(check, same.feed(), true));
    ASSERT_EQ(alerts.alerts.size(), 1u);
    EXPECT_TRUE(alerts.alerts[0].informativeText.startsWith(QStringLiteral("This is the newest version")));
  }
  alerts.alerts.clear();
  FeedServer broken(500, "oops");
  EXPECT_FALSE(runCheck(check, broken.feed(), true));
  ASSERT_EQ(alerts.alerts.size(), 1u);
  EXPECT_EQ(alerts.alerts[0].informativeText, QStringLiteral("The update feed answered 500."));
}

}  // namespace
