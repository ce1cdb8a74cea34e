// The one place where the picture filters of an input are decided: frame
// rate and length, upright turn of the stream, crop, turn and mirrors, fit
// into the canvas, levels, effects, 3D, watermark and fades. Conversion and
// preview both build their graphs from this description, so that the
// preview shows what the conversion writes.
#pragma once

#include <cstdint>
#include <optional>
#include <string>

#include "DisplayGeometry.h"
#include "PictureLayout.h"
#include "videoconverter.h"

extern "C" {
#include <libavutil/pixfmt.h>
#include <libavutil/rational.h>
}

namespace engine {

struct VideoCanvas {
  int width = 0;  // 0 x 0: the picture's own size after crop and turn
  int height = 0;
  AVRational frameRate{0, 1};  // 0: frames keep their own times
  AVPixelFormat pixelFormat = AV_PIX_FMT_YUV420P;
  int64_t frameCount = 0;  // exactly this many frames come out; 0: as many as come in
  int64_t partLengthUs = 0;  // with frameCount 0: the input part's length, for the fade out
};

struct VideoFilterPlan {
  // Pads: [in] the decoded picture with times in microseconds, [wm] the
  // watermark picture when watermarkArea is set, [out] the result.
  std::string description;
  PictureLayout layout;
  std::optional<geometry::Rect> watermarkArea;
};

class VideoFilterChain {
 public:
  static VideoFilterPlan forInput(const MediaItem& item, const DisplayGeometry& source, const VideoCanvas& canvas);
  // Black frames standing in for an input without pictures; pads: [out] only.
  static std::string blank(const VideoCanvas& canvas);
};

}  // namespace engine
