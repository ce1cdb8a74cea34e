#include "BenchMedia.h"

#include <fcntl.h>
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cstdio>

extern char** environ;

namespace benchmedia {
namespace {

namespace fs = std::filesystem;

constexpr int kCopiesOfEachSample = 10;

struct Sample {
  const char* name;
  std::vector<std::string> ffmpegArguments;  // inputs and codecs; the output path follows
};

const std::vector<Sample> kSamples = {
    {"clip.mp4",
     {"-f", "lavfi", "-i", "testsrc=size=640x360:rate=25:duration=2", "-f", "lavfi", "-i", "sine=duration=2", "-c:v",
      "libx264", "-preset", "ultrafast", "-c:a", "aac"}},
    {"clip.mkv", {"-f",      "lavfi",     "-i",   "testsrc=size=640x360:rate=25:duration=2",
                  "-f",      "lavfi",     "-i",   "sine=duration=2",
                  "-f",      "lavfi",     "-i",   "sine=frequency=600:duration=2",
                  "-map",    "0",         "-map", "1",
                  "-map",    "2",         "-c:v", "libx264",
                  "-preset", "ultrafast", "-c:a", "aac"}},
    {"clip.mov",
     {"-f", "lavfi", "-i", "testsrc=size=640x360:rate=30:duration=2", "-c:v", "libx264", "-preset", "ultrafast"}},
    {"clip.avi",
     {"-f", "lavfi", "-i", "testsrc=size=352x288:rate=25:duration=2", "-f", "lavfi", "-i", "sine=duration=2", "-c:v",
      "mpeg4", "-c:a", "libmp3lame"}},
    {"clip.ts",
     {"-f", "lavfi", "-i", "testsrc=size=640x360:rate=25:duration=2", "-f", "lavfi", "-i", "sine=duration=2", "-c:v",
      "libx264", "-preset", "ultrafast", "-c:a", "mp2"}},
    {"clip.webm",
     {"-f", "lavfi", "-i", "testsrc=size=320x240:rate=25:duration=2", "-f", "lavfi", "-i", "sine=duration=2", "-c:v",
      "libvpx", "-deadline", "realtime", "-cpu-used", "8", "-c:a", "libopus"}},
    {"clip.mpg",
     {"-f", "lavfi", "-i", "testsrc=size=352x288:rate=25:duration=2", "-f", "lavfi", "-i", "sine=duration=2", "-c:v",
      "mpeg2video", "-c:a", "mp2"}},
    {"song.mp3", {"-f", "lavfi", "-i", "sine=duration=2", "-c:a", "libmp3lame"}},
    {"song.flac", {"-f", "lavfi", "-i", "sine=duration=2", "-c:a", "flac"}},
    {"song.wav", {"-f", "lavfi", "-i", "sine=duration=2", "-c:a", "pcm_s16le"}},
};

}  // namespace

int runQuietly(const std::vector<std::string>& arguments) {
  std::vector<char*> argv;
  for (const std::string& argument : arguments) argv.push_back(const_cast<char*>(argument.c_str()));
  argv.push_back(nullptr);
  posix_spawn_file_actions_t actions;
  posix_spawn_file_actions_init(&actions);
  posix_spawn_file_actions_addopen(&actions, STDOUT_FILENO, "/dev/null", O_WRONLY, 0);
  posix_spawn_file_actions_addopen(&actions, STDERR_FILENO, "/dev/null", O_WRONLY, 0);
  pid_t child = 0;
  const int spawned = posix_spawnp(&child, argv[0], &actions, nullptr, argv.data(), environ);
  posix_spawn_file_actions_destroy(&actions);
  if (spawned != 0) return -1;
  int status = 0;
  waitpid(child, &status, 0);
  return WIFEXITED(status) ? WEXITSTATUS(status) : -1;
}

std::vector<fs::path> generateFiles(const fs::path& folder) {
  std::vector<fs::path> files;
  for (const Sample& sample : kSamples) {
    const fs::path source = folder / sample.name;
    std::vector<std::string> command = {"ffmpeg", "-nostdin", "-y"};
    command.insert(command.end(), sample.ffmpegArguments.begin(), sample.ffmpegArguments.end());
    command.push_back(source);
    if (runQuietly(command) != 0) {
      std::fprintf(stderr, "ffmpeg could not make %s\n", sample.name);
      return {};
    }
    // Copies under other names: the engine keeps no result from one name for another.
    for (int copy = 0; copy < kCopiesOfEachSample; ++copy) {
      files.push_back(folder / (std::to_string(copy) + "-" + sample.name));
      fs::copy_file(source, files.back());
    }
  }
  return files;
}

}  // namespace benchmedia
