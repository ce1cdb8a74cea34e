// Tags of WMA, WMV and ASF files: title, author and description in the
// content description object, everything else as attributes ("WM/..." where
// such a name exists, the field's own name otherwise).
#pragma once

#include <taglib/asftag.h>

#include "TagStore.h"

namespace metadata {

class AsfTagStore : public TagStore {
 public:
  explicit AsfTagStore(TagLib::ASF::Tag& tag) : tag_(tag) {}

  TagLib::StringList text(MetaDataKey key) const override;
  bool setText(MetaDataKey key, const TagLib::String& value) override;
  NumberPair number(MetaDataKey key) const override;
  void setNumber(MetaDataKey key, NumberPair value) override;
  std::optional<CoverPicture> cover() const override;
  void setCover(const std::optional<CoverPicture>& picture) override;

 private:
  TagLib::StringList attributeText(const char* name) const;
  void setAttributeText(const char* name, const TagLib::String& value);

  TagLib::ASF::Tag& tag_;
};

}  // namespace metadata
