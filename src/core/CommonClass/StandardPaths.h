// The per-user folders of the application. Each path is computed once per
// process under a lock, so that worker threads and the main thread get the
// same value.
#pragma once

#include <QString>

class StandardPaths {
 public:
  // Private data (Config.xml, the download list); created when missing.
  static QString privateDataPath();
  // Caches; created when missing.
  static QString cacheDataPath();
  // The user's documents folder.
  static QString publicDataPath();
  // privateDataPath() + "/Offline Data"; created when missing.
  static QString offlineDataPath();
  // The system temporary folder, ending in "/"; cacheDataPath() +
  // "/Temporary Files/" when the system gives none.
  static QString temporaryDataPath();
  // The installed resources: <program folder>/../share/videoconverter.
  static QString resourcePath();

  static QString pathForResource(const QString& name);
  static QString pathForPrivateFile(const QString& name);
  static QString pathForCacheFile(const QString& name);
  static QString pathForPublicFile(const QString& name);
  static QString pathForOfflineFile(const QString& name);
  static QString pathForTemporaryFile(const QString& name);

  // Forgets every cached path; for tests that point the folders elsewhere.
  static void resetCache();
};
