// The records StartParse hands out, and the strings they point to, which the
// library keeps until the next analysis.
#pragma once

#include <memory>
#include <string>
#include <vector>

#include "FoundVideo.h"
#include "parseurl.h"

namespace parseurl {

class ResultStrings {
 public:
  // A copy that lives until clear(); null for an empty string.
  char* keep(const std::string& text);
  void clear() { strings_.clear(); }

 private:
  std::vector<std::unique_ptr<char[]>> strings_;
};

// The videos as a chain of records, each allocated with the C allocator;
// null for none or when memory runs out (what was allocated is freed).
ParsedVideoEntry* makeEntryList(const std::vector<FoundVideo>& videos, ResultStrings& strings);

}  // namespace parseurl
