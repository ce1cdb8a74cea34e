// The sound of one record's part as the preview plays it: through the
// record's sound filters (volume, fades) into interleaved 16-bit stereo at
// the preview's rate, exactly as long as the part from where playing started
// (silence makes up for sound that ends early), so that the sound heard is a
// clock for the pictures.
#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <vector>

#include "FilterGraph.h"
#include "videoconverter.h"

namespace engine {

class PreviewSoundPart {
 public:
  static constexpr int kChannels = 2;

  PreviewSoundPart(const MediaItem& record, int64_t startUs, int64_t partLengthUs);

  // Filters a decoded frame timed in samples of the part; false with `error` when the filters fail.
  bool add(const AVFrame& frame, std::string& error);
  // The input's sound has ended: silence up to the part's end.
  void finish();
  // The record changed: the sound still to come is filtered with its new settings.
  void recordChanged() { graph_.reset(); }

  // Interleaved samples waiting for the view, and how many of their frames it took.
  const int16_t* pending() const { return pending_.data() + takenValues_; }
  int pendingFrames() const { return static_cast<int>((pending_.size() - takenValues_) / kChannels); }
  void taken(int frames);
  // Finished and all handed on.
  bool done() const { return finished_ && pendingFrames() == 0; }
  // Microseconds of sound handed on since the part started playing.
  int64_t handedOnUs() const;

 private:
  void append(const int16_t* samples, int64_t frames);

  const MediaItem& record_;
  const int64_t startSample_;
  const int64_t partSamples_;
  std::unique_ptr<FilterGraph> graph_;
  int64_t samplesOut_ = 0;  // from startSample_
  int64_t samplesTaken_ = 0;
  std::vector<int16_t> pending_;
  std::size_t takenValues_ = 0;
  bool finished_ = false;
};

}  // namespace engine
