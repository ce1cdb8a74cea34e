// The thirteen video sites the program has icons for, known by their hosts.
#pragma once

#include <string_view>

namespace parseurl {

// 1001 to 1013 when the address's host is one of a known site's domains or
// below it ("www.", "m.", "player." and so on); PARSE_SITE_UNKNOWN otherwise.
int webSiteId(std::string_view address);

}  // namespace parseurl
