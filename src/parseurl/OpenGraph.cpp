#include "OpenGraph.h"

#include <map>

#include "DimensionLabel.h"

namespace parseurl {
namespace {

// The "og:video..." tags of one video: a new structure starts at "og:video"
// or whenever a property comes round again.
std::vector<std::map<std::string, std::string>> videoStructures(const PageFacts& page) {
  std::vector<std::map<std::string, std::string>> structures;
  for (const MetaFacts& meta : page.metas) {
    if (meta.key != "og:video" && !meta.key.starts_with("og:video:")) continue;
    if (meta.content.empty()) continue;
    if (structures.empty() || meta.key == "og:video" || structures.back().contains(meta.key)) structures.emplace_back();
    structures.back().emplace(meta.key, meta.content);
  }
  return structures;
}

std::string valueOf(const std::map<std::string, std::string>& tags, const char* key) {
  const auto found = tags.find(key);
  return found == tags.end() ? std::string() : found->second;
}

}  // namespace

std::string metaContent(const PageFacts& page, std::string_view key) {
  for (const MetaFacts& meta : page.metas) {
    if (meta.key == key && !meta.content.empty()) return meta.content;
  }
  return {};
}

std::string pagePicture(const PageFacts& page) {
  for (const char* key : {"og:image:secure_url", "og:image", "twitter:image"}) {
    std::string picture = metaContent(page, key);
    if (!picture.empty()) return picture;
  }
  return {};
}

std::vector<FoundVideo> videosOfOpenGraph(const PageFacts& page) {
  const std::string image = pagePicture(page);
  const std::string title = metaContent(page, "og:title");

  std::vector<FoundVideo> videos;
  for (const auto& tags : videoStructures(page)) {
    FoundVideo video;
    for (const char* key : {"og:video:secure_url", "og:video:url", "og:video"}) {
      video.url = valueOf(tags, key);
      if (!video.url.empty()) break;
    }
    if (video.url.empty()) continue;
    video.type = valueOf(tags, "og:video:type");
    video.width = pixelCount(valueOf(tags, "og:video:width"));
    video.height = pixelCount(valueOf(tags, "og:video:height"));
    video.imageUrl = image;
    video.title = title;
    videos.push_back(std::move(video));
  }

  if (const std::string stream = metaContent(page, "twitter:player:stream"); !stream.empty()) {
    FoundVideo video;
    video.url = stream;
    video.type = metaContent(page, "twitter:player:stream:content_type");
    video.width = pixelCount(metaContent(page, "twitter:player:width"));
    video.height = pixelCount(metaContent(page, "twitter:player:height"));
    video.imageUrl = image;
    video.title = title.empty() ? metaContent(page, "twitter:title") : title;
    videos.push_back(std::move(video));
  }
  return videos;
}

}  // namespace parseurl
