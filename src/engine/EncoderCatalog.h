// Finds the encoder a profile names. Accepted, in this order: the names of
// the alias table in EncoderCatalog.cpp (the four-character codes the
// catalogue uses for the ProRes family, and a few short names such as "x264"
// or "mp3"), an FFmpeg encoder name ("libx264", "aac"), or an FFmpeg codec
// name ("h264", "hevc"), which gives that codec's preferred encoder.
#pragma once

#include <string>
#include <string_view>

extern "C" {
#include <libavcodec/avcodec.h>
}

namespace engine {

struct EncoderChoice {
  const AVCodec* encoder = nullptr;             // null when no encoder of that media type answers to the name
  std::string profile;                          // the encoder's "profile" option, when the name implies one
  AVPixelFormat pixelFormat = AV_PIX_FMT_NONE;  // the pixel format the name implies, if any
};

EncoderChoice findEncoder(std::string_view name, AVMediaType type);

}  // namespace engine
