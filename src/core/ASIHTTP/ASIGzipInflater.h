// Inflating gzip-encoded bodies with zlib, piece by piece, so that a large
// body never has to be held in memory.
#pragma once

#include <QByteArray>
#include <QString>

#include <zlib.h>

#include <functional>
#include <optional>

class ASIGzipInflater {
 public:
  // Receives inflated bytes; false stops the inflating.
  using Output = std::function<bool(const char* data, size_t size)>;

  ASIGzipInflater();
  ~ASIGzipInflater();
  ASIGzipInflater(const ASIGzipInflater&) = delete;
  ASIGzipInflater& operator=(const ASIGzipInflater&) = delete;

  enum class Result { Inflated, Damaged, OutputRefused };

  // Inflates the next piece of the compressed stream. Damaged when the data
  // is not gzip or is broken (errorText() says how).
  Result inflate(const char* data, size_t size, const Output& output);
  // True once the end of the compressed stream has been read.
  bool isComplete() const { return complete_; }
  const QString& errorText() const { return errorText_; }

  // Inflates a whole file into another one; the error text on failure.
  static std::optional<QString> inflateFile(const QString& sourcePath, const QString& destinationPath);
  // Inflates bytes held in memory; the error text on failure.
  static std::optional<QString> inflateData(const QByteArray& compressed, QByteArray* inflated);

 private:
  Result damaged(const QString& text);

  z_stream stream_{};
  bool initialised_ = false;
  bool complete_ = false;
  QString errorText_;
};
