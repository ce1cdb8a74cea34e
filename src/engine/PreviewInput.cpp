#include "PreviewInput.h"

#include <algorithm>

#include "AudioFilterChain.h"
#include "RecordText.h"

namespace engine {
namespace {

// A container that lands after the asked position is asked again this much earlier, a few times.
constexpr int64_t kEarlierSeekUs = 1'000'000;
constexpr int kMostEarlierSeeks = 3;

}  // namespace

std::unique_ptr<PreviewInput> PreviewInput::open(const MediaItem& item, bool withSound, std::string& error) {
  MediaItem request = item;
  if (!withSound) request.m_AudioDisable = 1;
  std::unique_ptr<InputPlan> plan = InputPlan::open(request, true, error);
  if (plan == nullptr) return nullptr;
  plan->item = &item;  // the caller's record, read as it changes
  std::unique_ptr<PreviewInput> input(new PreviewInput);
  input->plan_ = std::move(plan);
  AVFormatContext& format = *input->plan_->file->context();
  for (Stream* stream : {&input->pictures_, &input->sound_}) {
    stream->index = stream == &input->pictures_ ? input->plan_->videoStream : input->plan_->audioStream;
    if (stream->index < 0) continue;
    stream->decoder = StreamDecoder::open(*format.streams[stream->index], item.m_bEnableHwaccel != 0, error);
    if (stream->decoder == nullptr) return nullptr;
  }
  for (unsigned i = 0; i < format.nb_streams; ++i) {
    const int index = static_cast<int>(i);
    format.streams[i]->discard =
        index == input->pictures_.index || index == input->sound_.index ? AVDISCARD_DEFAULT : AVDISCARD_ALL;
  }
  if (input->hasPictures()) {
    if (auto keyframes = KeyframeIndex::load(fieldText(item.m_Info.m_framesPosFileName))) {
      input->keyframes_ = std::move(*keyframes);
    }
  }
  // The file stays open for as long as the user watches, not the opening's budget.
  input->plan_->file->restartDeadline(std::chrono::hours(24));
  return input;
}

void PreviewInput::seek(int64_t partUs) {
  targetUs_ = std::clamp<int64_t>(partUs, 0, plan_->lengthUs);
  earlierSeeks_ = 0;
  const int64_t fileUs = plan_->startUs + targetUs_;
  // The keyframe index knows where pictures can start; the container is asked for that keyframe.
  auto after = std::upper_bound(keyframes_.begin(), keyframes_.end(), fileUs,
                                [](int64_t time, const Keyframe& keyframe) { return time < keyframe.timeUs; });
  seekFile(after != keyframes_.begin() ? std::prev(after)->timeUs : fileUs);
}

void PreviewInput::seekFile(int64_t fileUs) {
  askedFileUs_ = std::max<int64_t>(0, fileUs);
  const int64_t stamp = plan_->fileStartUs + askedFileUs_;
  AVFormatContext* format = plan_->file->context();
  // Should the file refuse, reading goes on from where it stands.
  if (askedFileUs_ == 0 || avformat_seek_file(format, -1, INT64_MIN, stamp, stamp, 0) < 0) {
    avformat_seek_file(format, -1, INT64_MIN, plan_->fileStartUs, plan_->fileStartUs, 0);
  }
  for (Stream* stream : {&pictures_, &sound_}) {
    if (stream->decoder != nullptr) stream->decoder->flush();
    stream->done = stream->index < 0;
  }
  ready_.clear();
  heldPicture_.reset();
  firstPictureAfterSeek_ = true;
}

std::optional<DecodedFrame> PreviewInput::next() {
  while (ready_.empty() && (!pictures_.done || !sound_.done)) {
    if (readPacket()) continue;
    // The end of the file: what the decoders hold comes out, then the held picture.
    for (Stream* stream : {&pictures_, &sound_}) {
      if (stream->done) continue;
      stream->decoder->send(nullptr);
      receive(*stream);
      stream->done = true;
    }
    if (heldPicture_ != nullptr) {
      const int64_t timeUs = heldPicture_->pts;
      ready_.push_back({true, std::move(heldPicture_), timeUs});
    }
  }
  if (ready_.empty()) return std::nullopt;
  DecodedFrame frame = std::move(ready_.front());
  ready_.pop_front();
  return frame;
}

bool PreviewInput::readPacket() {
  AVFormatContext* format = plan_->file->context();
  PacketPtr packet(av_packet_alloc());
  if (packet == nullptr || av_read_frame(format, packet.get()) < 0) return false;
  for (Stream* stream : {&pictures_, &sound_}) {
    if (stream->done || packet->stream_index != stream->index) continue;
    if (stream->decoder->send(packet.get()) >= 0) receive(*stream);
  }
  return true;
}

void PreviewInput::receive(Stream& stream) {
  FramePtr frame(av_frame_alloc());
  while (!stream.done && frame != nullptr && stream.decoder->receive(frame.get()) >= 0) {
    if (&stream == &pictures_) {
      takePicture(std::move(frame));
    } else {
      takeSound(std::move(frame));
    }
    if (!stream.done) frame.reset(av_frame_alloc());
  }
}

int64_t PreviewInput::timeOf(const AVFrame& frame, const AVStream& stream) const {
  const int64_t stamp = frame.best_effort_timestamp != AV_NOPTS_VALUE ? frame.best_effort_timestamp : frame.pts;
  if (stamp == AV_NOPTS_VALUE) return targetUs_;
  return av_rescale_q(stamp, stream.time_base, AV_TIME_BASE_Q) - plan_->fileStartUs - plan_->startUs;
}

void PreviewInput::takePicture(FramePtr frame) {
  const AVStream& stream = *plan_->file->context()->streams[pictures_.index];
  const int64_t timeUs = timeOf(*frame, stream);
  // A container that landed after the target is asked again for an earlier place.
  if (firstPictureAfterSeek_ && timeUs > targetUs_ && askedFileUs_ > 0 && earlierSeeks_ < kMostEarlierSeeks) {
    ++earlierSeeks_;
    const int tries = earlierSeeks_;
    seekFile(askedFileUs_ - kEarlierSeekUs);
    earlierSeeks_ = tries;
    return;
  }
  firstPictureAfterSeek_ = false;
  if (timeUs >= plan_->lengthUs) {
    pictures_.done = true;
    if (heldPicture_ != nullptr) {
      const int64_t heldUs = heldPicture_->pts;
      ready_.push_back({true, std::move(heldPicture_), heldUs});
    }
    return;
  }
  frame->pts = timeUs;
  if (timeUs < targetUs_) {
    heldPicture_ = std::move(frame);
    return;
  }
  if (heldPicture_ != nullptr && timeUs > targetUs_) {
    const int64_t heldUs = heldPicture_->pts;
    ready_.push_back({true, std::move(heldPicture_), heldUs});
  }
  heldPicture_.reset();
  ready_.push_back({true, std::move(frame), timeUs});
}

void PreviewInput::takeSound(FramePtr frame) {
  const AVStream& stream = *plan_->file->context()->streams[sound_.index];
  const int64_t timeUs = timeOf(*frame, stream);
  if (timeUs >= plan_->lengthUs) {
    sound_.done = true;
    return;
  }
  const int64_t endUs = timeUs + av_rescale(frame->nb_samples, AV_TIME_BASE, frame->sample_rate);
  if (endUs <= targetUs_) return;
  labelChannels(*frame);
  frame->pts = av_rescale(timeUs, frame->sample_rate, AV_TIME_BASE);
  ready_.push_back({false, std::move(frame), timeUs});
}

}  // namespace engine
