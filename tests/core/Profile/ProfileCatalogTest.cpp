// Reading catalogue folders that are partly broken, and choosing the profile
// at start-up.
#include <gtest/gtest.h>

#include <QFile>
#include <QTemporaryDir>

#include "Action/ApplicationLifecycle.h"
#include "CommonClass/GlobalSettings.h"
#include "Profile/KMVProfileCatalog.h"
#include "TestEnvironment.h"

namespace {

const char* const kGoodFile = R"(<?xml version="1.0" encoding="UTF-8"?>
<profiles group="Video">
  <profile id="1" DisplayName="MPEG-4 AVC" Format="mp4" ExtName="mp4" type="0" minWidth="32" minHeight="32"
           maxWidth="1920" maxHeight="1080" image="mp4pic">
    <sub key="vcodec" ListValue="libx264,mpeg4" DefaultValue="1"/>
    <sub key="ab" ListValue="96,128" DefaultValue="0"/>
  </profile>
  <profile id="2" DisplayName="No extension" Format="mp4" type="0">
    <sub key="ab" ListValue="96" DefaultValue="0"/>
  </profile>
  <profile id="x3" DisplayName="Bad identifier" Format="avi" ExtName="avi" type="0"/>
  <profile id="4" DisplayName="WAV" Format="wav" ExtName="wav" type="1" Device="3">
    <sub key="ab" ListValue="1411" DefaultValue="0"/>
  </profile>
</profiles>
)";

const char* const kLaterFile = R"(<?xml version="1.0" encoding="UTF-8"?>
<profiles group="Audio">
  <profile id="5" DisplayName="WAV" Format="wav" ExtName="wav" type="1"/>
  <profile id="4" DisplayName="Other" Format="wav" ExtName="wav" type="1"/>
  <profile id="6" DisplayName="FLAC" Format="flac" ExtName="flac" type="1"/>
</profiles>
)";

class CatalogFolder : public testing::Test {
 protected:
  void SetUp() override { TestEnvironment::resetApplicationState(); }
  void TearDown() override { TestEnvironment::resetApplicationState(); }

  void write(const QString& name, const QByteArray& content) {
    QFile file(folder.filePath(name));
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    file.write(content);
  }

  QTemporaryDir folder;
  KMVProfileCatalog catalog;
};

TEST_F(CatalogFolder, BrokenFilesAndProfilesAreReportedAndTheRestIsKeptWithEveryAttribute) {
  write(QStringLiteral("1-good.xml"), kGoodFile);
  write(QStringLiteral("2-later.xml"), kLaterFile);
  write(QStringLiteral("3-cut.xml"), QByteArray(kGoodFile).left(200));
  write(QStringLiteral("4-wrong.xml"), "<catalogue/>");
  write(QStringLiteral("notes.txt"), "not a catalogue");

  const QStringList problems = catalog.loadFolder(folder.path());

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
  write(QStringLiteral("good.xml"), kGoodFile);
  catalog.loadFolder(folder.path());
  ASSERT_TRUE(catalog.selectProfile(QStringLiteral("WAV")));

  const QStringList problems = catalog.loadFolder(folder.filePath(QStringLiteral("absent")));
  ASSERT_EQ(problems.size(), 1);
  EXPECT_TRUE(problems.first().contains(QStringLiteral("does not exist")));
  EXPECT_TRUE(catalog.profiles().isEmpty());
  EXPECT_EQ(catalog.selectedProfile(), nullptr);
}

TEST_F(CatalogFolder, StartUpSelectsTheRememberedProfileOrFallsBackToTheDefault) {
  write(QStringLiteral("good.xml"), kGoodFile);
  KMVProfileCatalog& shared = KMVProfileCatalog::sharedCatalog();
  MainWindowShell shell;

  kProfileName = QStringLiteral("WAV");
  shell.setUpProfiles(folder.path(), QString(), kProfileName);
  ASSERT_TRUE(shared.selectedProfile());
  EXPECT_EQ(shared.selectedProfile()->DisplayName, QStringLiteral("WAV"));
  EXPECT_EQ(kProfileName, QStringLiteral("WAV"));

  kProfileName = QStringLiteral("Renamed since");
  shell.setUpProfiles(folder.path(), QString(), kProfileName);
  ASSERT_TRUE(shared.selectedProfile());
  EXPECT_EQ(shared.selectedProfile()->DisplayName, QStringLiteral("MPEG-4 AVC"));
  EXPECT_EQ(kProfileName, QStringLiteral("MPEG-4 AVC"));
  shared.loadFolder(folder.filePath(QStringLiteral("absent")));
}

}  // namespace
