// Picture formats told apart by their first bytes.
#pragma once

#include <string>
#include <string_view>

namespace metadata {

enum class ImageKind { Unknown, Jpeg, Png, Bmp, Gif, Webp, Tiff };

ImageKind detectImageKind(std::string_view data);
// "image/jpeg", "image/png", ...; empty for an unknown kind.
std::string imageMimeType(std::string_view data);

}  // namespace metadata
