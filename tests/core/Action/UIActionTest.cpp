#include <gtest/gtest.h>

#include <QDir>
#include <QFile>
#include <QTemporaryDir>

#include "Action/OptionFormAction.h"
#include "Action/UIAction.h"
#include "CommonClass/GlobalSettings.h"
#include "CommonClass/UserDefaults.h"
#include "TestEnvironment.h"

namespace {

class ConfigXml : public testing::Test {
 protected:
  void SetUp() override { TestEnvironment::resetApplicationState(); }
  void TearDown() override { TestEnvironment::resetApplicationState(); }

  static void writeConfig(const QByteArray& xml) {
    QFile file(UIAction::configXmlPath());
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    file.write(xml);
  }
  static QByteArray readConfig() {
    QFile file(UIAction::configXmlPath());
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
  }
  static UserDefaults& defaults() { return UserDefaults::standardUserDefaults(); }
};

TEST_F(ConfigXml, AMissingFileIsRestoredItsDefaultsApplyAndTheLinkIdIsSetOnce) {
  ASSERT_FALSE(QFile::exists(UIAction::configXmlPath()));
  UIAction::readInfoFromXml();

  EXPECT_TRUE(QFile::exists(UIAction::configXmlPath()));
  EXPECT_EQ(DefOutputPath, GlobalSettings::makerFolder()) << "an empty outputpath falls back";
  EXPECT_EQ(photoOutputPath, GlobalSettings::makerFolder() + QStringLiteral("/photo"));
  EXPECT_EQ(photoOutputFormat, QStringLiteral("jpg"));
  EXPECT_EQ(DefInputPath, GlobalSettings::moviesFolder());
  EXPECT_EQ(sysTmpPath, QStringLiteral("/tmp/VideoConverter"));
  EXPECT_EQ(videoImagePath, QStringLiteral("/tmp/VideoConverter/Images"));
  EXPECT_TRUE(QDir(videoImagePath).exists());
  EXPECT_FALSE(isAutoUpdates);
  EXPECT_EQ(defaults().stringForKey(QStringLiteral("appName")), QStringLiteral("Palvinor Video Converter"));

  EXPECT_EQ(UIAction::linkIDFromTemplate(QStringLiteral("xx-version"), QStringLiteral("2.1.5")),
            QStringLiteral("xx-215"));
  EXPECT_EQ(UIAction::linkIDFromTemplate(QStringLiteral("version/version"), QStringLiteral("10.0")),
            QStringLiteral("100/100"));

  UIAction::readInfoFromXml();
  const QString stored = defaults().stringForKey(QStringLiteral("LinkID"));
  EXPECT_FALSE(stored.isEmpty());
  EXPECT_FALSE(stored.contains(QStringLiteral("version"))) << stored.toStdString();

  defaults().setObject(QStringLiteral("kept-tag"), QStringLiteral("LinkID"));
  UIAction::readInfoFromXml();
  EXPECT_EQ(defaults().stringForKey(QStringLiteral("LinkID")), QStringLiteral("kept-tag"));

  defaults().setObject(QString(), QStringLiteral("LinkID"));
  UIAction::readInfoFromXml();
  EXPECT_EQ(defaults().stringForKey(QStringLiteral("LinkID")), stored) << "an empty tag is replaced";
}

TEST_F(ConfigXml, ValuesSurviveASaveAndAReload) {
  QTemporaryDir output;
  QTemporaryDir photos;
  ASSERT_TRUE(output.isValid() && photos.isValid());
  UIAction::readInfoFromXml();

  kProfileName = QStringLiteral("HEVC MP4");
  DefOutputPath = output.path();
  photoOutputPath = photos.path();
  photoOutputFormat = QStringLiteral("png");
  isAutoUpdates = true;
  DefOutputPathBookMark = "bookmark";
  ASSERT_TRUE(UIAction::saveInfoToXml());

  GlobalSettings::resetToDefaults();
  UIAction::readInfoFromXml();
  EXPECT_EQ(kProfileName, QStringLiteral("HEVC MP4"));
  EXPECT_EQ(defaults().stringForKey(QStringLiteral("profileName")), QStringLiteral("HEVC MP4"));
  EXPECT_EQ(DefOutputPath, output.path());
  EXPECT_EQ(photoOutputPath, photos.path());
  EXPECT_EQ(photoOutputFormat, QStringLiteral("png"));
  EXPECT_TRUE(isAutoUpdates);
  EXPECT_EQ(DefOutputPathBookMark, QByteArray("bookmark"));
  EXPECT_TRUE(readConfig().contains("\n        <outputpath>")) << "written back pretty-printed";
}

TEST_F(ConfigXml, AnUnusableOutputFolderFallsBackToTheDefaultAndADamagedFileIsKeptAside) {
  QTemporaryDir folder;
  ASSERT_TRUE(folder.isValid());
  const QString aFile = folder.filePath(QStringLiteral("file"));
  QFile(aFile).open(QIODevice::WriteOnly);
  for (const QString& unusable : {folder.filePath(QStringLiteral("missing")), aFile}) {
    writeConfig(QStringLiteral("<config><user><outputpath>%1</outputpath><photooutputpath>%1</photooutputpath>"
                               "</user></config>")
                    .arg(unusable)
                    .toUtf8());
    UIAction::readInfoFromXml();
    EXPECT_EQ(DefOutputPath, GlobalSettings::makerFolder()) << unusable.toStdString();
    EXPECT_EQ(photoOutputPath, GlobalSettings::makerFolder() + QStringLiteral("/photo"));
  }

  writeConfig("<config><user><outputpath>");
  const auto document = UIAction::readConfigXml();
  ASSERT_TRUE(document);
  EXPECT_FALSE(document->documentElement().firstChildElement(QStringLiteral("user")).isNull());
  QFile damaged(UIAction::configXmlPath() + QStringLiteral(".damaged"));
  ASSERT_TRUE(damaged.open(QIODevice::ReadOnly));
  EXPECT_EQ(damaged.readAll(), QByteArray("<config><user><outputpath>"));
}

TEST_F(ConfigXml, AFileLackingWhatIsReadIsRepairedKeepingEveryValueItHeld) {
  QTemporaryDir output;
  ASSERT_TRUE(output.isValid());
  const QByteArray partial = QStringLiteral(
                                 "<settings><product><name>Named</name></product><user><outputpath>%1</outputpath>"
                                 "<photooutputformat>png</photooutputformat></user></settings>")
                                 .arg(output.path())
                                 .toUtf8();
  for (const QByteArray& xml : {QByteArray("<config><product><name>Named</name></product></config>"), partial}) {
    writeConfig(xml);
    GlobalSettings::resetToDefaults();
    UIAction::readInfoFromXml();

    const bool keptFolder = xml == partial;
    EXPECT_EQ(DefOutputPath, keptFolder ? output.path() : GlobalSettings::makerFolder()) << xml.toStdString();
    EXPECT_EQ(photoOutputFormat, keptFolder ? QStringLiteral("png") : QStringLiteral("jpg"));
    EXPECT_EQ(defaults().stringForKey(QStringLiteral("appName")), QStringLiteral("Named"));
    const auto repaired = UIAction::readConfigXml();
    ASSERT_TRUE(repaired);
    EXPECT_EQ(repaired->documentElement().tagName(), QStringLiteral("config"));
    for (const char* element : {"lastselectprofilename", "outputpath", "photooutputpath", "autoCheckForUpdates"}) {
      EXPECT_TRUE(readConfig().contains(QByteArray("<") + element)) << element << " missing from the repaired file";
    }
  }
}

}  // namespace

namespace {

TEST_F(ConfigXml, TheOptionsWindowStoresWhatItCanAndRefusesFoldersThatCannotBeWritten) {
  QTemporaryDir folders;
  ASSERT_TRUE(folders.isValid());
  UIAction::readInfoFromXml();
  const OptionValues before = OptionFormAction::current();

  // A folder below a plain file can never be made.
  QFile blocker(folders.filePath(QStringLiteral("file")));
  ASSERT_TRUE(blocker.open(QIODevice::WriteOnly));
  OptionValues refused{QStringLiteral("png"), folders.filePath(QStringLiteral("file/photos")),
                       folders.filePath(QStringLiteral("out")), !before.autoUpdates};
  const OptionOutcome refusal = OptionFormAction::apply(refused);
  EXPECT_FALSE(refusal.stored);
  EXPECT_TRUE(refusal.message.contains(QStringLiteral("file/photos"))) << refusal.message.toStdString();
  EXPECT_EQ(OptionFormAction::current().photoOutputPath, before.photoOutputPath);
  EXPECT_EQ(isAutoUpdates, before.autoUpdates);

  const OptionValues chosen{QStringLiteral("png"), folders.filePath(QStringLiteral("new/photos")),
                            folders.filePath(QStringLiteral("out")), true};
  const OptionOutcome stored = OptionFormAction::apply(chosen);
  EXPECT_TRUE(stored.stored);
  EXPECT_TRUE(stored.message.isEmpty());
  EXPECT_TRUE(QFileInfo(chosen.photoOutputPath).isDir()) << "made when missing";
  GlobalSettings::resetToDefaults();
  UIAction::readInfoFromXml();
  EXPECT_EQ(photoOutputPath, chosen.photoOutputPath);
  EXPECT_EQ(DefOutputPath, chosen.outputPath);
  EXPECT_EQ(photoOutputFormat, QStringLiteral("png"));
  EXPECT_TRUE(isAutoUpdates);
}

}  // namespace
