// Addresses and answers that give nothing: each a clear result, an empty
// list, and within the time limit.

#include <gtest/gtest.h>

#include <netinet/in.h>
#include <sys/socket.h>
#include <unistd.h>

#include <cstdlib>
#include <cstring>

#include "PageServer.h"
#include "parseurl.h"

namespace {

// Sets the library's limits for one test and puts the defaults back.
class ScopedLimits {
 public:
  ScopedLimits(int32_t seconds, int64_t bytes) { SetParseLimits(seconds, bytes); }
  ~ScopedLimits() { SetParseLimits(0, 0); }
};

// A port on 127.0.0.1 where nothing listens.
int closedPort() {
  const int probe = socket(AF_INET, SOCK_STREAM, 0);
  sockaddr_in address{};
  address.sin_family = AF_INET;
  address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
  socklen_t length = sizeof(address);
  bind(probe, reinterpret_cast<sockaddr*>(&address), sizeof(address));
  getsockname(probe, reinterpret_cast<sockaddr*>(&address), &length);
  close(probe);
  return ntohs(address.sin_port);
}

class BadInput : public testing::Test {
 protected:
  PageServer pages;
};

TEST_F(BadInput, EachFailureHasItsResultAndLeavesTheListEmpty) {
  std::string binary(4096, '\0');
  for (size_t i = 0; i < binary.size(); ++i) binary[i] = static_cast<char>((i * 131) % 251);
  pages.serve("/binary.bin", binary, "application/octet-stream");
  pages.serve("/large.html", "<html>" + std::string(100000, 'x') + "<video src=a.mp4></video></html>");
  pages.server.Get("/missing.html", [](const httplib::Request&, httplib::Response& response) {
    response.status = 404;
    response.set_content("<video src=a.mp4></video>", "text/html");
  });
  pages.hang("/silent.html");
  const ScopedLimits limits(2, 64 * 1024);

  struct Case {
    std::string address;
    int result;
  };
  const std::vector<Case> cases{
      {pages.url("/missing.html"), PARSE_ERROR_HTTP_STATUS},
      {pages.url("/large.html"), PARSE_ERROR_TOO_LARGE},
      {pages.url("/binary.bin"), PARSE_ERROR_NOT_A_PAGE},
      {pages.url("/silent.html"), PARSE_ERROR_TIMEOUT},
      {"http://127.0.0.1:" + std::to_string(closedPort()) + "/page.html", PARSE_ERROR_CONNECTION},
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
  EXPECT_EQ(StartParse(pages.url("/large.html").c_str(), 0, nullptr), PARSE_ERROR_ARGUMENT);
}

TEST_F(BadInput, AnAddressWithoutSchemeIsReadAsHttp) {
  pages.serve("/page.html", "<video src=a.mp4></video>");
  const std::string address = pages.url("/page.html").substr(std::strlen("http://"));
  EXPECT_EQ(parse(address).urls(), std::vector<std::string>{pages.url("/a.mp4")});
}

TEST_F(BadInput, TheStringsOfAResultLiveUntilTheNextAnalysis) {
  pages.serve("/page.html", "<title>Kept</title><video src=a.mp4></video>");
  ParsedVideoEntry* list = nullptr;
  ASSERT_EQ(StartParse(pages.url("/page.html").c_str(), 0, &list), PARSE_OK);
  const char* title = list->title;
  const char* url = list->url;
  std::free(list);
  // The caller frees the records only; the strings are still the library's.
  EXPECT_STREQ(title, "Kept");
  EXPECT_EQ(url, pages.url("/a.mp4"));
  EXPECT_EQ(parse(pages.url("/page.html")).entries.size(), 1u);
}

}  // namespace
