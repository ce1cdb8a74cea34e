// How a video stream is meant to be shown: its coded size stretched by the
// sample aspect ratio and turned by the container's rotation.
#pragma once

extern "C" {
#include <libavformat/avformat.h>
}

namespace engine {

struct DisplayGeometry {
  int codedWidth = 0;
  int codedHeight = 0;
  int displayWidth = 0;
  int displayHeight = 0;
  int clockwiseRotation = 0;  // 0, 90, 180 or 270 degrees

  static DisplayGeometry of(const AVStream& stream);
  bool turnsSideways() const { return clockwiseRotation == 90 || clockwiseRotation == 270; }
};

}  // namespace engine
