#include "PictureFileWriter.h"

#include <algorithm>
#include <cctype>
#include <cstdio>

#include "AtomicFile.h"
#include "BgrImage.h"
#include "BmpWriter.h"
#include "FFmpegPointers.h"

extern "C" {
#include <libavcodec/avcodec.h>
#include <libswscale/swscale.h>
}

namespace engine {
namespace {

std::string lowered(std::string text) {
  std::transform(text.begin(), text.end(), text.begin(), [](unsigned char c) { return std::tolower(c); });
  return text;
}

std::string endingOf(const std::string& path) {
  const std::size_t dot = path.find_last_of('.');
  const std::size_t slash = path.find_last_of('/');
  if (dot == std::string::npos || (slash != std::string::npos && dot < slash)) return "";
  return path.substr(dot + 1);
}

FramePtr converted(const AVFrame& picture, AVPixelFormat format) {
  FramePtr out(av_frame_alloc());
  if (out == nullptr) return nullptr;
  out->width = picture.width;
  out->height = picture.height;
  out->format = format;
  if (av_frame_get_buffer(out.get(), 0) < 0) return nullptr;
  ScaleContextPtr scaler(sws_getContext(picture.width, picture.height, static_cast<AVPixelFormat>(picture.format),
                                        picture.width, picture.height, format, SWS_BICUBIC, nullptr, nullptr, nullptr));
  if (scaler == nullptr) return nullptr;
  sws_scale(scaler.get(), picture.data, picture.linesize, 0, picture.height, out->data, out->linesize);
  return out;
}

bool writeEncoded(const AVFrame& picture, AVCodecID codecId, AVPixelFormat format, const std::string& path,
                  std::string& error) {
  const AVCodec* codec = avcodec_find_encoder(codecId);
  CodecContextPtr encoder(codec != nullptr ? avcodec_alloc_context3(codec) : nullptr);
  FramePtr frame = converted(picture, format);
  if (encoder == nullptr || frame == nullptr) {
    error = "no encoder for the picture";
    return false;
  }
  encoder->width = picture.width;
  encoder->height = picture.height;
  encoder->pix_fmt = format;
  encoder->time_base = {1, 25};
  // The best quality a JPEG gives; PNG is lossless anyway.
  encoder->flags |= AV_CODEC_FLAG_QSCALE;
  encoder->global_quality = FF_QP2LAMBDA * 2;
  frame->quality = encoder->global_quality;
  PacketPtr packet(av_packet_alloc());
  if (avcodec_open2(encoder.get(), codec, nullptr) < 0 || packet == nullptr ||
      avcodec_send_frame(encoder.get(), frame.get()) < 0 || avcodec_send_frame(encoder.get(), nullptr) < 0 ||
      avcodec_receive_packet(encoder.get(), packet.get()) < 0) {
    error = "the picture could not be encoded";
    return false;
  }
  if (!writeFileAtomically(path, [&](std::FILE* file) {
        return std::fwrite(packet->data, 1, packet->size, file) == static_cast<std::size_t>(packet->size);
      })) {
    error = "cannot write " + path;
    return false;
  }
  return true;
}

bool writeBmp(const AVFrame& picture, const std::string& path, std::string& error) {
  FramePtr bgr = converted(picture, AV_PIX_FMT_BGR24);
  if (bgr == nullptr) {
    error = "out of memory";
    return false;
  }
  BgrImage image(picture.width, picture.height);
  for (int y = 0; y < picture.height; ++y) {
    std::copy_n(bgr->data[0] + static_cast<std::ptrdiff_t>(y) * bgr->linesize[0], image.rowBytes(), image.pixelAt(0, y));
  }
  if (BmpWriter::write(image, path)) return true;
  error = "cannot write " + path;
  return false;
}

}  // namespace

bool writePictureFile(const AVFrame& picture, const std::string& path, std::string& error) {
  return writePictureFile(picture, endingOf(path), path, error);
}

bool writePictureFile(const AVFrame& picture, const std::string& kind, const std::string& path, std::string& error) {
  const std::string ending = lowered(kind);
  if (ending == "png") return writeEncoded(picture, AV_CODEC_ID_PNG, AV_PIX_FMT_RGB24, path, error);
  if (ending == "jpg" || ending == "jpeg") return writeEncoded(picture, AV_CODEC_ID_MJPEG, AV_PIX_FMT_YUVJ420P, path, error);
  if (ending == "bmp") return writeBmp(picture, path, error);
  error = "a picture is written as PNG, JPEG or BMP, not " + (kind.empty() ? path : kind);
  return false;
}

}  // namespace engine
