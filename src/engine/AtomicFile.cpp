#include "AtomicFile.h"

#include <unistd.h>

#include <atomic>
#include <cstdio>

namespace engine {
namespace {

// Unique per process and call, so that threads writing the same file do not
// share a temporary.
std::string temporaryPathFor(const std::string& path) {
  static std::atomic<unsigned> counter{0};
  return path + ".part-" + std::to_string(getpid()) + "-" + std::to_string(counter++);
}

}  // namespace

bool writeFileAtomically(const std::string& path, const std::function<bool(std::FILE*)>& writeContent) {
  const std::string temporaryPath = temporaryPathFor(path);
  std::FILE* file = std::fopen(temporaryPath.c_str(), "wb");
  if (file == nullptr) return false;
  const bool written = writeContent(file);
  const bool closed = std::fclose(file) == 0;
  if (written && closed && std::rename(temporaryPath.c_str(), path.c_str()) == 0) return true;
  std::remove(temporaryPath.c_str());
  return false;
}

}  // namespace engine
