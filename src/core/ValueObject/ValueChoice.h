// A labelled value of an editor's choice list, such as "Gray" standing for
// the effect id 1036. Editors show the labels in list order and store the
// values; a stored value selects the position holding the same value.
#pragma once

#include <cstdint>
#include <span>

struct ValueChoice {
  const char* label;
  int32_t value;
};

// Position of the choice whose value is `value`, or -1 when none holds it.
inline int indexOfValue(std::span<const ValueChoice> choices, int32_t value) {
  for (size_t index = 0; index < choices.size(); ++index) {
    if (choices[index].value == value) return static_cast<int>(index);
  }
  return -1;
}
