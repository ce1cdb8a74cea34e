// A track or disk number with its total, and its "N/TOTAL" text form.
#pragma once

#include <optional>
#include <string>

namespace metadata {

struct NumberPair {
  int current = 0;
  int total = 0;

  bool operator==(const NumberPair&) const = default;
};

// "7" or "7/9"; surrounding spaces are allowed, anything else is not.
std::optional<NumberPair> parseNumberPair(const std::string& text);
// Lenient reading of a stored field: "7", "7/9", "07 / 09", "7/"; 0 where unreadable.
NumberPair readNumberPair(const std::string& text);
// "7/9" with a total, "7" without one, "" when both are 0.
std::string formatNumberPair(NumberPair value);

}  // namespace metadata
