// Videos of the page's <video> and <audio> elements and their <source>s.
#pragma once

#include <vector>

#include "FoundVideo.h"
#include "PageFacts.h"

namespace parseurl {

// One find per address of an element or of its sources: "src", "data-src",
// "data-video-src" or "data-source", with "type", the element's "poster" and
// "title", and the frame from "width"/"height", "res" or a "label"/"title"
// such as 1280x720, 720p or 4k.
std::vector<FoundVideo> videosOfMediaElements(const PageFacts& page);

}  // namespace parseurl
