// The conversion functions of the public interface. One conversion runs at a
// time in the process, on a thread of its own, over a Transcoder. Position,
// length, abort and release go to the preview while one exists.
#include <malloc.h>

#include <cstring>
#include <memory>
#include <mutex>
#include <thread>
#include <vector>

#include "EngineLog.h"
#include "PreviewSession.h"
#include "Transcoder.h"
#include "Utf8Text.h"
#include "videoconverter.h"

namespace {

int32_t outcomeCode(engine::ConversionResult::Outcome outcome) {
  switch (outcome) {
    case engine::ConversionResult::Outcome::kFinished: return VC_OUTCOME_FINISHED;
    case engine::ConversionResult::Outcome::kFinishedWithWarning: return VC_OUTCOME_WARNING;
    case engine::ConversionResult::Outcome::kFailed: return VC_OUTCOME_FAILED;
    case engine::ConversionResult::Outcome::kAborted: return VC_OUTCOME_ABORTED;
  }
  return VC_OUTCOME_FAILED;
}

class ConversionSession {
 public:
  static ConversionSession& instance() {
    static ConversionSession session;
    return session;
  }

  // A conversion still running when the process exits is stopped first.
  ~ConversionSession() { release(); }

  int start(std::vector<MediaItem> items, const OutputParam& output) {
    std::unique_lock lock(mutex_);
    if (transcoder_ != nullptr && !ended_) return VC_ERROR_BUSY;
    releaseLocked(lock);
    transcoder_ = std::make_shared<engine::Transcoder>(std::move(items), output);
    ended_ = false;
    callbackCalled_ = false;
    outcome_ = VC_OUTCOME_RUNNING;
    result_ = {};
    // The callback registered last stays: it may come before or after the start.
    worker_ = std::thread([this, transcoder = transcoder_] {
      engine::ConversionResult result = transcoder->run();
      // The pipeline's threads freed their buffers into several heaps; hand
      // them back so that a long queue does not keep each one's high mark.
      malloc_trim(0);
      finish(std::move(result));
    });
    return 0;
  }

  // Runs the callback at once when the conversion has already ended without one.
  void setCallback(VideoConverter_ConvertEndFunction callback) {
    std::unique_lock lock(mutex_);
    callback_ = callback;
    if (callback == nullptr || transcoder_ == nullptr || !ended_ || callbackCalled_) return;
    callbackCalled_ = true;
    lock.unlock();
    callback();
  }

  void outcome(ConvertOutcome& record) {
    std::lock_guard lock(mutex_);
    const int32_t size = record.m_cbsize;
    record = ConvertOutcome{};
    record.m_cbsize = size;
    record.m_Outcome = outcome_;
    record.m_WrittenUs = result_.writtenUs;
    record.m_FileCount = static_cast<int32_t>(result_.files.size());
    engine::copyToField(record.m_Reason, result_.reason);
    if (!result_.files.empty()) engine::copyToField(record.m_FirstFile, result_.files.front());
  }

  int outputFile(int index, char* path, int pathSize) {
    std::lock_guard lock(mutex_);
    if (path == nullptr || index < 0 || static_cast<std::size_t>(index) >= result_.files.size()) {
      return VC_ERROR_INVALID_ARGUMENT;
    }
    const std::string& file = result_.files[index];
    if (pathSize < 0 || file.size() >= static_cast<std::size_t>(pathSize)) return VC_ERROR_INVALID_ARGUMENT;
    std::memcpy(path, file.c_str(), file.size() + 1);
    return 0;
  }

  int64_t currentTime() {
    std::lock_guard lock(mutex_);
    return transcoder_ != nullptr ? transcoder_->currentTimeUs() : 0;
  }

  int64_t duration() {
    std::lock_guard lock(mutex_);
    return transcoder_ != nullptr ? transcoder_->durationUs() : 0;
  }

  void abort() {
    std::lock_guard lock(mutex_);
    if (transcoder_ != nullptr) transcoder_->abort();
  }

  // Stops a running conversion and forgets the last one.
  void release() {
    std::unique_lock lock(mutex_);
    if (transcoder_ != nullptr) transcoder_->abort();
    releaseLocked(lock);
  }

 private:
  void finish(engine::ConversionResult result) {
    if (result.outcome == engine::ConversionResult::Outcome::kFailed) {
      engine::logLine("conversion failed: " + result.reason);
    }
    std::unique_lock lock(mutex_);
    outcome_ = outcomeCode(result.outcome);
    result_ = std::move(result);
    ended_ = true;
    const VideoConverter_ConvertEndFunction callback = callbackCalled_ ? nullptr : callback_;
    callbackCalled_ = callbackCalled_ || callback != nullptr;
    lock.unlock();
    if (callback != nullptr) callback();
  }

  // Waits for the worker, except when called on it (from the end callback).
  void releaseLocked(std::unique_lock<std::mutex>& lock) {
    std::thread worker = std::move(worker_);
    transcoder_.reset();
    lock.unlock();
    if (worker.joinable()) {
      if (worker.get_id() == std::this_thread::get_id()) {
        worker.detach();
      } else {
        worker.join();
      }
    }
    lock.lock();
  }

  std::mutex mutex_;
  std::shared_ptr<engine::Transcoder> transcoder_;
  std::thread worker_;
  VideoConverter_ConvertEndFunction callback_ = nullptr;
  bool ended_ = false;
  bool callbackCalled_ = false;
  int32_t outcome_ = VC_OUTCOME_NONE;
  engine::ConversionResult result_;  // of the conversion started last, once it has ended
};

bool validRequest(const MediaItem* items, int count, const OutputParam* output) {
  if (items == nullptr || output == nullptr || count < 1 || count > VC_MAX_MEDIA_ITEMS) return false;
  if (output->m_cbsize != VC_OUTPUT_PARAM_SIZE) return false;
  for (int i = 0; i < count; ++i) {
    if (items[i].m_cbsize != VC_MEDIA_ITEM_SIZE) return false;
  }
  return true;
}

}  // namespace

extern "C" int VideoConverter_Convert(MediaItem* items, int count, OutputParam* output, void* /*previewView*/,
                                      int /*previewWidth*/, int /*previewHeight*/, int /*previewFlags*/) {
  if (!validRequest(items, count, output)) return VC_ERROR_INVALID_ARGUMENT;
  try {
    return ConversionSession::instance().start(std::vector<MediaItem>(items, items + count), *output);
  } catch (const std::bad_alloc&) {
    return VC_ERROR_OUT_OF_MEMORY;
  } catch (const std::system_error&) {
    return VC_ERROR_OUT_OF_MEMORY;  // no thread could be started
  }
}

extern "C" int VideoConverter_ConvertEndCallBack(VideoConverter_ConvertEndFunction callback) {
  ConversionSession::instance().setCallback(callback);
  return 0;
}

extern "C" int VideoConverter_GetConvertOutcome(ConvertOutcome* outcome) {
  if (outcome == nullptr || outcome->m_cbsize != VC_CONVERT_OUTCOME_SIZE) return VC_ERROR_INVALID_ARGUMENT;
  ConversionSession::instance().outcome(*outcome);
  return 0;
}

extern "C" int VideoConverter_GetOutputFile(int index, char* path, int pathSize) {
  return ConversionSession::instance().outputFile(index, path, pathSize);
}

extern "C" int64_t VideoConverter_GetCurrentTime(void) {
  if (const auto preview = engine::PreviewSession::instance().renderer()) return preview->positionUs();
  return ConversionSession::instance().currentTime();
}

extern "C" int64_t VideoConverter_GetDuration(void) {
  if (const auto preview = engine::PreviewSession::instance().renderer()) return preview->durationUs();
  return ConversionSession::instance().duration();
}

extern "C" int VideoConverter_Abort(void) {
  if (const auto preview = engine::PreviewSession::instance().renderer()) {
    preview->abort();
  } else {
    ConversionSession::instance().abort();
  }
  return 0;
}

extern "C" int VideoConverter_Destory(void) {
  if (!engine::PreviewSession::instance().release()) ConversionSession::instance().release();
  return 0;
}
