// Cover pictures between files and tags: an embedded picture saved as a BMP
// file that any image loader opens, and a picture file made ready to embed.
#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "TagStore.h"

namespace metadata {

// Decodes an embedded picture and writes it to path as a 24-bit BMP file.
bool saveCoverAsBmp(std::string_view encoded, const std::string& path);

// The picture file at path as a cover: JPEG and PNG as they are, any other
// picture format converted to PNG. Nullopt when the file is missing or does
// not decode as a picture.
std::optional<CoverPicture> loadCoverPicture(const std::string& path);

}  // namespace metadata
