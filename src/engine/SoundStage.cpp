#include "SoundStage.h"

#include <algorithm>

#include "InputFiltering.h"

extern "C" {
#include <libavutil/audio_fifo.h>
}

namespace engine {
namespace {

// Encoders that take any frame size still get frames of a usual size.
constexpr int kDefaultFrameSize = 1024;

struct FifoDeleter {
  void operator()(AVAudioFifo* fifo) const { av_audio_fifo_free(fifo); }
};

}  // namespace

// Samples waiting to fill the encoder's next frame.
class SoundStage::SampleQueue {
 public:
  explicit SampleQueue(PacketEncoder& encoder) : encoder_(encoder), context_(encoder.encoder()) {
    frameSize_ = context_.frame_size > 0 && !(context_.codec->capabilities & AV_CODEC_CAP_VARIABLE_FRAME_SIZE)
                     ? context_.frame_size
                     : kDefaultFrameSize;
    fifo_.reset(av_audio_fifo_alloc(context_.sample_fmt, context_.ch_layout.nb_channels, frameSize_ * 4));
  }

  // Encodes every whole frame the new samples complete.
  bool add(const AVFrame& samples, std::string& error) {
    if (fifo_ == nullptr ||
        av_audio_fifo_write(fifo_.get(), reinterpret_cast<void**>(const_cast<uint8_t**>(samples.extended_data)),
                            samples.nb_samples) < samples.nb_samples) {
      error = "out of memory";
      return false;
    }
    while (av_audio_fifo_size(fifo_.get()) >= frameSize_) {
      if (!encodeNext(frameSize_, error)) return false;
    }
    return true;
  }

  // Encodes the shorter last frame and drains the encoder.
  bool finish(std::string& error) {
    const int left = av_audio_fifo_size(fifo_.get());
    if (left > 0 && !encodeNext(left, error)) return false;
    return encoder_.encode(nullptr, error);
  }

 private:
  bool encodeNext(int count, std::string& error) {
    FramePtr frame(av_frame_alloc());
    if (frame == nullptr) {
      error = "out of memory";
      return false;
    }
    frame->nb_samples = count;
    frame->format = context_.sample_fmt;
    frame->sample_rate = context_.sample_rate;
    if (av_channel_layout_copy(&frame->ch_layout, &context_.ch_layout) < 0 || av_frame_get_buffer(frame.get(), 0) < 0) {
      error = "out of memory";
      return false;
    }
    av_audio_fifo_read(fifo_.get(), reinterpret_cast<void**>(frame->extended_data), count);
    frame->pts = samplesSent_;
    samplesSent_ += count;
    return encoder_.encode(frame.get(), error);
  }

  PacketEncoder& encoder_;
  AVCodecContext& context_;
  int frameSize_ = kDefaultFrameSize;
  std::unique_ptr<AVAudioFifo, FifoDeleter> fifo_;
  int64_t samplesSent_ = 0;
};

void SoundStage::run() {
  SampleQueue samples(encoder_);
  for (std::size_t index = 0; index < plan_.inputs.size(); ++index) {
    if (!filterInput(index, samples)) return;
  }
  std::string error;
  if (samples.finish(error)) {
    control_.stageCompleted();
  } else {
    control_.fail(error);
  }
}

bool SoundStage::filterInput(std::size_t index, SampleQueue& samples) {
  const InputPlan& input = *plan_.inputs[index];
  const AudioCanvas canvas = plan_.audioCanvas(index, input.lengthUs);
  auto makeGraph = [&](const AVFrame* firstFrame, std::string& error) {
    if (firstFrame == nullptr) {
      return FilterGraph::create(AVMEDIA_TYPE_AUDIO, AudioFilterChain::silence(canvas), {}, error);
    }
    const std::string source = audioSourceArguments(*firstFrame, {1, firstFrame->sample_rate});
    return FilterGraph::create(AVMEDIA_TYPE_AUDIO, AudioFilterChain::forInput(*input.item, canvas), {{"in", source}},
                               error);
  };
  int64_t taken = 0;
  return filterOneInput(decoded_, input.path, control_, makeGraph, [&](AVFrame& frame, bool inputEnded) {
    if (inputEnded) {
      const int64_t room = plan_.audioCanvas(index, input.partLengthUs()).sampleCount - taken;
      if (room <= 0) return Taken::kHaveEnough;
      frame.nb_samples = static_cast<int>(std::min<int64_t>(frame.nb_samples, room));
    }
    taken += frame.nb_samples;
    std::string error;
    if (samples.add(frame, error)) return Taken::kWantMore;
    control_.fail(error);
    return Taken::kStopped;
  });
}

}  // namespace engine
