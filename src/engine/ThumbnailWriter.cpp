#include "ThumbnailWriter.h"

#include <algorithm>
#include <cmath>

#include "BmpWriter.h"

namespace engine {
namespace {

struct Size {
  int width = 0;
  int height = 0;
};

// Upright thumbnail size: never enlarged, the display's aspect kept.
Size thumbnailSize(const DisplayGeometry& geometry) {
  if (geometry.displayWidth <= 0 || geometry.displayHeight <= 0) return {};
  const int height = std::min(ThumbnailWriter::kMaxHeight, geometry.displayHeight);
  const double width = static_cast<double>(geometry.displayWidth) * height / geometry.displayHeight;
  return {std::max(1, static_cast<int>(std::lround(width))), height};
}

// Scales the frame to `size` as stored, that is before it is turned upright.
BgrImage scaledFrame(const AVFrame& frame, Size size) {
  ScaleContextPtr scaler(sws_getContext(frame.width, frame.height, static_cast<AVPixelFormat>(frame.format), size.width,
                                        size.height, AV_PIX_FMT_BGR24, SWS_BICUBIC, nullptr, nullptr, nullptr));
  if (scaler == nullptr) return {};
  const bool fullRange = frame.color_range == AVCOL_RANGE_JPEG;
  sws_setColorspaceDetails(scaler.get(), sws_getCoefficients(frame.colorspace), fullRange,
                           sws_getCoefficients(SWS_CS_DEFAULT), 1, 0, 1 << 16, 1 << 16);
  BgrImage image(size.width, size.height);
  uint8_t* destination[4] = {image.pixels.data(), nullptr, nullptr, nullptr};
  const int destinationStride[4] = {image.rowBytes(), 0, 0, 0};
  if (sws_scale(scaler.get(), frame.data, frame.linesize, 0, frame.height, destination, destinationStride) <= 0) {
    return {};
  }
  return image;
}

// The upright picture at thumbnail size.
BgrImage uprightThumbnail(const AVFrame& frame, const DisplayGeometry& geometry) {
  const Size upright = thumbnailSize(geometry);
  if (upright.width == 0 || frame.width <= 0 || frame.height <= 0) return {};
  const Size stored = geometry.turnsSideways() ? Size{upright.height, upright.width} : upright;
  return scaledFrame(frame, stored).rotatedClockwise(geometry.clockwiseRotation);
}

}  // namespace

bool ThumbnailWriter::write(const AVFrame& frame, const DisplayGeometry& geometry, const std::string& path) {
  return BmpWriter::write(uprightThumbnail(frame, geometry), path);
}

}  // namespace engine
