/* Sizes and offsets of the public records as compiled by the C compiler. */
#pragma once

#include <stddef.h>

#ifdef __cplusplus
extern "C" {
#endif

struct RecordLayout {
  size_t decoderInfoSize;
  size_t audioStreamInfoSize;
  size_t mediaItemSize;
  size_t outputParamSize;
  size_t thumbnailOffset;
  size_t mediaInfoOffset;
  size_t watermarkOffset;
  size_t fadeVideoOffset;
  size_t hwaccelOffset;
  size_t segmentLengthOffset;
};

void recordLayoutSeenByC(struct RecordLayout* layout);

#ifdef __cplusplus
}
#endif
