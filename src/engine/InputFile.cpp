#include "InputFile.h"

#include <filesystem>

#include "EngineLog.h"
#include "videoconverter.h"

namespace engine {
namespace {
// Enough to find the streams of any common container without reading a whole
// damaged file.
constexpr int64_t kProbeSizeBytes = 5'000'000;
constexpr int64_t kAnalyseDurationMicroseconds = 5'000'000;

bool isRegularFile(const std::string& path) {
  std::error_code error;
  return std::filesystem::is_regular_file(std::filesystem::path(path), error);
}
}  // namespace

std::unique_ptr<InputFile> InputFile::open(const std::string& path, std::chrono::milliseconds budget,
                                           bool analyseStreams, int& error) {
  // Anything but a regular file (a folder, a pipe with no writer) could block
  // the open itself, before the deadline can interrupt it.
  if (!isRegularFile(path)) {
    error = VC_ERROR_FILE_NOT_FOUND;
    return nullptr;
  }
  quietenLibraries();
  std::unique_ptr<InputFile> file(new InputFile);
  file->restartDeadline(budget);
  AVFormatContext* context = avformat_alloc_context();
  if (context == nullptr) {
    error = VC_ERROR_OUT_OF_MEMORY;
    return nullptr;
  }
  context->interrupt_callback = {&InputFile::interruptWhenLate, file.get()};
  context->probesize = kProbeSizeBytes;
  context->max_analyze_duration = kAnalyseDurationMicroseconds;
  // On failure avformat_open_input frees the context itself.
  int result = avformat_open_input(&context, path.c_str(), nullptr, nullptr);
  if (result < 0) {
    error = file->errorFor(result);
    return nullptr;
  }
  file->context_ = context;
  if (analyseStreams) {
    result = avformat_find_stream_info(context, nullptr);
    if (result < 0) {
      error = file->deadlinePassed() ? VC_ERROR_TIMEOUT : VC_ERROR_NO_STREAM_INFO;
      return nullptr;
    }
  }
  error = 0;
  return file;
}

InputFile::~InputFile() { avformat_close_input(&context_); }

void InputFile::restartDeadline(std::chrono::milliseconds budget) {
  deadline_ = std::chrono::steady_clock::now() + budget;
}

bool InputFile::deadlinePassed() const { return std::chrono::steady_clock::now() > deadline_; }

int InputFile::errorFor(int ffmpegError) const {
  if (deadlinePassed() || ffmpegError == AVERROR_EXIT) return VC_ERROR_TIMEOUT;
  if (ffmpegError == AVERROR(ENOENT) || ffmpegError == AVERROR(EACCES) || ffmpegError == AVERROR(EISDIR)) {
    return VC_ERROR_FILE_NOT_FOUND;
  }
  if (ffmpegError == AVERROR(ENOMEM)) return VC_ERROR_OUT_OF_MEMORY;
  return VC_ERROR_UNKNOWN_FORMAT;
}

int InputFile::interruptWhenLate(void* opaque) { return static_cast<InputFile*>(opaque)->deadlinePassed() ? 1 : 0; }

}  // namespace engine
