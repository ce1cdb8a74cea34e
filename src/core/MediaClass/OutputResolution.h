// The picture size a conversion writes for a node: the profile's fixed size,
// or the crop rectangle shaped by the fit mode and rotation and fitted into
// the profile's bounds, rounded down to a multiple of 4.
#pragma once

#include <QSizeF>

#include "ValueObject/NodeInfo.h"

namespace OutputResolution {

// (0, 0) for a profile without video.
QSizeF forNode(const NodeInfo& node);

}  // namespace OutputResolution
