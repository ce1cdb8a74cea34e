// Puts the edits of a convert request into one list item's profile and
// settings objects, as the editors would, after checking them against the
// item's own picture size, length and audio streams.
#pragma once

#include <QString>

#include "ConvertRequest.h"
#include "ValueObject/NodeInfo.h"

// Why an edit does not fit this item (nothing is changed then); empty when
// every edit was made.
QString applyConvertRequest(const ConvertRequest& request, NodeInfo& node);
