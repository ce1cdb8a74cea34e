// Videos handed to players by scripts: a "setup({...})" or "load([...])"
// with sources[].file, label, width, height, type, image and duration, and
// a "src([...])" list of sources.
#pragma once

#include <vector>

#include "FoundVideo.h"
#include "PageFacts.h"

namespace parseurl {

std::vector<FoundVideo> videosOfPlayerSetups(const PageFacts& page);

// The same for one script's text.
std::vector<FoundVideo> videosOfPlayerScript(std::string_view script);

}  // namespace parseurl
