// Opens the encoders of an output with the settings of its OutputParam,
// negotiating pixel format, sample format, rate and channel layout with what
// each encoder accepts. A refusal comes back as a sentence saying why.
#pragma once

#include <string>

#include "FFmpegPointers.h"
#include "videoconverter.h"

namespace engine {

struct VideoEncoderRequest {
  int width = 0;
  int height = 0;
  AVRational frameRate{30, 1};
  bool keyframesOnRequest = false;  // pictures marked as key frames start a new group
};

// What the first input's sound is like: the rate and channels are used when
// the output does not say, the sample format is kept when the encoder takes it.
struct AudioEncoderRequest {
  int sampleRate = 0;
  int channels = 0;
  AVSampleFormat sampleFormat = AV_SAMPLE_FMT_NONE;
};

// The format the output is written in: the named container, or the one its file extension suggests.
const AVOutputFormat* outputFormatFor(const OutputParam& output);
// Whether the container has a codec of that type of its own, used when no encoder is named.
bool containerCarries(const AVOutputFormat& container, AVMediaType type);

CodecContextPtr openVideoEncoder(const OutputParam& output, const AVOutputFormat& container,
                                 const VideoEncoderRequest& request, std::string& error);
CodecContextPtr openAudioEncoder(const OutputParam& output, const AVOutputFormat& container,
                                 const AudioEncoderRequest& request, std::string& error);
// The frame rate of the output: its own, else the source's, else 30.
AVRational outputFrameRate(const OutputParam& output, AVRational sourceRate);

}  // namespace engine
