#include "IndependentReaders.h"

#include <algorithm>
#include <cctype>
#include <sstream>

#include "GeneratedMedia.h"

namespace tagtest {
namespace {

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

// Runs Python code with the mutagen package at hand (the system's python3,
// not a user's own) and the arguments as sys.argv[1:].
testmedia::ProgramOutput runPython(const char* code, const std::vector<std::string>& arguments) {
  static const QString python = [] {
    for (const char* candidate : {"/usr/bin/python3", "python3"}) {
      if (testmedia::run(candidate, {"-c", "import mutagen"}).exitCode == 0) return QString(candidate);
    }
    return QStringLiteral("python3");
  }();
  QStringList all{"-c", code};
  for (const std::string& argument : arguments) all.append(QString::fromStdString(argument));
  return testmedia::run(python, all);
}

}  // namespace

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
  return runPython(pythonCode.c_str(), {path}).exitCode == 0;
}

MutagenView mutagenTags(const std::string& path, const std::string& picturePath) {
  MutagenView view;
  const testmedia::ProgramOutput result =
      runPython(kMutagenDump, picturePath.empty() ? std::vector{path} : std::vector{path, picturePath});
  view.output = (result.output + result.errors).toStdString();
  view.readable = result.exitCode == 0;
  std::istringstream lines(result.output.toStdString());
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
