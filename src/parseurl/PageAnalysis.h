// The analysis of one page's text, without the network: every technique in
// turn, their finds checked, resolved and merged, titles and thumbnails
// filled in from the page.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "FoundVideo.h"

namespace parseurl {

struct PageAnalysis {
  // In the order of the techniques: media elements, JSON-LD, Open Graph and
  // Twitter tags, player set-ups, the address sweep. Manifests are still
  // unexpanded (extension "m3u8" or "mpd").
  std::vector<FoundVideo> videos;
  // Absolute address of a <meta http-equiv="refresh">; empty when none.
  std::string refreshTarget;
};

// `html` is the page's text in UTF-8, `pageAddress` its final address.
PageAnalysis analysePage(std::string_view html, const std::string& pageAddress);

// Gives each video without a title `title`.
void fillMissingTitles(std::vector<FoundVideo>& videos, const std::string& title);

}  // namespace parseurl
