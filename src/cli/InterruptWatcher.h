// Turns Ctrl-C (SIGINT), SIGTERM and SIGHUP (the terminal closed) into a
// call on the main thread's event loop. The signal handler only writes a
// byte to a pipe that the loop watches. A second Ctrl-C ends the program at once, as usual.
#pragma once

#include <QSocketNotifier>

#include <functional>
#include <memory>

class InterruptWatcher {
 public:
  explicit InterruptWatcher(std::function<void()> onInterrupt);
  // Puts the previous signal handling back.
  ~InterruptWatcher();
  InterruptWatcher(const InterruptWatcher&) = delete;
  InterruptWatcher& operator=(const InterruptWatcher&) = delete;

  bool interrupted() const { return interrupted_; }

 private:
  void drain();

  std::function<void()> onInterrupt_;
  int readEnd_ = -1;
  std::unique_ptr<QSocketNotifier> notifier_;
  bool interrupted_ = false;
};
