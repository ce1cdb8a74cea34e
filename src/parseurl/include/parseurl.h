// Public interface of the page-analysis library: C functions and the
// fixed-layout record of one video found on a page. Strings are UTF-8 and
// NUL-terminated.
//
// Lifetime: StartParse allocates each record of its list with the C
// allocator, and the caller releases each record with free(), walking the
// `next` chain. The strings the records point to belong to the library: they
// stay valid until the next call of StartParse and must not be freed.
#pragma once

#include <stddef.h>
#include <stdint.h>

#ifdef __cplusplus
extern "C" {
#endif

// One downloadable file. A manifest's variant (an HLS variant playlist, a
// DASH representation) carries the extension "mp4" and the address of the
// manifest that describes it: the variant playlist for HLS, the manifest
// followed by "#representation=<id>" for DASH.
typedef struct ParsedVideoEntry {
  int32_t width;                  // frame width in pixels, 0 when unknown
  int32_t height;                 // frame height in pixels, 0 when unknown
  char* url;                      // absolute address of the file
  char* extension;                // "mp4", "webm", ...; null when unknown
  int64_t length;                 // duration in whole seconds, 0 when unknown
  int64_t size;                   // bytes as far as known, 0 when unknown
  char* title;                    // title; null when none
  struct ParsedVideoEntry* next;  // next record, null at the end
  char* imageUrl;                 // thumbnail address; null when none
} ParsedVideoEntry;

#ifdef __cplusplus
static_assert(sizeof(void*) == 8, "the record layout is that of a 64-bit host");
static_assert(sizeof(ParsedVideoEntry) == 64, "ParsedVideoEntry is 64 bytes");
static_assert(offsetof(ParsedVideoEntry, width) == 0, "width at 0");
static_assert(offsetof(ParsedVideoEntry, height) == 4, "height at 4");
static_assert(offsetof(ParsedVideoEntry, url) == 8, "url at 8");
static_assert(offsetof(ParsedVideoEntry, extension) == 16, "extension at 16");
static_assert(offsetof(ParsedVideoEntry, length) == 24, "length at 24");
static_assert(offsetof(ParsedVideoEntry, size) == 32, "size at 32");
static_assert(offsetof(ParsedVideoEntry, title) == 40, "title at 40");
static_assert(offsetof(ParsedVideoEntry, next) == 48, "next at 48");
static_assert(offsetof(ParsedVideoEntry, imageUrl) == 56, "imageUrl at 56");
#endif

// Site numbers of GetWebSiteID: the thirteen known video sites, and the
// number of any other address.
enum ParseWebSite {
  PARSE_SITE_UNKNOWN = 0,
  PARSE_SITE_FIRST_KNOWN = 1001,
  PARSE_SITE_LAST_KNOWN = 1013,
};

// Results of StartParse: 0 is success with at least one record.
enum ParseResult {
  PARSE_OK = 0,
  PARSE_ERROR_ARGUMENT = 1,     // a null or empty address, or a null list pointer
  PARSE_ERROR_ADDRESS = 2,      // the address is not a web address
  PARSE_ERROR_CONNECTION = 3,   // the server could not be reached, or the connection failed
  PARSE_ERROR_TIMEOUT = 4,      // the page did not arrive within the time limit
  PARSE_ERROR_HTTP_STATUS = 5,  // the server answered with an error status
  PARSE_ERROR_TOO_LARGE = 6,    // the page is larger than the size limit
  PARSE_ERROR_NOT_A_PAGE = 7,   // the address holds binary data that is neither a page nor a video
  PARSE_ERROR_NO_VIDEO = 8,     // the page was read but holds no video address
};

// The folder the library may work in (the external extractor runs there).
// Called once, before the first StartParse.
void SetWorkPath(const char* path);

// The site number of a page address (UTF-8): 1001 to 1013 for the known
// sites, whatever their subdomain ("www.", mobile hosts), else
// PARSE_SITE_UNKNOWN.
int GetWebSiteID(const char* url);

// Analyses the page at `url` (UTF-8) and stores the head of the list of the
// videos found through `list`, which the caller sets to null first. `mode`
// is reserved and must be 0. Blocks until the analysis ends; the result is a
// ParseResult. On failure *list stays null. Calls must not overlap.
int StartParse(const char* url, int mode, ParsedVideoEntry** list);

// Not part of the original interface; added for the program's own needs.

// Limits of each StartParse: the seconds that fetching the page and its
// manifests may take, and again the external extractor (default 30), and the
// largest page or manifest read, in bytes (default 8 MiB). 0 or less keeps
// the default.
void SetParseLimits(int32_t timeLimitSeconds, int64_t maxPageBytes);

// A short English description of a StartParse result, for logs and messages.
const char* GetParseErrorText(int32_t result);

#ifdef __cplusplus
}
#endif
