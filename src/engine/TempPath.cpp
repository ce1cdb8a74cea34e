#include "TempPath.h"

#include <mutex>

#include "videoconverter.h"

namespace engine {
namespace {
std::mutex pathMutex;
std::string currentTempPath;
}  // namespace

std::string tempPath() {
  std::lock_guard lock(pathMutex);
  return currentTempPath;
}

}  // namespace engine

extern "C" int VideoConverter_SetTempPath(const char* path) {
  if (path == nullptr) return -1;
  std::lock_guard lock(engine::pathMutex);
  engine::currentTempPath = path;
  return 0;
}
