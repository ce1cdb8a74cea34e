// Tags as other programs see them: ffprobe (FFmpeg's demuxers) and the
// Python tag library from python3-mutagen.
#pragma once

#include <map>
#include <string>
#include <vector>

namespace tagtest {

// Container-level tags, keys in lower case; empty when ffprobe fails.
std::map<std::string, std::string> ffprobeTags(const std::string& path);

struct MutagenView {
  bool readable = false;
  std::string output;                              // the dump, for failure messages
  std::multimap<std::string, std::string> fields;  // native field name in lower case -> each value
  bool coverMatches = false;  // an embedded picture holds exactly the bytes of the picture file given

  bool hasValue(const std::string& value) const;
  std::vector<std::string> values(const std::string& field) const;
};

MutagenView mutagenTags(const std::string& path, const std::string& picturePath = "");

// Runs Python code with the mutagen package at hand and the file's path as
// sys.argv[1]; true when it exits with 0.
bool runWithMutagen(const std::string& pythonCode, const std::string& path);

// "codec,width,height" of the first picture stream as ffprobe sees it, such
// as an embedded cover; empty when there is none.
std::string ffprobePicture(const std::string& path);

}  // namespace tagtest
