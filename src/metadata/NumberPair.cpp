#include "NumberPair.h"

#include <cctype>
#include <charconv>
#include <string_view>

namespace metadata {
namespace {

std::string_view trimmed(std::string_view text) {
  while (!text.empty() && std::isspace(static_cast<unsigned char>(text.front()))) text.remove_prefix(1);
  while (!text.empty() && std::isspace(static_cast<unsigned char>(text.back()))) text.remove_suffix(1);
  return text;
}

// The whole of text as a non-negative int, or nullopt.
std::optional<int> wholeNumber(std::string_view text) {
  text = trimmed(text);
  int value = 0;
  auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), value);
  if (text.empty() || error != std::errc() || end != text.data() + text.size() || value < 0) return std::nullopt;
  return value;
}

// The digits text starts with as an int, 0 when there are none.
int leadingNumber(std::string_view text) {
  text = trimmed(text);
  int value = 0;
  std::from_chars(text.data(), text.data() + text.size(), value);
  return value < 0 ? 0 : value;
}

}  // namespace

std::optional<NumberPair> parseNumberPair(const std::string& text) {
  std::string_view view(text);
  size_t slash = view.find('/');
  std::optional<int> current = wholeNumber(view.substr(0, slash));
  if (!current) return std::nullopt;
  if (slash == std::string_view::npos) return NumberPair{*current, 0};
  std::optional<int> total = wholeNumber(view.substr(slash + 1));
  if (!total) return std::nullopt;
  return NumberPair{*current, *total};
}

NumberPair readNumberPair(const std::string& text) {
  std::string_view view(text);
  size_t slash = view.find('/');
  if (slash == std::string_view::npos) return {leadingNumber(view), 0};
  return {leadingNumber(view.substr(0, slash)), leadingNumber(view.substr(slash + 1))};
}

std::string formatNumberPair(NumberPair value) {
  if (value.total > 0) return std::to_string(value.current) + "/" + std::to_string(value.total);
  if (value.current > 0) return std::to_string(value.current);
  return {};
}

}  // namespace metadata
