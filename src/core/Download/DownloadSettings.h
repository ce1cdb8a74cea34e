// The process-wide download settings that page analysis reads.
#pragma once

#include <cstdint>

// The quality rule of the file chosen from a page: 0 highest, 1 middle, 2
// lowest. 0 at every start.
extern int32_t qualityParam;
