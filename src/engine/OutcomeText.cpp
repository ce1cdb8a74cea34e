#include "OutcomeText.h"

#include <cstdio>

namespace engine {

std::string clockText(int64_t microseconds) {
  const int64_t seconds = microseconds / 1'000'000;
  char text[32];
  std::snprintf(text, sizeof text, "%02d:%02d:%02d", static_cast<int>(seconds / 3600),
                static_cast<int>(seconds / 60 % 60), static_cast<int>(seconds % 60));
  return text;
}

std::string stoppedReason(int64_t writtenUs, int64_t durationUs) {
  return "The conversion was stopped at " + clockText(writtenUs) + " of " + clockText(durationUs);
}

}  // namespace engine
