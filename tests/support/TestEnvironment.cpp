#include "TestEnvironment.h"

#include <QDir>
#include <QFile>
#include <QSettings>
#include <QStandardPaths>

#include "CommonClass/GlobalSettings.h"
#include "CommonClass/StandardPaths.h"
#include "CommonClass/UserDefaults.h"

namespace TestEnvironment {

QString home() { return qEnvironmentVariable("HOME"); }

void resetApplicationState() {
  GlobalSettings::resetToDefaults();
  StandardPaths::resetCache();
  QDir(QStandardPaths::writableLocation(QStandardPaths::AppDataLocation)).removeRecursively();
  UserDefaults& defaults = UserDefaults::standardUserDefaults();
  for (const char* key : {"TmpPath", "LinkID", "appName", "buildver", "builddate", "link_code", "profileName",
                             "OutputBookMark", "PhotoBookMark", "DefInputPath"}) {
    defaults.removeObjectForKey(QLatin1String(key));
  }
  defaults.synchronize();
}

}  // namespace TestEnvironment
