#include "MediaElements.h"

#include "DimensionLabel.h"

namespace parseurl {
namespace {

std::string valueOf(const Attributes& attributes, const char* name) {
  const auto found = attributes.find(name);
  return found == attributes.end() ? std::string() : found->second;
}

std::string sourceAddress(const Attributes& attributes) {
  for (const char* name : {"src", "data-src", "data-video-src", "data-source"}) {
    std::string address = valueOf(attributes, name);
    if (!address.empty()) return address;
  }
  return {};
}

// The frame an element or a source states, by attributes in order of trust.
FrameSize statedFrame(const Attributes& attributes) {
  const FrameSize sized{pixelCount(valueOf(attributes, "width")), pixelCount(valueOf(attributes, "height"))};
  if (sized.width > 0 && sized.height > 0) return sized;
  if (const int32_t height = pixelCount(valueOf(attributes, "res")); height > 0) return frameSizeFromHeight(height);
  for (const char* name : {"label", "title", "data-quality", "size"}) {
    if (const std::optional<FrameSize> labelled = frameSizeFromLabel(valueOf(attributes, name))) return *labelled;
  }
  return {};
}

FoundVideo findOf(const Attributes& attributes, const FoundVideo& element) {
  FoundVideo video = element;
  video.url = sourceAddress(attributes);
  video.type = valueOf(attributes, "type");
  const FrameSize frame = statedFrame(attributes);
  if (frame.width > 0 || frame.height > 0) {
    video.width = frame.width;
    video.height = frame.height;
  }
  return video;
}

}  // namespace

std::vector<FoundVideo> videosOfMediaElements(const PageFacts& page) {
  std::vector<FoundVideo> videos;
  for (const MediaElementFacts& media : page.mediaElements) {
    FoundVideo element;
    element.isKnownMedia = true;
    element.imageUrl = valueOf(media.attributes, "poster");
    // A title that is a quality label says nothing about the video's name.
    const std::string title = valueOf(media.attributes, "title");
    if (!frameSizeFromLabel(title)) element.title = title;
    const FrameSize frame = statedFrame(media.attributes);
    element.width = frame.width;
    element.height = frame.height;

    if (!sourceAddress(media.attributes).empty()) videos.push_back(findOf(media.attributes, element));
    for (const Attributes& source : media.sources) {
      if (!sourceAddress(source).empty()) videos.push_back(findOf(source, element));
    }
  }
  return videos;
}

}  // namespace parseurl
