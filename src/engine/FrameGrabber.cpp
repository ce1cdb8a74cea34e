#include "FrameGrabber.h"

namespace engine {
namespace {

// Bounds the work for a stream whose timestamps never reach the wanted time.
constexpr int kMostFramesDecoded = 1500;

CodecContextPtr openDecoder(const AVStream& stream) {
  const AVCodec* decoder = avcodec_find_decoder(stream.codecpar->codec_id);
  if (decoder == nullptr) return nullptr;
  CodecContextPtr context(avcodec_alloc_context3(decoder));
  if (context == nullptr || avcodec_parameters_to_context(context.get(), stream.codecpar) < 0) return nullptr;
  context->pkt_timebase = stream.time_base;
  // Slice threads only: frame threads would delay every frame by the thread
  // count, while a thumbnail needs one frame soon after a keyframe.
  context->thread_type = FF_THREAD_SLICE;
  context->thread_count = 0;  // as many as the machine has
  if (avcodec_open2(context.get(), decoder, nullptr) < 0) return nullptr;
  return context;
}

// Reads frames until one reaches `target`, keeping the latest one decoded.
class DecodeLoop {
 public:
  DecodeLoop(InputFile& file, AVCodecContext& decoder, int streamIndex, int64_t target)
      : file_(file), decoder_(decoder), streamIndex_(streamIndex), target_(target) {}

  FramePtr run() {
    PacketPtr packet(av_packet_alloc());
    if (packet == nullptr) return nullptr;
    while (!reached_ && framesDecoded_ < kMostFramesDecoded && !file_.deadlinePassed()) {
      const int read = av_read_frame(file_.context(), packet.get());
      if (read < 0) {
        avcodec_send_packet(&decoder_, nullptr);  // end of stream: drain what the decoder holds
        receiveFrames();
        break;
      }
      if (packet->stream_index == streamIndex_ && avcodec_send_packet(&decoder_, packet.get()) >= 0) receiveFrames();
      av_packet_unref(packet.get());
    }
    return std::move(latest_);
  }

 private:
  void receiveFrames() {
    while (!reached_) {
      FramePtr frame(av_frame_alloc());
      if (frame == nullptr || avcodec_receive_frame(&decoder_, frame.get()) < 0) return;
      ++framesDecoded_;
      reached_ = frame->best_effort_timestamp != AV_NOPTS_VALUE && frame->best_effort_timestamp >= target_;
      latest_ = std::move(frame);
    }
  }

  InputFile& file_;
  AVCodecContext& decoder_;
  const int streamIndex_;
  const int64_t target_;
  FramePtr latest_;
  int framesDecoded_ = 0;
  bool reached_ = false;
};

}  // namespace

FramePtr FrameGrabber::frameAt(InputFile& file, int streamIndex, int64_t timeUs) {
  AVFormatContext& format = *file.context();
  AVStream& stream = *format.streams[streamIndex];
  CodecContextPtr decoder = openDecoder(stream);
  if (decoder == nullptr) return nullptr;
  for (unsigned i = 0; i < format.nb_streams; ++i) {
    if (static_cast<int>(i) != streamIndex) format.streams[i]->discard = AVDISCARD_ALL;
  }
  const int64_t target = av_rescale_q(timeUs + file.startTimeUs(), AV_TIME_BASE_Q, stream.time_base);
  // Land on the keyframe before the wanted time. Should the container refuse
  // to seek, decoding simply goes on from where reading stands.
  av_seek_frame(&format, streamIndex, target, AVSEEK_FLAG_BACKWARD);
  return DecodeLoop(file, *decoder, streamIndex, target).run();
}

}  // namespace engine
