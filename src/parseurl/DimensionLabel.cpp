#include "DimensionLabel.h"

#include <cctype>
#include <charconv>
#include <cmath>

namespace parseurl {
namespace {

constexpr int32_t kLargestSide = 16384;

bool isDigit(char c) { return std::isdigit(static_cast<unsigned char>(c)) != 0; }

// The number of digits at `position`, read into `value`; 0 when none or too large.
size_t readNumber(std::string_view text, size_t position, int32_t& value) {
  size_t end = position;
  while (end < text.size() && isDigit(text[end]) && end - position < 6) ++end;
  if (end == position || std::from_chars(text.data() + position, text.data() + end, value).ec != std::errc()) return 0;
  return end - position;
}

bool isLetter(std::string_view text, size_t position) {
  return position < text.size() && std::isalpha(static_cast<unsigned char>(text[position])) != 0;
}

bool plausible(int32_t side) { return side >= 16 && side <= kLargestSide; }

}  // namespace

FrameSize frameSizeFromHeight(int32_t height) {
  return {static_cast<int32_t>(2 * std::lround(height * 8.0 / 9.0)), height};
}

std::optional<FrameSize> frameSizeFromLabel(std::string_view label) {
  for (size_t i = 0; i < label.size(); ++i) {
    if (!isDigit(label[i]) || (i > 0 && isDigit(label[i - 1]))) continue;
    int32_t first = 0;
    const size_t digits = readNumber(label, i, first);
    if (digits == 0) continue;
    const size_t afterDigits = i + digits;
    size_t next = afterDigits;
    while (next < label.size() && label[next] == ' ') ++next;
    if (next < label.size() &&
        (label[next] == 'x' || label[next] == 'X' || label.substr(next).starts_with("\xC3\x97"))) {
      next += label[next] == 'x' || label[next] == 'X' ? 1 : 2;
      while (next < label.size() && label[next] == ' ') ++next;
      int32_t second = 0;
      if (readNumber(label, next, second) > 0 && plausible(first) && plausible(second)) return FrameSize{first, second};
      continue;
    }
    // A suffix right after the digits and not part of a longer word ("720px" is a width).
    if (afterDigits >= label.size() || isLetter(label, afterDigits + 1)) continue;
    const char suffix = static_cast<char>(std::tolower(static_cast<unsigned char>(label[afterDigits])));
    if ((suffix == 'p' || suffix == 'i') && plausible(first)) return frameSizeFromHeight(first);
    if (suffix == 'k' && first == 4) return FrameSize{3840, 2160};
    if (suffix == 'k' && first == 8) return FrameSize{7680, 4320};
    if (suffix == 'k' && first == 2) return FrameSize{2560, 1440};
  }
  return std::nullopt;
}

int32_t pixelCount(std::string_view text) {
  while (!text.empty() && std::isspace(static_cast<unsigned char>(text.front()))) text.remove_prefix(1);
  while (!text.empty() && std::isspace(static_cast<unsigned char>(text.back()))) text.remove_suffix(1);
  int32_t value = 0;
  const size_t digits = readNumber(text, 0, value);
  if (digits == 0 || value > kLargestSide) return 0;
  std::string_view rest = text.substr(digits);
  if (rest.starts_with('.')) {
    rest.remove_prefix(1);
    while (!rest.empty() && isDigit(rest.front())) rest.remove_prefix(1);
  }
  // "100%" or "20em" are no pixel counts.
  return rest.empty() || rest == "px" ? value : 0;
}

}  // namespace parseurl
