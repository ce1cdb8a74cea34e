#include "FolderHold.h"

#include <QDir>
#include <QFileInfo>

#include <fcntl.h>
#include <sys/file.h>
#include <unistd.h>

namespace {

// An open descriptor of the folder's hold file with an exclusive lock, or -1
// when it cannot be opened or another process holds the lock.
int lockedHoldFile(const QString& folder) {
  const QByteArray path = FolderHold::holdFilePath(folder).toLocal8Bit();
  const int descriptor = open(path.constData(), O_RDWR | O_CREAT | O_CLOEXEC, 0600);
  if (descriptor < 0) return -1;
  if (flock(descriptor, LOCK_EX | LOCK_NB) != 0) {
    close(descriptor);
    return -1;
  }
  return descriptor;
}

}  // namespace

bool FolderHold::hold(const QString& folder) {
  release();
  descriptor_ = lockedHoldFile(folder);
  return descriptor_ >= 0;
}

void FolderHold::release() {
  if (descriptor_ < 0) return;
  close(descriptor_);
  descriptor_ = -1;
}

bool FolderHold::isHeld(const QString& folder) {
  if (!QFileInfo::exists(holdFilePath(folder))) return false;
  const int descriptor = lockedHoldFile(folder);
  if (descriptor < 0) return true;
  close(descriptor);
  return false;
}

QString FolderHold::holdFilePath(const QString& folder) { return QDir(folder).filePath(QStringLiteral(".in-use")); }
