// What travels between the threads of a conversion: a frame of one input, or
// the mark that an input has nothing more of that kind.
#pragma once

#include <cstddef>

#include "BlockingQueue.h"
#include "FFmpegPointers.h"

namespace engine {

struct StageItem {
  std::size_t input = 0;
  FramePtr frame;  // null: the end of this input
};

using StageQueue = BlockingQueue<StageItem>;

}  // namespace engine
