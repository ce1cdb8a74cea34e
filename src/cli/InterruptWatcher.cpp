#include "InterruptWatcher.h"

#include <fcntl.h>
#include <unistd.h>

#include <cerrno>
#include <csignal>

namespace {

// Written by the handler; one watcher exists at a time.
volatile sig_atomic_t writeEnd = -1;
struct sigaction previousInterrupt;
struct sigaction previousTerminate;
struct sigaction previousHangUp;

void signalArrived(int /*signal*/) {
  const int savedErrno = errno;
  const char byte = 1;
  [[maybe_unused]] const ssize_t written = write(writeEnd, &byte, 1);
  errno = savedErrno;
}

}  // namespace

InterruptWatcher::InterruptWatcher(std::function<void()> onInterrupt) : onInterrupt_(std::move(onInterrupt)) {
  int ends[2];
  if (pipe2(ends, O_CLOEXEC | O_NONBLOCK) != 0) return;  // no watching: Ctrl-C ends the program
  readEnd_ = ends[0];
  writeEnd = ends[1];
  notifier_ = std::make_unique<QSocketNotifier>(readEnd_, QSocketNotifier::Read);
  QObject::connect(notifier_.get(), &QSocketNotifier::activated, notifier_.get(), [this] { drain(); });

  struct sigaction action {};
  action.sa_handler = signalArrived;
  sigemptyset(&action.sa_mask);
  action.sa_flags = SA_RESTART | SA_RESETHAND;
  sigaction(SIGINT, &action, &previousInterrupt);
  sigaction(SIGTERM, &action, &previousTerminate);
  sigaction(SIGHUP, &action, &previousHangUp);
}

InterruptWatcher::~InterruptWatcher() {
  if (readEnd_ < 0) return;
  sigaction(SIGINT, &previousInterrupt, nullptr);
  sigaction(SIGTERM, &previousTerminate, nullptr);
  sigaction(SIGHUP, &previousHangUp, nullptr);
  notifier_.reset();
  close(writeEnd);
  writeEnd = -1;
  close(readEnd_);
}

void InterruptWatcher::drain() {
  char bytes[16];
  while (read(readEnd_, bytes, sizeof bytes) > 0) {
  }
  if (interrupted_) return;
  interrupted_ = true;
  onInterrupt_();
}
