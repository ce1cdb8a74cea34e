// Replaces a file by an edited copy: the copy is made beside the file, edited,
// and renamed over it only on commit, so that a failure at any point (a full
// disk, a crash in the middle of a write) leaves the file as it was. The price
// is room for a second copy while it runs, and other hard links to the file
// keep the old contents.
#pragma once

#include <string>

namespace metadata {

class FileReplacement {
 public:
  enum class CopyResult { Copied, FolderNotWritable, Failed };

  explicit FileReplacement(std::string target) : target_(std::move(target)) {}
  // Removes the copy unless it was committed.
  ~FileReplacement();
  FileReplacement(const FileReplacement&) = delete;
  FileReplacement& operator=(const FileReplacement&) = delete;

  // Copies the target to a new hidden file in its folder.
  CopyResult createCopy();
  const std::string& copyPath() const { return copyPath_; }
  // Flushes the copy to disk, gives it the target's permissions and owner,
  // and renames it over the target.
  bool commit();

 private:
  std::string target_;
  std::string copyPath_;
  bool committed_ = false;
};

}  // namespace metadata
