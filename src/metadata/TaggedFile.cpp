#include "TaggedFile.h"

#include <taglib/audioproperties.h>

#include "FormatOpeners.h"

namespace metadata {
namespace {

// TagLib accepts some audio formats as soon as their tags parse, even when no
// audio stream follows; such a file is damaged, and writing to it is refused.
bool hasPlausibleStream(TagLib::File& file, FormatFamily family) {
  if (family == FormatFamily::Mp4 || family == FormatFamily::Asf) return true;  // checked structurally on opening
  const TagLib::AudioProperties* audio = file.audioProperties();
  return audio != nullptr && audio->sampleRate() > 0;
}

}  // namespace

std::unique_ptr<TaggedFile> TaggedFile::open(const std::string& path, FormatFamily family, Access access) {
  bool readOnly = access == Access::ReadOnly;
  auto stream = std::make_unique<TagLib::FileStream>(path.c_str(), readOnly);
  // A stream asked for writing falls back to reading when the file is not writable.
  if (!stream->isOpen() || stream->readOnly() != readOnly) return nullptr;
  std::optional<Parts> parts = openFormat(*stream, family);
  if (!parts || !hasPlausibleStream(*parts->file, family)) return nullptr;
  return std::unique_ptr<TaggedFile>(new TaggedFile(std::move(stream), std::move(*parts)));
}

TaggedFile::TaggedFile(std::unique_ptr<TagLib::FileStream> stream, Parts parts)
    : stream_(std::move(stream)),
      file_(std::move(parts.file)),
      store_(std::move(parts.store)),
      mainTag_(parts.mainTag),
      companionTags_(std::move(parts.companionTags)),
      save_(std::move(parts.save)) {
  for (TagLib::Tag* companion : companionTags_) TagLib::Tag::duplicate(companion, mainTag_, false);
}

bool TaggedFile::save() {
  for (TagLib::Tag* companion : companionTags_) TagLib::Tag::duplicate(mainTag_, companion, true);
  return save_();
}

}  // namespace metadata
