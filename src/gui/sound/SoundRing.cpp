#include "SoundRing.h"

#include <algorithm>
#include <cstring>

SoundRing::SoundRing(qsizetype capacityFrames, int bytesPerFrame, QObject* parent)
    : QIODevice(parent), bytesPerFrame_(bytesPerFrame), store_(static_cast<size_t>(capacityFrames * bytesPerFrame)) {
  open(QIODevice::ReadOnly | QIODevice::Unbuffered);
}

int SoundRing::push(const char* frames, int frameCount) {
  if (frames == nullptr || frameCount <= 0) return 0;
  bool wasEmpty = false;
  int taken = 0;
  {
    std::lock_guard lock(mutex_);
    taken = static_cast<int>(std::min<size_t>(frameCount, (store_.size() - used_) / bytesPerFrame_));
    const size_t bytes = static_cast<size_t>(taken) * bytesPerFrame_;
    const size_t tail = (head_ + used_) % store_.size();
    const size_t first = std::min(bytes, store_.size() - tail);
    std::memcpy(store_.data() + tail, frames, first);
    std::memcpy(store_.data(), frames + first, bytes - first);
    wasEmpty = used_ == 0;
    used_ += bytes;
  }
  // An output that found nothing to pull waits for this before pulling again.
  if (wasEmpty && taken > 0) QMetaObject::invokeMethod(this, &SoundRing::readyRead, Qt::QueuedConnection);
  return taken;
}

void SoundRing::clear() {
  std::lock_guard lock(mutex_);
  head_ = 0;
  used_ = 0;
}

void SoundRing::setHeld(bool held) {
  std::lock_guard lock(mutex_);
  held_ = held;
}

qint64 SoundRing::pulledBytes() const {
  std::lock_guard lock(mutex_);
  return pulled_;
}

void SoundRing::resetPulledBytes() {
  std::lock_guard lock(mutex_);
  pulled_ = 0;
}

qint64 SoundRing::bytesAvailable() const {
  std::lock_guard lock(mutex_);
  return held_ ? 0 : static_cast<qint64>(used_);
}

qint64 SoundRing::readData(char* data, qint64 maxSize) {
  size_t bytes = 0;
  {
    std::lock_guard lock(mutex_);
    if (held_) return 0;
    bytes = std::min(static_cast<size_t>(maxSize), used_) / bytesPerFrame_ * bytesPerFrame_;
    const size_t first = std::min(bytes, store_.size() - head_);
    std::memcpy(data, store_.data() + head_, first);
    std::memcpy(data + first, store_.data(), bytes - first);
    head_ = (head_ + bytes) % store_.size();
    used_ -= bytes;
    pulled_ += static_cast<qint64>(bytes);
  }
  if (bytes > 0) emit pulled();
  return static_cast<qint64>(bytes);
}

qint64 SoundRing::writeData(const char* /*data*/, qint64 /*maxSize*/) { return -1; }
