// A tag store's fields as record entries, and entries applied to a store.
#pragma once

#include <optional>

#include "TagEntry.h"
#include "TagStore.h"

namespace metadata {

// Every non-empty field in key order, without the cover: the first genre
// under the genre key and all of them under the genres key; a field with
// several values has them joined by "; ".
TagEntries readEntries(const TagStore& store);

// Sets each entry in order (a later entry for the same key wins). The image
// entry sets the given cover, or removes the cover when its value is empty;
// the genres entry is ignored. METADATA_ERROR_VALUE when the format cannot
// hold a value.
MetaDataResult applyEntries(TagStore& store, const TagEntries& entries, const std::optional<CoverPicture>& cover);

// What a file's tags amount to, for checking a saved file against the edit.
struct TagSnapshot {
  TagEntries entries;
  std::optional<TagLib::ByteVector> cover;

  bool operator==(const TagSnapshot&) const = default;
};

TagSnapshot takeSnapshot(const TagStore& store);

}  // namespace metadata
