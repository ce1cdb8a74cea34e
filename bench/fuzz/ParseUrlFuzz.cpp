// libFuzzer entry points for the page-analysis library's readers, one
// program per reader, chosen with PARSEURL_FUZZ_READER when compiling:
//   1 HTML: a page in any charset through every technique of the analysis;
//   2 JSON: the extractor's formats, JSON-LD, and player set-up literals;
//   3 playlist: HLS playlists and DASH manifests.
// Built and run by scripts/parseurl-sanitizers.sh, never by the tests.

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

#include "DashManifest.h"
#include "ExtractorFormats.h"
#include "HlsPlaylist.h"
#include "PageAnalysis.h"
#include "PlayerSetup.h"
#include "ScriptLiteral.h"
#include "TextEncoding.h"

namespace {

const std::string kPageAddress = "http://example.test/dir/page.html";

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  const std::string_view text(reinterpret_cast<const char*>(data), size);
#if PARSEURL_FUZZ_READER == 1
  parseurl::analysePage(parseurl::toUtf8(text, parseurl::pageCharset(text, "")), kPageAddress);
#elif PARSEURL_FUZZ_READER == 2
  parseurl::videosOfExtractorJson(text);
  parseurl::analysePage("<script type=\"application/ld+json\">" + std::string(text) + "</script>", kPageAddress);
  size_t position = 0;
  parseurl::readScriptLiteral(text, position);
  parseurl::videosOfPlayerScript(text);
#elif PARSEURL_FUZZ_READER == 3
  parseurl::readHlsPlaylist(text);
  parseurl::readDashManifest(text);
#else
#error "PARSEURL_FUZZ_READER must be 1, 2 or 3"
#endif
  return 0;
}
