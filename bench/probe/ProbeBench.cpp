// Probes 100 generated media files through the engine and through one ffprobe
// process per file, in the same run, and prints both totals and their ratio.
// Target: the engine's total at most half of ffprobe's.

#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <functional>
#include <string>
#include <vector>

#include "BenchMedia.h"
#include "videoconverter.h"

namespace {

namespace fs = std::filesystem;
using Clock = std::chrono::steady_clock;

double secondsFor(const std::vector<fs::path>& files, const std::function<bool(const fs::path&)>& probe,
                  int& failures) {
  const Clock::time_point start = Clock::now();
  for (const fs::path& file : files) failures += probe(file) ? 0 : 1;
  return std::chrono::duration<double>(Clock::now() - start).count();
}

}  // namespace

int main() {
  std::string pattern = (fs::temp_directory_path() / "probe-bench-XXXXXX").string();
  if (mkdtemp(pattern.data()) == nullptr) return 1;
  const fs::path folder = pattern;
  const fs::path engineTemp = folder / "engine";
  fs::create_directories(engineTemp);
  VideoConverter_SetTempPath(engineTemp.c_str());

  const std::vector<fs::path> files = benchmedia::generateFiles(folder);
  int failures = 0;
  const double ffprobeSeconds = secondsFor(
      files,
      [](const fs::path& file) {
        return benchmedia::runQuietly({"ffprobe", "-v", "error", "-show_format", "-show_streams", file}) == 0;
      },
      failures);
  const double engineSeconds = secondsFor(
      files,
      [&](const fs::path& file) {
        DECODER_INFO* info = nullptr;
        const std::string thumbnail = (folder / (file.stem().string() + ".bmp")).string();
        return VideoConverter_GetMediaInfo(file.c_str(), thumbnail.c_str(), &info, 0) == 0;
      },
      failures);
  const double probeOnlySeconds = secondsFor(
      files,
      [](const fs::path& file) {
        DECODER_INFO* info = nullptr;
        return VideoConverter_GetMediaInfo(file.c_str(), nullptr, &info, 1) == 0;
      },
      failures);

  std::printf("files probed:                                   %zu (%d failures)\n", files.size(), failures);
  std::printf("ffprobe, one process a file:                    %8.1f ms\n", ffprobeSeconds * 1000);
  std::printf("engine, with thumbnail and keyframe index:      %8.1f ms\n", engineSeconds * 1000);
  std::printf("engine, audio-only request (streams only):      %8.1f ms\n", probeOnlySeconds * 1000);
  std::printf("ratio engine / ffprobe:                         %8.3f (target <= 0.5)\n",
              engineSeconds / ffprobeSeconds);
  std::error_code ignored;
  fs::remove_all(folder, ignored);
  return files.empty() || failures > 0 ? 1 : 0;
}
