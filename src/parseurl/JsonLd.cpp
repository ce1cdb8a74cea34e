#include "JsonLd.h"

#include <algorithm>
#include <array>
#include <cctype>
#include <charconv>
#include <cmath>
#include <utility>

#include "IsoDuration.h"
#include "JsonValues.h"

namespace parseurl {
namespace {

// How deep the search for VideoObjects goes into nested objects.
constexpr int kDeepestNesting = 8;

constexpr std::array<std::pair<std::string_view, double>, 8> kSizeUnits{{
    {"kib", 1024.0},
    {"mib", 1024.0 * 1024},
    {"gib", 1024.0 * 1024 * 1024},
    {"kb", 1e3},
    {"mb", 1e6},
    {"gb", 1e9},
    {"k", 1e3},
    {"m", 1e6},
}};

bool isVideoObject(const Json& object) {
  const Json& type = jsonMember(object, "@type");
  if (type.is_string()) return type.get_ref<const std::string&>() == "VideoObject";
  if (type.is_array()) {
    return std::any_of(type.begin(), type.end(), [](const Json& t) { return t.is_string() && t == "VideoObject"; });
  }
  return false;
}

// A thumbnail given as text, a list (its first usable entry) or an ImageObject.
std::string thumbnailOf(const Json& value, int depth = 0) {
  if (depth > 2) return {};
  if (value.is_string()) return jsonText(value);
  if (value.is_array()) {
    for (const Json& entry : value) {
      if (std::string found = thumbnailOf(entry, depth + 1); !found.empty()) return found;
    }
  }
  if (value.is_object()) {
    std::string found = jsonText(value, "url");
    return found.empty() ? jsonText(value, "contentUrl") : found;
  }
  return {};
}

FoundVideo videoOf(const Json& object) {
  FoundVideo video;
  video.url = jsonText(object, "contentUrl");
  video.type = jsonText(object, "encodingFormat");
  video.width = jsonPixels(object, "width");
  video.height = jsonPixels(object, "height");
  if (const std::optional<double> seconds = durationSeconds(jsonText(object, "duration"))) {
    video.length = static_cast<int64_t>(*seconds);
  }
  video.imageUrl = thumbnailOf(jsonMember(object, "thumbnailUrl"));
  if (video.imageUrl.empty()) video.imageUrl = thumbnailOf(jsonMember(object, "thumbnail"));
  video.title = jsonText(object, "name");
  video.size = contentSizeBytes(jsonText(object, "contentSize"));
  return video;
}

void collect(const Json& value, int depth, std::vector<FoundVideo>& videos) {
  if (depth > kDeepestNesting) return;
  if (value.is_array()) {
    for (const Json& entry : value) collect(entry, depth + 1, videos);
    return;
  }
  if (!value.is_object()) return;
  if (isVideoObject(value) && !jsonText(value, "contentUrl").empty()) videos.push_back(videoOf(value));
  for (const char* key : {"@graph", "video", "subjectOf", "mainEntity", "hasPart"}) {
    collect(jsonMember(value, key), depth + 1, videos);
  }
}

}  // namespace

int64_t contentSizeBytes(const std::string& text) {
  const char* start = text.data();
  const char* end = text.data() + text.size();
  while (start < end && std::isspace(static_cast<unsigned char>(*start))) ++start;
  double number = 0;
  const auto [afterNumber, error] = std::from_chars(start, end, number);
  if (error != std::errc() || !std::isfinite(number) || number < 0 || number > 1e15) return 0;
  std::string unit(afterNumber, end);
  std::erase_if(unit, [](unsigned char c) { return std::isspace(c) != 0; });
  std::transform(unit.begin(), unit.end(), unit.begin(), [](unsigned char c) { return std::tolower(c); });
  if (unit.empty() || unit == "b" || unit == "bytes") return static_cast<int64_t>(number);
  const auto* factor =
      std::find_if(kSizeUnits.begin(), kSizeUnits.end(), [&unit](const auto& entry) { return entry.first == unit; });
  return factor == kSizeUnits.end() ? 0 : static_cast<int64_t>(number * factor->second);
}

std::vector<FoundVideo> videosOfJsonLd(const PageFacts& page) {
  std::vector<FoundVideo> videos;
  for (const ScriptFacts& script : page.scripts) {
    if (script.type != "application/ld+json") continue;
    const Json document = Json::parse(script.text, nullptr, false);
    if (!document.is_discarded()) collect(document, 0, videos);
  }
  return videos;
}

}  // namespace parseurl
