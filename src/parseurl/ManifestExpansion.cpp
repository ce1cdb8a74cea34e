#include "ManifestExpansion.h"

#include "Address.h"
#include "DashManifest.h"
#include "HlsPlaylist.h"
#include "PageFetch.h"
#include "VideoCollector.h"
#include "parseurl.h"

namespace parseurl {
namespace {

// Manifests fetched for one analysis, so that a page full of them cannot
// hold it up.
constexpr int kMostManifests = 8;

FoundVideo variantOf(const FoundVideo& manifest, std::string url, int32_t width, int32_t height, double duration,
                     int64_t bandwidth) {
  FoundVideo variant;
  variant.url = std::move(url);
  variant.extension = "mp4";
  variant.isKnownMedia = true;
  variant.width = width;
  variant.height = height;
  variant.length = static_cast<int64_t>(duration);
  variant.size = static_cast<int64_t>(static_cast<double>(bandwidth) * duration / 8);
  variant.title = manifest.title;
  variant.imageUrl = manifest.imageUrl;
  return variant;
}

// The length of a master playlist's programme, from its first variant's
// media playlist when that one has ended; 0 otherwise.
double variantDuration(const std::string& variantAddress, const Deadline& deadline, int64_t maxBytes) {
  const FetchedResource fetched = fetchResource(variantAddress, deadline, maxBytes);
  if (fetched.result != PARSE_OK) return 0;
  const std::optional<HlsPlaylist> playlist = readHlsPlaylist(fetched.body);
  return playlist && !playlist->isMaster && playlist->ended ? playlist->totalDuration : 0;
}

std::vector<FoundVideo> hlsVariants(const FoundVideo& manifest, const std::string& address, const std::string& text,
                                    const Deadline& deadline, int64_t maxBytes) {
  const std::optional<HlsPlaylist> playlist = readHlsPlaylist(text);
  if (!playlist) return {};
  if (!playlist->isMaster) {
    return {variantOf(manifest, manifest.url, manifest.width, manifest.height,
                      playlist->ended ? playlist->totalDuration : 0, 0)};
  }
  std::vector<FoundVideo> variants;
  double duration = 0;
  for (const HlsVariant& variant : playlist->variants) {
    std::string url = resolveAddress(address, variant.uri);
    if (url.empty()) continue;
    if (variants.empty()) duration = variantDuration(url, deadline, maxBytes);
    variants.push_back(variantOf(manifest, std::move(url), variant.width, variant.height, duration, variant.bandwidth));
  }
  return variants;
}

std::vector<FoundVideo> dashRepresentations(const FoundVideo& manifest, const std::string& text) {
  const std::optional<DashManifest> dash = readDashManifest(text);
  if (!dash) return {};
  const std::string base = manifest.url.substr(0, manifest.url.find('#'));
  std::vector<FoundVideo> variants;
  for (const DashRepresentation& representation : dash->representations) {
    variants.push_back(variantOf(manifest, base + "#representation=" + representation.id, representation.width,
                                 representation.height, dash->duration, representation.bandwidth));
  }
  return variants;
}

}  // namespace

std::vector<FoundVideo> variantsOfManifest(const FoundVideo& manifest, const std::string& manifestAddress,
                                           const std::string& text, const Deadline& deadline, int64_t maxBytes) {
  if (manifest.extension == "m3u8") return hlsVariants(manifest, manifestAddress, text, deadline, maxBytes);
  if (manifest.extension == "mpd") return dashRepresentations(manifest, text);
  return {};
}

std::vector<FoundVideo> expandManifests(std::vector<FoundVideo> videos, const std::string& pageAddress,
                                        const Deadline& deadline, int64_t maxBytes) {
  VideoCollector expanded(pageAddress);
  int manifestsLeft = kMostManifests;
  for (FoundVideo& video : videos) {
    if (video.extension != "m3u8" && video.extension != "mpd") {
      expanded.add(std::move(video));
      continue;
    }
    if (manifestsLeft-- <= 0) continue;
    const FetchedResource fetched = fetchResource(video.url, deadline, maxBytes);
    if (fetched.result != PARSE_OK) continue;
    expanded.addAll(variantsOfManifest(video, fetched.finalAddress, fetched.body, deadline, maxBytes));
  }
  return expanded.takeVideos();
}

}  // namespace parseurl
