// The sound filters of one input: resampling to the output format, the
// exact length (silence added when the sound ends early), volume and fades.
#pragma once

#include <cstdint>
#include <string>

#include "videoconverter.h"

extern "C" {
#include <libavutil/channel_layout.h>
#include <libavutil/frame.h>
#include <libavutil/samplefmt.h>
}

namespace engine {

struct AudioCanvas {
  int sampleRate = 0;
  AVSampleFormat sampleFormat = AV_SAMPLE_FMT_FLTP;
  AVChannelLayout channelLayout{};
  int64_t sampleCount = 0;  // exactly this many samples come out; 0: as many as come in
  // A preview started midway through the input's part: the sample of the
  // part the output starts with, and the part's length for the fade out.
  int64_t startSample = 0;
  int64_t partSamples = 0;
};

// Filters need to know where each channel goes: an unlabelled layout gets the usual one.
void labelChannels(AVFrame& frame);

class AudioFilterChain {
 public:
  // Pads: [in] the decoded sound with times in samples of its own rate, where
  // time 0 is the start of the input's trimmed part; [out] the result.
  static std::string forInput(const MediaItem& item, const AudioCanvas& canvas);
  // Silence standing in for an input without sound; pads: [out] only.
  static std::string silence(const AudioCanvas& canvas);
};

}  // namespace engine
