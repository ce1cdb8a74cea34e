#include "StandardPaths.h"

#include <QCoreApplication>
#include <QDir>
#include <QHash>
#include <QMutex>
#include <QStandardPaths>

#include <functional>

namespace {

QMutex cacheLock;
QHash<QString, QString> cache;

// Returns the cached value of `key`, computing it under the class lock once.
QString cached(const QString& key, const std::function<QString()>& compute) {
  QMutexLocker locker(&cacheLock);
  auto found = cache.constFind(key);
  if (found != cache.constEnd()) return *found;
  const QString value = compute();
  cache.insert(key, value);
  return value;
}

QString createdFolder(const QString& path) {
  QDir().mkpath(path);
  return path;
}

QString joined(const QString& folder, const QString& name) {
  return folder.endsWith(QLatin1Char('/')) ? folder + name : folder + QLatin1Char('/') + name;
}

QString computeCacheDataPath() {
  return createdFolder(QStandardPaths::writableLocation(QStandardPaths::CacheLocation));
}

}  // namespace

QString StandardPaths::privateDataPath() {
  return cached(QStringLiteral("private"), [] {
    return createdFolder(QStandardPaths::writableLocation(QStandardPaths::AppDataLocation));
  });
}

QString StandardPaths::cacheDataPath() { return cached(QStringLiteral("cache"), computeCacheDataPath); }

QString StandardPaths::publicDataPath() {
  return cached(QStringLiteral("public"),
                [] { return QStandardPaths::writableLocation(QStandardPaths::DocumentsLocation); });
}

QString StandardPaths::offlineDataPath() {
  const QString base = privateDataPath();
  return cached(QStringLiteral("offline"), [&] { return createdFolder(joined(base, QStringLiteral("Offline Data"))); });
}

QString StandardPaths::temporaryDataPath() {
  return cached(QStringLiteral("temporary"), [] {
    const QString system = QDir::tempPath();
    if (!system.isEmpty()) return joined(system, QString());
    return joined(computeCacheDataPath(), QStringLiteral("Temporary Files/"));
  });
}

QString StandardPaths::resourcePath() {
  return cached(QStringLiteral("resource"), [] {
    return QDir::cleanPath(QCoreApplication::applicationDirPath() + QStringLiteral("/../share/videoconverter"));
  });
}

QString StandardPaths::pathForResource(const QString& name) { return joined(resourcePath(), name); }
QString StandardPaths::pathForPrivateFile(const QString& name) { return joined(privateDataPath(), name); }
QString StandardPaths::pathForCacheFile(const QString& name) { return joined(cacheDataPath(), name); }
QString StandardPaths::pathForPublicFile(const QString& name) { return joined(publicDataPath(), name); }
QString StandardPaths::pathForOfflineFile(const QString& name) { return joined(offlineDataPath(), name); }
QString StandardPaths::pathForTemporaryFile(const QString& name) { return joined(temporaryDataPath(), name); }

void StandardPaths::resetCache() {
  QMutexLocker locker(&cacheLock);
  cache.clear();
}
