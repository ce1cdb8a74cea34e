// The trim times of one list node, in whole seconds from the start of the
// file. The conversion turns them into microseconds.
#pragma once

#include <cstdint>

class TrimSettingInfo {
 public:
  int32_t startTime() const { return startTime_; }
  void setStartTime(int32_t seconds) { startTime_ = seconds; }
  // 0 means not set.
  int32_t endTime() const { return endTime_; }
  void setEndTime(int32_t seconds) { endTime_ = seconds; }

  bool operator==(const TrimSettingInfo&) const = default;

 private:
  int32_t startTime_ = 0;
  int32_t endTime_ = 0;
};
