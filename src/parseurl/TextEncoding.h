// The text of a page in UTF-8, whatever charset it was sent in.
#pragma once

#include <string>
#include <string_view>

namespace parseurl {

// The charset a page is written in, in lower case: a byte-order mark first,
// then the "charset" of the HTTP content type, then a <meta> declaration near
// the top of the page, then "utf-8" when the bytes are valid UTF-8, else
// "windows-1252".
std::string pageCharset(std::string_view bytes, std::string_view contentType);

// `bytes` converted from `charset` to UTF-8 (a byte-order mark dropped). An
// unknown charset reads as windows-1252; bytes that do not convert become
// U+FFFD.
std::string toUtf8(std::string_view bytes, const std::string& charset);

}  // namespace parseurl
