#include "DownloadSettings.h"

#include "CommonClass/GlobalSettings.h"
#include "CommonClass/UserDefaults.h"

int32_t qualityParam = 0;
int32_t downloadModel = 0;
QString savePath;

namespace DownloadSettings {

QString defaultSavePath() { return GlobalSettings::makerFolder() + QStringLiteral("/Download"); }

QString startSavePath() {
  const QString chosen = UserDefaults::standardUserDefaults().stringForKey(QLatin1String(kSavePathDefault));
  return chosen.isEmpty() ? defaultSavePath() : chosen;
}

}  // namespace DownloadSettings
