// One conversion: the inputs of MediaItem records joined into the output an
// OutputParam describes. run() plans everything first, then reads, filters
// and encodes on threads of its own (decoding, picture filters, picture
// encoding and sound each on one), so that the work of one stage overlaps
// with the next. Progress can be read, and an abort asked for, from any thread.
#pragma once

#include <atomic>
#include <cstdint>
#include <functional>
#include <string>
#include <vector>

#include "PipelineControl.h"
#include "videoconverter.h"

namespace engine {

struct ConversionResult {
  enum class Outcome { kFinished, kFinishedWithWarning, kFailed, kAborted };
  Outcome outcome = Outcome::kFinished;
  std::string reason;              // why it failed, the warning, or where it was stopped
  std::vector<std::string> files;  // the final names of the files kept; none after a failure
  int64_t writtenUs = 0;           // length of the output kept
};

class Transcoder {
 public:
  Transcoder(std::vector<MediaItem> items, const OutputParam& output);
  Transcoder(const Transcoder&) = delete;
  Transcoder& operator=(const Transcoder&) = delete;

  // Converts; returns once the conversion has finished, failed or been aborted.
  ConversionResult run();
  // Stops the conversion soon; what was written so far stays on disk.
  void abort();
  // Called from a conversion thread whenever more output has been written,
  // with the new current time. Set before run().
  void setProgressObserver(std::function<void(int64_t)> observer) { progressObserver_ = std::move(observer); }
  // Microseconds of output written so far, and the whole output's length.
  int64_t currentTimeUs() const { return progressUs_.load(); }
  int64_t durationUs() const { return durationUs_.load(); }

 private:
  ConversionResult convert();

  const std::vector<MediaItem> items_;
  const OutputParam output_;
  PipelineControl control_;
  std::atomic<int64_t> progressUs_{0};
  std::atomic<int64_t> durationUs_{0};
  std::function<void(int64_t)> progressObserver_;
};

}  // namespace engine
