// Everything decided before a conversion writes anything: each input opened
// and checked, its trimmed part and its share of the output's frames and
// samples, its filters and watermark, and the output's format and encoders.
// Whatever is wrong with the inputs or settings is found here, so that a
// failing conversion leaves no file behind.
#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <vector>

#include "FFmpegPointers.h"
#include "InputPlan.h"
#include "PipelineControl.h"
#include "videoconverter.h"

namespace engine {

struct ConversionPlan {
  std::vector<std::unique_ptr<InputPlan>> inputs;
  std::string outputPath;
  const AVOutputFormat* format = nullptr;
  int64_t segmentLengthUs = 0;
  CodecContextPtr videoEncoder;  // null: the output has no pictures
  CodecContextPtr audioEncoder;  // null: the output has no sound
  int64_t durationUs = 0;

  // Null with `error` set when the conversion cannot be done, or with an empty
  // error when `control` was stopped meanwhile.
  static std::unique_ptr<ConversionPlan> make(const std::vector<MediaItem>& items, const OutputParam& output,
                                              const PipelineControl& control, std::string& error);
};

}  // namespace engine
