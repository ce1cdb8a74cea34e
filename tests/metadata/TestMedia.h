// Real media and picture files for the tag tests, made by the ffmpeg command
// in temporary folders.
#pragma once

#include <ostream>
#include <string>
#include <vector>

namespace testmedia {

// A temporary folder, removed with everything in it on destruction.
class TempFolder {
 public:
  TempFolder();
  ~TempFolder();
  TempFolder(const TempFolder&) = delete;
  TempFolder& operator=(const TempFolder&) = delete;

  const std::string& path() const { return path_; }
  std::string file(const std::string& name) const { return path_ + "/" + name; }

 private:
  std::string path_;
};

struct CommandResult {
  int exitCode = -1;
  std::string output;  // standard output and standard error together
};

// Runs a shell command line.
CommandResult runCommand(const std::string& commandLine);
// The argument quoted for the shell.
std::string shellQuoted(const std::string& argument);

// A writable media format of the tests: how to make a one-second file of it.
struct MediaFormat {
  std::string name;
  std::string extension;
  std::string ffmpegOutputOptions;  // codecs and muxer after the test-pattern inputs
  bool hasVideo = false;
  // False where no encoder is packaged and the file is assembled from headers only.
  bool decodable = true;
};

// Test names show the format's name.
inline std::ostream& operator<<(std::ostream& out, const MediaFormat& format) { return out << format.name; }

const std::vector<MediaFormat>& writableFormats();
const MediaFormat& formatNamed(const std::string& name);

// A fresh copy of a one-second file of the format, named "input.<ext>" in
// folder. Each format is made once per test run and then copied.
std::string makeMedia(const MediaFormat& format, const TempFolder& folder);

// A one-second tone, with a test pattern when withVideo, encoded with these
// output options (codecs, muxer, "-metadata" tags).
void makeWithFfmpeg(const std::string& path, const std::string& outputOptions, bool withVideo);

// A 40x30 test picture; the extension of name picks the image format.
std::string makePicture(const TempFolder& folder, const std::string& name);

std::string readFile(const std::string& path);
// The file's size and a hash of its bytes, short enough to show in a failure.
std::string fingerprint(const std::string& path);
void writeFile(const std::string& path, const std::string& bytes);

}  // namespace testmedia
