// The time an analysis step may still take.
#pragma once

#include <chrono>

namespace parseurl {

class Deadline {
 public:
  explicit Deadline(std::chrono::milliseconds budget) : end_(std::chrono::steady_clock::now() + budget) {}

  std::chrono::milliseconds remaining() const {
    const auto left = std::chrono::duration_cast<std::chrono::milliseconds>(end_ - std::chrono::steady_clock::now());
    return left.count() > 0 ? left : std::chrono::milliseconds(0);
  }
  bool passed() const { return remaining().count() == 0; }

 private:
  std::chrono::steady_clock::time_point end_;
};

}  // namespace parseurl
