/* The public header as a C compiler lays it out, for comparison with C++. */
#include <stddef.h>

#include "RecordLayoutC.h"
#include "videoconverter.h"

void recordLayoutSeenByC(struct RecordLayout* layout) {
  layout->decoderInfoSize = sizeof(DECODER_INFO);
  layout->audioStreamInfoSize = sizeof(AudioStremInfo);
  layout->mediaItemSize = sizeof(MediaItem);
  layout->outputParamSize = sizeof(OutputParam);
  layout->thumbnailOffset = offsetof(DECODER_INFO, m_Thumbnail);
  layout->mediaInfoOffset = offsetof(MediaItem, m_Info);
  layout->watermarkOffset = offsetof(MediaItem, m_watermarkInfo);
  layout->fadeVideoOffset = offsetof(MediaItem, m_fadeVideoInfo);
  layout->hwaccelOffset = offsetof(MediaItem, m_bEnableHwaccel);
  layout->segmentLengthOffset = offsetof(OutputParam, m_SegmentLength);
}
