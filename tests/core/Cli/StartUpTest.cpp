// What every start of the program does to the user's files, and what every
// command says when asked for help.
#include <gtest/gtest.h>

#include <QDir>
#include <QFile>
#include <QTemporaryDir>

#include <sys/stat.h>

#include "ProgramRun.h"

namespace {

class StartUp : public testing::Test {
 protected:
  QString configXml() const {
    return home.path() + QStringLiteral("/.local/share/Palvinor Studio/VideoConverter/Config.xml");
  }
  QString userDefaults() const { return home.path() + QStringLiteral("/.config/Palvinor Studio/VideoConverter.conf"); }
  static QByteArray bytes(const QString& path) {
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
  }
  static ino_t inode(const QString& path) {
    struct stat status {};
    return stat(QFile::encodeName(path).constData(), &status) == 0 ? status.st_ino : 0;
  }
  ProgramResult info(qint64 writableBytes = -1) const {
    return runProgramAs(homeEnvironment(home.path()), {"info"}, writableBytes);
  }

  QTemporaryDir home;
};

TEST_F(StartUp, AFullDiskLeavesTheSettingsAsTheyWereAndUnchangedFilesAreNotRewritten) {
  ASSERT_EQ(info().exitCode, 0);
  const ino_t configFile = inode(configXml());
  ASSERT_NE(configFile, 0u);
  ASSERT_EQ(info().exitCode, 0);
  EXPECT_EQ(inode(configXml()), configFile) << "an unchanged Config.xml was written again";

  // An output folder that is gone makes the next start save another one, on a full disk.
  QByteArray edited = bytes(configXml());
  const int start = edited.indexOf("<outputpath>") + 12;
  edited.replace(start, edited.indexOf("</outputpath>") - start, QDir::rootPath().toUtf8() + "gone/folder");
  QFile file(configXml());
  ASSERT_TRUE(file.open(QIODevice::WriteOnly | QIODevice::Truncate) && file.write(edited) == edited.size());
  file.close();
  const QByteArray defaults = bytes(userDefaults());

  const ProgramResult full = info(0);
  EXPECT_EQ(full.exitCode, 0) << full.errorOutput.toStdString();
  EXPECT_EQ(bytes(configXml()), edited) << "a failed write replaced Config.xml";
  EXPECT_EQ(bytes(userDefaults()), defaults);
  EXPECT_TRUE(QDir(home.path()).entryList({QStringLiteral(".*Config.xml*")}, QDir::Files | QDir::Hidden).isEmpty());
}

TEST(CommandHelp, EveryCommandAnswersHelpWithItsUsage) {
  for (const char* command : {"info", "fetch", "probe", "profiles", "convert", "tags", "analyze"}) {
    for (const char* flag : {"--help", "-h"}) {
      const ProgramResult result = runProgram({QLatin1String(command), QLatin1String(flag)});
      EXPECT_EQ(result.exitCode, 0) << command << ' ' << flag << ": " << result.errorOutput.toStdString();
      EXPECT_TRUE(result.standardOutput.startsWith(QStringLiteral("Usage: videoconverter %1").arg(command)))
          << result.standardOutput.toStdString();
    }
  }
}

}  // namespace
