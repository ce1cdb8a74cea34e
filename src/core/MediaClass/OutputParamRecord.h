// The converter's output record for a node: where to write, the container
// and encoders of the node's profile, the picture size and frame rate, and
// the length of the pieces a split output is cut into.
#pragma once

#include <QString>
#include <QStringList>

#include <cstdint>

#include "ValueObject/NodeInfo.h"
#include "videoconverter.h"

namespace OutputParamRecord {

struct FrameRate {
  int32_t numerator;
  int32_t denominator;
};

// 23.97, 29.97 and 59.94 as 1001-based rates, 0 or less as 30, any other
// rate truncated to whole frames per second.
FrameRate frameRate(double framesPerSecond);

// Microseconds per output piece: every N minutes, or the length divided into
// N clips with the remainder rounding the piece up; 0 for a single output.
int64_t segmentLengthUs(const NodeInfo& node);

// "<folder>/<name>.<extension>", or while that exists "<folder>/<name>(<n>).<extension>"
// with n counting from 0. An output cut into pieces also needs its first piece free.
QString freeOutputPath(const QString& folder, const QString& name, const QString& extension, bool cutIntoPieces);

// Piece `index` of an output cut into pieces: "<folder>/<name>_<index>.<extension>".
QString piecePath(const QString& outputPath, int index);

// What a conversion to `outputPath` wrote: the output itself, or its pieces
// in order; empty when nothing is there.
QStringList writtenFiles(const QString& outputPath);

// Why `outputPath` or the profile's names do not fit the record; empty when they do.
QString whyRefused(const NodeInfo& node, const QString& outputPath);

// Zero-fills `param` and fills it for writing `node` to `outputPath`.
void fill(const NodeInfo& node, const QString& outputPath, OutputParam& param);

}  // namespace OutputParamRecord
