// The sentences that go with a conversion's outcome.
#pragma once

#include <cstdint>
#include <string>

#include "ConversionPlan.h"

namespace engine {

// Whole seconds as "hh:mm:ss".
std::string clockText(int64_t microseconds);

// Where a stopped conversion stood: "The conversion was stopped at 00:00:05 of 00:00:30".
std::string stoppedReason(int64_t writtenUs, int64_t durationUs);

// Where each input that ended before its claim ends, in file time: "The
// input ends at 00:00:03 of 00:00:10", with the file's name in front when
// several inputs are joined and "; " between them. Empty when none did.
std::string shortInputsWarning(const ConversionPlan& plan);

}  // namespace engine
