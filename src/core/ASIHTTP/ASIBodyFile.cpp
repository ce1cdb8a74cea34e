#include "ASIBodyFile.h"

#include <sys/stat.h>

#include <cerrno>
#include <cstring>

namespace {

QString systemErrorText(int error) { return QString::fromLocal8Bit(std::strerror(error)); }

}  // namespace

std::optional<ASIHTTPError> ASIBodyFile::begin(bool append) {
  if (file_.isOpen()) {
    if (!append && !(file_.resize(0) && file_.seek(0))) {
      return ASIHTTPError::failedToWriteFile(path(), file_.errorString());
    }
    return std::nullopt;
  }
  // Unbuffered: each chunk from the network goes straight to the file.
  const QIODevice::OpenMode mode =
      QIODevice::WriteOnly | QIODevice::Unbuffered | (append ? QIODevice::Append : QIODevice::Truncate);
  if (!file_.open(mode)) return ASIHTTPError::failedToWriteFile(path(), file_.errorString());
  return std::nullopt;
}

std::optional<ASIHTTPError> ASIBodyFile::write(const char* data, size_t size) {
  if (file_.write(data, static_cast<qint64>(size)) != static_cast<qint64>(size)) {
    return ASIHTTPError::failedToWriteFile(path(), file_.errorString());
  }
  return std::nullopt;
}

std::optional<ASIHTTPError> ASIBodyFile::remove() {
  file_.close();
  if (!file_.exists() || file_.remove()) return std::nullopt;
  return ASIHTTPError::failedToDeleteFile(path(), file_.errorString());
}

std::optional<ASIHTTPError> ASIBodyFile::existingSize(const QString& path, quint64* size) {
  *size = 0;
  struct stat attributes {};
  if (::stat(QFile::encodeName(path).constData(), &attributes) == 0) {
    *size = static_cast<quint64>(attributes.st_size);
    return std::nullopt;
  }
  if (errno == ENOENT) return std::nullopt;
  return ASIHTTPError::failedToGetAttributes(path, systemErrorText(errno));
}

std::optional<ASIHTTPError> ASIBodyFile::moveFile(const QString& from, const QString& to) {
  QFile existing(to);
  if (existing.exists() && !existing.remove()) return ASIHTTPError::failedToDeleteFile(to, existing.errorString());
  QFile source(from);
  if (!source.rename(to)) return ASIHTTPError::failedToMoveFile(from, to, source.errorString());
  return std::nullopt;
}
