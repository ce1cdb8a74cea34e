// Streaming manifests turned into the files they offer: an HLS master
// playlist into one video per variant, a DASH manifest into one per
// representation, a media playlist into one video. Each carries the
// extension "mp4" and the address of its manifest (for DASH with
// "#representation=<id>"), for the download to remux.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "Deadline.h"
#include "FoundVideo.h"

namespace parseurl {

// Fetches each manifest among `videos` (extension "m3u8" or "mpd") and puts
// its variants in its place; a manifest that cannot be fetched or read is
// dropped. The other videos stay as they are. Duplicates are merged.
std::vector<FoundVideo> expandManifests(std::vector<FoundVideo> videos, const std::string& pageAddress,
                                        const Deadline& deadline, int64_t maxBytes);

// The variants of one manifest whose text has already been fetched from
// `manifestAddress`; empty when the text is no manifest of that kind.
std::vector<FoundVideo> variantsOfManifest(const FoundVideo& manifest, const std::string& manifestAddress,
                                           const std::string& text, const Deadline& deadline, int64_t maxBytes);

}  // namespace parseurl
