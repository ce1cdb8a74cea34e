// The tag library's C functions in test-friendly form.
#pragma once

#include <map>
#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "metadataedit.h"

namespace tagtest {

using Entries = std::vector<std::pair<int, std::string>>;

struct ReadResult {
  int32_t code = -1;
  Entries entries;  // in record order
  std::map<int, std::string> byKey;
};

// GetMetaDataInfo, with the record copied out and released.
ReadResult readTags(const std::string& path, const std::string& thumbnailPath = "");

// A zero-filled record with room for 64 entries, holding these.
std::unique_ptr<MetaDataInfo> makeRecord(const Entries& entries);

// SetMetaDataInfo with a record made of these entries.
int32_t writeTags(const std::string& path, const Entries& entries);

}  // namespace tagtest
