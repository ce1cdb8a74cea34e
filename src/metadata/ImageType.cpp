#include "ImageType.h"

namespace metadata {

ImageKind detectImageKind(std::string_view data) {
  using namespace std::string_view_literals;
  if (data.starts_with("\xFF\xD8\xFF"sv)) return ImageKind::Jpeg;
  if (data.starts_with("\x89PNG\r\n\x1A\n"sv)) return ImageKind::Png;
  if (data.starts_with("GIF87a"sv) || data.starts_with("GIF89a"sv)) return ImageKind::Gif;
  if (data.size() >= 12 && data.starts_with("RIFF"sv) && data.substr(8, 4) == "WEBP"sv) return ImageKind::Webp;
  if (data.starts_with("II*\0"sv) || data.starts_with("MM\0*"sv)) return ImageKind::Tiff;
  if (data.size() >= 26 && data.starts_with("BM"sv)) return ImageKind::Bmp;
  return ImageKind::Unknown;
}

std::string imageMimeType(std::string_view data) {
  switch (detectImageKind(data)) {
    case ImageKind::Jpeg: return "image/jpeg";
    case ImageKind::Png: return "image/png";
    case ImageKind::Bmp: return "image/bmp";
    case ImageKind::Gif: return "image/gif";
    case ImageKind::Webp: return "image/webp";
    case ImageKind::Tiff: return "image/tiff";
    case ImageKind::Unknown: break;
  }
  return {};
}

}  // namespace metadata
