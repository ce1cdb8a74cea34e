#include "PageAnalysis.h"

#include "Address.h"
#include "AddressSweep.h"
#include "JsonLd.h"
#include "MediaElements.h"
#include "OpenGraph.h"
#include "PageFacts.h"
#include "PlayerSetup.h"
#include "VideoCollector.h"

namespace parseurl {
namespace {

// The page's own title: og:title, then <title>, then its address's last part.
std::string pageTitle(const PageFacts& page, const std::string& pageAddress) {
  std::string title = collapsedWhiteSpace(metaContent(page, "og:title"));
  if (title.empty()) title = page.title;
  return title.empty() ? lastPathPart(pageAddress) : title;
}

}  // namespace

void fillMissingTitles(std::vector<FoundVideo>& videos, const std::string& title) {
  for (FoundVideo& video : videos) {
    if (video.title.empty()) video.title = title;
  }
}

PageAnalysis analysePage(std::string_view html, const std::string& pageAddress) {
  const PageFacts page = readPageFacts(html);
  VideoCollector collector(pageAddress);
  if (const std::string base = resolveAddress(pageAddress, page.baseHref); !base.empty()) {
    collector.setBaseAddress(base);
  }
  collector.addAll(videosOfMediaElements(page));
  collector.addAll(videosOfJsonLd(page));
  collector.addAll(videosOfOpenGraph(page));
  collector.addAll(videosOfPlayerSetups(page));
  collector.addAll(videosOfAddressSweep(html));

  PageAnalysis analysis;
  analysis.videos = collector.takeVideos();
  fillMissingTitles(analysis.videos, pageTitle(page, pageAddress));
  const std::string picture = resolveAddress(collector.baseAddress(), pagePicture(page));
  for (FoundVideo& video : analysis.videos) {
    if (video.imageUrl.empty()) video.imageUrl = picture;
  }
  analysis.refreshTarget = resolveAddress(collector.baseAddress(), page.refreshTarget);
  return analysis;
}

}  // namespace parseurl
