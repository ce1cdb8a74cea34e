#include "AtomicFile.h"

#include <unistd.h>

#include <atomic>
#include <cstdio>
#include <filesystem>

namespace engine {

std::string temporaryPathFor(const std::string& path) {
  static std::atomic<unsigned> counter{0};
  const std::filesystem::path whole(path);
  std::string name = ".";
  name += whole.stem().string();
  name += ".part-" + std::to_string(getpid()) + "-" + std::to_string(counter++) + whole.extension().string();
  return (whole.parent_path() / name).string();
}

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
