// The preview's timeline: the records' parts one after another. Lengths are
// read from the records each time, since the caller edits them in place.
#pragma once

#include <cstddef>
#include <cstdint>

#include "videoconverter.h"

namespace engine {

struct TimelinePoint {
  std::size_t record = 0;
  int64_t partUs = 0;  // from the start of that record's part
};

class PreviewTimeline {
 public:
  PreviewTimeline(const MediaItem* records, std::size_t count) : records_(records), count_(count) {}

  std::size_t count() const { return count_; }
  const MediaItem& record(std::size_t index) const { return records_[index]; }
  // The trimmed part's length: the trim window, else the probed length.
  static int64_t partLengthUs(const MediaItem& record);
  int64_t partStartUs(std::size_t index) const;
  int64_t durationUs() const { return partStartUs(count_); }
  // The record playing at a position, clamped to the timeline; the end
  // belongs to the last record.
  TimelinePoint locate(int64_t positionUs) const;

 private:
  const MediaItem* records_;
  std::size_t count_;
};

}  // namespace engine
