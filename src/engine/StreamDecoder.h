// Decodes one stream of an input. A video decoder may use the machine's
// decoding device; when that is missing or fails, decoding goes on in
// software without a word, and frames always arrive in system memory.
#pragma once

#include <deque>
#include <memory>
#include <string>

#include "FFmpegPointers.h"

namespace engine {

class StreamDecoder {
 public:
  // Null with `error` set when the stream has no decoder here.
  static std::unique_ptr<StreamDecoder> open(const AVStream& stream, bool tryHardware, std::string& error);

  // A null packet drains the decoder. Damaged packets are skipped, as players do.
  int send(const AVPacket* packet);
  // 0 with a frame, AVERROR(EAGAIN) when more packets are needed, AVERROR_EOF when drained.
  int receive(AVFrame* frame);
  // Forgets the packets and frames it holds, after a seek or once drained.
  void flush();

 private:
  StreamDecoder(const AVStream& stream) : stream_(stream) {}
  bool openCodec(bool useHardware);
  // Starts again in software; packets sent before the first frame are sent again.
  bool fallBackToSoftware();
  static AVPixelFormat chooseFormat(AVCodecContext* context, const AVPixelFormat* offered);

  const AVStream& stream_;
  CodecContextPtr context_;
  AVPixelFormat hardwareFormat_ = AV_PIX_FMT_NONE;
  FramePtr hardwareFrame_;
  // Kept while the device has produced nothing yet, to replay them in software.
  std::deque<PacketPtr> unanswered_;
  bool producedFrames_ = false;
  bool waitingForKeyframe_ = false;
};

}  // namespace engine
