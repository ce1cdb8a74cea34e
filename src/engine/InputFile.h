// A media file opened for demuxing, with bounded probing and a deadline that
// interrupts any blocking read once it has passed.
#pragma once

#include <chrono>
#include <memory>
#include <string>

#include "FFmpegPointers.h"

namespace engine {

class InputFile {
 public:
  // Opens a regular file. With analyseStreams the stream parameters are read
  // too, within fixed probe size and duration limits. Returns null and sets
  // `error` to a VideoConverterError on failure.
  static std::unique_ptr<InputFile> open(const std::string& path, std::chrono::milliseconds budget, bool analyseStreams,
                                         int& error);
  ~InputFile();
  InputFile(const InputFile&) = delete;
  InputFile& operator=(const InputFile&) = delete;

  AVFormatContext* context() const { return context_; }
  // Where the file's timeline begins, in microseconds; the zero of every time the library reports.
  int64_t startTimeUs() const { return context_->start_time != AV_NOPTS_VALUE ? context_->start_time : 0; }
  // Starts a new time budget for the next stage of work on this file.
  void restartDeadline(std::chrono::milliseconds budget);
  bool deadlinePassed() const;
  // The VideoConverterError for an FFmpeg error code met while reading this file.
  int errorFor(int ffmpegError) const;

 private:
  InputFile() = default;
  static int interruptWhenLate(void* opaque);

  AVFormatContext* context_ = nullptr;
  std::chrono::steady_clock::time_point deadline_;
};

}  // namespace engine
