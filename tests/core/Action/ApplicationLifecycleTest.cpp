#include <gtest/gtest.h>

#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QProcess>
#include <QTimeZone>

#include "Action/ApplicationLifecycle.h"
#include "Action/UIAction.h"
#include "CommonClass/DistributedNotificationCenter.h"
#include "CommonClass/FolderHold.h"
#include "CommonClass/GlobalSettings.h"
#include "CommonClass/StandardPaths.h"
#include "CommonClass/UserDefaults.h"
#include "EventLoopWait.h"
#include "RecordingAlertPresenter.h"
#include "TestEnvironment.h"

namespace {

// A window that records the steps asked of it.
class RecordingShell : public MainWindowShell {
 public:
  void layOutMainForm() override { steps.append(QStringLiteral("layout")); }
  QString skinFolder() const override { return QStringLiteral("/skins/Default/"); }
  void createUpdater(bool checkNow) override { steps.append(checkNow ? "updater+check" : "updater"); }
  void setUpProfiles(const QString& folder, const QString&, const QString& name) override {
    steps.append(QStringLiteral("profiles"));
    profileFolder = folder;
    profileName = name;
  }
  void setIdleState() override { steps.append(QStringLiteral("idle")); }
  void stopPlayback() override { steps.append(QStringLiteral("stop")); }
  bool isCancelButtonVisible() const override { return converting; }
  bool isConversionListVisible() const override { return converting; }
  void hideCancelButton() override { steps.append(QStringLiteral("hide-cancel")); }
  void cancelConvertAll() override { steps.append(QStringLiteral("cancel-all")); }
  void releaseObjects() override { steps.append(QStringLiteral("release")); }

  QStringList steps;
  QString profileFolder;
  QString profileName;
  bool converting = false;
};

class Lifecycle : public testing::Test {
 protected:
  void SetUp() override { TestEnvironment::resetApplicationState(); }
  void TearDown() override { TestEnvironment::resetApplicationState(); }
};

TEST_F(Lifecycle, StartUpRunsItsStepsInOrderAndAnnouncesTheSkin) {
  QStringList announced;
  const int token = 0;
  DistributedNotificationCenter::defaultCenter().addObserver(
      &token, QStringLiteral("KMVSETAPPSKINPATH"),
      [&](const Notification& n) { announced.append(n.object.toString()); });

  RecordingShell shell;
  ApplicationLifecycle::startUp(shell);
  DistributedNotificationCenter::defaultCenter().removeObserver(&token);

  EXPECT_EQ(shell.steps, (QStringList{"layout", "updater", "profiles", "idle"}));
  EXPECT_EQ(announced, QStringList{QStringLiteral("/skins/Default/")}) << "delivered before start-up returns";
  EXPECT_EQ(shell.profileName, kProfileName);
  EXPECT_TRUE(shell.profileFolder.endsWith(QStringLiteral("/profile/")));
  EXPECT_TRUE(QDir(DefOutputPath).exists());
  EXPECT_TRUE(QDir(sharedMemoryPath).exists());
  EXPECT_TRUE(QFile::exists(UIAction::configXmlPath()));
  ApplicationLifecycle::applicationShouldTerminate(shell);
}

TEST_F(Lifecycle, TheRunFolderIsStampedInUtcPlus8WhateverTheZone) {
  TestEnvironment::ScopedEnvironment environment;
  environment.set("TZ", "America/New_York");
  const QDateTime moment(QDate(2026, 1, 31), QTime(20, 30, 5), QTimeZone::utc());
  EXPECT_EQ(ApplicationLifecycle::timeStampUTC8(moment), QStringLiteral("20260201043005"));
  EXPECT_EQ(ApplicationLifecycle::timeStampUTC8(moment.toLocalTime()), QStringLiteral("20260201043005"));

  const QString first = ApplicationLifecycle::createMemoryTmpPath(moment);
  EXPECT_EQ(first, StandardPaths::temporaryDataPath() + QStringLiteral("20260201043005"));
  EXPECT_TRUE(QDir(first).exists());
  EXPECT_EQ(UserDefaults::standardUserDefaults().stringForKey(QStringLiteral("TmpPath")), first);

  // The next run removes the folder the previous one left behind.
  const QString second = ApplicationLifecycle::createMemoryTmpPath(moment.addSecs(1));
  EXPECT_FALSE(QDir(first).exists());
  EXPECT_TRUE(QDir(second).exists());
  QDir(second).removeRecursively();
}

// Another program's hold on a run folder, taken with the flock tool.
class ForeignHold {
 public:
  explicit ForeignHold(const QString& folder) {
    QDir().mkpath(folder);
    holder_.start(QStringLiteral("flock"), {QStringLiteral("--exclusive"), FolderHold::holdFilePath(folder), "cat"});
    EXPECT_TRUE(waitUntil([&] { return FolderHold::isHeld(folder); }));
  }
  ~ForeignHold() {
    holder_.closeWriteChannel();
    holder_.waitForFinished();
  }

 private:
  QProcess holder_;
};

TEST_F(Lifecycle, ARunFolderAnotherProgramHoldsOrOneOutsideTheTemporaryFolderIsNeverRemoved) {
  const QDateTime moment(QDate(2026, 3, 1), QTime(10, 0, 0), QTimeZone::utc());
  const QString busy = StandardPaths::temporaryDataPath() + ApplicationLifecycle::timeStampUTC8(moment);
  UserDefaults& defaults = UserDefaults::standardUserDefaults();
  {
    const ForeignHold running(busy);
    defaults.setObject(busy, QStringLiteral("TmpPath"));
    const QString own = ApplicationLifecycle::createMemoryTmpPath(moment);
    EXPECT_TRUE(QDir(busy).exists()) << "a folder in use was removed";
    EXPECT_EQ(own, busy + QStringLiteral("-%1").arg(QCoreApplication::applicationPid()))
        << "a program started in the same second shared the folder";
    QDir(own).removeRecursively();
  }
  defaults.setObject(busy, QStringLiteral("TmpPath"));
  QDir(ApplicationLifecycle::createMemoryTmpPath(moment.addSecs(1))).removeRecursively();
  EXPECT_FALSE(QDir(busy).exists()) << "the folder stayed once nobody held it";

  const QString precious = qEnvironmentVariable("HOME") + QStringLiteral("/20260101000000");
  ASSERT_TRUE(QDir().mkpath(precious));
  defaults.setObject(precious, QStringLiteral("TmpPath"));
  QDir(ApplicationLifecycle::createMemoryTmpPath()).removeRecursively();
  EXPECT_TRUE(QDir(precious).exists()) << "a folder outside the temporary folder was removed";
}

TEST_F(Lifecycle, QuittingDuringAConversionAsksAndOnlyYesCancels) {
  RecordingShell shell;
  ApplicationLifecycle::startUp(shell);
  shell.converting = true;
  shell.steps.clear();
  RecordingAlertPresenter alerts;
  ScopedAlertPresenter installed(&alerts);

  alerts.answer = 1;  // "No"
  EXPECT_FALSE(ApplicationLifecycle::applicationShouldTerminate(shell));
  ASSERT_EQ(alerts.alerts.size(), 1u);
  EXPECT_EQ(alerts.alerts[0].message, kProductName);
  EXPECT_EQ(alerts.alerts[0].informativeText, QStringLiteral("Cancel convertion?"));
  EXPECT_EQ(alerts.alerts[0].buttons, (QStringList{"Yes", "No"}));
  EXPECT_FALSE(shell.steps.contains(QStringLiteral("cancel-all")));
  EXPECT_TRUE(QDir(sharedMemoryPath).exists()) << "nothing is cleaned up when the user stays";

  alerts.answer = 0;  // "Yes"
  kProfileName = QStringLiteral("Chosen Later");
  EXPECT_TRUE(ApplicationLifecycle::applicationShouldTerminate(shell));
  EXPECT_EQ(shell.steps.mid(1), (QStringList{"stop", "hide-cancel", "cancel-all", "stop", "release"}));
  EXPECT_FALSE(QDir(sharedMemoryPath).exists());
  const auto saved = UIAction::readConfigXml();
  ASSERT_TRUE(saved);
  EXPECT_EQ(saved->documentElement().firstChildElement("user").firstChildElement("lastselectprofilename").text(),
            QStringLiteral("Chosen Later"));
}

TEST_F(Lifecycle, ClosingTheWindowAsksOnlyWhileConvertingAndSavesNothing) {
  RecordingShell shell;
  RecordingAlertPresenter alerts;
  ScopedAlertPresenter installed(&alerts);
  EXPECT_TRUE(ApplicationLifecycle::windowShouldClose(shell));
  EXPECT_TRUE(alerts.alerts.empty());

  shell.converting = true;
  alerts.answer = 1;
  EXPECT_FALSE(ApplicationLifecycle::windowShouldClose(shell));
  alerts.answer = 0;
  EXPECT_TRUE(ApplicationLifecycle::windowShouldClose(shell));
  EXPECT_EQ(shell.steps, (QStringList{"hide-cancel", "cancel-all"}));
  EXPECT_FALSE(QFile::exists(UIAction::configXmlPath()));
}

}  // namespace
