#include "EngineLog.h"

#include <cstdio>
#include <mutex>

extern "C" {
#include <libavutil/error.h>
#include <libavutil/log.h>
}

namespace engine {

void logLine(std::string_view message) {
  static std::mutex outputMutex;
  std::lock_guard lock(outputMutex);
  std::fprintf(stderr, "videoconverter: %.*s\n", static_cast<int>(message.size()), message.data());
  std::fflush(stderr);
}

void quietenLibraries() {
  static std::once_flag once;
  std::call_once(once, [] { av_log_set_level(AV_LOG_FATAL); });
}

std::string ffmpegErrorText(int errorCode) {
  char text[AV_ERROR_MAX_STRING_SIZE] = {};
  av_strerror(errorCode, text, sizeof text);
  return text;
}

}  // namespace engine
