#include "ApplicationLifecycle.h"

#include <QCoreApplication>
#include <QDir>
#include <QFileInfo>
#include <QRegularExpression>

#include <syslog.h>
#include <unistd.h>

#include "Action/UIAction.h"
#include "CommonClass/CommonClass.h"
#include "CommonClass/DistributedNotificationCenter.h"
#include "CommonClass/FolderHold.h"
#include "CommonClass/GlobalSettings.h"
#include "CommonClass/KMVLog.h"
#include "CommonClass/NotificationCenter.h"
#include "CommonClass/PlatformServices.h"
#include "CommonClass/StandardPaths.h"
#include "CommonClass/UserDefaults.h"
#include "Profile/KMVProfileCatalog.h"
#include "ProjectVersion.h"
#include "videoconverter.h"

namespace {

constexpr int kUTC8Seconds = 8 * 3600;
const QString kSkinChanged = QStringLiteral("KMVIORGPALVINORCHANGESHIN");
const QString kSetSkinPath = QStringLiteral("KMVSETAPPSKINPATH");

// Announces the build to the system log, as the start-up always has.
void logBuildToSystemConsole() {
#if defined(__x86_64__)
  const char* architecture = "__x86_64__";
#elif defined(__aarch64__)
  const char* architecture = "__aarch64__";
#else
  const char* architecture = "__unknown_arch__";
#endif
#ifdef NDEBUG
  const char* buildType = "release";
#else
  const char* buildType = "debug";
#endif
  openlog("videoconverter", LOG_PID, LOG_USER);
  syslog(LOG_INFO, "%s", architecture);
  syslog(LOG_INFO, "%x.%x", (CommonClass::OSVersion() >> 8) & 0xFF, (CommonClass::OSVersion() >> 4) & 0xF);
  syslog(LOG_INFO, "%s", buildType);
  closelog();
}

// Only a folder this sequence made is removed, whatever the defaults say.
bool isRunFolder(const QString& path) {
  static const QRegularExpression stamp(QStringLiteral("^\\d{14}(-\\d+)?$"));
  const QFileInfo info(path);
  return !path.isEmpty() && info.absolutePath() + QLatin1Char('/') == StandardPaths::temporaryDataPath() &&
         stamp.match(info.fileName()).hasMatch();
}

// This run's hold on its temporary folder, for the life of the process.
FolderHold& runFolderHold() {
  static FolderHold hold;
  return hold;
}

}  // namespace

void MainWindowShell::setUpProfiles(const QString& profileFolder, const QString& /*saveFolder*/,
                                    const QString& profileName) {
  KMVProfileCatalog& catalog = KMVProfileCatalog::sharedCatalog();
  for (const QString& problem : catalog.loadFolder(profileFolder)) KMVLog::Log(problem);
  if (catalog.selectProfile(profileName)) return;
  kProfileName = QLatin1String(ApplicationLifecycle::kDefaultProfileName);
  catalog.selectProfile(kProfileName);
}

void ApplicationLifecycle::identifyApplication() {
  QCoreApplication::setOrganizationName(QLatin1String(GlobalSettings::kMakerFolderName));
  QCoreApplication::setApplicationName(QLatin1String(GlobalSettings::kApplicationName));
  QCoreApplication::setApplicationVersion(QLatin1String(kBundleVersion));
}

void ApplicationLifecycle::startUp(MainWindowShell& shell) {
  if (!QFileInfo(UIAction::configXmlPath()).isReadable()) UIAction::restoreConfigXml();

  shell.layOutMainForm();

  DistributedNotificationCenter& distributed = DistributedNotificationCenter::defaultCenter();
  distributed.addObserver(&shell, kSkinChanged,
                          [&shell](const Notification& n) { shell.reloadSkin(n.object.toString()); });
  distributed.postNotificationName(kSetSkinPath, shell.skinFolder(), true);

  UIAction::readInfoFromXml();
  kProductName = [] {
    const auto info = CommonClass::readProductInfo();
    return info ? info->decryptedText(info->mainWindowName) : QString();
  }();

  shell.createUpdater(isAutoUpdates);

  createMemoryTmpPath();

  if (kProfileName.isEmpty()) kProfileName = QLatin1String(kDefaultProfileName);
  shell.setUpProfiles(StandardPaths::pathForResource(QStringLiteral("profile/")), StandardPaths::privateDataPath(),
                      kProfileName);

  CommonClass::creatOutputDirectory(DefOutputPath);
  logBuildToSystemConsole();
  shell.setIdleState();
}

bool ApplicationLifecycle::askCancelConversion() {
  AlertPresenter* alerts = PlatformServices::alerts();
  if (alerts == nullptr) return false;
  return alerts->ask(kProductName, QStringLiteral("Cancel convertion?"),
                     {QStringLiteral("Yes"), QStringLiteral("No")}) == 0;
}

bool ApplicationLifecycle::applicationShouldTerminate(MainWindowShell& shell) {
  shell.stopPlayback();
  if (shell.isCancelButtonVisible()) {
    if (!askCancelConversion()) return false;
    shell.hideCancelButton();
    shell.cancelConvertAll();
    usleep(100);
  }
  shell.stopPlayback();
  shell.releaseObjects();
  UIAction::saveInfoToXml();
  runFolderHold().release();
  CommonClass::deleteFile(sharedMemoryPath);
  NotificationCenter::defaultCenter().removeObserver(&shell);
  DistributedNotificationCenter::defaultCenter().removeObserver(&shell);
  return true;
}

bool ApplicationLifecycle::windowShouldClose(MainWindowShell& shell) {
  if (shell.hasPlayer()) shell.stopPlayback();
  if (!shell.isConversionListVisible()) return true;
  if (!askCancelConversion()) return false;
  shell.hideCancelButton();
  shell.cancelConvertAll();
  usleep(100);
  return true;
}

QString ApplicationLifecycle::timeStampUTC8(const QDateTime& moment) {
  return moment.toOffsetFromUtc(kUTC8Seconds).toString(QStringLiteral("yyyyMMddHHmmss"));
}

QString ApplicationLifecycle::createMemoryTmpPath(const QDateTime& now) {
  UserDefaults& defaults = UserDefaults::standardUserDefaults();
  const QString previous = defaults.stringForKey(QStringLiteral("TmpPath"));
  runFolderHold().release();
  // A folder another running program holds is still in use; only a crashed
  // run's folder goes.
  if (isRunFolder(previous) && !FolderHold::isHeld(previous)) QDir(previous).removeRecursively();

  sharedMemoryPath = StandardPaths::temporaryDataPath() + timeStampUTC8(now);
  QDir().mkpath(sharedMemoryPath);
  if (!runFolderHold().hold(sharedMemoryPath)) {
    // Another program started in the same second: a folder of our own beside it.
    sharedMemoryPath += QStringLiteral("-%1").arg(QCoreApplication::applicationPid());
    QDir().mkpath(sharedMemoryPath);
    runFolderHold().hold(sharedMemoryPath);
  }
  VideoConverter_SetTempPath(sharedMemoryPath.toUtf8().constData());
  defaults.setObject(sharedMemoryPath, QStringLiteral("TmpPath"));
  defaults.synchronize();
  return sharedMemoryPath;
}
