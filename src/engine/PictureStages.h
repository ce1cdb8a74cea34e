// The picture side of a conversion after decoding, on two threads: one runs
// each input's filters, the other encodes the frames in order, asking for a
// key frame at every piece boundary of a split output.
#pragma once

#include "ConversionPlan.h"
#include "PacketEncoder.h"
#include "PipelineControl.h"
#include "StageItem.h"

namespace engine {

class PictureFilterStage {
 public:
  PictureFilterStage(ConversionPlan& plan, PipelineControl& control, StageQueue& decoded, StageQueue& filtered)
      : plan_(plan), control_(control), decoded_(decoded), filtered_(filtered) {}
  void run();

 private:
  bool filterInput(std::size_t index);

  ConversionPlan& plan_;
  PipelineControl& control_;
  StageQueue& decoded_;
  StageQueue& filtered_;
};

class PictureEncodeStage {
 public:
  PictureEncodeStage(PacketEncoder& encoder, int64_t segmentLengthUs, PipelineControl& control, StageQueue& filtered)
      : encoder_(encoder), segmentLengthUs_(segmentLengthUs), control_(control), filtered_(filtered) {}
  void run();

 private:
  PacketEncoder& encoder_;
  const int64_t segmentLengthUs_;
  PipelineControl& control_;
  StageQueue& filtered_;
};

}  // namespace engine
