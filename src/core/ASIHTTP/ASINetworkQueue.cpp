#include "ASINetworkQueue.h"

#include <QCoreApplication>

#include <algorithm>
#include <chrono>

#include "ASIHTTPRequest.h"
#include "ASIRequestRun.h"

namespace {

// Longest wait of the network loop when nothing happens.
constexpr int kLongestPollMilliseconds = 500;

// The queues alive, which stop together when the application object goes.
struct LiveQueues {
  std::mutex mutex;
  std::vector<ASINetworkQueue*> queues;
  bool routineAdded = false;
};

LiveQueues& liveQueues() {
  static LiveQueues live;
  return live;
}

void shutDownLiveQueues() {
  std::vector<ASINetworkQueue*> queues;
  {
    std::lock_guard lock(liveQueues().mutex);
    queues = liveQueues().queues;
  }
  for (ASINetworkQueue* queue : queues) queue->shutDown();
}

}  // namespace

ASINetworkQueue& ASINetworkQueue::sharedQueue() {
  static ASINetworkQueue queue;
  return queue;
}

ASINetworkQueue::ASINetworkQueue(int maxConcurrentOperationCount)
    : maxConcurrentOperationCount_(std::max(1, maxConcurrentOperationCount)) {
  curl_global_init(CURL_GLOBAL_DEFAULT);
  multi_ = curl_multi_init();
  // The network thread stops while the application object still exists, so
  // that no request outlives the main thread it reports to.
  LiveQueues& live = liveQueues();
  std::lock_guard lock(live.mutex);
  live.queues.push_back(this);
  if (!live.routineAdded && QCoreApplication::instance() != nullptr) {
    qAddPostRoutine(shutDownLiveQueues);
    live.routineAdded = true;
  }
}

ASINetworkQueue::~ASINetworkQueue() {
  {
    LiveQueues& live = liveQueues();
    std::lock_guard lock(live.mutex);
    std::erase(live.queues, this);
  }
  shutDown();
  curl_multi_cleanup(multi_);
}

void ASINetworkQueue::addOperation(std::shared_ptr<ASIHTTPRequest> request) {
  {
    std::lock_guard lock(mutex_);
    if (stopping_) {
      request->cancelSilently();
      return;
    }
    waiting_.push_back(std::move(request));
    if (!thread_.joinable()) thread_ = std::thread(&ASINetworkQueue::run, this);
  }
  wakeUp();
}

int ASINetworkQueue::operationCount() const {
  std::lock_guard lock(mutex_);
  return runningCount_ + static_cast<int>(waiting_.size());
}

void ASINetworkQueue::wakeUp() { curl_multi_wakeup(multi_); }

void ASINetworkQueue::shutDown() {
  {
    std::lock_guard lock(mutex_);
    if (stopping_) return;
    stopping_ = true;
  }
  wakeUp();
  if (thread_.joinable()) thread_.join();
}

void ASINetworkQueue::run() {
  while (true) {
    {
      std::lock_guard lock(mutex_);
      if (stopping_) break;
    }
    admitWaitingRequests();
    int stillRunning = 0;
    curl_multi_perform(multi_, &stillRunning);
    readFinishedTransfers();
    const auto now = ASIRequestRun::Clock::now();
    for (const std::unique_ptr<ASIRequestRun>& requestRun : running_) requestRun->checkCancelAndTimeOut(now);
    std::erase_if(running_, [](const std::unique_ptr<ASIRequestRun>& requestRun) { return requestRun->hasEnded(); });
    {
      std::lock_guard lock(mutex_);
      runningCount_ = static_cast<int>(running_.size());
      // A freed place is filled at once.
      if (!waiting_.empty() && runningCount_ < maxConcurrentOperationCount_) continue;
    }
    curl_multi_poll(multi_, nullptr, 0, pollMilliseconds(), nullptr);
  }

  std::deque<std::shared_ptr<ASIHTTPRequest>> neverStarted;
  {
    std::lock_guard lock(mutex_);
    neverStarted.swap(waiting_);
  }
  for (const std::shared_ptr<ASIHTTPRequest>& request : neverStarted) request->cancelSilently();
  for (const std::unique_ptr<ASIRequestRun>& requestRun : running_) requestRun->abandon();
  running_.clear();
}

void ASINetworkQueue::admitWaitingRequests() {
  while (true) {
    std::shared_ptr<ASIHTTPRequest> request;
    {
      std::lock_guard lock(mutex_);
      if (waiting_.empty() || static_cast<int>(running_.size()) >= maxConcurrentOperationCount_) return;
      request = std::move(waiting_.front());
      waiting_.pop_front();
      runningCount_ = static_cast<int>(running_.size()) + 1;
    }
    running_.push_back(std::make_unique<ASIRequestRun>(std::move(request)));
    running_.back()->start(multi_);
  }
}

void ASINetworkQueue::readFinishedTransfers() {
  int messagesLeft = 0;
  while (CURLMsg* message = curl_multi_info_read(multi_, &messagesLeft)) {
    if (message->msg != CURLMSG_DONE) continue;
    auto* requestRun = static_cast<ASIRequestRun*>(ASICurlTransfer::ownerOf(message->easy_handle));
    const CURLcode result = message->data.result;
    if (requestRun != nullptr) requestRun->transferDone(result);
  }
}

int ASINetworkQueue::pollMilliseconds() const {
  const auto now = ASIRequestRun::Clock::now();
  auto wait = std::chrono::milliseconds(kLongestPollMilliseconds);
  for (const std::unique_ptr<ASIRequestRun>& requestRun : running_) {
    const auto left = std::chrono::ceil<std::chrono::milliseconds>(requestRun->timeLeftBeforeTimeOut(now));
    wait = std::min(wait, left);
  }
  return static_cast<int>(std::max<long long>(1, wait.count()));
}
