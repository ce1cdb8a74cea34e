// What may be done with a file on disk.
#pragma once

#include <string>

namespace metadata {

enum class FileAccess { Unavailable, ReadOnly, Writable };

// Unavailable: missing, not a regular file, or not readable. ReadOnly: no
// write permission, a read-only file system, or no write bit at all in its
// mode (so that a file marked read-only stays so even for the superuser).
FileAccess fileAccess(const std::string& path);

}  // namespace metadata
