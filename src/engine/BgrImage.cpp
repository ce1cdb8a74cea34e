#include "BgrImage.h"

#include <algorithm>

namespace engine {

BgrImage::BgrImage(int imageWidth, int imageHeight)
    : width(imageWidth), height(imageHeight), pixels(static_cast<std::size_t>(imageWidth) * imageHeight * 3) {}

BgrImage BgrImage::rotatedClockwise(int degrees) const {
  if (degrees != 90 && degrees != 180 && degrees != 270) return *this;
  const bool sideways = degrees != 180;
  BgrImage turned(sideways ? height : width, sideways ? width : height);
  for (int y = 0; y < turned.height; ++y) {
    for (int x = 0; x < turned.width; ++x) {
      // Where the pixel that lands on (x, y) comes from.
      int sourceX = 0;
      int sourceY = 0;
      switch (degrees) {
        case 90:
          sourceX = y;
          sourceY = height - 1 - x;
          break;
        case 180:
          sourceX = width - 1 - x;
          sourceY = height - 1 - y;
          break;
        default:
          sourceX = width - 1 - y;
          sourceY = x;
          break;
      }
      std::copy_n(pixelAt(sourceX, sourceY), 3, turned.pixelAt(x, y));
    }
  }
  return turned;
}

}  // namespace engine
