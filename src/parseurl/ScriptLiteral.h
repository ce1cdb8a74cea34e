// The object and array literals that scripts hand to players, read as JSON
// although they are JavaScript: names without quotes, strings in single
// quotes, comments and trailing commas are all accepted.
#pragma once

#include <optional>
#include <string_view>

#include "JsonValues.h"

namespace parseurl {

// Reads the literal that starts at `position` of `script` (a '{' or a '[')
// and moves `position` past it. A value that is no literal (a variable, a
// call, a sum) reads as null. nullopt when the literal does not close or
// nests deeper than 32 levels.
std::optional<Json> readScriptLiteral(std::string_view script, size_t& position);

}  // namespace parseurl
