// Whole-file reads and writes for pictures.
#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace metadata {

// The file's bytes; nullopt when it cannot be read or is larger than maxSize.
std::optional<std::string> readFileBytes(const std::string& path, size_t maxSize);
// Creates or replaces the file; false when any byte could not be written.
bool writeFileBytes(const std::string& path, std::string_view bytes);

}  // namespace metadata
