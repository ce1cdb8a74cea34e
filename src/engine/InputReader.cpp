#include "InputReader.h"

#include <algorithm>
#include <optional>

#include "AudioFilterChain.h"
#include "EngineLog.h"
#include "OutcomeText.h"
#include "StreamDecoder.h"

namespace engine {
namespace {

// Containers and streams disagree about lengths by a few frames; an input
// that ends further than this before its claim ended early.
constexpr int64_t kShortfallToleranceUs = 500'000;

int stopRequested(void* control) { return static_cast<PipelineControl*>(control)->stopped() ? 1 : 0; }

// Passes on the frames of one stream that fall in the input's trimmed part.
class TrimmedFeed {
 public:
  TrimmedFeed(const InputPlan& input, std::size_t index, const AVStream& stream, StageQueue& queue)
      : input_(input), index_(index), timeBase_(stream.time_base), queue_(queue) {}
  virtual ~TrimmedFeed() = default;

  bool done() const { return done_; }
  // The end of the furthest frame decoded up to the end of the trimmed part,
  // from its start: negative while every frame lay before it, nothing while
  // no frame was decoded.
  std::optional<int64_t> reachedUs() const { return reachedUs_; }
  // False once the queue is closed.
  virtual bool take(FramePtr frame) = 0;
  // Passes on what is held back and marks the end of the input.
  virtual bool finish() { return queue_.push({index_, nullptr}); }

 protected:
  // Microseconds from the start of the trimmed part.
  int64_t timeOf(const AVFrame& frame) {
    int64_t stamp = frame.best_effort_timestamp != AV_NOPTS_VALUE ? frame.best_effort_timestamp : frame.pts;
    if (stamp == AV_NOPTS_VALUE) return lastTimeUs_;
    lastTimeUs_ = av_rescale_q(stamp, timeBase_, AV_TIME_BASE_Q) - input_.fileStartUs - input_.startUs;
    return lastTimeUs_;
  }
  void reached(int64_t endUs) { reachedUs_ = std::max(reachedUs_.value_or(endUs), endUs); }
  bool pass(FramePtr frame) {
    ++passed_;
    return queue_.push({index_, std::move(frame)});
  }
  int64_t durationUs(int64_t duration) const { return av_rescale_q(duration, timeBase_, AV_TIME_BASE_Q); }

  const InputPlan& input_;
  const std::size_t index_;
  bool done_ = false;
  int passed_ = 0;

 private:
  const AVRational timeBase_;
  StageQueue& queue_;
  int64_t lastTimeUs_ = 0;
  std::optional<int64_t> reachedUs_;
};

// The picture shown at the trim start may begin a little before it: the last
// frame before the start is held back and shown from time 0.
class PictureFeed : public TrimmedFeed {
 public:
  using TrimmedFeed::TrimmedFeed;

  bool take(FramePtr frame) override {
    const int64_t timeUs = timeOf(*frame);
    if (timeUs >= input_.lengthUs) {
      done_ = true;
      return true;
    }
    reached(timeUs + durationUs(frame->pkt_duration));
    if (timeUs < 0) {
      if (passed_ == 0) earlier_ = std::move(frame);
      return true;
    }
    if (earlier_ != nullptr && timeUs > 0 && !passOpening()) return false;
    earlier_.reset();
    frame->pts = timeUs;
    return pass(std::move(frame));
  }

  bool finish() override {
    if (earlier_ != nullptr && !passOpening()) return false;
    return TrimmedFeed::finish();
  }

  bool decodedNothing() const { return passed_ == 0 && earlier_ == nullptr; }

 private:
  bool passOpening() {
    earlier_->pts = 0;
    return pass(std::move(earlier_));
  }

  FramePtr earlier_;
};

// Sound frames overlapping the trimmed part; the filters cut them to the sample.
class SoundFeed : public TrimmedFeed {
 public:
  using TrimmedFeed::TrimmedFeed;

  bool take(FramePtr frame) override {
    const int64_t timeUs = timeOf(*frame);
    if (timeUs >= input_.lengthUs) {
      done_ = true;
      return true;
    }
    const int64_t endUs = timeUs + av_rescale(frame->nb_samples, AV_TIME_BASE, frame->sample_rate);
    reached(endUs);
    if (endUs <= 0) return true;
    labelChannels(*frame);
    frame->pts = av_rescale(timeUs, frame->sample_rate, AV_TIME_BASE);
    return pass(std::move(frame));
  }
};

// One stream being read: its decoder and where its frames go.
struct StreamReading {
  int index = -1;
  std::unique_ptr<StreamDecoder> decoder;
  std::unique_ptr<TrimmedFeed> feed;

  bool active() const { return feed != nullptr && !feed->done(); }
};

// Marks the end of an input for a stream the output has, whether this input has that stream or not.
bool endInput(std::size_t index, StreamReading& reading, StageQueue* queue) {
  if (queue == nullptr) return true;
  return reading.feed != nullptr ? reading.feed->finish() : queue->push({index, nullptr});
}

// Notes in the input's plan when its data ended clearly before its streams
// claim to. False, saying why, when nothing of the trimmed part decoded; an
// input without a stream the output takes has nothing to judge.
bool noteWhereTheDataEnds(InputPlan& input, const StreamReading& pictures, const StreamReading& sound,
                          std::string& error) {
  if (pictures.feed == nullptr && sound.feed == nullptr) return true;
  std::optional<int64_t> reachedUs;
  for (const StreamReading* reading : {&pictures, &sound}) {
    if (reading->feed == nullptr) continue;
    const std::optional<int64_t> streamReachedUs = reading->feed->reachedUs();
    if (!streamReachedUs) continue;
    reachedUs = std::max(reachedUs.value_or(*streamReachedUs), *streamReachedUs);
  }
  if (!reachedUs) {
    error = "nothing could be decoded from " + input.path;
    return false;
  }
  if (*reachedUs <= 0) {
    error = input.path + " ends at " + clockText(input.startUs + *reachedUs) +
            ", before the part to convert, which starts at " + clockText(input.startUs);
    return false;
  }
  if (*reachedUs < input.streamsLengthUs - kShortfallToleranceUs) input.shortLengthUs = *reachedUs;
  return true;
}

}  // namespace

void InputReader::run() {
  for (std::size_t index = 0; index < plan_.inputs.size(); ++index) {
    if (!read(index)) return;
  }
}

bool InputReader::read(std::size_t index) {
  InputPlan& input = *plan_.inputs[index];
  AVFormatContext* format = input.file->context();
  format->interrupt_callback = {&stopRequested, &control_};
  StreamReading pictures;
  StreamReading sound;
  pictures.index = pictures_ != nullptr ? input.videoStream : -1;
  sound.index = sound_ != nullptr ? input.audioStream : -1;
  for (unsigned i = 0; i < format->nb_streams; ++i) {
    const bool used = static_cast<int>(i) == pictures.index || static_cast<int>(i) == sound.index;
    format->streams[i]->discard = used ? AVDISCARD_DEFAULT : AVDISCARD_ALL;
  }
  std::string error;
  for (StreamReading* reading : {&pictures, &sound}) {
    if (reading->index < 0) continue;
    const AVStream& stream = *format->streams[reading->index];
    reading->decoder = StreamDecoder::open(stream, input.item->m_bEnableHwaccel != 0, error);
    if (reading->decoder == nullptr) {
      control_.fail("cannot decode " + input.path + ": " + error);
      return false;
    }
    if (reading == &pictures) {
      reading->feed = std::make_unique<PictureFeed>(input, index, stream, *pictures_);
    } else {
      reading->feed = std::make_unique<SoundFeed>(input, index, stream, *sound_);
    }
  }
  if (input.startUs > 0) {
    // Lands on the key frame before the start; should the file refuse, reading simply starts at the beginning.
    const int64_t target = input.fileStartUs + input.startUs;
    avformat_seek_file(format, -1, INT64_MIN, target, target, 0);
  }

  FramePtr frame(av_frame_alloc());
  auto decode = [&](StreamReading& reading, const AVPacket* packet) {
    if (reading.decoder->send(packet) < 0) return true;  // a damaged packet is skipped
    int result = 0;
    while (reading.active() && (result = reading.decoder->receive(frame.get())) >= 0) {
      if (!reading.feed->take(FramePtr(av_frame_clone(frame.get())))) return false;
      av_frame_unref(frame.get());
    }
    if (!reading.active()) format->streams[reading.index]->discard = AVDISCARD_ALL;
    return true;
  };

  PacketPtr packet(av_packet_alloc());
  while (!control_.stopped() && (pictures.active() || sound.active())) {
    if (av_read_frame(format, packet.get()) < 0) break;  // the end, or as far as a damaged file goes
    bool going = true;
    if (packet->stream_index == pictures.index && pictures.active()) going = decode(pictures, packet.get());
    if (packet->stream_index == sound.index && sound.active()) going = decode(sound, packet.get());
    av_packet_unref(packet.get());
    if (!going) return false;
  }
  if (control_.stopped()) return false;
  for (StreamReading* reading : {&pictures, &sound}) {
    if (reading->active() && !decode(*reading, nullptr)) return false;
  }
  if (pictures.feed != nullptr && static_cast<PictureFeed&>(*pictures.feed).decodedNothing()) {
    control_.fail("no picture could be decoded from " + input.path);
    return false;
  }
  if (!noteWhereTheDataEnds(input, pictures, sound, error)) {
    control_.fail(error);
    return false;
  }
  input.file.reset();
  return endInput(index, pictures, pictures_) && endInput(index, sound, sound_);
}

}  // namespace engine
