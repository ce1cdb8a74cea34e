// Feeds frames to an encoder and hands every packet it makes to the output.
#pragma once

#include <string>

#include "FFmpegPointers.h"
#include "OutputSink.h"

namespace engine {

class PacketEncoder {
 public:
  PacketEncoder(AVCodecContext& encoder, OutputSink& sink, int stream)
      : encoder_(encoder), sink_(sink), stream_(stream) {}

  // A null frame drains the encoder and ends the stream. False with `error` set on a failure.
  bool encode(const AVFrame* frame, std::string& error);
  AVCodecContext& encoder() { return encoder_; }

 private:
  AVCodecContext& encoder_;
  OutputSink& sink_;
  const int stream_;
};

}  // namespace engine
