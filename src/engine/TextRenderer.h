// Draws text with FreeType into a transparent RGBA picture, for the text
// watermark: left-aligned lines from the top, in one colour, with optional
// underline and strikethrough; bold and italic are imitated when the font
// found has no such face.
#pragma once

#include <cstdint>
#include <string>

#include "FFmpegPointers.h"
#include "FontLookup.h"

namespace engine {

struct TextStyle {
  int pixelSize = 0;
  uint32_t rgb = 0xFFFFFF;  // 0xRRGGBB
  bool underline = false;
  bool strikethrough = false;
};

// Null with `error` set when the font cannot be loaded.
FramePtr renderText(const std::string& utf8Text, const FontChoice& font, const TextStyle& style, int width, int height,
                    std::string& error);

}  // namespace engine
