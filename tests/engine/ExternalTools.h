// The ffmpeg and ffprobe commands, run as separate processes: they make the
// test media and give the reference answers the engine is checked against.
#pragma once

#include <map>
#include <string>
#include <vector>

namespace enginetest {

struct ProcessResult {
  int exitCode = -1;
  std::string output;  // standard output only
};

ProcessResult runProcess(const std::vector<std::string>& arguments);

// A program started with its standard output on a pipe, for a test that
// reads and then ends it itself.
struct StartedProcess {
  int pid = -1;
  int output = -1;  // read end of the pipe
};
StartedProcess startProcess(const std::vector<std::string>& arguments);

// Runs ffmpeg quietly with the given arguments; true on success.
bool runFfmpeg(const std::vector<std::string>& arguments);

// "key=value" lines of ffprobe for the first stream matching `selector`
// ("v:0", "a", "" for the format section), e.g. {"width": "320"}.
std::map<std::string, std::string> ffprobeFields(const std::string& path, const std::string& section,
                                                 const std::string& selector = "");
// Number of streams of a type ("audio", "video") as ffprobe counts them.
int ffprobeStreamCount(const std::string& path, const std::string& codecType);

struct Keyframe {
  double seconds = 0;
  long long bytePosition = -1;
};
// The keyframes of the first video stream in ffprobe's view, times from the start of the file.
std::vector<Keyframe> ffprobeKeyframes(const std::string& path);

struct RgbPicture {
  int width = 0;
  int height = 0;
  std::vector<unsigned char> rgb;  // three bytes a pixel, rows top to bottom
  // Mean of red, green and blue over a rectangle.
  std::vector<double> meanColour(int x, int y, int w, int h) const;
  double meanBrightness() const;
};
// Decodes a picture file, or the first frame of a video as ffmpeg shows it.
RgbPicture decodePicture(const std::string& path);

}  // namespace enginetest
