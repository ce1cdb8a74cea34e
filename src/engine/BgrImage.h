// An uncompressed picture, three bytes per pixel in blue, green, red order,
// rows top to bottom without padding.
#pragma once

#include <cstddef>
#include <cstdint>
#include <vector>

namespace engine {

struct BgrImage {
  int width = 0;
  int height = 0;
  std::vector<uint8_t> pixels;

  BgrImage() = default;
  BgrImage(int imageWidth, int imageHeight);
  uint8_t* pixelAt(int x, int y) { return &pixels[(static_cast<std::size_t>(y) * width + x) * 3]; }
  const uint8_t* pixelAt(int x, int y) const { return &pixels[(static_cast<std::size_t>(y) * width + x) * 3]; }
  int rowBytes() const { return width * 3; }

  // The picture turned clockwise by 0, 90, 180 or 270 degrees.
  BgrImage rotatedClockwise(int degrees) const;
};

}  // namespace engine
