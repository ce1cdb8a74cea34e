#include "IsoDuration.h"

#include <cctype>
#include <charconv>
#include <cmath>

namespace parseurl {
namespace {

// One number at the front of `text`, which is moved past it.
std::optional<double> takeNumber(std::string_view& text) {
  double value = 0;
  const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), value);
  if (error != std::errc() || end == text.data() || !std::isfinite(value) || value < 0) return std::nullopt;
  text.remove_prefix(static_cast<size_t>(end - text.data()));
  return value;
}

}  // namespace

std::optional<double> durationSeconds(std::string_view text) {
  while (!text.empty() && std::isspace(static_cast<unsigned char>(text.front()))) text.remove_prefix(1);
  while (!text.empty() && std::isspace(static_cast<unsigned char>(text.back()))) text.remove_suffix(1);
  if (text.empty()) return std::nullopt;
  if (text.front() != 'P' && text.front() != 'p') {
    std::string_view rest = text;
    const std::optional<double> seconds = takeNumber(rest);
    return seconds && rest.empty() ? seconds : std::nullopt;
  }
  text.remove_prefix(1);
  double total = 0;
  bool inTime = false;
  bool anyPart = false;
  while (!text.empty()) {
    if (text.front() == 'T' || text.front() == 't') {
      inTime = true;
      text.remove_prefix(1);
      continue;
    }
    const std::optional<double> value = takeNumber(text);
    if (!value || text.empty()) return std::nullopt;
    const char unit = static_cast<char>(std::toupper(static_cast<unsigned char>(text.front())));
    text.remove_prefix(1);
    if (!inTime && unit == 'W') {
      total += *value * 7 * 86400;
    } else if (!inTime && unit == 'D') {
      total += *value * 86400;
    } else if (inTime && unit == 'H') {
      total += *value * 3600;
    } else if (inTime && unit == 'M') {
      total += *value * 60;
    } else if (inTime && unit == 'S') {
      total += *value;
    } else {
      return std::nullopt;
    }
    anyPart = true;
  }
  return anyPart ? std::optional<double>(total) : std::nullopt;
}

}  // namespace parseurl
