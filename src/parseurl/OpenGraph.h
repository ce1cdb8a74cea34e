// Videos announced in Open Graph and Twitter card meta tags, and the page's
// own title and picture from the same tags.
#pragma once

#include <string>
#include <vector>

#include "FoundVideo.h"
#include "PageFacts.h"

namespace parseurl {

// One find per "og:video" structure (the first of "og:video:secure_url",
// "og:video:url" and "og:video", with its ":type", ":width" and ":height",
// the page's "og:image" and "og:title"), and one for "twitter:player:stream".
std::vector<FoundVideo> videosOfOpenGraph(const PageFacts& page);

// The page's picture: "og:image:secure_url", "og:image", then "twitter:image".
std::string pagePicture(const PageFacts& page);

// The first non-empty content of a meta tag; empty when there is none.
std::string metaContent(const PageFacts& page, std::string_view key);

}  // namespace parseurl
