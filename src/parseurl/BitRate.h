// The bit rate a streaming manifest gives a variant.
#pragma once

#include <charconv>
#include <cstdint>
#include <string_view>

namespace parseurl {

// Bits per second written as a whole number ("2000000"); 0 for anything else.
inline int64_t bitRate(std::string_view text) {
  int64_t value = 0;
  const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), value);
  return error == std::errc() && value > 0 ? value : 0;
}

}  // namespace parseurl
