#include "ExtractorFormats.h"

#include <algorithm>

#include "JsonValues.h"

namespace parseurl {
namespace {

bool isSoundOnly(const Json& format) { return jsonText(format, "vcodec") == "none"; }

bool isStreamedFromManifest(const Json& format) {
  const std::string protocol = jsonText(format, "protocol");
  return protocol.starts_with("m3u8") || protocol.find("dash") != std::string::npos;
}

FoundVideo videoOf(const Json& format, const Json& page) {
  FoundVideo video;
  video.isKnownMedia = true;
  video.url = jsonText(format, "url");
  video.extension = isStreamedFromManifest(format) ? "mp4" : jsonText(format, "ext");
  video.width = jsonPixels(format, "width");
  video.height = jsonPixels(format, "height");
  std::optional<double> size = jsonNumber(format, "filesize");
  if (!size || *size <= 0) size = jsonNumber(format, "filesize_approx");
  video.size = size && *size > 0 ? static_cast<int64_t>(*size) : 0;
  const std::optional<double> duration = jsonNumber(page, "duration");
  video.length = duration && *duration > 0 ? static_cast<int64_t>(*duration) : 0;
  video.title = jsonText(page, "title");
  video.imageUrl = jsonText(page, "thumbnail");
  return video;
}

}  // namespace

std::vector<FoundVideo> videosOfExtractorJson(std::string_view json) {
  const Json page = Json::parse(json, nullptr, false);
  if (!page.is_object()) return {};
  std::vector<FoundVideo> videos;
  const Json& formats = jsonMember(page, "formats");
  if (!formats.is_array()) {
    if (!jsonText(page, "url").empty()) videos.push_back(videoOf(page, page));
    return videos;
  }
  const bool anyPicture = std::any_of(formats.begin(), formats.end(), [](const Json& f) { return !isSoundOnly(f); });
  for (const Json& format : formats) {
    if (!format.is_object() || jsonText(format, "url").empty() || jsonText(format, "ext") == "mhtml") continue;
    if (anyPicture && isSoundOnly(format)) continue;
    videos.push_back(videoOf(format, page));
  }
  return videos;
}

}  // namespace parseurl
