#include "SiteTable.h"

#include <array>
#include <string>

#include "Address.h"
#include "parseurl.h"

namespace parseurl {
namespace {

struct Site {
  int id;
  std::array<std::string_view, 3> domains;  // unused places are empty
};

const std::array<Site, 13> kSites{{
    {1001, {"youtube.com", "youtu.be", "youtube-nocookie.com"}},
    {1002, {"liveleak.com"}},
    {1003, {"break.com"}},
    {1004, {"metacafe.com"}},
    {1005, {"vimeo.com"}},
    {1006, {"veoh.com"}},
    {1007, {"collegehumor.com"}},
    {1008, {"sevenload.com", "sevenload.de"}},
    {1009, {"tu.tv"}},
    {1010, {"ina.fr"}},
    {1011, {"wimp.com"}},
    {1012, {"keek.com"}},
    {1013, {"funnyordie.com"}},
}};

bool isAtOrBelow(std::string_view host, std::string_view domain) {
  if (host == domain) return true;
  return host.size() > domain.size() && host.ends_with(domain) && host[host.size() - domain.size() - 1] == '.';
}

}  // namespace

int webSiteId(std::string_view address) {
  std::string host = hostOf(address);
  if (!host.empty() && host.back() == '.') host.pop_back();
  for (const Site& site : kSites) {
    for (const std::string_view domain : site.domains) {
      if (!domain.empty() && isAtOrBelow(host, domain)) return site.id;
    }
  }
  return PARSE_SITE_UNKNOWN;
}

}  // namespace parseurl
