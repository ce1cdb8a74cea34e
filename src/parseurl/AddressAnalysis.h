// The whole analysis of one address: the page fetched and read, or the
// address taken as the media file or manifest it is, manifests expanded, and
// the external extractor asked where it is present and can help.
#pragma once

#include <chrono>
#include <cstdint>
#include <string>
#include <vector>

#include "FoundVideo.h"

namespace parseurl {

// The limits of one analysis, with the library's defaults.
struct AnalysisLimits {
  std::chrono::milliseconds timeLimit{std::chrono::seconds(30)};
  int64_t maxPageBytes = 8 * 1024 * 1024;
  std::string workPath;  // where the extractor runs
};

struct AnalysisOutcome {
  int result = 0;  // a ParseResult; PARSE_OK only with at least one video
  std::vector<FoundVideo> videos;
};

AnalysisOutcome analyseAddress(const std::string& address, const AnalysisLimits& limits);

}  // namespace parseurl
