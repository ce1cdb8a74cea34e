// The scratch folder given through VideoConverter_SetTempPath, readable from
// any of the library's threads.
#pragma once

#include <string>

namespace engine {

std::string tempPath();

}  // namespace engine
