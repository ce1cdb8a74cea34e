// Reading catalogue folders that are partly broken, and choosing the profile
// at start-up.
#include <gtest/gtest.h>

#include "Action/ApplicationLifecycle.h"
#include "CommonClass/GlobalSettings.h"
#include "Profile/KMVProfileCatalog.h"
#include "TestEnvironment.h"

namespace {

class CatalogFolder : public testing::Test {
 protected:
  void SetUp() override { TestEnvironment::resetApplicationState(); }
  void TearDown() override { TestEnvironment::resetApplicationState(); }

  // Good and broken profiles, a file cut short, a file of another kind and one not XML.
  const QString folder = QStringLiteral(BROKEN_CATALOGUE);
  KMVProfileCatalog catalog;
};

TEST_F(CatalogFolder, BrokenFilesAndProfilesAreReportedAndTheRestIsKeptWithEveryAttribute) {
  const QStringList problems = catalog.loadFolder(folder);

  QStringList names;
  for (const auto& profile : catalog.profiles()) names.append(profile->DisplayName);
  EXPECT_EQ(names, QStringList({"MPEG-4 AVC", "WAV", "FLAC"}));
  EXPECT_EQ(catalog.groups(), QStringList({"Video", "Audio"}));
  ASSERT_EQ(problems.size(), 6) << problems.join(QLatin1Char('\n')).toStdString();
  EXPECT_TRUE(problems[0].startsWith(QStringLiteral("1-good.xml: ")));
  EXPECT_TRUE(problems[0].contains(QStringLiteral("No extension")) && problems[0].contains(QStringLiteral("ExtName")));
  EXPECT_TRUE(problems[1].contains(QStringLiteral("Bad identifier")) && problems[1].contains(QStringLiteral("id")));
  EXPECT_TRUE(problems[2].startsWith(QStringLiteral("2-later.xml: ")) && problems[2].contains(QStringLiteral("WAV")));
  EXPECT_TRUE(problems[3].contains(QStringLiteral("Other")));
  EXPECT_TRUE(problems[4].startsWith(QStringLiteral("3-cut.xml: line ")));
  EXPECT_TRUE(problems[5].startsWith(QStringLiteral("4-wrong.xml: ")));

  // What was kept keeps every attribute and option.
  const KMVProfileCatalog::Entry avc = catalog.profileWithIdentifier(1);
  ASSERT_TRUE(avc);
  EXPECT_EQ(avc->group, QStringLiteral("Video"));
  EXPECT_EQ(avc->maxWidth, 1920);
  EXPECT_EQ(avc->minHeight, 32);
  EXPECT_EQ(avc->imageName, QStringLiteral("mp4pic"));
  EXPECT_EQ(avc->defaultChoice(KMVProfileDataInfo::kVideoCodec), QStringLiteral("mpeg4"));
  EXPECT_EQ(avc->option(KMVProfileDataInfo::kFrameRate), nullptr);
  const KMVProfileCatalog::Entry wav = catalog.profileNamed(QStringLiteral("WAV"));
  ASSERT_TRUE(wav);
  EXPECT_EQ(wav->Device, 3);
  EXPECT_EQ(wav->maxWidth, 0);
}

TEST_F(CatalogFolder, AMissingFolderLeavesAnEmptyCatalogueAndSaysSo) {
  catalog.loadFolder(folder);
  ASSERT_TRUE(catalog.selectProfile(QStringLiteral("WAV")));

  const QStringList problems = catalog.loadFolder(folder + QStringLiteral("/absent"));
  ASSERT_EQ(problems.size(), 1);
  EXPECT_TRUE(problems.first().contains(QStringLiteral("does not exist")));
  EXPECT_TRUE(catalog.profiles().isEmpty());
  EXPECT_EQ(catalog.selectedProfile(), nullptr);
}

TEST_F(CatalogFolder, StartUpSelectsTheRememberedProfileOrFallsBackToTheDefault) {
  KMVProfileCatalog& shared = KMVProfileCatalog::sharedCatalog();
  MainWindowShell shell;

  kProfileName = QStringLiteral("WAV");
  shell.setUpProfiles(folder, QString(), kProfileName);
  ASSERT_TRUE(shared.selectedProfile());
  EXPECT_EQ(shared.selectedProfile()->DisplayName, QStringLiteral("WAV"));
  EXPECT_EQ(kProfileName, QStringLiteral("WAV"));

  kProfileName = QStringLiteral("Renamed since");
  shell.setUpProfiles(folder, QString(), kProfileName);
  ASSERT_TRUE(shared.selectedProfile());
  EXPECT_EQ(shared.selectedProfile()->DisplayName, QStringLiteral("MPEG-4 AVC"));
  EXPECT_EQ(kProfileName, QStringLiteral("MPEG-4 AVC"));
  shared.loadFolder(folder + QStringLiteral("/absent"));
}

}  // namespace
