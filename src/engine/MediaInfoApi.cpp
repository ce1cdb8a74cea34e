// The probing functions of the public interface.
#include <new>

#include "KeyframeIndex.h"
#include "MediaProbe.h"
#include "videoconverter.h"

namespace {

// No exception may cross the C interface; the only one the probe can meet is
// running out of memory.
template <typename Probe>
int guarded(Probe probe) {
  try {
    return probe();
  } catch (const std::bad_alloc&) {
    return VC_ERROR_OUT_OF_MEMORY;
  }
}

}  // namespace

extern "C" int VideoConverter_GetMediaInfo(const char* path, const char* thumbnailPath, DECODER_INFO** info,
                                           int audioOnly) {
  if (info == nullptr) return VC_ERROR_INVALID_ARGUMENT;
  *info = nullptr;
  if (path == nullptr) return VC_ERROR_INVALID_ARGUMENT;
  // One record per thread: it stays valid for the caller while other threads probe.
  thread_local DECODER_INFO record;
  const int result = guarded([&] {
    return engine::MediaProbe::probe(
        {path, thumbnailPath != nullptr ? thumbnailPath : "", std::nullopt, audioOnly != 0}, record);
  });
  if (result == 0) *info = &record;
  return result;
}

extern "C" int VideoConverter_GetMediaInfo2(const char* path, const char* imagePath, DECODER_INFO* info,
                                            int64_t timeUs) {
  if (path == nullptr || info == nullptr) return VC_ERROR_INVALID_ARGUMENT;
  return guarded([&] {
    return engine::MediaProbe::probe({path, imagePath != nullptr ? imagePath : "", timeUs, false}, *info);
  });
}

extern "C" int VideoConverter_GetKeyframeTimes(const char* indexPath, int64_t* times, int capacity) {
  if (indexPath == nullptr || (times == nullptr && capacity > 0)) return VC_ERROR_INVALID_ARGUMENT;
  return guarded([&] {
    const auto keyframes = engine::KeyframeIndex::load(indexPath);
    if (!keyframes) return static_cast<int>(VC_ERROR_FILE_NOT_FOUND);
    const int count = static_cast<int>(keyframes->size());
    for (int i = 0; i < count && i < capacity; ++i) times[i] = (*keyframes)[i].timeUs;
    return count;
  });
}
