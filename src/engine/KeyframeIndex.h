// The time and byte position of every keyframe of a file's video stream,
// kept in a small text file so that later seeks need not scan the file:
//   VCKEYFRAMES 1
//   <microseconds from the start of the file> <byte position, -1 if unknown>
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

namespace engine {

struct Keyframe {
  int64_t timeUs = 0;
  int64_t bytePosition = -1;
};

class KeyframeIndex {
 public:
  // Writes the index of the video stream with streamIndex into `folder`, named
  // after the file's path, size and modification time; an index already there
  // for the same file is reused. Times count from fileStartUs, the start time
  // the stream analysis found. Returns the index path, or an empty string
  // when the folder is not writable or the file cannot be read in time.
  static std::string build(const std::string& mediaPath, int streamIndex, int64_t fileStartUs,
                           const std::string& folder);
  // Reads an index file; nothing when it is missing or damaged.
  static std::optional<std::vector<Keyframe>> load(const std::string& indexPath);
};

}  // namespace engine
