// One video as a technique of the analysis found it, before it is checked,
// resolved and merged with the others.
#pragma once

#include <cstdint>
#include <string>

namespace parseurl {

struct FoundVideo {
  std::string url;        // as written where it was found; absolute once collected
  std::string type;       // declared MIME type or player type ("video/mp4", "hls"); may be empty
  std::string extension;  // filled by the collector
  int32_t width = 0;
  int32_t height = 0;
  int64_t length = 0;  // seconds
  int64_t size = 0;    // bytes
  std::string title;
  std::string imageUrl;
  // Found where only media is (a <video>, <audio> or <source>, the
  // extractor's formats), whatever the address looks like.
  bool isKnownMedia = false;
};

}  // namespace parseurl
