// Everything decided before a conversion writes anything: each input opened
// and checked, its trimmed part, its watermark, and the output's format and
// encoders. Whatever is wrong with the inputs or settings is found here, so
// that a failing conversion leaves no file behind. Where each input's part
// lies on the output is known only as the inputs are read, since one may
// turn out shorter than it claims.
#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <vector>

#include "AudioFilterChain.h"
#include "FFmpegPointers.h"
#include "InputPlan.h"
#include "PipelineControl.h"
#include "VideoFilterChain.h"
#include "videoconverter.h"

namespace engine {

struct ConversionPlan {
  std::vector<std::unique_ptr<InputPlan>> inputs;
  std::string outputPath;
  const AVOutputFormat* format = nullptr;
  int64_t segmentLengthUs = 0;
  CodecContextPtr videoEncoder;  // null: the output has no pictures
  CodecContextPtr audioEncoder;  // null: the output has no sound
  int64_t durationUs = 0;        // the sum of the inputs' lengths as the files claim them

  // Where the part of input `index` begins on the output: the parts of the
  // inputs before it follow one another, each as long as it turned out to
  // be, so this holds once those inputs have been read. An index past the
  // last input gives the output's whole length.
  int64_t partStartUs(std::size_t index) const;
  // The pictures and the samples of input `index` lasting lengthUs from its
  // part's start: each part gets the frames (samples) between its rounded
  // start and end, so that rounding never adds up over many inputs.
  VideoCanvas videoCanvas(std::size_t index, int64_t lengthUs) const;
  AudioCanvas audioCanvas(std::size_t index, int64_t lengthUs) const;

  // Null with `error` set when the conversion cannot be done, or with an empty
  // error when `control` was stopped meanwhile.
  static std::unique_ptr<ConversionPlan> make(const std::vector<MediaItem>& items, const OutputParam& output,
                                              const PipelineControl& control, std::string& error);
};

}  // namespace engine
