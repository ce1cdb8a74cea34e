// GetWebSiteID: the thirteen known sites from the host, with and without
// "www.", below them and on mobile hosts; anything else is unknown.

#include <gtest/gtest.h>

#include "parseurl.h"

namespace {

TEST(SiteTable, KnownSitesAreNumberedByTheirHosts) {
  const std::vector<std::pair<std::string, int>> cases{
      {"http://www.youtube.com/watch?v=abc", 1001},
      {"https://m.youtube.com/watch?v=abc", 1001},
      {"youtu.be/abc", 1001},
      {"http://www.liveleak.com/view?i=1", 1002},
      {"http://break.com/video/1", 1003},
      {"http://www.metacafe.com/watch/1/", 1004},
      {"https://vimeo.com/123", 1005},
      {"https://player.vimeo.com/video/123", 1005},
      {"http://www.veoh.com/watch/v1", 1006},
      {"http://www.collegehumor.com/video/1", 1007},
      {"http://de.sevenload.com/videos/1", 1008},
      {"http://www.tu.tv/videos/1", 1009},
      {"http://www.ina.fr/video/1", 1010},
      {"http://www.wimp.com/clip/", 1011},
      {"https://www.keek.com/keek/1", 1012},
      {"http://www.funnyordie.com/videos/1", 1013},
      {"HTTP://WWW.YOUTUBE.COM/watch", 1001},
      {"http://www.youtube.com./watch", 1001},
  };
  for (const auto& [address, site] : cases) EXPECT_EQ(GetWebSiteID(address.c_str()), site) << address;
}

TEST(SiteTable, OtherHostsAndNonAddressesAreUnknown) {
  for (const char* address : {"http://notyoutube.com/watch", "http://youtube.com.example.test/", "http://vimeo.co/1",
                              "http://127.0.0.1:8080/page.html", "http://example.test/www.youtube.com/watch",
                              "not an address", "", "ftp://www.youtube.com/"}) {
    EXPECT_EQ(GetWebSiteID(address), PARSE_SITE_UNKNOWN) << address;
  }
  EXPECT_EQ(GetWebSiteID(nullptr), PARSE_SITE_UNKNOWN);
}

}  // namespace
