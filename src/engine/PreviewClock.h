// The preview's clock: the sound heard while the preview plays sound, so
// that the pictures follow it, else the system's steady clock.
#pragma once

#include <chrono>
#include <cstdint>

namespace engine {

class PreviewClock {
 public:
  // Counts on from positionUs, on the sound heard since the sound was last
  // flushed when onSound, else on the system clock.
  void restart(int64_t positionUs, bool onSound) {
    baseUs_ = positionUs;
    onSound_ = onSound;
    started_ = std::chrono::steady_clock::now();
  }
  // Goes on from where it stands on the system clock (the sound has ended or failed).
  void leaveSound(int64_t soundHeardUs) { restart(now(soundHeardUs), false); }

  bool onSound() const { return onSound_; }
  int64_t now(int64_t soundHeardUs) const {
    if (onSound_) return baseUs_ + soundHeardUs;
    return baseUs_ +
           std::chrono::duration_cast<std::chrono::microseconds>(std::chrono::steady_clock::now() - started_).count();
  }

 private:
  int64_t baseUs_ = 0;
  bool onSound_ = false;
  std::chrono::steady_clock::time_point started_ = std::chrono::steady_clock::now();
};

}  // namespace engine
