// The formats the external extractor lists for a page (its "-J" JSON).
#pragma once

#include <string_view>
#include <vector>

#include "FoundVideo.h"

namespace parseurl {

// One find per format with a "url" ("ext", "width", "height", "filesize" or
// "filesize_approx", "protocol"), with the page's "title", "thumbnail" and
// "duration". Formats streamed from a manifest get the extension "mp4";
// sound-only formats are left out when there are formats with a picture.
// Nothing for text that is not such JSON.
std::vector<FoundVideo> videosOfExtractorJson(std::string_view json);

}  // namespace parseurl
