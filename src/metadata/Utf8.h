// UTF-8 checks for the record's values.
#pragma once

#include <string_view>

namespace metadata {

bool isValidUtf8(std::string_view text);
// The longest prefix of at most maxBytes bytes that does not split a character.
std::string_view utf8Prefix(std::string_view text, size_t maxBytes);

}  // namespace metadata
