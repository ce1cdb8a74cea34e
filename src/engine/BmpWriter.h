// Saves a picture as an uncompressed 24-bit BMP file.
#pragma once

#include <string>

#include "BgrImage.h"

namespace engine {

class BmpWriter {
 public:
  // Returns false, leaving nothing at `path`, when the file cannot be written.
  static bool write(const BgrImage& image, const std::string& path);
};

}  // namespace engine
