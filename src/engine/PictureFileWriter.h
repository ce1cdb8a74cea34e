// Saves one picture as a PNG, JPEG or BMP file.
#pragma once

#include <string>

extern "C" {
#include <libavutil/frame.h>
}

namespace engine {

// The picture is in any pixel format the scaler reads; `kind` is "png",
// "jpg" or "jpeg", or "bmp" (any case). False with `error` set, leaving
// nothing at `path`, for another kind or a file that cannot be written.
bool writePictureFile(const AVFrame& picture, const std::string& kind, const std::string& path, std::string& error);
// The same, the kind chosen by the path's ending.
bool writePictureFile(const AVFrame& picture, const std::string& path, std::string& error);

}  // namespace engine
