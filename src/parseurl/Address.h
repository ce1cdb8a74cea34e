// Web addresses as the analysis meets them: completed, resolved against the
// page, and taken apart. Built on libcurl's URL parser.
#pragma once

#include <string>
#include <string_view>

namespace parseurl {

// `text` as an http or https address, "http://" put in front when it names no
// scheme; empty when it is not a web address.
std::string webAddress(std::string_view text);

// The absolute http or https address of `reference` (relative, "//host/...",
// or absolute) seen from `base`; empty when none can be made, as for
// "javascript:" or "data:" references. Spaces and other bytes an address
// cannot hold are percent-encoded.
std::string resolveAddress(const std::string& base, std::string_view reference);

// The host of an address in lower case; empty when it has none.
std::string hostOf(std::string_view address);

// The last non-empty part of the path, percent-decoded; the host when the
// path is empty.
std::string lastPathPart(std::string_view address);

// The extension of the path's last part in lower case, without the dot;
// empty when it has none or only digits (as in "v1.2").
std::string pathExtension(std::string_view address);

}  // namespace parseurl
