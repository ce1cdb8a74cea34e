// The library's C functions.

#include <mutex>

#include "AddressAnalysis.h"
#include "ResultList.h"
#include "SiteTable.h"
#include "parseurl.h"

namespace {

const parseurl::AnalysisLimits kDefaultLimits;

// Settings and the strings of the last result; StartParse holds the lock for
// its whole run, so that overlapping calls wait rather than clash.
std::mutex libraryMutex;
parseurl::AnalysisLimits limits;
parseurl::ResultStrings lastResultStrings;

}  // namespace

extern "C" {

void SetWorkPath(const char* path) {
  const std::lock_guard lock(libraryMutex);
  limits.workPath = path != nullptr ? path : "";
}

void SetParseLimits(int32_t timeLimitSeconds, int64_t maxPageBytes) {
  const std::lock_guard lock(libraryMutex);
  limits.timeLimit = timeLimitSeconds > 0 ? std::chrono::seconds(timeLimitSeconds) : kDefaultLimits.timeLimit;
  limits.maxPageBytes = maxPageBytes > 0 ? maxPageBytes : kDefaultLimits.maxPageBytes;
}

int GetWebSiteID(const char* url) { return url != nullptr ? parseurl::webSiteId(url) : PARSE_SITE_UNKNOWN; }

int StartParse(const char* url, int mode, ParsedVideoEntry** list) {
  (void)mode;
  if (list == nullptr) return PARSE_ERROR_ARGUMENT;
  *list = nullptr;
  if (url == nullptr || *url == '\0') return PARSE_ERROR_ARGUMENT;
  const std::lock_guard lock(libraryMutex);
  lastResultStrings.clear();
  const parseurl::AnalysisOutcome outcome = parseurl::analyseAddress(url, limits);
  if (outcome.result != PARSE_OK) return outcome.result;
  *list = parseurl::makeEntryList(outcome.videos, lastResultStrings);
  return *list != nullptr ? PARSE_OK : PARSE_ERROR_NO_VIDEO;
}

const char* GetParseErrorText(int32_t result) {
  switch (result) {
    case PARSE_OK: return "success";
    case PARSE_ERROR_ARGUMENT: return "no address was given";
    case PARSE_ERROR_ADDRESS: return "the address is not a web address";
    case PARSE_ERROR_CONNECTION: return "the server could not be reached";
    case PARSE_ERROR_TIMEOUT: return "the page did not arrive in time";
    case PARSE_ERROR_HTTP_STATUS: return "the server answered with an error status";
    case PARSE_ERROR_TOO_LARGE: return "the page is larger than the size limit";
    case PARSE_ERROR_NOT_A_PAGE: return "the address holds neither a page nor a video";
    case PARSE_ERROR_NO_VIDEO: return "no video was found on the page";
    default: return "unknown result";
  }
}

}  // extern "C"
