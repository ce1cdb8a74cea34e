// Frame sizes written as quality labels: "1280x720", "720p", "4k".
#pragma once

#include <cstdint>
#include <optional>
#include <string_view>

namespace parseurl {

struct FrameSize {
  int32_t width = 0;
  int32_t height = 0;
};

// The frame size a label names; a height alone ("720p") gets the 16:9 width.
std::optional<FrameSize> frameSizeFromLabel(std::string_view label);

// The 16:9 frame of a height, the width rounded to an even number (480 gives 854).
FrameSize frameSizeFromHeight(int32_t height);

// A whole number of pixels, as in "1280", "1280px" or 1280.5; 0 when none.
int32_t pixelCount(std::string_view text);

}  // namespace parseurl
