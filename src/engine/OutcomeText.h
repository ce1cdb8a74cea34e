// The sentences that go with a conversion's outcome.
#pragma once

#include <cstdint>
#include <string>

namespace engine {

// Whole seconds as "hh:mm:ss".
std::string clockText(int64_t microseconds);

// Where a stopped conversion stood: "The conversion was stopped at 00:00:05 of 00:00:30".
std::string stoppedReason(int64_t writtenUs, int64_t durationUs);

}  // namespace engine
