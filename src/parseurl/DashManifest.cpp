#include "DashManifest.h"

#include "BitRate.h"
#include "DimensionLabel.h"
#include "IsoDuration.h"
#include "XmlTags.h"

namespace parseurl {
namespace {

using TagAttributes = std::map<std::string, std::string>;

std::string valueOf(const TagAttributes& attributes, const char* name) {
  const auto found = attributes.find(name);
  return found == attributes.end() ? std::string() : found->second;
}

// An attribute of the representation, or else of its adaptation set.
std::string inherited(const TagAttributes& representation, const TagAttributes& set, const char* name) {
  std::string value = valueOf(representation, name);
  return value.empty() ? valueOf(set, name) : value;
}

bool isVideo(const TagAttributes& representation, const TagAttributes& set) {
  return inherited(representation, set, "mimetype").starts_with("video/") ||
         inherited(representation, set, "contenttype") == "video" || !inherited(representation, set, "width").empty();
}

}  // namespace

std::optional<DashManifest> readDashManifest(std::string_view text) {
  bool hasManifest = false;
  DashManifest manifest;
  TagAttributes adaptationSet;
  std::vector<DashRepresentation> video;
  std::vector<DashRepresentation> sound;
  forEachXmlTag(text, [&](const XmlTag& tag) {
    if (tag.name == "mpd" && !tag.isEnd && !hasManifest) {
      hasManifest = true;
      manifest.duration = durationSeconds(valueOf(tag.attributes, "mediapresentationduration")).value_or(0);
    } else if (tag.name == "adaptationset") {
      adaptationSet = tag.isEnd || tag.isSelfClosing ? TagAttributes() : tag.attributes;
    } else if (tag.name == "representation" && !tag.isEnd) {
      DashRepresentation representation;
      representation.id = valueOf(tag.attributes, "id");
      if (representation.id.empty()) representation.id = std::to_string(video.size() + sound.size() + 1);
      representation.width = pixelCount(inherited(tag.attributes, adaptationSet, "width"));
      representation.height = pixelCount(inherited(tag.attributes, adaptationSet, "height"));
      representation.bandwidth = bitRate(valueOf(tag.attributes, "bandwidth"));
      (isVideo(tag.attributes, adaptationSet) ? video : sound).push_back(std::move(representation));
    }
  });
  if (!hasManifest) return std::nullopt;
  manifest.representations = video.empty() ? std::move(sound) : std::move(video);
  return manifest;
}

}  // namespace parseurl
