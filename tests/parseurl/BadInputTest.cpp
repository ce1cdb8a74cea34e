// Addresses and answers that give nothing: each a clear result, an empty
// list, and within the time limit.

#include <gtest/gtest.h>

#include <cstdlib>
#include <cstring>

#include "ParsedEntries.h"
#include "ScriptedHttpServer.h"
#include "parseurl.h"

namespace {

// Sets the library's limits for one test and puts the defaults back.
class ScopedLimits {
 public:
  ScopedLimits(int32_t seconds, int64_t bytes) { SetParseLimits(seconds, bytes); }
  ~ScopedLimits() { SetParseLimits(0, 0); }
};

class BadInput : public testing::Test {
 protected:
  LocalHttplibServer pages;
};

TEST_F(BadInput, EachFailureHasItsResultAndLeavesTheListEmpty) {
  std::string binary(4096, '\0');
  for (size_t i = 0; i < binary.size(); ++i) binary[i] = static_cast<char>((i * 131) % 251);
  pages.serve("/binary.bin", binary, "application/octet-stream");
  pages.serve("/large.html", "<html>" + std::string(100000, 'x') + "<video src=a.mp4></video></html>");
  pages.serve("/missing.html", "<video src=a.mp4></video>", "text/html", 404);
  const ScriptedHttpServer silent([](ScriptedHttpServer::Exchange& exchange) { exchange.staySilent(); });
  const ScopedLimits limits(2, 64 * 1024);

  struct Case {
    std::string address;
    int result;
  };
  const std::vector<Case> cases{
      {pages.address("/missing.html"), PARSE_ERROR_HTTP_STATUS},
      {pages.address("/large.html"), PARSE_ERROR_TOO_LARGE},
      {pages.address("/binary.bin"), PARSE_ERROR_NOT_A_PAGE},
      {silent.url("/silent.html").toString().toStdString(), PARSE_ERROR_TIMEOUT},
      {"http://127.0.0.1:" + std::to_string(closedLoopbackPort()) + "/page.html", PARSE_ERROR_CONNECTION},
      {"ftp://127.0.0.1/page.html", PARSE_ERROR_ADDRESS},
      {"javascript:alert(1)", PARSE_ERROR_ADDRESS},
      {"", PARSE_ERROR_ARGUMENT},
  };
  for (const Case& bad : cases) {
    ParsedVideoEntry stale{};
    ParsedVideoEntry* list = &stale;  // not null, to see it cleared
    EXPECT_EQ(StartParse(bad.address.c_str(), 0, &list), bad.result) << bad.address;
    EXPECT_EQ(list, nullptr) << bad.address;
    EXPECT_STRNE(GetParseErrorText(bad.result), GetParseErrorText(-1)) << bad.address;
  }
  EXPECT_EQ(StartParse(pages.address("/large.html").c_str(), 0, nullptr), PARSE_ERROR_ARGUMENT);
}

TEST_F(BadInput, AnAddressWithoutSchemeIsReadAsHttpAndTheStringsOfAResultLiveUntilTheNextAnalysis) {
  pages.serve("/page.html", "<title>Kept</title><video src=a.mp4></video>");
  const std::string address = pages.address("/page.html").substr(std::strlen("http://"));
  EXPECT_EQ(parse(address).urls(), std::vector<std::string>{pages.address("/a.mp4")});

  ParsedVideoEntry* list = nullptr;
  ASSERT_EQ(StartParse(pages.address("/page.html").c_str(), 0, &list), PARSE_OK);
  const char* title = list->title;
  const char* url = list->url;
  std::free(list);
  // The caller frees the records only; the strings are still the library's.
  EXPECT_STREQ(title, "Kept");
  EXPECT_EQ(url, pages.address("/a.mp4"));
  EXPECT_EQ(parse(pages.address("/page.html")).entries.size(), 1u);
}

}  // namespace
