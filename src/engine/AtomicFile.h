// Writing a file so that readers see either nothing or the whole of it: the
// content goes to a temporary file beside it, renamed into place at the end.
#pragma once

#include <cstdio>
#include <functional>
#include <string>

namespace engine {

// A hidden name in the same folder, unique to this process and call, with
// the same extension: ".name.part-<pid>-<n>.ext" for "name.ext". Renaming it
// to `path` is atomic, and a process killed meanwhile leaves only this name.
std::string temporaryPathFor(const std::string& path);

// Calls writeContent with the open temporary file; it returns false when a
// write failed. Returns true once the complete file is in place; otherwise
// nothing is left behind and an existing file at `path` is untouched.
bool writeFileAtomically(const std::string& path, const std::function<bool(std::FILE*)>& writeContent);

}  // namespace engine
