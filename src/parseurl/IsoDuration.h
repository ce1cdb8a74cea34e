// Durations written as ISO 8601 ("PT1H2M3.5S") or as plain seconds.
#pragma once

#include <optional>
#include <string_view>

namespace parseurl {

// Seconds of "P[nD]T[nH][nM][n.nS]" (weeks, days, hours, minutes and seconds,
// each with a decimal fraction allowed) or of a plain number of seconds;
// nullopt for anything else.
std::optional<double> durationSeconds(std::string_view text);

}  // namespace parseurl
