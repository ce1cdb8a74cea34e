// The remux functions of the public interface: each remux is a handle that
// owns a ManifestRemux and the thread it runs on.
#include <mutex>
#include <string>
#include <thread>

#include "ManifestRemux.h"
#include "Utf8Text.h"
#include "videoconverter.h"

struct VideoConverter_Remux {
  VideoConverter_Remux(const char* manifestUrl, const char* userAgent, const char* outputPath)
      : remux(manifestUrl, userAgent != nullptr ? userAgent : "", outputPath) {}

  engine::ManifestRemux remux;
  std::thread thread;
  std::mutex mutex;
  int32_t outcome = VC_OUTCOME_RUNNING;
  std::string reason;
};

namespace {

bool isEmpty(const char* text) { return text == nullptr || *text == '\0'; }

void runRemux(VideoConverter_Remux* handle, VideoConverter_RemuxEndFunction end, void* context) {
  const std::optional<std::string> failure = handle->remux.run();
  {
    std::lock_guard lock(handle->mutex);
    if (!failure) {
      handle->outcome = VC_OUTCOME_FINISHED;
    } else if (handle->remux.aborted()) {
      handle->outcome = VC_OUTCOME_ABORTED;
    } else {
      handle->outcome = VC_OUTCOME_FAILED;
      handle->reason = *failure;
    }
  }
  end(context);
}

}  // namespace

extern "C" {

int VideoConverter_RemuxStart(const char* manifestUrl, const char* userAgent, const char* outputPath,
                              VideoConverter_RemuxEndFunction end, void* context, VideoConverter_Remux** remux) {
  if (isEmpty(manifestUrl) || isEmpty(outputPath) || end == nullptr || remux == nullptr) {
    return VC_ERROR_INVALID_ARGUMENT;
  }
  auto* handle = new VideoConverter_Remux(manifestUrl, userAgent, outputPath);
  *remux = handle;
  handle->thread = std::thread(runRemux, handle, end, context);
  return 0;
}

int VideoConverter_RemuxGetProgress(VideoConverter_Remux* remux, int64_t* positionUs, int64_t* durationUs) {
  if (remux == nullptr) return VC_ERROR_INVALID_ARGUMENT;
  if (positionUs != nullptr) *positionUs = remux->remux.positionUs();
  if (durationUs != nullptr) *durationUs = remux->remux.durationUs();
  return 0;
}

int VideoConverter_RemuxAbort(VideoConverter_Remux* remux) {
  if (remux == nullptr) return VC_ERROR_INVALID_ARGUMENT;
  remux->remux.abort();
  return 0;
}

int VideoConverter_RemuxGetOutcome(VideoConverter_Remux* remux, char* reason, int reasonSize) {
  if (remux == nullptr) return VC_ERROR_INVALID_ARGUMENT;
  std::lock_guard lock(remux->mutex);
  if (reason != nullptr && reasonSize > 0) {
    const std::string_view fitting = engine::cutUtf8(remux->reason, static_cast<size_t>(reasonSize) - 1);
    fitting.copy(reason, fitting.size());
    reason[fitting.size()] = '\0';
  }
  return remux->outcome;
}

int VideoConverter_RemuxRelease(VideoConverter_Remux* remux) {
  if (remux == nullptr) return VC_ERROR_INVALID_ARGUMENT;
  remux->remux.abort();
  if (remux->thread.joinable()) remux->thread.join();
  delete remux;
  return 0;
}

}  // extern "C"
