// Tags of MP3, AIFF, WAV and TTA files as ID3v2 frames: text frames, a COMM
// frame without description, TRCK/TPOS, APIC, and TXXX frames for the fields
// ID3v2 has no frame for (the TV-show fields and the description).
#pragma once

#include <taglib/id3v2tag.h>

#include "TagStore.h"

namespace metadata {

class Id3v2TagStore : public TagStore {
 public:
  explicit Id3v2TagStore(TagLib::ID3v2::Tag& tag) : tag_(tag) {}

  TagLib::StringList text(MetaDataKey key) const override;
  bool setText(MetaDataKey key, const TagLib::String& value) override;
  NumberPair number(MetaDataKey key) const override;
  void setNumber(MetaDataKey key, NumberPair value) override;
  std::optional<CoverPicture> cover() const override;
  void setCover(const std::optional<CoverPicture>& picture) override;

 private:
  TagLib::StringList commentText() const;
  void setCommentText(const TagLib::String& value);
  TagLib::StringList userText(const char* description) const;
  void setUserText(const char* description, const TagLib::String& value);
  TagLib::StringList frameText(const char* frameId) const;
  void setFrameText(const char* frameId, const TagLib::String& value);

  TagLib::ID3v2::Tag& tag_;
};

}  // namespace metadata
