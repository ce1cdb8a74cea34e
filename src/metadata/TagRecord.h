// The fixed-layout tag record to and from a list of entries.
#pragma once

#include "TagEntry.h"

namespace metadata {

struct ParsedRecord {
  MetaDataResult result = METADATA_OK;
  TagEntries entries;
};

// The record's entries in their order, once every count, key and value has
// been checked: a count of 0 to 64, keys 1 to 18, zero-terminated UTF-8
// values, and "N" or "N/TOTAL" for track and disk.
ParsedRecord parseRecord(const MetaDataInfo& record);

// A zero-filled record holding the entries; values longer than the field are
// cut at a character boundary, entries beyond the record's room are dropped.
void fillRecord(MetaDataInfo& record, const TagEntries& entries);

}  // namespace metadata
