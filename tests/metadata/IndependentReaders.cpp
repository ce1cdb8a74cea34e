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

// Runs the python3 that has the mutagen package (the system's, not a user's
// own) with these arguments.
testmedia::ProgramOutput runPython(const std::vector<std::string>& arguments) {
  static const QString python = [] {
    for (const char* candidate : {"/usr/bin/python3", "python3"}) {
      if (testmedia::run(candidate, {"-c", "import mutagen"}).exitCode == 0) return QString(candidate);
    }
    return QStringLiteral("python3");
  }();
  QStringList all;
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
  return runPython({"-c", pythonCode, path}).exitCode == 0;
}

MutagenView mutagenTags(const std::string& path, const std::string& picturePath) {
  MutagenView view;
  const testmedia::ProgramOutput result = runPython({MUTAGEN_DUMP, path, picturePath});
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
