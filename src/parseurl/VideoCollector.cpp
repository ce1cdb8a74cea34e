#include "VideoCollector.h"

#include "Address.h"
#include "MediaType.h"

namespace parseurl {
namespace {

void fillMissing(FoundVideo& kept, const FoundVideo& other) {
  if (kept.width == 0 && kept.height == 0) {
    kept.width = other.width;
    kept.height = other.height;
  }
  if (kept.length == 0) kept.length = other.length;
  if (kept.size == 0) kept.size = other.size;
  if (kept.title.empty()) kept.title = other.title;
  if (kept.imageUrl.empty()) kept.imageUrl = other.imageUrl;
  if (kept.extension.empty()) kept.extension = other.extension;
}

// What a find holds, by its address's extension, its declared type and where
// it was found.
ResourceKind kindOf(const FoundVideo& video) {
  // A manifest's extension outweighs a declared type, which players often get wrong for them.
  const ResourceKind byExtension = kindOfExtension(pathExtension(video.url));
  if (byExtension == ResourceKind::HlsManifest || byExtension == ResourceKind::DashManifest) return byExtension;
  const ResourceKind byType = kindOfType(video.type);
  if (byType != ResourceKind::Unknown) return byType;
  if (byExtension != ResourceKind::Unknown) return byExtension;
  // What plays as media is media even at an address without an extension.
  return video.isKnownMedia ? ResourceKind::Media : ResourceKind::Unknown;
}

}  // namespace

void VideoCollector::add(FoundVideo video) {
  video.url = resolveAddress(base_, video.url);
  if (video.url.empty()) return;
  const ResourceKind kind = kindOf(video);
  if (kind != ResourceKind::Media && kind != ResourceKind::HlsManifest && kind != ResourceKind::DashManifest) return;
  if (video.extension.empty()) {
    const std::string fromAddress = pathExtension(video.url);
    video.extension = kindOfExtension(fromAddress) == kind ? fromAddress : extensionOfType(video.type);
    if (kind == ResourceKind::HlsManifest) video.extension = "m3u8";
    if (kind == ResourceKind::DashManifest) video.extension = "mpd";
  }
  if (!video.imageUrl.empty()) video.imageUrl = resolveAddress(base_, video.imageUrl);

  const auto [same, isNew] = indexOfAddress_.try_emplace(video.url, videos_.size());
  if (!isNew) {
    fillMissing(videos_[same->second], video);
    return;
  }
  videos_.push_back(std::move(video));
}

void VideoCollector::addAll(std::vector<FoundVideo> videos) {
  for (FoundVideo& video : videos) add(std::move(video));
}

}  // namespace parseurl
