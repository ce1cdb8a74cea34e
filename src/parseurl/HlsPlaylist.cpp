#include "HlsPlaylist.h"

#include <algorithm>
#include <charconv>
#include <cmath>

#include "BitRate.h"
#include "DimensionLabel.h"

namespace parseurl {
namespace {

std::string_view trimmed(std::string_view line) {
  while (!line.empty() && (line.back() == '\r' || line.back() == ' ' || line.back() == '\t')) line.remove_suffix(1);
  while (!line.empty() && (line.front() == ' ' || line.front() == '\t')) line.remove_prefix(1);
  return line;
}

// The value of one attribute of a tag's list, as in
// BANDWIDTH=1280000,RESOLUTION=1280x720,CODECS="avc1,mp4a"; quotes removed.
std::string_view attributeValue(std::string_view list, std::string_view name) {
  size_t position = 0;
  while (position < list.size()) {
    const size_t equals = list.find('=', position);
    if (equals == std::string_view::npos) return {};
    const std::string_view key = trimmed(list.substr(position, equals - position));
    size_t end = equals + 1;
    std::string_view value;
    if (end < list.size() && list[end] == '"') {
      const size_t close = list.find('"', end + 1);
      if (close == std::string_view::npos) return {};
      value = list.substr(end + 1, close - end - 1);
      end = close + 1;
    } else {
      end = std::min(list.find(',', end), list.size());
      value = list.substr(equals + 1, end - equals - 1);
    }
    if (key == name) return value;
    const size_t comma = list.find(',', end);
    if (comma == std::string_view::npos) return {};
    position = comma + 1;
  }
  return {};
}

}  // namespace

std::optional<HlsPlaylist> readHlsPlaylist(std::string_view text) {
  if (text.starts_with("\xEF\xBB\xBF")) text.remove_prefix(3);
  while (!text.empty() && (text.front() == ' ' || text.front() == '\r' || text.front() == '\n')) text.remove_prefix(1);
  if (!text.starts_with("#EXTM3U")) return std::nullopt;

  HlsPlaylist playlist;
  std::optional<HlsVariant> pendingVariant;
  size_t position = 0;
  while (position < text.size()) {
    size_t end = text.find('\n', position);
    if (end == std::string_view::npos) end = text.size();
    const std::string_view line = trimmed(text.substr(position, end - position));
    position = end + 1;
    if (line.empty()) continue;

    if (line.starts_with("#EXT-X-STREAM-INF:")) {
      const std::string_view attributes = line.substr(18);
      HlsVariant variant;
      variant.bandwidth = bitRate(attributeValue(attributes, "BANDWIDTH"));
      if (const std::optional<FrameSize> frame = frameSizeFromLabel(attributeValue(attributes, "RESOLUTION"))) {
        variant.width = frame->width;
        variant.height = frame->height;
      }
      pendingVariant = variant;
      playlist.isMaster = true;
    } else if (line.starts_with("#EXTINF:")) {
      const std::string_view value = line.substr(8);
      double seconds = 0;
      const auto [valueEnd, error] = std::from_chars(value.data(), value.data() + value.size(), seconds);
      if (error == std::errc() && std::isfinite(seconds) && seconds > 0) playlist.totalDuration += seconds;
    } else if (line.starts_with("#EXT-X-ENDLIST")) {
      playlist.ended = true;
    } else if (line.front() != '#' && pendingVariant) {
      pendingVariant->uri = std::string(line);
      playlist.variants.push_back(std::move(*pendingVariant));
      pendingVariant.reset();
    }
  }
  return playlist;
}

}  // namespace parseurl
