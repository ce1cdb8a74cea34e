// The temporary file a download is written to, and the file operations around
// it: measuring what an earlier attempt left, moving the finished file to its
// destination.
#pragma once

#include <QFile>
#include <QString>

#include <optional>

#include "ASIHTTPRequestError.h"

class ASIBodyFile {
 public:
  explicit ASIBodyFile(const QString& path) : file_(path) {}

  QString path() const { return file_.fileName(); }
  bool isOpen() const { return file_.isOpen(); }

  // Gets the file ready for a response body: kept and appended to when
  // `append`, otherwise emptied.
  std::optional<ASIHTTPError> begin(bool append);
  std::optional<ASIHTTPError> write(const char* data, size_t size);
  void close() { file_.close(); }
  // Closes and deletes the file.
  std::optional<ASIHTTPError> remove();

  // The size of the file at `path`: 0 when there is none, an error when it
  // cannot be told whether there is one.
  static std::optional<ASIHTTPError> existingSize(const QString& path, quint64* size);
  // Moves `from` to `to`, removing a file at `to` first.
  static std::optional<ASIHTTPError> moveFile(const QString& from, const QString& to);

 private:
  QFile file_;
};
