#include "Utf8Text.h"

namespace engine {

std::string_view cutUtf8(std::string_view text, std::size_t maxBytes) {
  if (text.size() <= maxBytes) return text;
  std::size_t end = maxBytes;
  // Continuation bytes look like 10xxxxxx; back up to the start of the character they belong to.
  while (end > 0 && (static_cast<unsigned char>(text[end]) & 0xC0) == 0x80) --end;
  return text.substr(0, end);
}

}  // namespace engine
