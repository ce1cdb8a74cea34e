// Tags of Monkey's-Audio-style APE tags, used by APE, WavPack and Musepack
// files: text items, "N/TOTAL" track and disc items, and the front cover as
// a binary item holding a file name, a zero byte and the picture.
#pragma once

#include <taglib/apetag.h>

#include "TagStore.h"

namespace metadata {

class ApeTagStore : public TagStore {
 public:
  explicit ApeTagStore(TagLib::APE::Tag& tag) : tag_(tag) {}

  TagLib::StringList text(MetaDataKey key) const override;
  bool setText(MetaDataKey key, const TagLib::String& value) override;
  NumberPair number(MetaDataKey key) const override;
  void setNumber(MetaDataKey key, NumberPair value) override;
  std::optional<CoverPicture> cover() const override;
  void setCover(const std::optional<CoverPicture>& picture) override;

 private:
  TagLib::StringList item(const char* name) const;
  void setItem(const char* name, const TagLib::String& value);

  TagLib::APE::Tag& tag_;
};

}  // namespace metadata
