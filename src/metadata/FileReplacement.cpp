#include "FileReplacement.h"

#include <cerrno>
#include <cstdio>
#include <filesystem>
#include <vector>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace metadata {
namespace {

bool syncFile(const std::string& path) {
  int descriptor = ::open(path.c_str(), O_RDONLY | O_CLOEXEC);
  if (descriptor < 0) return false;
  bool synced = ::fsync(descriptor) == 0;
  return ::close(descriptor) == 0 && synced;
}

}  // namespace

FileReplacement::~FileReplacement() {
  if (!copyPath_.empty() && !committed_) std::remove(copyPath_.c_str());
}

FileReplacement::CopyResult FileReplacement::createCopy() {
  std::error_code error;
  // Through a symbolic link the file it points to is replaced, not the link.
  std::filesystem::path target = std::filesystem::canonical(target_, error);
  if (error) return CopyResult::Failed;
  target_ = target.string();
  std::string extension = target.extension().string();
  // Built by appending: GCC 12 misreports a temporary chain of + as overlapping copies.
  std::string hiddenName = ".";
  hiddenName.append(target.stem().string()).append(".tags-XXXXXX").append(extension);
  std::string pattern = (target.parent_path() / hiddenName).string();
  std::vector<char> name(pattern.begin(), pattern.end());
  name.push_back('\0');
  int descriptor = ::mkstemps(name.data(), static_cast<int>(extension.size()));
  if (descriptor < 0) {
    return errno == EACCES || errno == EPERM || errno == EROFS ? CopyResult::FolderNotWritable : CopyResult::Failed;
  }
  ::close(descriptor);
  copyPath_ = name.data();

  std::filesystem::copy_file(target_, copyPath_, std::filesystem::copy_options::overwrite_existing, error);
  return error ? CopyResult::Failed : CopyResult::Copied;
}

bool FileReplacement::commit() {
  struct stat status {};
  if (copyPath_.empty() || ::stat(target_.c_str(), &status) != 0 || !syncFile(copyPath_)) return false;
  if (::chmod(copyPath_.c_str(), status.st_mode & 07777) != 0) return false;
  // Only the superuser may give a file to another owner; anyone else's copy
  // is their own, as any file they write is.
  if (::geteuid() == 0 && ::chown(copyPath_.c_str(), status.st_uid, status.st_gid) != 0) return false;
  if (std::rename(copyPath_.c_str(), target_.c_str()) != 0) return false;
  committed_ = true;
  return true;
}

}  // namespace metadata
