// The formats the tag library writes, and files of them for the tag tests,
// made by the ffmpeg program (see GeneratedMedia.h).
#pragma once

#include <QStringList>

#include <ostream>
#include <string>
#include <vector>

#include "GeneratedMedia.h"

namespace tagtest {

// A temporary folder of one test, removed with everything in it.
class TempFolder {
 public:
  std::string path() const { return folder_.path().toStdString(); }
  std::string file(const std::string& name) const { return path() + "/" + name; }
  // A fresh copy of `source` under `name`.
  std::string copy(const std::string& source, const std::string& name) const {
    return folder_.copy(QString::fromStdString(source), QString::fromStdString(name)).toStdString();
  }
  // A 64x48 test picture; the extension of name picks the image format.
  std::string picture(const std::string& name) const {
    return folder_.still(QString::fromStdString(name)).toStdString();
  }

 private:
  testmedia::Folder folder_;
};

// A writable media format of the tests: how to make a one-second file of it.
struct MediaFormat {
  std::string name;
  std::string extension;
  QStringList ffmpegOptions;  // codecs and muxer after the test-pattern inputs
  bool hasVideo = false;
  // False where no encoder is packaged and the file is assembled from headers only.
  bool decodable = true;
};

// Test names show the format's name.
inline std::ostream& operator<<(std::ostream& out, const MediaFormat& format) { return out << format.name; }

const std::vector<MediaFormat>& writableFormats();
const MediaFormat& formatNamed(const std::string& name);

// A one-second tone, with a test picture when withVideo, encoded with these
// options (codecs, muxer, "-metadata" tags); named `name` in the shared media
// folder, so copy it before changing it.
std::string madeWithFfmpeg(const std::string& name, const QStringList& options, bool withVideo);
// A fresh copy of a one-second file of the format, named "input.<ext>" in folder.
std::string makeMedia(const MediaFormat& format, const TempFolder& folder);

std::string readFile(const std::string& path);
// The file's size and a hash of its bytes, short enough to show in a failure.
std::string fingerprint(const std::string& path);
void writeFile(const std::string& path, const std::string& bytes);

}  // namespace tagtest
