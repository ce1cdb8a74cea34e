// Pieces of filter descriptions: numbers written the same way whatever the
// process locale, and chains joined with commas.
#pragma once

#include <string>
#include <vector>

extern "C" {
#include <libavutil/rational.h>
}

namespace engine {

// Shortest exact text of a number, always with a '.' as decimal point.
std::string decimal(double value);
// "num/den".
std::string ratio(AVRational value);
// The non-empty parts joined with ",".
std::string chain(const std::vector<std::string>& filters);

}  // namespace engine
