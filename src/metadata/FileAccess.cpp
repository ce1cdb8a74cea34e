#include "FileAccess.h"

#include <sys/stat.h>
#include <unistd.h>

namespace metadata {

FileAccess fileAccess(const std::string& path) {
  struct stat status {};
  if (::stat(path.c_str(), &status) != 0 || !S_ISREG(status.st_mode)) return FileAccess::Unavailable;
  if (::access(path.c_str(), R_OK) != 0) return FileAccess::Unavailable;
  bool anyWriteBit = (status.st_mode & (S_IWUSR | S_IWGRP | S_IWOTH)) != 0;
  if (!anyWriteBit || ::access(path.c_str(), W_OK) != 0) return FileAccess::ReadOnly;
  return FileAccess::Writable;
}

}  // namespace metadata
