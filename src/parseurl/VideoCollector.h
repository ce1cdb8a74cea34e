// The videos of one analysis in the order they were found: each address
// resolved against the page, checked to be media or a manifest, and kept
// once. A later find of the same address fills in what the first lacked.
#pragma once

#include <string>
#include <unordered_map>
#include <vector>

#include "FoundVideo.h"
#include "MediaType.h"

namespace parseurl {

class VideoCollector {
 public:
  explicit VideoCollector(std::string baseAddress) : base_(std::move(baseAddress)) {}

  // The address relative ones are resolved against (the page's final
  // address, or its <base href>).
  const std::string& baseAddress() const { return base_; }
  void setBaseAddress(std::string base) { base_ = std::move(base); }

  // Adds a find; false when it was refused (no address, not media) or
  // merged into an earlier one.
  bool add(FoundVideo video);
  void addAll(std::vector<FoundVideo> videos);

  const std::vector<FoundVideo>& videos() const { return videos_; }
  std::vector<FoundVideo> takeVideos() {
    indexOfAddress_.clear();
    return std::move(videos_);
  }

  // What a find holds, by its address's extension, its declared type and where it was found.
  static ResourceKind kindOf(const FoundVideo& video);

 private:
  std::string base_;
  std::vector<FoundVideo> videos_;
  std::unordered_map<std::string, size_t> indexOfAddress_;
};

}  // namespace parseurl
