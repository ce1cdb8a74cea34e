#include "TestMedia.h"

#include <gtest/gtest.h>
#include <unistd.h>

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <functional>
#include <iterator>
#include <map>
#include <vector>

#include "ExternalTools.h"

namespace enginetest {
namespace {

namespace fs = std::filesystem;
using Arguments = std::vector<std::string>;

// Each recipe is one or more ffmpeg runs; "{out}" is the file being made and
// "{previous}" the output of the run before.
const std::map<std::string, std::vector<Arguments>>& recipes() {
  static const std::map<std::string, std::vector<Arguments>> table = {
      {"clip.mp4", {{"-f",       "lavfi",     "-i",   "testsrc=size=320x240:rate=25:duration=2",
                     "-f",       "lavfi",     "-i",   "sine=frequency=440:sample_rate=44100:duration=2",
                     "-ac",      "2",         "-c:v", "libx264",
                     "-preset",  "ultrafast", "-g",   "10",
                     "-pix_fmt", "yuv420p",   "-c:a", "aac",
                     "{out}"}}},
      {"front-index.mp4",
       {{"-f", "lavfi", "-i", "testsrc=size=320x240:rate=25:duration=2", "-c:v", "libx264", "-preset", "ultrafast",
         "-movflags", "+faststart", "{out}"}}},
      {"two-audio.mkv",
       {{"-f",
         "lavfi",
         "-i",
         "testsrc=size=160x120:rate=10:duration=2",
         "-f",
         "lavfi",
         "-i",
         "sine=frequency=300:sample_rate=48000:duration=2",
         "-f",
         "lavfi",
         "-i",
         "sine=frequency=600:sample_rate=48000:duration=2,aformat=channel_layouts=5.1",
         "-map",
         "0",
         "-map",
         "1",
         "-map",
         "2",
         "-c:v",
         "libx264",
         "-preset",
         "ultrafast",
         "-c:a",
         "aac",
         "-metadata:s:a:0",
         "language=ger",
         "-metadata:s:a:0",
         "title=éééééééééééééé",
         "-metadata:s:a:1",
         "language=eng",
         "-disposition:a:0",
         "0",
         "-disposition:a:1",
         "default",
         "{out}"}}},
      {"rotated.mov",
       {{"-filter_complex",
         "color=red:size=160x60:duration=1:rate=10[top];color=blue:size=160x60:duration=1:rate=10"
         "[bottom];[top][bottom]vstack,format=yuv420p",
         "-c:v", "libx264", "-preset", "ultrafast", "{out}"},
        {"-i", "{previous}", "-c", "copy", "-metadata:s:v:0", "rotate=90", "{out}"}}},
      {"clip.avi",
       {{"-f", "lavfi", "-i", "testsrc=size=176x144:rate=15:duration=2", "-f", "lavfi", "-i",
         "sine=sample_rate=44100:duration=2", "-c:v", "mpeg4", "-c:a", "libmp3lame", "{out}"}}},
      {"clip.ts",
       {{"-f", "lavfi", "-i", "testsrc=size=160x120:rate=25:duration=2", "-f", "lavfi", "-i",
         "sine=sample_rate=48000:duration=2", "-c:v", "libx264", "-preset", "ultrafast", "-g", "12", "-c:a", "mp2",
         "{out}"}}},
      {"clip.webm",
       {{"-f", "lavfi", "-i", "testsrc=size=160x120:rate=10:duration=2", "-f", "lavfi", "-i",
         "sine=sample_rate=48000:duration=2", "-c:v", "libvpx", "-deadline", "realtime", "-cpu-used", "8", "-c:a",
         "libopus", "{out}"}}},
      {"song.mp3",
       {{"-f", "lavfi", "-i", "sine=sample_rate=44100:duration=2", "-ac", "2", "-c:a", "libmp3lame", "{out}"}}},
      {"song.flac",
       {{"-f", "lavfi", "-i", "sine=sample_rate=48000:duration=2", "-sample_fmt", "s16", "-c:a", "flac", "{out}"}}},
      {"song.wav", {{"-f", "lavfi", "-i", "sine=sample_rate=22050:duration=2", "-c:a", "pcm_s16le", "{out}"}}},
      {"picture.png", {{"-f", "lavfi", "-i", "testsrc=size=64x48", "-frames:v", "1", "{out}"}}},
      {"black-start.mp4",
       {{"-f", "lavfi", "-i", "testsrc=size=160x120:rate=10:duration=5,drawbox=color=black:t=fill:enable='lt(t,0.3)'",
         "-c:v", "libx264", "-preset", "ultrafast", "-pix_fmt", "yuv420p", "{out}"}}},
      {"anamorphic.mp4",
       {{"-f", "lavfi", "-i", "testsrc=size=160x120:rate=10:duration=1,setsar=2", "-c:v", "libx264", "-preset",
         "ultrafast", "{out}"}}},
      {"interlaced.mpg",
       {{"-f", "lavfi", "-i", "testsrc=size=176x144:rate=25:duration=1", "-c:v", "mpeg2video", "-flags", "+ilme+ildct",
         "-top", "1", "{out}"}}},
      {"red-then-blue.mp4",
       {{"-filter_complex",
         "color=red:size=64x48:rate=10:duration=1[a];color=blue:size=64x48:rate=10:duration=1[b];"
         "[a][b]concat=n=2,format=yuv420p",
         "-c:v", "libx264", "-preset", "ultrafast", "-g", "5", "{out}"}}},
  };
  return table;
}

std::string replaced(const std::string& argument, const std::string& out, const std::string& previous) {
  if (argument == "{out}") return out;
  if (argument == "{previous}") return previous;
  return argument;
}

// Runs a recipe into a temporary name with the final extension, so that a
// test process running beside this one never sees half a file.
bool generate(const std::vector<Arguments>& steps, const fs::path& target) {
  std::string previous;
  for (size_t step = 0; step < steps.size(); ++step) {
    const fs::path out = target.parent_path() / (".part-" + std::to_string(getpid()) + "-" + std::to_string(step) +
                                                 "-" + target.filename().string());
    Arguments arguments;
    for (const std::string& argument : steps[step]) arguments.push_back(replaced(argument, out, previous));
    if (!runFfmpeg(arguments)) return false;
    if (!previous.empty()) fs::remove(previous);
    previous = out;
  }
  fs::rename(previous, target);
  return true;
}

}  // namespace

std::string sample(const std::string& name) {
  const auto recipe = recipes().find(name);
  if (recipe == recipes().end()) {
    ADD_FAILURE() << "no recipe for " << name;
    return "";
  }
  // The recipe's own fingerprint in the name: a changed recipe makes a new file.
  std::string recipeText;
  for (const Arguments& step : recipe->second) {
    for (const std::string& argument : step) recipeText += argument + '\n';
  }
  const fs::path target =
      fs::path(ENGINE_TEST_MEDIA_DIR) / (std::to_string(std::hash<std::string>{}(recipeText)) + "-" + name);
  if (!fs::exists(target)) {
    fs::create_directories(target.parent_path());
    EXPECT_TRUE(generate(recipe->second, target)) << "ffmpeg could not make " << name;
  }
  return target;
}

std::string firstBytesOf(const std::string& source, double fraction, const std::string& name) {
  std::ifstream whole(source, std::ios::binary);
  const std::string content((std::istreambuf_iterator<char>(whole)), std::istreambuf_iterator<char>());
  const fs::path path = fs::path(scratchFolder()) / name;
  std::ofstream(path, std::ios::binary) << content.substr(0, static_cast<std::size_t>(content.size() * fraction));
  return path.string();
}

std::string scratchFolder() {
  static const struct Folder {
    std::string path;
    Folder() {
      std::string pattern = (fs::temp_directory_path() / "engine-tests-XXXXXX").string();
      path = mkdtemp(pattern.data()) != nullptr ? pattern : "";
    }
    ~Folder() {
      std::error_code ignored;
      if (!path.empty()) fs::remove_all(path, ignored);
    }
  } folder;
  return folder.path;
}

}  // namespace enginetest
