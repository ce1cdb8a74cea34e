#include "GlobalSettings.h"

#include <QDir>
#include <QStandardPaths>

QString kProductName;
QString kProfileName;
QString DefOutputPath;
QByteArray DefOutputPathBookMark;
QString DefInputPath;
QString photoOutputPath;
QByteArray photoOutputPathBookMark;
QString photoOutputFormat = QStringLiteral("jpg");
bool isAutoUpdates = false;
QString sysTmpPath;
QString videoImagePath;
QString sharedMemoryPath;

namespace GlobalSettings {

QString moviesFolder() {
  QString movies = QStandardPaths::writableLocation(QStandardPaths::MoviesLocation);
  if (movies.isEmpty()) movies = QDir::homePath() + QStringLiteral("/Videos");
  return movies;
}

QString makerFolder() { return moviesFolder() + QLatin1Char('/') + QLatin1String(kMakerFolderName); }

void resetToDefaults() {
  kProductName.clear();
  kProfileName.clear();
  DefOutputPath.clear();
  DefOutputPathBookMark.clear();
  DefInputPath.clear();
  photoOutputPath.clear();
  photoOutputPathBookMark.clear();
  photoOutputFormat = QStringLiteral("jpg");
  isAutoUpdates = false;
  sysTmpPath.clear();
  videoImagePath.clear();
  sharedMemoryPath.clear();
}

}  // namespace GlobalSettings
