#include "Utf8.h"

namespace metadata {
namespace {

bool isContinuation(unsigned char byte) { return (byte & 0xC0) == 0x80; }

// The length of the sequence a lead byte starts, 0 for a byte that cannot lead.
size_t sequenceLength(unsigned char lead) {
  if (lead < 0x80) return 1;
  if (lead >= 0xC2 && lead <= 0xDF) return 2;
  if (lead >= 0xE0 && lead <= 0xEF) return 3;
  if (lead >= 0xF0 && lead <= 0xF4) return 4;
  return 0;
}

// Rejects overlong forms, surrogates and code points above U+10FFFF.
bool validSecondByte(unsigned char lead, unsigned char second) {
  if (lead == 0xE0) return second >= 0xA0;
  if (lead == 0xED) return second <= 0x9F;
  if (lead == 0xF0) return second >= 0x90;
  if (lead == 0xF4) return second <= 0x8F;
  return true;
}

}  // namespace

bool isValidUtf8(std::string_view text) {
  for (size_t i = 0; i < text.size();) {
    auto lead = static_cast<unsigned char>(text[i]);
    size_t length = sequenceLength(lead);
    if (length == 0 || i + length > text.size()) return false;
    for (size_t k = 1; k < length; ++k) {
      if (!isContinuation(static_cast<unsigned char>(text[i + k]))) return false;
    }
    if (length > 1 && !validSecondByte(lead, static_cast<unsigned char>(text[i + 1]))) return false;
    i += length;
  }
  return true;
}

std::string_view utf8Prefix(std::string_view text, size_t maxBytes) {
  if (text.size() <= maxBytes) return text;
  size_t end = maxBytes;
  while (end > 0 && isContinuation(static_cast<unsigned char>(text[end]))) --end;
  return text.substr(0, end);
}

}  // namespace metadata
