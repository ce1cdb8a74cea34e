// Decodes the picture shown at a given time of a video stream.
#pragma once

#include <cstdint>

#include "FFmpegPointers.h"
#include "InputFile.h"

namespace engine {

class FrameGrabber {
 public:
  // The first frame at or after timeUs (microseconds from the start of the
  // file), or the last frame when the stream ends earlier; null when nothing
  // could be decoded before the file's deadline.
  static FramePtr frameAt(InputFile& file, int streamIndex, int64_t timeUs);
};

}  // namespace engine
