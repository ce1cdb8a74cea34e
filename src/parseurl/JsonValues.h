// Lenient reading of values in the JSON that pages and players carry, where
// a number may come as text and text may hold character references.
#pragma once

#include <nlohmann/json.hpp>

#include <cstdint>
#include <optional>
#include <string>

namespace parseurl {

using Json = nlohmann::json;

// Text of a string or a number, character references decoded; empty otherwise.
std::string jsonText(const Json& value);
// Text of the member `key` of an object; empty when there is none.
std::string jsonText(const Json& object, const char* key);

// A number, a text that starts with one, or an object holding one under
// "value"; nullopt otherwise.
std::optional<double> jsonNumber(const Json& value);
std::optional<double> jsonNumber(const Json& object, const char* key);

// A whole number of pixels within sensible bounds; 0 otherwise.
int32_t jsonPixels(const Json& object, const char* key);

// The member `key` of an object, or null.
const Json& jsonMember(const Json& object, const char* key);

}  // namespace parseurl
