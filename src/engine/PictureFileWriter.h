// Saves one picture as a PNG, JPEG or BMP file, chosen by the name's ending.
#pragma once

#include <string>

extern "C" {
#include <libavutil/frame.h>
}

namespace engine {

// The picture is in any pixel format the scaler reads. False with `error`
// set, leaving nothing at `path`, when the ending is none of the three or the
// file cannot be written.
bool writePictureFile(const AVFrame& picture, const std::string& path, std::string& error);

}  // namespace engine
