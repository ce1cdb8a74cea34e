// The last resort: every address in the page and its scripts that ends in
// .mp4, .webm, .flv, .m3u8 or .mpd (a query after it allowed), also when its
// slashes are escaped as in JSON ("\/" or "\u002F").
#pragma once

#include <string_view>
#include <vector>

#include "FoundVideo.h"

namespace parseurl {

// Absolute and protocol-relative addresses are taken wherever they stand;
// relative ones only when a quote opens them.
std::vector<FoundVideo> videosOfAddressSweep(std::string_view pageText);

}  // namespace parseurl
