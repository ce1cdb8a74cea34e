// Text read from a fixed-size field of a public record. A field may be
// filled to its last byte without a terminating NUL.
#pragma once

#include <cstddef>
#include <cstring>
#include <string>

namespace engine {

template <std::size_t N>
std::string fieldText(const char (&field)[N]) {
  return std::string(field, strnlen(field, N));
}

}  // namespace engine
