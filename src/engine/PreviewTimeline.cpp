#include "PreviewTimeline.h"

#include <algorithm>

namespace engine {

int64_t PreviewTimeline::partLengthUs(const MediaItem& record) {
  // Copies: the record's fields are packed, and the standard algorithms take references.
  const int64_t probedUs = record.m_Info.m_Duration;
  const int64_t trimStartUs = record.m_MediaStartPos;
  const int64_t trimEndUs = record.m_MediaEndPos;
  const int64_t durationUs = std::max<int64_t>(0, probedUs);
  const int64_t startUs = std::clamp<int64_t>(trimStartUs, 0, durationUs);
  const int64_t endUs = trimEndUs > 0 ? std::min<int64_t>(trimEndUs, durationUs) : durationUs;
  return std::max<int64_t>(0, endUs - startUs);
}

int64_t PreviewTimeline::partStartUs(std::size_t index) const {
  int64_t start = 0;
  for (std::size_t i = 0; i < index && i < count_; ++i) start += partLengthUs(records_[i]);
  return start;
}

TimelinePoint PreviewTimeline::locate(int64_t positionUs) const {
  int64_t start = 0;
  for (std::size_t i = 0; i < count_; ++i) {
    const int64_t length = partLengthUs(records_[i]);
    if (positionUs < start + length || i + 1 == count_) {
      return {i, std::clamp<int64_t>(positionUs - start, 0, length)};
    }
    start += length;
  }
  return {};
}

}  // namespace engine
