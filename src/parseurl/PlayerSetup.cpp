#include "PlayerSetup.h"

#include <array>
#include <cctype>

#include "DimensionLabel.h"
#include "ScriptLiteral.h"

namespace parseurl {
namespace {

constexpr int kDeepestPlaylist = 4;
// Calls looked at in one script, so that a hostile page cannot make the
// search quadratic.
constexpr int kMostCalls = 256;

// Fields an item passes on to its sources, and a source may override.
void takeDetails(const Json& object, FoundVideo& video) {
  if (std::string image = jsonText(object, "image"); !image.empty()) video.imageUrl = std::move(image);
  if (std::string title = jsonText(object, "title"); !title.empty()) video.title = std::move(title);
  if (const std::optional<double> seconds = jsonNumber(object, "duration"); seconds && *seconds > 0) {
    video.length = static_cast<int64_t>(*seconds);
  }
  if (const int32_t width = jsonPixels(object, "width"); width > 0) video.width = width;
  if (const int32_t height = jsonPixels(object, "height"); height > 0) video.height = height;
}

void readSource(const Json& source, const FoundVideo& defaults, std::vector<FoundVideo>& videos) {
  FoundVideo video = defaults;
  if (source.is_string()) {
    video.url = jsonText(source);
  } else if (source.is_object()) {
    video.url = jsonText(source, "file");
    if (video.url.empty()) video.url = jsonText(source, "src");
    video.type = jsonText(source, "type");
    takeDetails(source, video);
    // Without a stated frame, a quality label or a number of lines gives it.
    const bool frameStated = jsonPixels(source, "width") > 0 && jsonPixels(source, "height") > 0;
    for (const char* key : {"label", "res", "quality"}) {
      if (frameStated) break;
      const Json& label = jsonMember(source, key);
      const int32_t lines = label.is_number() ? jsonPixels(source, key) : 0;
      const std::optional<FrameSize> frame =
          lines > 0 ? std::optional<FrameSize>(frameSizeFromHeight(lines)) : frameSizeFromLabel(jsonText(label));
      if (frame) {
        video.width = frame->width;
        video.height = frame->height;
        break;
      }
    }
  }
  if (!video.url.empty()) videos.push_back(std::move(video));
}

// A set-up object or a playlist item: its sources, its own file, its playlist.
void readItem(const Json& item, const FoundVideo& inherited, int depth, std::vector<FoundVideo>& videos) {
  if (!item.is_object() || depth > kDeepestPlaylist) return;
  FoundVideo defaults = inherited;
  takeDetails(item, defaults);
  if (!jsonText(item, "file").empty() || !jsonText(item, "src").empty()) readSource(item, defaults, videos);
  const Json& sources = jsonMember(item, "sources");
  if (sources.is_array()) {
    for (const Json& source : sources) readSource(source, defaults, videos);
  }
  const Json& playlist = jsonMember(item, "playlist");
  if (playlist.is_array()) {
    for (const Json& entry : playlist) readItem(entry, defaults, depth + 1, videos);
  }
}

struct Call {
  std::string_view name;
  bool itemsAreSources;  // src([...]) lists sources; load([...]) lists playlist items
};
constexpr std::array<Call, 3> kCalls{{{"setup", false}, {"load", false}, {"src", true}}};

bool isNameCharacter(char c) { return std::isalnum(static_cast<unsigned char>(c)) != 0 || c == '_' || c == '$'; }

}  // namespace

std::vector<FoundVideo> videosOfPlayerScript(std::string_view script) {
  std::vector<FoundVideo> videos;
  int callsLeft = kMostCalls;
  for (const Call& call : kCalls) {
    for (size_t at = script.find(call.name); at != std::string_view::npos && callsLeft > 0;
         at = script.find(call.name, at + 1)) {
      // The whole name, not the end of a longer one ("preload").
      if (at > 0 && isNameCharacter(script[at - 1])) continue;
      size_t position = at + call.name.size();
      while (position < script.size() && std::isspace(static_cast<unsigned char>(script[position]))) ++position;
      if (position >= script.size() || script[position] != '(') continue;
      ++position;
      while (position < script.size() && std::isspace(static_cast<unsigned char>(script[position]))) ++position;
      --callsLeft;
      const std::optional<Json> literal = readScriptLiteral(script, position);
      if (!literal) continue;
      const FoundVideo none;
      if (literal->is_object()) {
        readItem(*literal, none, 0, videos);
      } else if (literal->is_array()) {
        for (const Json& entry : *literal) {
          if (call.itemsAreSources) {
            readSource(entry, none, videos);
          } else {
            readItem(entry, none, 0, videos);
          }
        }
      }
    }
  }
  return videos;
}

std::vector<FoundVideo> videosOfPlayerSetups(const PageFacts& page) {
  std::vector<FoundVideo> videos;
  for (const ScriptFacts& script : page.scripts) {
    if (script.type == "application/ld+json") continue;
    for (FoundVideo& video : videosOfPlayerScript(script.text)) videos.push_back(std::move(video));
  }
  return videos;
}

}  // namespace parseurl
