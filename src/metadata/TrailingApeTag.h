// An APE tag at the end of a file whose TagLib class does not know one:
// FFmpeg ends the TTA files it writes with such a tag, and FFmpeg-based
// players read it in preference to the file's ID3v2 tag. It is kept as a
// companion tag, rewritten in place after the file's own save.
#pragma once

#include <memory>
#include <optional>

#include <taglib/apetag.h>
#include <taglib/tfile.h>

namespace metadata {

class TrailingApeTag {
 public:
  // Null when the file does not end with an APE tag (before any ID3v1 tag).
  static std::unique_ptr<TrailingApeTag> find(TagLib::File& file);

  TagLib::APE::Tag& tag() { return *tag_; }
  // Writes the tag over the bytes of the one at the end of the file.
  bool save();

 private:
  struct Location {
    long start;
    long size;
    long footer;
  };
  static std::optional<Location> locate(TagLib::File& file);

  TrailingApeTag(TagLib::File& file, std::unique_ptr<TagLib::APE::Tag> tag) : file_(file), tag_(std::move(tag)) {}

  TagLib::File& file_;
  std::unique_ptr<TagLib::APE::Tag> tag_;
};

}  // namespace metadata
