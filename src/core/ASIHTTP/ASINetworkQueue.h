// The shared queue that requests run in: one network thread, at most four
// requests at a time, the rest waiting in the order they were added.
#pragma once

#include <curl/curl.h>

#include <deque>
#include <memory>
#include <mutex>
#include <thread>
#include <vector>

class ASIHTTPRequest;
class ASIRequestRun;

class ASINetworkQueue {
 public:
  static constexpr int kMaxConcurrentOperationCount = 4;

  static ASINetworkQueue& sharedQueue();
  ~ASINetworkQueue();
  ASINetworkQueue(const ASINetworkQueue&) = delete;
  ASINetworkQueue& operator=(const ASINetworkQueue&) = delete;

  void addOperation(std::shared_ptr<ASIHTTPRequest> request);
  // Requests running or waiting.
  int operationCount() const;
  // Makes the network thread look at its requests now (after a cancel).
  void wakeUp();
  // Stops the network thread; running requests end without telling anyone.
  void shutDown();

 private:
  ASINetworkQueue();
  void run();
  void admitWaitingRequests();
  void readFinishedTransfers();
  int pollMilliseconds() const;

  mutable std::mutex mutex_;
  std::deque<std::shared_ptr<ASIHTTPRequest>> waiting_;
  int runningCount_ = 0;
  bool stopping_ = false;
  CURLM* multi_ = nullptr;
  std::thread thread_;
  // Touched by the network thread only.
  std::vector<std::unique_ptr<ASIRequestRun>> running_;
};
