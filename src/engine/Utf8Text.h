// UTF-8 text in the fixed-size, NUL-terminated fields of the public records.
#pragma once

#include <cstddef>
#include <cstring>
#include <string_view>

namespace engine {

// The longest prefix of `text` of at most maxBytes that does not split a character.
std::string_view cutUtf8(std::string_view text, std::size_t maxBytes);

// Copies text into a field, cut on a character boundary so that the NUL fits.
template <std::size_t N>
void copyToField(char (&field)[N], std::string_view text) {
  const std::string_view fitting = cutUtf8(text, N - 1);
  std::memcpy(field, fitting.data(), fitting.size());
  field[fitting.size()] = '\0';
}

}  // namespace engine
