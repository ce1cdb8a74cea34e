#include "ImageCodec.h"

#include <climits>
#include <cstring>

#include "ImageType.h"

extern "C" {
#include <libavcodec/avcodec.h>
#include <libavutil/pixdesc.h>
#include <libswscale/swscale.h>
}

namespace metadata {
namespace {

struct CodecContextDeleter {
  void operator()(AVCodecContext* context) const { avcodec_free_context(&context); }
};
using CodecContextPtr = std::unique_ptr<AVCodecContext, CodecContextDeleter>;

struct PacketDeleter {
  void operator()(AVPacket* packet) const { av_packet_free(&packet); }
};
using PacketPtr = std::unique_ptr<AVPacket, PacketDeleter>;

struct ScaleContextDeleter {
  void operator()(SwsContext* context) const { sws_freeContext(context); }
};
using ScaleContextPtr = std::unique_ptr<SwsContext, ScaleContextDeleter>;

AVCodecID decoderFor(ImageKind kind) {
  switch (kind) {
    case ImageKind::Jpeg: return AV_CODEC_ID_MJPEG;
    case ImageKind::Png: return AV_CODEC_ID_PNG;
    case ImageKind::Bmp: return AV_CODEC_ID_BMP;
    case ImageKind::Gif: return AV_CODEC_ID_GIF;
    case ImageKind::Webp: return AV_CODEC_ID_WEBP;
    case ImageKind::Tiff: return AV_CODEC_ID_TIFF;
    case ImageKind::Unknown: break;
  }
  return AV_CODEC_ID_NONE;
}

// JPEG decoders report full-range YUV as the old "yuvj" formats, which the
// scaler wants as the plain format plus a full-range flag.
AVPixelFormat withoutFullRangeAlias(AVPixelFormat format) {
  switch (format) {
    case AV_PIX_FMT_YUVJ420P: return AV_PIX_FMT_YUV420P;
    case AV_PIX_FMT_YUVJ422P: return AV_PIX_FMT_YUV422P;
    case AV_PIX_FMT_YUVJ444P: return AV_PIX_FMT_YUV444P;
    case AV_PIX_FMT_YUVJ440P: return AV_PIX_FMT_YUV440P;
    case AV_PIX_FMT_YUVJ411P: return AV_PIX_FMT_YUV411P;
    default: return format;
  }
}

// Sends one packet (or the end of the stream) and takes the frame it yields.
FramePtr receiveDecodedFrame(AVCodecContext* context, const AVPacket& packet) {
  if (avcodec_send_packet(context, &packet) < 0) return nullptr;
  FramePtr frame(av_frame_alloc());
  if (!frame) return nullptr;
  int result = avcodec_receive_frame(context, frame.get());
  if (result == AVERROR(EAGAIN)) {
    avcodec_send_packet(context, nullptr);
    result = avcodec_receive_frame(context, frame.get());
  }
  if (result < 0 || frame->width <= 0 || frame->height <= 0) return nullptr;
  return frame;
}

}  // namespace

FramePtr decodeImage(std::string_view encoded) {
  if (encoded.size() > static_cast<size_t>(INT_MAX - AV_INPUT_BUFFER_PADDING_SIZE)) return nullptr;
  const AVCodec* codec = avcodec_find_decoder(decoderFor(detectImageKind(encoded)));
  if (codec == nullptr) return nullptr;
  CodecContextPtr context(avcodec_alloc_context3(codec));
  if (!context || avcodec_open2(context.get(), codec, nullptr) < 0) return nullptr;
  PacketPtr packet(av_packet_alloc());
  // av_new_packet adds the zeroed padding the decoders read past the end.
  if (!packet || av_new_packet(packet.get(), static_cast<int>(encoded.size())) < 0) return nullptr;
  std::memcpy(packet->data, encoded.data(), encoded.size());
  return receiveDecodedFrame(context.get(), *packet);
}

FramePtr convertImage(const AVFrame& source, AVPixelFormat format) {
  auto sourceFormat = static_cast<AVPixelFormat>(source.format);
  AVPixelFormat plainFormat = withoutFullRangeAlias(sourceFormat);
  bool fullRange = plainFormat != sourceFormat || source.color_range == AVCOL_RANGE_JPEG;
  ScaleContextPtr scaler(sws_getContext(source.width, source.height, plainFormat, source.width, source.height, format,
                                        SWS_BICUBIC, nullptr, nullptr, nullptr));
  if (!scaler) return nullptr;
  const int* coefficients = sws_getCoefficients(SWS_CS_DEFAULT);
  sws_setColorspaceDetails(scaler.get(), coefficients, fullRange ? 1 : 0, coefficients, 1, 0, 1 << 16, 1 << 16);

  FramePtr converted(av_frame_alloc());
  if (!converted) return nullptr;
  converted->format = format;
  converted->width = source.width;
  converted->height = source.height;
  if (av_frame_get_buffer(converted.get(), 0) < 0) return nullptr;
  int rows =
      sws_scale(scaler.get(), source.data, source.linesize, 0, source.height, converted->data, converted->linesize);
  return rows == source.height ? std::move(converted) : nullptr;
}

std::optional<std::string> encodeImage(const AVFrame& picture, AVCodecID codecId) {
  const AVCodec* codec = avcodec_find_encoder(codecId);
  if (codec == nullptr) return std::nullopt;
  CodecContextPtr context(avcodec_alloc_context3(codec));
  if (!context) return std::nullopt;
  context->width = picture.width;
  context->height = picture.height;
  context->pix_fmt = static_cast<AVPixelFormat>(picture.format);
  context->time_base = AVRational{1, 1};
  if (avcodec_open2(context.get(), codec, nullptr) < 0) return std::nullopt;
  if (avcodec_send_frame(context.get(), &picture) < 0 || avcodec_send_frame(context.get(), nullptr) < 0) {
    return std::nullopt;
  }
  PacketPtr packet(av_packet_alloc());
  if (!packet || avcodec_receive_packet(context.get(), packet.get()) < 0) return std::nullopt;
  return std::string(reinterpret_cast<const char*>(packet->data), packet->size);
}

bool hasTransparency(AVPixelFormat format) {
  const AVPixFmtDescriptor* descriptor = av_pix_fmt_desc_get(format);
  return descriptor != nullptr && (descriptor->flags & (AV_PIX_FMT_FLAG_ALPHA | AV_PIX_FMT_FLAG_PAL)) != 0;
}

}  // namespace metadata
