#include "PacketEncoder.h"

#include "EngineLog.h"

namespace engine {

bool PacketEncoder::encode(const AVFrame* frame, std::string& error) {
  int result = avcodec_send_frame(&encoder_, frame);
  if (result < 0) {
    error = std::string("the encoder ") + encoder_.codec->name + " failed: " + ffmpegErrorText(result);
    return false;
  }
  PacketPtr packet(av_packet_alloc());
  if (packet == nullptr) {
    error = "out of memory";
    return false;
  }
  while ((result = avcodec_receive_packet(&encoder_, packet.get())) >= 0) {
    // Not every encoder says how long a picture lasts; without it the container would cut the last one short.
    if (packet->duration == 0 && encoder_.codec_type == AVMEDIA_TYPE_VIDEO) {
      packet->duration = av_rescale_q(1, av_inv_q(encoder_.framerate), encoder_.time_base);
    }
    if (!sink_.write(stream_, *packet, error)) return false;
    av_packet_unref(packet.get());
  }
  if (result != AVERROR(EAGAIN) && result != AVERROR_EOF) {
    error = std::string("the encoder ") + encoder_.codec->name + " failed: " + ffmpegErrorText(result);
    return false;
  }
  return frame != nullptr || sink_.endStream(stream_, error);
}

}  // namespace engine
