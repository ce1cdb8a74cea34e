// HLS playlists: a master playlist's variants, or a media playlist's length.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace parseurl {

struct HlsVariant {
  std::string uri;  // as written, relative to the playlist
  int32_t width = 0;
  int32_t height = 0;
  int64_t bandwidth = 0;  // bits per second
};

struct HlsPlaylist {
  bool isMaster = false;
  std::vector<HlsVariant> variants;  // of a master playlist, in order
  double totalDuration = 0;          // sum of #EXTINF of a media playlist
  bool ended = false;                // #EXT-X-ENDLIST: the sum is the whole length
};

// nullopt when the text is no playlist (it must start with #EXTM3U).
std::optional<HlsPlaylist> readHlsPlaylist(std::string_view text);

}  // namespace parseurl
