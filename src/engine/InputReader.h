// The first thread of a conversion: reads and decodes the inputs one after
// another and passes on the frames of each input's trimmed part, timed from
// the start of that part (pictures in microseconds, sound in samples). Before
// it marks an input's end it notes in the plan when the input ended clearly
// before its claim, so that the part is no longer than what was decoded, and
// it fails the conversion when nothing of the part could be decoded.
#pragma once

#include <cstddef>

#include "ConversionPlan.h"
#include "PipelineControl.h"
#include "StageItem.h"

namespace engine {

class InputReader {
 public:
  // A queue is null when the output has no stream of that kind.
  InputReader(ConversionPlan& plan, PipelineControl& control, StageQueue* pictures, StageQueue* sound)
      : plan_(plan), control_(control), pictures_(pictures), sound_(sound) {}

  void run();

 private:
  bool read(std::size_t index);

  ConversionPlan& plan_;
  PipelineControl& control_;
  StageQueue* pictures_;
  StageQueue* sound_;
};

}  // namespace engine
