// The sound side of a conversion after decoding, on one thread: each input's
// filters, then the samples of all inputs cut into the frames the encoder
// takes, timed by their count so that the inputs follow on without a gap.
#pragma once

#include "ConversionPlan.h"
#include "PacketEncoder.h"
#include "PipelineControl.h"
#include "StageItem.h"

namespace engine {

class SoundStage {
 public:
  SoundStage(ConversionPlan& plan, PacketEncoder& encoder, PipelineControl& control, StageQueue& decoded)
      : plan_(plan), encoder_(encoder), control_(control), decoded_(decoded) {}
  void run();

 private:
  class SampleQueue;
  bool filterInput(std::size_t index, SampleQueue& samples);

  ConversionPlan& plan_;
  PacketEncoder& encoder_;
  PipelineControl& control_;
  StageQueue& decoded_;
};

}  // namespace engine
