#include "OutcomeText.h"

#include <cstdio>
#include <filesystem>

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

std::string shortInputsWarning(const ConversionPlan& plan) {
  std::string warning;
  for (const auto& input : plan.inputs) {
    if (!input->shortLengthUs) continue;
    if (!warning.empty()) warning += "; ";
    if (plan.inputs.size() > 1) warning += std::filesystem::path(input->path).filename().string() + ": ";
    warning += "The input ends at " + clockText(input->startUs + *input->shortLengthUs) + " of " +
               clockText(input->startUs + input->lengthUs);
  }
  return warning;
}

}  // namespace engine
