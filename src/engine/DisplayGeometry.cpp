#include "DisplayGeometry.h"

#include <cmath>

extern "C" {
#include <libavutil/display.h>
}

namespace engine {
namespace {

// The display matrix holds a counter-clockwise angle; rounded to the nearest
// quarter turn, as players show it.
int clockwiseRotationOf(const AVStream& stream) {
  const uint8_t* matrix = av_stream_get_side_data(&stream, AV_PKT_DATA_DISPLAYMATRIX, nullptr);
  if (matrix == nullptr) return 0;
  const double counterClockwise = av_display_rotation_get(reinterpret_cast<const int32_t*>(matrix));
  if (std::isnan(counterClockwise)) return 0;
  const int quarterTurns = static_cast<int>(std::lround(-counterClockwise / 90.0));
  return ((quarterTurns % 4) + 4) % 4 * 90;
}

}  // namespace

DisplayGeometry DisplayGeometry::of(const AVStream& stream) {
  DisplayGeometry geometry;
  const AVCodecParameters& parameters = *stream.codecpar;
  geometry.codedWidth = parameters.width;
  geometry.codedHeight = parameters.height;
  // The container's aspect ratio overrides the one in the bitstream.
  AVRational sampleAspect =
      stream.sample_aspect_ratio.num > 0 ? stream.sample_aspect_ratio : parameters.sample_aspect_ratio;
  int width = parameters.width;
  if (sampleAspect.num > 0 && sampleAspect.den > 0) {
    width = static_cast<int>(std::lround(static_cast<double>(width) * sampleAspect.num / sampleAspect.den));
  }
  geometry.clockwiseRotation = clockwiseRotationOf(stream);
  geometry.displayWidth = geometry.turnsSideways() ? parameters.height : width;
  geometry.displayHeight = geometry.turnsSideways() ? width : parameters.height;
  return geometry;
}

}  // namespace engine
