#include "FilterText.h"

#include <charconv>

namespace engine {

std::string decimal(double value) {
  char text[64];
  const auto result = std::to_chars(text, text + sizeof text, value);
  return std::string(text, result.ptr);
}

std::string ratio(AVRational value) { return std::to_string(value.num) + "/" + std::to_string(value.den); }

std::string chain(const std::vector<std::string>& filters) {
  std::string joined;
  for (const std::string& filter : filters) {
    if (filter.empty()) continue;
    if (!joined.empty()) joined += ',';
    joined += filter;
  }
  return joined;
}

}  // namespace engine
