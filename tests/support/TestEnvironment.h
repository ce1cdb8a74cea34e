// A private home for a test process: the per-user folders (configuration,
// data, caches) and the log folder point into a temporary folder, so that
// tests neither read nor change the real user's files.
#pragma once

#include <QByteArray>
#include <QList>
#include <QPair>
#include <QString>

namespace TestEnvironment {

// Resets the process-wide settings, path cache and user defaults file.
void resetApplicationState();
// Points the scratch folder (root/scratch, thumbnails in its Images folder)
// and the engine's scratch folder (root) into a test's own folder.
void useScratchFolders(const QString& root);

// Sets environment variables for one scope and puts them back afterwards;
// the C library reads the time zone again each time.
class ScopedEnvironment {
 public:
  ~ScopedEnvironment();
  void set(const QByteArray& name, const QByteArray& value);

 private:
  QList<QPair<QByteArray, QByteArray>> saved_;
};

}  // namespace TestEnvironment
