// Fills a DECODER_INFO record from a media file: container, video and audio
// properties, a thumbnail and the keyframe index.
#pragma once

#include <cstdint>
#include <optional>
#include <string>

#include "videoconverter.h"

namespace engine {

struct ProbeRequest {
  std::string path;
  std::string thumbnailPath;               // empty: no thumbnail
  std::optional<int64_t> thumbnailTimeUs;  // unset: a representative moment
  bool audioOnly = false;                  // skip every look at the video
};

class MediaProbe {
 public:
  // Returns 0 or a VideoConverterError. The record is zero-filled first and
  // holds nothing of the file on failure.
  static int probe(const ProbeRequest& request, DECODER_INFO& info);
};

}  // namespace engine
