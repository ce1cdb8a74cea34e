// The range an editor allows for a numeric setting and the setting's value
// in a fresh settings object. Each settings class declares its ranges beside
// its fields; the record fill, the command line's checks and the windows'
// sliders all read them from there.
#pragma once

#include <algorithm>
#include <cstdint>

struct SettingRange {
  int32_t minimum = 0;
  int32_t maximum = 0;
  int32_t defaultValue = 0;

  constexpr bool contains(int32_t value) const { return value >= minimum && value <= maximum; }
  constexpr int32_t clamped(int32_t value) const { return std::clamp(value, minimum, maximum); }
};
