#include "PreviewSoundPart.h"

#include <algorithm>

#include "AudioFilterChain.h"
#include "FFmpegPointers.h"

namespace engine {
namespace {

int64_t samplesOf(int64_t us) { return av_rescale(us, VC_PREVIEW_SAMPLE_RATE, AV_TIME_BASE); }

}  // namespace

PreviewSoundPart::PreviewSoundPart(const MediaItem& record, int64_t startUs, int64_t partLengthUs)
    : record_(record), startSample_(samplesOf(startUs)), partSamples_(samplesOf(partLengthUs)) {}

bool PreviewSoundPart::add(const AVFrame& frame, std::string& error) {
  if (finished_) return true;
  if (graph_ == nullptr) {
    AudioCanvas canvas;
    canvas.sampleRate = VC_PREVIEW_SAMPLE_RATE;
    canvas.sampleFormat = AV_SAMPLE_FMT_S16;
    av_channel_layout_default(&canvas.channelLayout, kChannels);
    canvas.startSample = startSample_ + samplesOut_;
    canvas.partSamples = partSamples_;
    graph_ = FilterGraph::create(AVMEDIA_TYPE_AUDIO, AudioFilterChain::forInput(record_, canvas),
                                 {{"in", audioSourceArguments(frame, {1, frame.sample_rate})}}, error);
    if (graph_ == nullptr) return false;
  }
  if (graph_->send(0, &frame) < 0) {
    error = "the sound filters failed";
    return false;
  }
  FramePtr filtered(av_frame_alloc());
  while (filtered != nullptr && graph_->receive(filtered.get()) >= 0) {
    append(reinterpret_cast<const int16_t*>(filtered->data[0]), filtered->nb_samples);
    av_frame_unref(filtered.get());
  }
  return true;
}

void PreviewSoundPart::finish() {
  const int64_t missing = partSamples_ - startSample_ - samplesOut_;
  if (missing > 0) {
    const std::vector<int16_t> silence(static_cast<std::size_t>(missing) * kChannels, 0);
    append(silence.data(), missing);
  }
  finished_ = true;
}

void PreviewSoundPart::append(const int16_t* samples, int64_t frames) {
  // Nothing beyond the part's end.
  frames = std::min(frames, partSamples_ - startSample_ - samplesOut_);
  if (frames <= 0) return;
  if (takenValues_ > 0) {
    pending_.erase(pending_.begin(), pending_.begin() + static_cast<std::ptrdiff_t>(takenValues_));
    takenValues_ = 0;
  }
  pending_.insert(pending_.end(), samples, samples + frames * kChannels);
  samplesOut_ += frames;
  if (samplesOut_ >= partSamples_ - startSample_) finished_ = true;
}

void PreviewSoundPart::taken(int frames) {
  takenValues_ += static_cast<std::size_t>(std::clamp(frames, 0, pendingFrames())) * kChannels;
  samplesTaken_ += frames;
  if (takenValues_ == pending_.size()) {
    pending_.clear();
    takenValues_ = 0;
  }
}

int64_t PreviewSoundPart::handedOnUs() const { return av_rescale(samplesTaken_, AV_TIME_BASE, VC_PREVIEW_SAMPLE_RATE); }

}  // namespace engine
