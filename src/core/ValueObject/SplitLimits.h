// How far a node's output may be split, from its length in whole seconds: at
// most one clip a second, and pieces of at most the minutes it has begun.
#pragma once

#include <cstdint>

#include "ValueObject/SettingRange.h"

namespace SplitLimits {

// The minutes begun: 0 s gives 0, 61 s gives 2, 120 s gives 2.
constexpr int32_t startedMinutes(int32_t seconds) { return seconds / 60 + 1 - (seconds % 60 == 0 ? 1 : 0); }

// Minutes a piece lasts when splitting by minutes.
constexpr SettingRange minutesRange(int32_t seconds) { return {1, startedMinutes(seconds), 0}; }
// Number of clips when splitting into clips.
constexpr SettingRange clipsRange(int32_t seconds) { return {1, seconds, 1}; }

}  // namespace SplitLimits
