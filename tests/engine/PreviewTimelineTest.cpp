// Where a position of the preview's timeline falls among trimmed records.
#include <gtest/gtest.h>

#include "PreviewTimeline.h"

namespace engine {
namespace {

MediaItem part(int64_t durationUs, int64_t startUs, int64_t endUs) {
  MediaItem record{};
  record.m_Info.m_Duration = durationUs;
  record.m_MediaStartPos = startUs;
  record.m_MediaEndPos = endUs;
  return record;
}

TEST(PreviewTimelineTest, PartsFollowOneAnotherAndPositionsFindTheirRecord) {
  // 10 s whole; 2 s to 5 s; from 4 s with an end past the file's; a start past the end.
  const MediaItem records[] = {part(10'000'000, 0, 0), part(8'000'000, 2'000'000, 5'000'000),
                               part(6'000'000, 4'000'000, 9'000'000), part(3'000'000, 5'000'000, 0)};
  const PreviewTimeline timeline(records, 4);
  EXPECT_EQ(PreviewTimeline::partLengthUs(records[2]), 2'000'000);
  EXPECT_EQ(PreviewTimeline::partLengthUs(records[3]), 0);
  EXPECT_EQ(timeline.durationUs(), 15'000'000);
  EXPECT_EQ(timeline.partStartUs(2), 13'000'000);

  EXPECT_EQ(timeline.locate(9'999'999).record, 0u);
  const TimelinePoint second = timeline.locate(10'000'000);
  EXPECT_EQ(second.record, 1u);
  EXPECT_EQ(second.partUs, 0);
  EXPECT_EQ(timeline.locate(14'500'000).partUs, 1'500'000);
  // Before the start and past the end are clamped; the end belongs to the last record.
  EXPECT_EQ(timeline.locate(-5).partUs, 0);
  const TimelinePoint end = timeline.locate(99'000'000);
  EXPECT_EQ(end.record, 3u);
  EXPECT_EQ(end.partUs, 0);
}

}  // namespace
}  // namespace engine
