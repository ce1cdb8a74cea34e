// Tags of MP4-family files (MP4, M4A, M4V, M4R, MOV, 3GP) as atoms of the
// item list: text atoms, the trkn/disk pairs, the tvsn/tves numbers and covr.
#pragma once

#include <taglib/mp4tag.h>

#include "TagStore.h"

namespace metadata {

class Mp4TagStore : public TagStore {
 public:
  explicit Mp4TagStore(TagLib::MP4::Tag& tag) : tag_(tag) {}

  TagLib::StringList text(MetaDataKey key) const override;
  bool setText(MetaDataKey key, const TagLib::String& value) override;
  NumberPair number(MetaDataKey key) const override;
  void setNumber(MetaDataKey key, NumberPair value) override;
  std::optional<CoverPicture> cover() const override;
  void setCover(const std::optional<CoverPicture>& picture) override;

 private:
  TagLib::MP4::Tag& tag_;
};

}  // namespace metadata
