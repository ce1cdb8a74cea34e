// The catalogue as shipped: every profile loads, every choice is well formed
// and every encoder and container exists in the FFmpeg build.
#include <gtest/gtest.h>

#include <QRegularExpression>
#include <QSet>

#include "CommonClass/StandardPaths.h"
#include "Profile/KMVProfileCatalog.h"
#include "ValueObject/ProfileSettingInfo.h"
#include "support/ListItems.h"

extern "C" {
#include <libavcodec/avcodec.h>
#include <libavformat/avformat.h>
}

namespace {

// The profiles whose encoder is named by the codec table's four-character code.
const QMap<int32_t, QString> kCodecTableProfiles{{1601, "apcn"}, {1602, "apch"}, {1603, "apco"}, {1604, "apcs"},
                                                 {1609, "ap4h"}, {1610, "icod"}, {1703, "apco"}};

class ShippedProfiles : public testing::Test {
 protected:
  static const KMVProfileCatalog& catalog() { return modeltest::shippedCatalog(); }
};

// Every choice of `key` across the catalogue, with the profile it came from.
QList<std::pair<QString, QString>> everyChoice(const KMVProfileCatalog& catalog, const char* key) {
  QList<std::pair<QString, QString>> choices;
  for (const KMVProfileCatalog::Entry& profile : catalog.profiles()) {
    if (const KMVProfileOption* option = profile->option(key)) {
      for (const QString& choice : option->choices()) choices.append({profile->DisplayName, choice});
    }
  }
  return choices;
}

TEST_F(ShippedProfiles, LoadWithoutProblemsInTheirGroups) {
  const QStringList problems =
      KMVProfileCatalog().loadFolder(StandardPaths::pathForResource(QStringLiteral("profile")));
  EXPECT_TRUE(problems.isEmpty()) << problems.join(QLatin1Char('\n')).toStdString();
  EXPECT_GE(catalog().profiles().size(), 30);
  EXPECT_EQ(catalog().groups(), QStringList({"General Video", "Editing", "Devices and Web", "Audio"}));
  for (const QString& group : catalog().groups())
    EXPECT_GE(catalog().profilesInGroup(group).size(), 7) << group.toStdString();
}

TEST_F(ShippedProfiles, EveryOptionIsPresentWithAValidDefaultWholePositiveNumbersAndSizesWithinBounds) {
  const QList<const char*> videoKeys{KMVProfileDataInfo::kResolution, KMVProfileDataInfo::kFrameRate,
                                     KMVProfileDataInfo::kVideoCodec, KMVProfileDataInfo::kVideoBitrate};
  const QList<const char*> audioKeys{KMVProfileDataInfo::kSampleRate, KMVProfileDataInfo::kChannels,
                                     KMVProfileDataInfo::kAudioCodec};
  static const QRegularExpression size(QStringLiteral("^(\\d+)x(\\d+)$"));
  for (const KMVProfileCatalog::Entry& profile : catalog().profiles()) {
    SCOPED_TRACE(profile->DisplayName.toStdString());
    QList<const char*> expected{KMVProfileDataInfo::kAudioBitrate};
    if (profile->type != ProfileSettingInfo::kTypeAudioOnly) expected += videoKeys;
    if (profile->type != ProfileSettingInfo::kTypeWithoutAudio) expected += audioKeys;
    EXPECT_EQ(profile->subs.size(), expected.size()) << "no option the panel would not show";
    for (const char* key : expected) {
      EXPECT_TRUE(profile->defaultChoice(key).has_value()) << key;
      if (const KMVProfileOption* option = profile->option(key)) {
        EXPECT_FALSE(option->choices().contains(QString())) << key << ": an empty choice";
        EXPECT_EQ(option->choices().removeDuplicates(), 0) << key;
      }
    }
    EXPECT_FALSE(profile->Format.isEmpty());
    EXPECT_FALSE(profile->ExtName.isEmpty());
    EXPECT_FALSE(profile->ExtName.startsWith(QLatin1Char('.')));
    EXPECT_LE(profile->minWidth, profile->maxWidth);
    EXPECT_LE(profile->minHeight, profile->maxHeight);
    const KMVProfileOption* sizes = profile->option(KMVProfileDataInfo::kResolution);
    for (const QString& choice : sizes != nullptr ? sizes->choices() : QStringList()) {
      const auto match = size.match(choice);
      ASSERT_TRUE(match.hasMatch()) << "s=" << choice.toStdString();
      const int width = match.captured(1).toInt();
      const int height = match.captured(2).toInt();
      if (width == 0 && height == 0) continue;  // the source's own size
      EXPECT_TRUE(width % 4 == 0 && height % 4 == 0) << choice.toStdString();
      EXPECT_TRUE(width >= profile->minWidth && width <= profile->maxWidth && height >= profile->minHeight &&
                  height <= profile->maxHeight)
          << choice.toStdString();
    }
  }
  for (const char* key : {KMVProfileDataInfo::kVideoBitrate, KMVProfileDataInfo::kAudioBitrate,
                          KMVProfileDataInfo::kSampleRate, KMVProfileDataInfo::kChannels}) {
    for (const auto& [profile, choice] : everyChoice(catalog(), key)) {
      bool ok = false;
      const int value = choice.toInt(&ok);
      const bool silentGif = profile == QLatin1String("Animated GIF") && choice == QLatin1String("0");
      EXPECT_TRUE(ok && (value > 0 || silentGif)) << profile.toStdString() << " " << key << "=" << choice.toStdString();
    }
  }
  QSet<QString> rates;
  for (const auto& [profile, choice] : everyChoice(catalog(), KMVProfileDataInfo::kFrameRate)) {
    bool ok = false;
    EXPECT_TRUE(choice.toDouble(&ok) > 0 && ok) << profile.toStdString() << " r=" << choice.toStdString();
    rates.insert(choice);
  }
  for (const char* rate : {"23.97", "29.97", "59.94"}) EXPECT_TRUE(rates.contains(QLatin1String(rate))) << rate;
}

TEST_F(ShippedProfiles, EveryEncoderAndContainerExistsInTheFfmpegBuild) {
  for (const char* key : {KMVProfileDataInfo::kVideoCodec, KMVProfileDataInfo::kAudioCodec}) {
    for (const auto& [profile, encoder] : everyChoice(catalog(), key)) {
      if (avcodec_find_encoder_by_name(encoder.toUtf8().constData()) != nullptr) continue;
      const KMVProfileCatalog::Entry entry = catalog().profileNamed(profile);
      EXPECT_EQ(kCodecTableProfiles.value(entry->identifier), encoder)
          << profile.toStdString() << ": " << encoder.toStdString() << " is neither an encoder nor its codec code";
    }
  }
  for (const KMVProfileCatalog::Entry& profile : catalog().profiles()) {
    EXPECT_NE(av_guess_format(profile->Format.toUtf8().constData(), nullptr, nullptr), nullptr)
        << profile->DisplayName.toStdString() << ": no muxer " << profile->Format.toStdString();
  }
}

}  // namespace
