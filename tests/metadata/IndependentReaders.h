// Tags as another program sees them: the Python tag library from
// python3-mutagen. (ffprobe's view is in GeneratedMedia.h.)
#pragma once

#include <map>
#include <string>
#include <vector>

namespace tagtest {

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

}  // namespace tagtest
