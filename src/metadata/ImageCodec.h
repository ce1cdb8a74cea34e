// Still pictures through FFmpeg: decode one encoded picture, convert its
// pixel format, encode it again.
#pragma once

#include <memory>
#include <optional>
#include <string>
#include <string_view>

extern "C" {
#include <libavcodec/codec_id.h>
#include <libavutil/frame.h>
}

namespace metadata {

struct FrameDeleter {
  void operator()(AVFrame* frame) const { av_frame_free(&frame); }
};
using FramePtr = std::unique_ptr<AVFrame, FrameDeleter>;

// The first picture of a JPEG, PNG, BMP, GIF, WebP or TIFF file's bytes; null
// when the bytes are none of these or do not decode.
FramePtr decodeImage(std::string_view encoded);
// The picture in another pixel format, same size; null on failure.
FramePtr convertImage(const AVFrame& source, AVPixelFormat format);
// The picture encoded as a complete file by the encoder of codec.
std::optional<std::string> encodeImage(const AVFrame& picture, AVCodecID codec);
// Whether pixels of this format can be transparent.
bool hasTransparency(AVPixelFormat format);

}  // namespace metadata
