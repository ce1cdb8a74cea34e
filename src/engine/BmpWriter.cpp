#include "BmpWriter.h"

#include <array>
#include <cstdint>
#include <vector>

#include "AtomicFile.h"

namespace engine {
namespace {

constexpr uint32_t kFileHeaderBytes = 14;
constexpr uint32_t kInfoHeaderBytes = 40;
constexpr int32_t kPixelsPerMetre = 2835;  // 72 dots per inch

void putLittleEndian(std::vector<uint8_t>& bytes, uint32_t value, int width) {
  for (int i = 0; i < width; ++i) bytes.push_back(static_cast<uint8_t>(value >> (8 * i)));
}

std::vector<uint8_t> headersFor(const BgrImage& image, uint32_t paddedRowBytes) {
  const uint32_t pixelBytes = paddedRowBytes * static_cast<uint32_t>(image.height);
  std::vector<uint8_t> header;
  header.push_back('B');
  header.push_back('M');
  putLittleEndian(header, kFileHeaderBytes + kInfoHeaderBytes + pixelBytes, 4);
  putLittleEndian(header, 0, 4);  // reserved
  putLittleEndian(header, kFileHeaderBytes + kInfoHeaderBytes, 4);
  putLittleEndian(header, kInfoHeaderBytes, 4);
  putLittleEndian(header, static_cast<uint32_t>(image.width), 4);
  putLittleEndian(header, static_cast<uint32_t>(image.height), 4);  // positive: rows stored bottom-up
  putLittleEndian(header, 1, 2);                                    // planes
  putLittleEndian(header, 24, 2);                                   // bits per pixel
  putLittleEndian(header, 0, 4);                                    // no compression
  putLittleEndian(header, pixelBytes, 4);
  putLittleEndian(header, kPixelsPerMetre, 4);
  putLittleEndian(header, kPixelsPerMetre, 4);
  putLittleEndian(header, 0, 4);  // colours in palette
  putLittleEndian(header, 0, 4);  // important colours
  return header;
}

}  // namespace

bool BmpWriter::write(const BgrImage& image, const std::string& path) {
  if (image.width <= 0 || image.height <= 0) return false;
  // Each stored row is padded to a multiple of four bytes.
  const uint32_t paddedRowBytes = (static_cast<uint32_t>(image.rowBytes()) + 3) & ~3u;
  const std::vector<uint8_t> header = headersFor(image, paddedRowBytes);
  return writeFileAtomically(path, [&](std::FILE* file) {
    if (std::fwrite(header.data(), 1, header.size(), file) != header.size()) return false;
    const std::array<uint8_t, 3> padding{};
    const size_t paddingBytes = paddedRowBytes - image.rowBytes();
    for (int y = image.height - 1; y >= 0; --y) {
      if (std::fwrite(image.pixelAt(0, y), 1, image.rowBytes(), file) != static_cast<size_t>(image.rowBytes())) {
        return false;
      }
      if (std::fwrite(padding.data(), 1, paddingBytes, file) != paddingBytes) return false;
    }
    return true;
  });
}

}  // namespace engine
