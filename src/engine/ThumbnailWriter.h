// Turns a decoded video frame into the small picture shown for a file in the
// list: upright, with the display's shape, at most 160 pixels high, as BMP.
#pragma once

#include <string>

#include "DisplayGeometry.h"
#include "FFmpegPointers.h"

namespace engine {

class ThumbnailWriter {
 public:
  static constexpr int kMaxHeight = 160;

  // Returns false, leaving nothing at `path`, when the frame cannot be
  // converted or the file cannot be written.
  static bool write(const AVFrame& frame, const DisplayGeometry& geometry, const std::string& path);
};

}  // namespace engine
