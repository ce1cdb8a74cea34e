#include "TiffImage.h"

#include <QBuffer>
#include <QImageReader>
#include <QList>
#include <QMap>
#include <QtEndian>

#include <optional>

namespace {

enum Tag : quint16 {
  kImageWidth = 256,
  kImageLength = 257,
  kBitsPerSample = 258,
  kCompression = 259,
  kPhotometric = 262,
  kStripOffsets = 273,
  kSamplesPerPixel = 277,
  kRowsPerStrip = 278,
  kStripByteCounts = 279,
  kXResolution = 282,
  kYResolution = 283,
  kPlanarConfiguration = 284,
  kResolutionUnit = 296,
  kExtraSamples = 338,
};

enum FieldType : quint16 { kShort = 3, kLong = 4, kRational = 5 };

constexpr quint16 kUncompressed = 1;
constexpr quint16 kWhiteIsZero = 0;
constexpr quint16 kBlackIsZero = 1;
constexpr quint16 kRgb = 2;
constexpr quint16 kChunky = 1;
constexpr quint16 kInch = 2;
constexpr quint16 kUnassociatedAlpha = 2;

// Little-endian output with fields patched in later.
class Writer {
 public:
  void u16(quint16 value) {
    char bytes[2];
    qToLittleEndian(value, bytes);
    data.append(bytes, 2);
  }
  void u32(quint32 value) {
    char bytes[4];
    qToLittleEndian(value, bytes);
    data.append(bytes, 4);
  }
  // A directory entry whose value fits in its four bytes, or the offset of it.
  void entry(quint16 tag, FieldType type, quint32 count, quint32 valueOrOffset) {
    u16(tag);
    u16(type);
    u32(count);
    if (type == kShort && count == 1) {
      u16(static_cast<quint16>(valueOrOffset));
      u16(0);
    } else {
      u32(valueOrOffset);
    }
  }
  QByteArray data;
};

// Reads one byte order's numbers, bounds checked.
class Reader {
 public:
  Reader(const QByteArray& data, bool bigEndian) : data_(data), bigEndian_(bigEndian) {}

  std::optional<quint32> u16(qint64 at) const {
    if (at < 0 || at + 2 > data_.size()) return std::nullopt;
    const auto* bytes = reinterpret_cast<const uchar*>(data_.constData() + at);
    return bigEndian_ ? qFromBigEndian<quint16>(bytes) : qFromLittleEndian<quint16>(bytes);
  }
  std::optional<quint32> u32(qint64 at) const {
    if (at < 0 || at + 4 > data_.size()) return std::nullopt;
    const auto* bytes = reinterpret_cast<const uchar*>(data_.constData() + at);
    return bigEndian_ ? qFromBigEndian<quint32>(bytes) : qFromLittleEndian<quint32>(bytes);
  }

 private:
  const QByteArray& data_;
  bool bigEndian_;
};

// The values of a SHORT or LONG field; nullopt when damaged.
std::optional<QList<quint32>> fieldValues(const Reader& reader, qint64 entry) {
  const std::optional<quint32> type = reader.u16(entry + 2);
  const std::optional<quint32> count = reader.u32(entry + 4);
  if (!type || !count || (*type != kShort && *type != kLong) || *count == 0 || *count > (1u << 20)) {
    return std::nullopt;
  }
  const quint32 size = *type == kShort ? 2 : 4;
  qint64 at = entry + 8;
  if (size * *count > 4) {
    const std::optional<quint32> offset = reader.u32(entry + 8);
    if (!offset) return std::nullopt;
    at = *offset;
  }
  QList<quint32> values;
  values.reserve(*count);
  for (quint32 i = 0; i < *count; ++i) {
    const std::optional<quint32> value = size == 2 ? reader.u16(at + i * 2) : reader.u32(at + i * 4);
    if (!value) return std::nullopt;
    values.append(*value);
  }
  return values;
}

QImage decodeBaseline(const QByteArray& data) {
  if (!TiffImage::isTiff(data)) return {};
  const Reader reader(data, data.startsWith("MM"));
  const std::optional<quint32> directory = reader.u32(4);
  const std::optional<quint32> entryCount = directory ? reader.u16(*directory) : std::nullopt;
  if (!entryCount) return {};

  QMap<quint32, QList<quint32>> fields;
  for (quint32 i = 0; i < *entryCount; ++i) {
    const qint64 entry = *directory + 2 + qint64(i) * 12;
    const std::optional<quint32> tag = reader.u16(entry);
    if (!tag) return {};
    if (const std::optional<QList<quint32>> values = fieldValues(reader, entry)) fields.insert(*tag, *values);
  }
  const auto one = [&fields](quint32 tag, quint32 fallback) { return fields.value(tag, {fallback}).value(0); };
  const quint32 width = one(kImageWidth, 0);
  const quint32 height = one(kImageLength, 0);
  const quint32 samples = one(kSamplesPerPixel, 1);
  const quint32 photometric = one(kPhotometric, kBlackIsZero);
  const QList<quint32> bits = fields.value(kBitsPerSample, {1});
  const QList<quint32> offsets = fields.value(kStripOffsets);
  const QList<quint32> counts = fields.value(kStripByteCounts);
  const bool colour = photometric == kRgb && samples >= 3 && samples <= 4;
  const bool grey = (photometric == kBlackIsZero || photometric == kWhiteIsZero) && samples >= 1 && samples <= 2;
  if (width == 0 || height == 0 || width > 16384 || height > 16384 || (!colour && !grey) ||
      one(kCompression, kUncompressed) != kUncompressed || one(kPlanarConfiguration, kChunky) != kChunky ||
      bits.count(8) != bits.size() || offsets.isEmpty() || offsets.size() != counts.size()) {
    return {};
  }

  // The strips one after another make the rows, top to bottom.
  QByteArray pixels;
  const qint64 wanted = qint64(width) * height * samples;
  for (qsizetype strip = 0; strip < offsets.size() && pixels.size() < wanted; ++strip) {
    if (qint64(offsets[strip]) + counts[strip] > data.size()) return {};
    pixels.append(data.constData() + offsets[strip], counts[strip]);
  }
  if (pixels.size() < wanted) return {};

  const bool alpha = samples == 2 || samples == 4;
  QImage image(int(width), int(height), alpha ? QImage::Format_RGBA8888 : QImage::Format_RGB888);
  const auto* source = reinterpret_cast<const uchar*>(pixels.constData());
  for (quint32 y = 0; y < height; ++y) {
    uchar* row = image.scanLine(int(y));
    for (quint32 x = 0; x < width; ++x, source += samples) {
      uchar* pixel = row + x * (alpha ? 4 : 3);
      if (colour) {
        pixel[0] = source[0];
        pixel[1] = source[1];
        pixel[2] = source[2];
      } else {
        pixel[0] = pixel[1] = pixel[2] = photometric == kWhiteIsZero ? uchar(255 - source[0]) : source[0];
      }
      if (alpha) pixel[3] = source[samples - 1];
    }
  }
  return image;
}

QImage decodeWithPlugin(const QByteArray& data) {
  QBuffer buffer;
  buffer.setData(data);
  QImageReader reader(&buffer, "tiff");
  return reader.canRead() ? reader.read() : QImage();
}

}  // namespace

namespace TiffImage {

bool isTiff(const QByteArray& data) {
  return data.startsWith(QByteArrayView("II*\0", 4)) || data.startsWith(QByteArrayView("MM\0*", 4));
}

QByteArray encode(const QImage& image) {
  if (image.isNull()) return {};
  const bool alpha = image.hasAlphaChannel();
  const QImage pixels = image.convertToFormat(alpha ? QImage::Format_RGBA8888 : QImage::Format_RGB888);
  const quint32 samples = alpha ? 4 : 3;
  const quint32 width = quint32(pixels.width());
  const quint32 height = quint32(pixels.height());
  const quint32 rowBytes = width * samples;

  const quint16 entries = alpha ? 14 : 13;
  const quint32 directorySize = 2 + entries * 12 + 4;
  // After the header and the directory: the bits per sample, the two
  // resolutions, then the strip.
  const quint32 bitsAt = 8 + directorySize;
  const quint32 xResolutionAt = bitsAt + 8;
  const quint32 yResolutionAt = xResolutionAt + 8;
  const quint32 stripAt = yResolutionAt + 8;

  Writer out;
  out.data.append("II*\0", 4);
  out.u32(8);
  out.u16(entries);
  out.entry(kImageWidth, kLong, 1, width);
  out.entry(kImageLength, kLong, 1, height);
  out.entry(kBitsPerSample, kShort, samples, bitsAt);
  out.entry(kCompression, kShort, 1, kUncompressed);
  out.entry(kPhotometric, kShort, 1, kRgb);
  out.entry(kStripOffsets, kLong, 1, stripAt);
  out.entry(kSamplesPerPixel, kShort, 1, samples);
  out.entry(kRowsPerStrip, kLong, 1, height);
  out.entry(kStripByteCounts, kLong, 1, rowBytes * height);
  out.entry(kXResolution, kRational, 1, xResolutionAt);
  out.entry(kYResolution, kRational, 1, yResolutionAt);
  out.entry(kPlanarConfiguration, kShort, 1, kChunky);
  out.entry(kResolutionUnit, kShort, 1, kInch);
  if (alpha) out.entry(kExtraSamples, kShort, 1, kUnassociatedAlpha);
  out.u32(0);  // no further directory
  for (int i = 0; i < 4; ++i) out.u16(i < int(samples) ? 8 : 0);
  for (int i = 0; i < 2; ++i) {
    out.u32(72);
    out.u32(1);
  }
  for (quint32 y = 0; y < height; ++y) {
    out.data.append(reinterpret_cast<const char*>(pixels.constScanLine(int(y))), rowBytes);
  }
  return out.data;
}

QImage decode(const QByteArray& data) {
  const QImage image = decodeBaseline(data);
  return image.isNull() ? decodeWithPlugin(data) : image;
}

}  // namespace TiffImage

QImage decodeThumbnail(const QByteArray& data) {
  if (data.isEmpty()) return {};
  return TiffImage::isTiff(data) ? TiffImage::decode(data) : QImage::fromData(data);
}
