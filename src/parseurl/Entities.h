// Character references in text that the HTML parser did not decode: script
// bodies, JSON inside them, and addresses swept from the page.
#pragma once

#include <string>
#include <string_view>

namespace parseurl {

// `text` with numeric references (&#38; &#x26;) and the common named ones
// (&amp; &quot; &eacute; ...) replaced by their UTF-8 characters. A reference
// that is unknown, unterminated or names no valid character stays as it is.
std::string decodeEntities(std::string_view text);

// The UTF-8 bytes of a code point; U+FFFD for surrogates and values past U+10FFFF.
void appendUtf8(std::string& out, char32_t codePoint);

}  // namespace parseurl
