#include "StreamDecoder.h"

#include "HardwareDevice.h"

extern "C" {
#include <libavutil/pixdesc.h>
}

namespace engine {
namespace {

// Enough packets to reach the first picture of any common stream.
constexpr std::size_t kMostReplayedPackets = 256;

bool isRecoverable(int result) {
  return result >= 0 || result == AVERROR(EAGAIN) || result == AVERROR_EOF || result == AVERROR_INVALIDDATA;
}

AVPixelFormat hardwareFormatFor(const AVCodec& decoder, const HardwareDevice& device) {
  for (int i = 0;; ++i) {
    const AVCodecHWConfig* config = avcodec_get_hw_config(&decoder, i);
    if (config == nullptr) return AV_PIX_FMT_NONE;
    if (config->device_type == device.type && (config->methods & AV_CODEC_HW_CONFIG_METHOD_HW_DEVICE_CTX)) {
      return config->pix_fmt;
    }
  }
}

}  // namespace

std::unique_ptr<StreamDecoder> StreamDecoder::open(const AVStream& stream, bool tryHardware, std::string& error) {
  std::unique_ptr<StreamDecoder> decoder(new StreamDecoder(stream));
  const bool video = stream.codecpar->codec_type == AVMEDIA_TYPE_VIDEO;
  if (video && tryHardware && decoder->openCodec(true)) return decoder;
  if (decoder->openCodec(false)) return decoder;
  const AVCodecDescriptor* codec = avcodec_descriptor_get(stream.codecpar->codec_id);
  error = std::string("no decoder for the ") + (codec != nullptr ? codec->name : "unknown") + " stream " +
          std::to_string(stream.index);
  return nullptr;
}

bool StreamDecoder::openCodec(bool useHardware) {
  const AVCodec* codec = avcodec_find_decoder(stream_.codecpar->codec_id);
  if (codec == nullptr) return false;
  const HardwareDevice* device = useHardware ? hardwareDevice() : nullptr;
  hardwareFormat_ = device != nullptr ? hardwareFormatFor(*codec, *device) : AV_PIX_FMT_NONE;
  if (useHardware && hardwareFormat_ == AV_PIX_FMT_NONE) return false;
  context_.reset(avcodec_alloc_context3(codec));
  if (context_ == nullptr || avcodec_parameters_to_context(context_.get(), stream_.codecpar) < 0) return false;
  context_->pkt_timebase = stream_.time_base;
  if (useHardware) {
    context_->hw_device_ctx = av_buffer_ref(device->context);
    context_->opaque = this;
    context_->get_format = &StreamDecoder::chooseFormat;
  } else {
    context_->thread_count = 0;  // as many as the machine has
  }
  return avcodec_open2(context_.get(), codec, nullptr) >= 0;
}

AVPixelFormat StreamDecoder::chooseFormat(AVCodecContext* context, const AVPixelFormat* offered) {
  const auto* self = static_cast<const StreamDecoder*>(context->opaque);
  for (const AVPixelFormat* format = offered; *format != AV_PIX_FMT_NONE; ++format) {
    if (*format == self->hardwareFormat_) return *format;
  }
  // The device cannot take this stream: decode in software after all.
  for (const AVPixelFormat* format = offered; *format != AV_PIX_FMT_NONE; ++format) {
    if (!(av_pix_fmt_desc_get(*format)->flags & AV_PIX_FMT_FLAG_HWACCEL)) return *format;
  }
  return AV_PIX_FMT_NONE;
}

bool StreamDecoder::fallBackToSoftware() {
  if (!openCodec(false)) return false;
  waitingForKeyframe_ = producedFrames_;
  std::deque<PacketPtr> replay;
  replay.swap(unanswered_);
  for (const PacketPtr& packet : replay) {
    if (!isRecoverable(avcodec_send_packet(context_.get(), packet.get()))) return false;
  }
  return true;
}

int StreamDecoder::send(const AVPacket* packet) {
  if (packet != nullptr && waitingForKeyframe_) {
    if (!(packet->flags & AV_PKT_FLAG_KEY)) return 0;
    waitingForKeyframe_ = false;
  }
  const bool onDevice = hardwareFormat_ != AV_PIX_FMT_NONE;
  const bool kept = onDevice && !producedFrames_ && packet != nullptr && unanswered_.size() < kMostReplayedPackets;
  if (kept) unanswered_.emplace_back(av_packet_clone(packet));
  int result = avcodec_send_packet(context_.get(), packet);
  if (onDevice && !isRecoverable(result)) {
    if (!fallBackToSoftware()) return result;
    // A kept packet went to the software decoder with the replay.
    result = kept ? 0 : send(packet);
  }
  return result == AVERROR_INVALIDDATA ? 0 : result;
}

void StreamDecoder::flush() {
  avcodec_flush_buffers(context_.get());
  unanswered_.clear();
}

int StreamDecoder::receive(AVFrame* frame) {
  if (hardwareFormat_ == AV_PIX_FMT_NONE) return avcodec_receive_frame(context_.get(), frame);
  if (hardwareFrame_ == nullptr) hardwareFrame_.reset(av_frame_alloc());
  int result = avcodec_receive_frame(context_.get(), hardwareFrame_.get());
  if (result < 0 && !isRecoverable(result)) {
    if (!fallBackToSoftware()) return result;
    return receive(frame);
  }
  if (result < 0) return result;
  if (hardwareFrame_->format != hardwareFormat_) {
    av_frame_move_ref(frame, hardwareFrame_.get());
  } else {
    result = av_hwframe_transfer_data(frame, hardwareFrame_.get(), 0);
    if (result >= 0) result = av_frame_copy_props(frame, hardwareFrame_.get());
    av_frame_unref(hardwareFrame_.get());
    if (result < 0) return fallBackToSoftware() ? AVERROR(EAGAIN) : result;
  }
  producedFrames_ = true;
  unanswered_.clear();
  return 0;
}

}  // namespace engine
