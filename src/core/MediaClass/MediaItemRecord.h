// The converter's input record for one file node: its path, its probed
// record, and every editing setting the node carries.
#pragma once

#include <QString>

#include <cstdint>

#include "ValueObject/NodeInfo.h"
#include "videoconverter.h"

namespace MediaItemRecord {

// Why the node's paths do not fit the record (input path at most 1,023
// bytes, watermark picture path at most 1,024); empty when they do.
QString whyRefused(const NodeInfo& node);

// Zero-fills `item` and fills it from a file node whose paths fit.
void fill(const NodeInfo& node, MediaItem& item);

// The record's volume for a volume in percent: unchanged up to 100 %, above
// that compressed to a third, then scaled so that 100 % is 256.
int32_t volumeLevel(int32_t percent);

}  // namespace MediaItemRecord
