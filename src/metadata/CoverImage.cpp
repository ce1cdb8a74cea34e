#include "CoverImage.h"

#include "FileBytes.h"
#include "ImageCodec.h"
#include "ImageType.h"

namespace metadata {
namespace {

// Covers are small; anything larger than this is not meant as one.
constexpr size_t kMaxPictureBytes = 64 * 1024 * 1024;

CoverPicture makeCover(std::string_view data, std::string mimeType, const AVFrame& picture) {
  return {TagLib::ByteVector(data.data(), static_cast<unsigned int>(data.size())), std::move(mimeType), picture.width,
          picture.height};
}

}  // namespace

bool saveCoverAsBmp(std::string_view encoded, const std::string& path) {
  FramePtr picture = decodeImage(encoded);
  if (!picture) return false;
  FramePtr bgr = convertImage(*picture, AV_PIX_FMT_BGR24);
  if (!bgr) return false;
  std::optional<std::string> bmp = encodeImage(*bgr, AV_CODEC_ID_BMP);
  return bmp && writeFileBytes(path, *bmp);
}

std::optional<CoverPicture> loadCoverPicture(const std::string& path) {
  std::optional<std::string> bytes = readFileBytes(path, kMaxPictureBytes);
  if (!bytes) return std::nullopt;
  // Decoding also proves that a file that looks like JPEG or PNG really is one.
  FramePtr picture = decodeImage(*bytes);
  if (!picture) return std::nullopt;
  ImageKind kind = detectImageKind(*bytes);
  if (kind == ImageKind::Jpeg || kind == ImageKind::Png) {
    return makeCover(*bytes, imageMimeType(*bytes), *picture);
  }
  auto format = static_cast<AVPixelFormat>(picture->format);
  FramePtr rgb = convertImage(*picture, hasTransparency(format) ? AV_PIX_FMT_RGBA : AV_PIX_FMT_RGB24);
  if (!rgb) return std::nullopt;
  std::optional<std::string> png = encodeImage(*rgb, AV_CODEC_ID_PNG);
  if (!png) return std::nullopt;
  return makeCover(*png, "image/png", *picture);
}

}  // namespace metadata
