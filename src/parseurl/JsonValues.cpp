#include "JsonValues.h"

#include <charconv>
#include <cmath>

#include "Entities.h"

namespace parseurl {
namespace {

const Json kNull;

}  // namespace

const Json& jsonMember(const Json& object, const char* key) {
  if (!object.is_object()) return kNull;
  const auto found = object.find(key);
  return found == object.end() ? kNull : *found;
}

std::string jsonText(const Json& value) {
  if (value.is_string()) return decodeEntities(value.get_ref<const std::string&>());
  if (value.is_number_integer()) return std::to_string(value.get<int64_t>());
  if (value.is_number_unsigned()) return std::to_string(value.get<uint64_t>());
  if (value.is_number_float()) {
    const double number = value.get<double>();
    return std::isfinite(number) ? std::to_string(number) : std::string();
  }
  return {};
}

std::string jsonText(const Json& object, const char* key) { return jsonText(jsonMember(object, key)); }

std::optional<double> jsonNumber(const Json& value) {
  if (value.is_number()) {
    const double number = value.get<double>();
    return std::isfinite(number) ? std::optional<double>(number) : std::nullopt;
  }
  if (value.is_string()) {
    const std::string& text = value.get_ref<const std::string&>();
    const char* start = text.data();
    while (start < text.data() + text.size() && *start == ' ') ++start;
    double number = 0;
    const auto [end, error] = std::from_chars(start, text.data() + text.size(), number);
    if (error != std::errc() || end == start || !std::isfinite(number)) return std::nullopt;
    return number;
  }
  if (value.is_object()) return jsonNumber(jsonMember(value, "value"));
  return std::nullopt;
}

std::optional<double> jsonNumber(const Json& object, const char* key) { return jsonNumber(jsonMember(object, key)); }

int32_t jsonPixels(const Json& object, const char* key) {
  const std::optional<double> number = jsonNumber(object, key);
  if (!number || *number < 1 || *number > 16384) return 0;
  return static_cast<int32_t>(*number);
}

}  // namespace parseurl
