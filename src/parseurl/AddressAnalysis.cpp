#include "AddressAnalysis.h"

#include "Address.h"
#include "ExternalProgram.h"
#include "ExtractorFormats.h"
#include "ManifestExpansion.h"
#include "PageAnalysis.h"
#include "PageFetch.h"
#include "SiteTable.h"
#include "TextEncoding.h"
#include "VideoCollector.h"
#include "parseurl.h"

namespace parseurl {
namespace {

constexpr const char* kExtractorProgram = "yt-dlp";
constexpr size_t kMostExtractorOutput = 64 * 1024 * 1024;
// Refreshes followed from a page that holds no video.
constexpr int kMostRefreshes = 3;

std::vector<FoundVideo> askExtractor(const std::string& address, const AnalysisLimits& limits) {
  const Deadline deadline(limits.timeLimit);
  const std::optional<std::string> json =
      runProgram(kExtractorProgram, {"-J", "--no-playlist", address}, limits.workPath, deadline, kMostExtractorOutput);
  if (!json) return {};
  VideoCollector collector(address);
  collector.addAll(videosOfExtractorJson(*json));
  std::vector<FoundVideo> videos = collector.takeVideos();
  fillMissingTitles(videos, lastPathPart(address));
  return videos;
}

// The address is itself a media file: one video, sized by the response.
AnalysisOutcome mediaItself(const FetchedResource& fetched) {
  FoundVideo video;
  video.url = fetched.finalAddress;
  video.isKnownMedia = true;
  const std::string fromAddress = pathExtension(fetched.finalAddress);
  video.extension = kindOfExtension(fromAddress) == ResourceKind::Media ? fromAddress : fetched.kind.extension;
  video.size = fetched.contentLength > 0 ? fetched.contentLength : 0;
  video.title = lastPathPart(fetched.finalAddress);
  return {PARSE_OK, {std::move(video)}};
}

AnalysisOutcome found(std::vector<FoundVideo> videos) {
  const int result = videos.empty() ? PARSE_ERROR_NO_VIDEO : PARSE_OK;
  return {result, std::move(videos)};
}

// The address is itself a manifest: its variants.
AnalysisOutcome manifestItself(const FetchedResource& fetched, const Deadline& deadline, int64_t maxBytes) {
  FoundVideo manifest;
  manifest.url = fetched.finalAddress;
  manifest.extension = fetched.kind.kind == ResourceKind::HlsManifest ? "m3u8" : "mpd";
  manifest.title = lastPathPart(fetched.finalAddress);
  return found(variantsOfManifest(manifest, fetched.finalAddress, fetched.body, deadline, maxBytes));
}

AnalysisOutcome analyseOwn(const std::string& pageAddress, const AnalysisLimits& limits) {
  const Deadline deadline(limits.timeLimit);
  std::string address = pageAddress;
  for (int refresh = 0; refresh <= kMostRefreshes; ++refresh) {
    const FetchedResource fetched = fetchResource(address, deadline, limits.maxPageBytes);
    if (fetched.result != PARSE_OK) return {fetched.result, {}};
    if (fetched.kind.kind == ResourceKind::Media) return mediaItself(fetched);
    if (fetched.kind.kind == ResourceKind::HlsManifest || fetched.kind.kind == ResourceKind::DashManifest) {
      return manifestItself(fetched, deadline, limits.maxPageBytes);
    }
    if (looksBinary(fetched.body)) return {PARSE_ERROR_NOT_A_PAGE, {}};

    const std::string html = toUtf8(fetched.body, pageCharset(fetched.body, fetched.contentType));
    PageAnalysis page = analysePage(html, fetched.finalAddress);
    std::vector<FoundVideo> videos =
        expandManifests(std::move(page.videos), fetched.finalAddress, deadline, limits.maxPageBytes);
    if (!videos.empty()) return found(std::move(videos));
    // A page that only sends the browser on (a meta refresh) is followed.
    if (page.refreshTarget.empty() || page.refreshTarget == fetched.finalAddress) break;
    address = page.refreshTarget;
  }
  return {PARSE_ERROR_NO_VIDEO, {}};
}

}  // namespace

AnalysisOutcome analyseAddress(const std::string& text, const AnalysisLimits& limits) {
  const std::string address = webAddress(text);
  if (address.empty()) return {PARSE_ERROR_ADDRESS, {}};
  const bool extractorPresent = isProgramOnPath(kExtractorProgram);
  const bool knownSite = webSiteId(address) != PARSE_SITE_UNKNOWN;
  if (extractorPresent && knownSite) {
    if (std::vector<FoundVideo> videos = askExtractor(address, limits); !videos.empty())
      return found(std::move(videos));
  }
  AnalysisOutcome own = analyseOwn(address, limits);
  if (own.videos.empty() && extractorPresent && !knownSite) {
    if (std::vector<FoundVideo> videos = askExtractor(address, limits); !videos.empty())
      return found(std::move(videos));
  }
  return own;
}

}  // namespace parseurl
