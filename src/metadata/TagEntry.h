// A key and its UTF-8 value, as one entry of the tag record.
#pragma once

#include <string>
#include <vector>

#include "metadataedit.h"

namespace metadata {

struct TagEntry {
  MetaDataKey key;
  std::string value;

  bool operator==(const TagEntry&) const = default;
};

using TagEntries = std::vector<TagEntry>;

}  // namespace metadata
