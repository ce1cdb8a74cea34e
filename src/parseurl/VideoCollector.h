// The videos of one analysis in the order they were found: each address
// resolved against the page, checked to be media or a manifest, and kept
// once. A later find of the same address fills in what the first lacked.
#pragma once

#include <string>
#include <unordered_map>
#include <vector>

#include "FoundVideo.h"

namespace parseurl {

class VideoCollector {
 public:
  explicit VideoCollector(std::string baseAddress) : base_(std::move(baseAddress)) {}

  // The address relative ones are resolved against (the page's final
  // address, or its <base href>).
  const std::string& baseAddress() const { return base_; }
  void setBaseAddress(std::string base) { base_ = std::move(base); }

  // Adds a find, unless it has no usable address or is no media or manifest.
  void add(FoundVideo video);
  void addAll(std::vector<FoundVideo> videos);

  std::vector<FoundVideo> takeVideos() {
    indexOfAddress_.clear();
    return std::move(videos_);
  }

 private:
  std::string base_;
  std::vector<FoundVideo> videos_;
  std::unordered_map<std::string, size_t> indexOfAddress_;
};

}  // namespace parseurl
