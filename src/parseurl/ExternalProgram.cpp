#include "ExternalProgram.h"

#include <fcntl.h>
#include <poll.h>
#include <signal.h>
#include <spawn.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cerrno>
#include <cstdlib>
#include <sstream>

extern char** environ;

namespace parseurl {
namespace {

// Closes a descriptor when it goes out of scope.
class Descriptor {
 public:
  explicit Descriptor(int fd = -1) : fd_(fd) {}
  ~Descriptor() { reset(); }
  Descriptor(const Descriptor&) = delete;
  Descriptor& operator=(const Descriptor&) = delete;
  int get() const { return fd_; }
  void reset() {
    if (fd_ >= 0) close(fd_);
    fd_ = -1;
  }

 private:
  int fd_;
};

// Reads the child's output until it closes it; false on overrun of time or size.
bool readAll(int fd, const Deadline& deadline, size_t maxBytes, std::string& output) {
  char buffer[65536];
  while (true) {
    pollfd waiting{fd, POLLIN, 0};
    const int ready = poll(&waiting, 1, static_cast<int>(deadline.remaining().count()));
    if (ready < 0 && errno == EINTR) continue;
    if (ready <= 0) return false;
    const ssize_t got = read(fd, buffer, sizeof(buffer));
    if (got < 0 && errno == EINTR) continue;
    if (got < 0) return false;
    if (got == 0) return true;
    output.append(buffer, static_cast<size_t>(got));
    if (output.size() > maxBytes) return false;
  }
}

}  // namespace

bool isProgramOnPath(const std::string& program) {
  const char* path = std::getenv("PATH");
  if (path == nullptr || program.empty() || program.find('/') != std::string::npos) return false;
  std::istringstream folders(path);
  std::string folder;
  while (std::getline(folders, folder, ':')) {
    if (folder.empty()) continue;
    const std::string candidate = folder + "/" + program;
    struct stat status {};
    if (stat(candidate.c_str(), &status) == 0 && S_ISREG(status.st_mode) && access(candidate.c_str(), X_OK) == 0) {
      return true;
    }
  }
  return false;
}

std::optional<std::string> runProgram(const std::string& program, const std::vector<std::string>& arguments,
                                      const std::string& folder, const Deadline& deadline, size_t maxBytes) {
  int ends[2];
  if (pipe2(ends, O_CLOEXEC) != 0) return std::nullopt;
  Descriptor readEnd(ends[0]);
  Descriptor writeEnd(ends[1]);

  posix_spawn_file_actions_t actions;
  posix_spawn_file_actions_init(&actions);
  posix_spawn_file_actions_addopen(&actions, STDIN_FILENO, "/dev/null", O_RDONLY, 0);
  posix_spawn_file_actions_adddup2(&actions, writeEnd.get(), STDOUT_FILENO);
  posix_spawn_file_actions_addopen(&actions, STDERR_FILENO, "/dev/null", O_WRONLY, 0);
  if (!folder.empty() && access(folder.c_str(), X_OK) == 0) {
    posix_spawn_file_actions_addchdir_np(&actions, folder.c_str());
  }
  // A group of its own, so that a kill reaches what it started too.
  posix_spawnattr_t attributes;
  posix_spawnattr_init(&attributes);
  posix_spawnattr_setflags(&attributes, POSIX_SPAWN_SETPGROUP);
  posix_spawnattr_setpgroup(&attributes, 0);

  std::vector<char*> argv{const_cast<char*>(program.c_str())};
  for (const std::string& argument : arguments) argv.push_back(const_cast<char*>(argument.c_str()));
  argv.push_back(nullptr);
  pid_t child = 0;
  const int spawned = posix_spawnp(&child, program.c_str(), &actions, &attributes, argv.data(), environ);
  posix_spawn_file_actions_destroy(&actions);
  posix_spawnattr_destroy(&attributes);
  writeEnd.reset();
  if (spawned != 0) return std::nullopt;

  std::string output;
  const bool complete = readAll(readEnd.get(), deadline, maxBytes, output);
  readEnd.reset();
  if (!complete) kill(-child, SIGKILL);
  int status = 0;
  while (waitpid(child, &status, 0) < 0 && errno == EINTR) {
  }
  if (!complete || !WIFEXITED(status) || WEXITSTATUS(status) != 0) return std::nullopt;
  return output;
}

}  // namespace parseurl
