#include "PipelineControl.h"

namespace engine {

void PipelineControl::addStopAction(std::function<void()> action) {
  std::lock_guard lock(mutex_);
  if (stopped_) {
    action();
  } else {
    stopActions_.push_back(std::move(action));
  }
}

void PipelineControl::abort() {
  stopOnce([this] { aborted_ = true; });
}

void PipelineControl::fail(std::string reason) {
  stopOnce([&] { failure_ = std::move(reason); });
}

bool PipelineControl::aborted() const {
  std::lock_guard lock(mutex_);
  return aborted_;
}

std::string PipelineControl::failure() const {
  std::lock_guard lock(mutex_);
  return failure_;
}

void PipelineControl::stopOnce(const std::function<void()>& record) {
  // The actions run under the lock, so that none is still running once removeStopActions() returns.
  std::lock_guard lock(mutex_);
  if (stopped_) return;
  record();
  stopped_ = true;
  for (const auto& action : stopActions_) action();
  stopActions_.clear();
}

void PipelineControl::removeStopActions() {
  std::lock_guard lock(mutex_);
  stopActions_.clear();
}

}  // namespace engine
