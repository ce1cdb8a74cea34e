#include "IndependentReaders.h"

#include <algorithm>
#include <cctype>
#include <sstream>

#include "TestMedia.h"

namespace tagtest {
namespace {

using testmedia::runCommand;
using testmedia::shellQuoted;

std::string lowered(std::string text) {
  std::ranges::transform(text, text.begin(), [](unsigned char c) { return std::tolower(c); });
  return text;
}

// Prints "field<TAB>value" for every value of every tag field, and whether an
// embedded picture ends with the bytes of the picture file named second.
constexpr const char* kMutagenDump = R"(
import base64, sys, mutagen
from mutagen.flac import Picture
sys.stdout.reconfigure(encoding="utf-8")
f = mutagen.File(sys.argv[1])
if f is None or f.tags is None:
    sys.exit(3)
blobs = [p.data for p in getattr(f, "pictures", [])]
def text(value):
    for inner in (value, getattr(value, "data", None), getattr(value, "value", None)):
        if isinstance(inner, (bytes, bytearray)):
            blobs.append(bytes(inner))
            return "<binary>"
    if isinstance(value, tuple):
        return "/".join(str(part) for part in value)
    return str(value)
for key in f.tags.keys():
    values = f.tags[key]
    for value in (values if isinstance(values, list) else [values]):
        if key.lower() == "metadata_block_picture":
            blobs.append(Picture(base64.b64decode(value)).data)
            value = b""
        print(key.lower() + "\t" + text(value).replace("\n", " "))
if len(sys.argv) > 2:
    picture = open(sys.argv[2], "rb").read()
    print("\tcover " + ("same" if any(b.endswith(picture) for b in blobs) else "missing"))
)";

// The python3 that has the mutagen package (the system one, not a user's own).
const std::string& mutagenPython() {
  static const std::string python = [] {
    for (std::string candidate : {"/usr/bin/python3", "python3"}) {
      if (runCommand(candidate + " -c 'import mutagen'").exitCode == 0) return candidate;
    }
    return std::string("python3");
  }();
  return python;
}

}  // namespace

std::map<std::string, std::string> ffprobeTags(const std::string& path) {
  std::map<std::string, std::string> tags;
  // Containers such as Ogg keep their tags with the audio stream, not the file.
  for (const char* entries : {"-show_entries format_tags", "-select_streams a:0 -show_entries stream_tags"}) {
    testmedia::CommandResult result =
        runCommand("ffprobe -v quiet " + std::string(entries) + " -of default=noprint_wrappers=1 " + shellQuoted(path));
    std::istringstream lines(result.output);
    for (std::string line; std::getline(lines, line);) {
      size_t equals = line.find('=');
      if (!line.starts_with("TAG:") || equals == std::string::npos) continue;
      tags.emplace(lowered(line.substr(4, equals - 4)), line.substr(equals + 1));
    }
  }
  return tags;
}

bool MutagenView::hasValue(const std::string& value) const {
  return std::ranges::any_of(fields, [&](const auto& field) { return field.second == value; });
}

std::vector<std::string> MutagenView::values(const std::string& field) const {
  std::vector<std::string> found;
  auto [begin, end] = fields.equal_range(lowered(field));
  for (auto it = begin; it != end; ++it) found.push_back(it->second);
  return found;
}

bool runWithMutagen(const std::string& pythonCode, const std::string& path) {
  return runCommand(mutagenPython() + " -c " + shellQuoted(pythonCode) + " " + shellQuoted(path)).exitCode == 0;
}

std::string ffprobePicture(const std::string& path) {
  testmedia::CommandResult result =
      runCommand("ffprobe -v quiet -select_streams v:0 -show_entries stream=codec_name,width,height -of csv=p=0 " +
                 shellQuoted(path));
  std::string line = result.output.substr(0, result.output.find('\n'));
  return result.exitCode == 0 ? line : std::string();
}

MutagenView mutagenTags(const std::string& path, const std::string& picturePath) {
  MutagenView view;
  std::string command = mutagenPython() + " -c " + shellQuoted(kMutagenDump) + " " + shellQuoted(path);
  if (!picturePath.empty()) command.append(" ").append(shellQuoted(picturePath));
  testmedia::CommandResult result = runCommand(command);
  view.output = result.output;
  view.readable = result.exitCode == 0;
  std::istringstream lines(result.output);
  for (std::string line; std::getline(lines, line);) {
    size_t tab = line.find('\t');
    if (tab == std::string::npos) continue;
    if (tab == 0) {
      view.coverMatches = view.coverMatches || line == "\tcover same";
    } else {
      view.fields.emplace(line.substr(0, tab), line.substr(tab + 1));
    }
  }
  return view;
}

}  // namespace tagtest
