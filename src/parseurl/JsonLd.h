// Videos described as schema.org VideoObjects in JSON-LD scripts.
#pragma once

#include <vector>

#include "FoundVideo.h"
#include "PageFacts.h"

namespace parseurl {

// One find per VideoObject with a "contentUrl", found at the top of an
// "application/ld+json" script, in a list, or under "@graph", "video",
// "subjectOf", "mainEntity" or "hasPart". Scripts that are not valid JSON
// are passed over.
std::vector<FoundVideo> videosOfJsonLd(const PageFacts& page);

// Bytes of a "contentSize" such as "12.5 MB", "700 KiB" or "1048576".
int64_t contentSizeBytes(const std::string& text);

}  // namespace parseurl
