#include "ASIGzipInflater.h"

#include <QFile>

namespace {

// zlib's largest window, plus 16: read a gzip wrapper.
constexpr int kGzipWindowBits = 15 + 16;
constexpr size_t kOutputChunkSize = 256 * 1024;
constexpr qint64 kInputChunkSize = 256 * 1024;

const QString kTruncatedText = QStringLiteral("The gzip body ends before its end");

}  // namespace

ASIGzipInflater::ASIGzipInflater() {
  initialised_ = inflateInit2_(&stream_, kGzipWindowBits, ZLIB_VERSION, static_cast<int>(sizeof(z_stream))) == Z_OK;
  if (!initialised_) errorText_ = QStringLiteral("zlib could not be initialised");
}

ASIGzipInflater::~ASIGzipInflater() {
  if (initialised_) inflateEnd(&stream_);
}

ASIGzipInflater::Result ASIGzipInflater::damaged(const QString& text) {
  errorText_ = text;
  return Result::Damaged;
}

ASIGzipInflater::Result ASIGzipInflater::inflate(const char* data, size_t size, const Output& output) {
  if (!initialised_) return Result::Damaged;
  QByteArray outputChunk(static_cast<qsizetype>(kOutputChunkSize), Qt::Uninitialized);
  stream_.next_in = reinterpret_cast<Bytef*>(const_cast<char*>(data));
  stream_.avail_in = static_cast<uInt>(size);
  do {
    if (complete_ && stream_.avail_in > 0) {
      // Another gzip member follows the one that ended.
      if (inflateReset(&stream_) != Z_OK) return damaged(QStringLiteral("zlib could not be reset"));
      complete_ = false;
    }
    stream_.next_out = reinterpret_cast<Bytef*>(outputChunk.data());
    stream_.avail_out = static_cast<uInt>(kOutputChunkSize);
    const int result = ::inflate(&stream_, Z_NO_FLUSH);
    if (result != Z_OK && result != Z_STREAM_END && result != Z_BUF_ERROR) {
      return damaged(QStringLiteral("The gzip body is damaged: %1")
                         .arg(QString::fromLatin1(stream_.msg != nullptr ? stream_.msg : "unknown zlib error")));
    }
    const size_t produced = kOutputChunkSize - stream_.avail_out;
    if (produced > 0 && !output(outputChunk.constData(), produced)) return Result::OutputRefused;
    if (result == Z_STREAM_END) complete_ = true;
    if (result == Z_BUF_ERROR) break;
  } while (stream_.avail_in > 0 || (stream_.avail_out == 0 && !complete_));
  return Result::Inflated;
}

std::optional<QString> ASIGzipInflater::inflateFile(const QString& sourcePath, const QString& destinationPath) {
  QFile source(sourcePath);
  if (!source.open(QIODevice::ReadOnly)) {
    return QStringLiteral("Cannot read %1: %2").arg(sourcePath, source.errorString());
  }
  QFile destination(destinationPath);
  const auto writeFailure = [&destination, &destinationPath] {
    return QStringLiteral("Cannot write %1: %2").arg(destinationPath, destination.errorString());
  };
  if (!destination.open(QIODevice::WriteOnly | QIODevice::Truncate)) return writeFailure();

  ASIGzipInflater inflater;
  const Output write = [&destination](const char* data, size_t size) {
    return destination.write(data, static_cast<qint64>(size)) == static_cast<qint64>(size);
  };
  QByteArray input(kInputChunkSize, Qt::Uninitialized);
  qint64 read = 0;
  while ((read = source.read(input.data(), kInputChunkSize)) > 0) {
    switch (inflater.inflate(input.constData(), static_cast<size_t>(read), write)) {
      case Result::Inflated: break;
      case Result::Damaged: return inflater.errorText();
      case Result::OutputRefused: return writeFailure();
    }
  }
  if (read < 0) return QStringLiteral("Cannot read %1: %2").arg(sourcePath, source.errorString());
  if (!inflater.isComplete()) return kTruncatedText;
  if (!destination.flush()) return writeFailure();
  return std::nullopt;
}

std::optional<QString> ASIGzipInflater::inflateData(const QByteArray& compressed, QByteArray* inflated) {
  ASIGzipInflater inflater;
  inflated->clear();
  const Output append = [inflated](const char* data, size_t size) {
    inflated->append(data, static_cast<qsizetype>(size));
    return true;
  };
  if (inflater.inflate(compressed.constData(), static_cast<size_t>(compressed.size()), append) != Result::Inflated) {
    return inflater.errorText();
  }
  if (!inflater.isComplete()) return kTruncatedText;
  return std::nullopt;
}
