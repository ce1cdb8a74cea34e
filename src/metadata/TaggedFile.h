// A media file opened through TagLib, with the tag store of its format. Some
// formats carry an older, simpler tag beside the main one (ID3v1 in MP3, RIFF
// INFO in WAV): on opening, fields missing from the main tag are taken from
// it, and on saving it is brought in step with the main tag.
#pragma once

#include <functional>
#include <memory>
#include <string>
#include <vector>

#include <taglib/tag.h>
#include <taglib/tfile.h>
#include <taglib/tfilestream.h>

#include "FormatFamily.h"
#include "TagStore.h"

namespace metadata {

class TaggedFile {
 public:
  enum class Access { ReadOnly, ReadWrite };

  // Null when the file cannot be opened with this access or is not a valid
  // file of the family (damaged, truncated, or another format).
  static std::unique_ptr<TaggedFile> open(const std::string& path, FormatFamily family, Access access);

  TagStore& tags() { return *store_; }
  // Writes the tags into the file; false when TagLib reports a failure.
  bool save();

  // The parts a format opener provides.
  struct Parts {
    std::unique_ptr<TagLib::File> file;
    std::unique_ptr<TagStore> store;
    TagLib::Tag* mainTag = nullptr;
    std::vector<TagLib::Tag*> companionTags;
    std::function<bool()> save;
  };

 private:
  TaggedFile(std::unique_ptr<TagLib::FileStream> stream, Parts parts);

  // Declared first so that it outlives the file reading from it.
  std::unique_ptr<TagLib::FileStream> stream_;
  std::unique_ptr<TagLib::File> file_;
  std::unique_ptr<TagStore> store_;
  TagLib::Tag* mainTag_;
  std::vector<TagLib::Tag*> companionTags_;
  std::function<bool()> save_;
};

}  // namespace metadata
