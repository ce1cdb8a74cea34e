// The picture laid over the video for a watermark: the picture file, or the
// text drawn, at the size of its area on the canvas, with the watermark's
// opacity applied to the alpha channel.
#pragma once

#include <string>

#include "FFmpegPointers.h"
#include "FitGeometry.h"
#include "videoconverter.h"

namespace engine {

// Style bits of _TextInfo::m_fontstyle.
enum FontStyle { kFontBold = 1, kFontItalic = 2, kFontUnderline = 4, kFontStrikethrough = 8 };

class WatermarkImage {
 public:
  // An RGBA picture of area's size. `scale` is canvas pixels per source pixel,
  // for the font size. Null with `error` set when the picture file cannot be
  // read or no font is installed.
  static FramePtr make(const _WatermarkInfo& watermark, const geometry::Rect& area, double scale, std::string& error);
};

}  // namespace engine
