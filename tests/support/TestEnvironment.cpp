#include "TestEnvironment.h"

#include <QDir>
#include <QStandardPaths>

#include <ctime>

#include "CommonClass/GlobalSettings.h"
#include "CommonClass/StandardPaths.h"
#include "CommonClass/UserDefaults.h"
#include "videoconverter.h"

namespace TestEnvironment {

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

void useScratchFolders(const QString& root) {
  sysTmpPath = root + QStringLiteral("/scratch");
  videoImagePath = sysTmpPath + QStringLiteral("/Images");
  VideoConverter_SetTempPath(root.toUtf8().constData());
}

ScopedEnvironment::~ScopedEnvironment() {
  for (const auto& [name, value] : saved_) {
    if (value.isNull()) {
      qunsetenv(name.constData());
    } else {
      qputenv(name.constData(), value);
    }
  }
  tzset();
}

void ScopedEnvironment::set(const QByteArray& name, const QByteArray& value) {
  saved_.append({name, qEnvironmentVariableIsSet(name.constData()) ? qgetenv(name.constData()) : QByteArray()});
  qputenv(name.constData(), value);
  tzset();
}

}  // namespace TestEnvironment
