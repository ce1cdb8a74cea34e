// What the threads of one conversion share about stopping: an abort asked
// for by the user, or the first failure met by any thread. Either one runs
// the registered stop actions once (closing the queues between threads).
#pragma once

#include <atomic>
#include <functional>
#include <mutex>
#include <string>
#include <vector>

namespace engine {

class PipelineControl {
 public:
  // Runs at once when the pipeline has already stopped. An action must not call back into this object.
  void addStopAction(std::function<void()> action);
  // For when what the actions touch goes away.
  void removeStopActions();

  void abort();
  // Keeps the first reason given; later failures are consequences of it.
  void fail(std::string reason);

  // A last stage of the pipeline flushed everything into the output. Once
  // all of them have, the output is whole even if an abort came meanwhile.
  void stageCompleted() { ++completedStages_; }
  int completedStages() const { return completedStages_.load(); }

  bool stopped() const { return stopped_.load(); }
  bool aborted() const;
  std::string failure() const;

 private:
  // Runs the stop actions unless a stop happened before; `record` notes why.
  void stopOnce(const std::function<void()>& record);

  mutable std::mutex mutex_;
  std::vector<std::function<void()>> stopActions_;
  std::string failure_;
  bool aborted_ = false;
  std::atomic<bool> stopped_{false};
  std::atomic<int> completedStages_{0};
};

}  // namespace engine
