// DASH manifests: the representations a player can choose from.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace parseurl {

struct DashRepresentation {
  std::string id;  // its "id", or its position counted from 1 when it has none
  int32_t width = 0;
  int32_t height = 0;
  int64_t bandwidth = 0;  // bits per second
};

struct DashManifest {
  double duration = 0;  // "mediaPresentationDuration" in seconds; 0 when not stated
  // The video representations; the sound ones only when there is no video.
  std::vector<DashRepresentation> representations;
};

// nullopt when the text has no <MPD> element.
std::optional<DashManifest> readDashManifest(std::string_view text);

}  // namespace parseurl
