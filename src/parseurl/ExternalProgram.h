// Running a helper program found on the PATH and collecting its output,
// within a time limit.
#pragma once

#include <optional>
#include <string>
#include <vector>

#include "Deadline.h"

namespace parseurl {

// True when an executable file of that name is in a folder of the PATH.
bool isProgramOnPath(const std::string& program);

// Runs `program` with `arguments` in `folder` (the current one when empty),
// its input and error output closed, and returns what it wrote to its
// standard output. nullopt when it cannot start, ends with a failure, writes
// more than `maxBytes`, or is still running at the deadline; a program that
// overruns is killed with the processes it started.
std::optional<std::string> runProgram(const std::string& program, const std::vector<std::string>& arguments,
                                      const std::string& folder, const Deadline& deadline, size_t maxBytes);

}  // namespace parseurl
