// A queue that requests run in: one network thread, a number of requests at
// a time, the rest waiting in the order they were added. Requests started
// with startAsynchronous() go to the shared queue, four at a time; a queue
// of one's own keeps long requests (file downloads) from holding up the
// shared queue's short ones.
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
  // A queue that runs at most `maxConcurrentOperationCount` requests at a
  // time. Like the shared queue, it stops when the application object goes.
  explicit ASINetworkQueue(int maxConcurrentOperationCount = kMaxConcurrentOperationCount);
  ~ASINetworkQueue();
  ASINetworkQueue(const ASINetworkQueue&) = delete;
  ASINetworkQueue& operator=(const ASINetworkQueue&) = delete;

  int maxConcurrentOperationCount() const { return maxConcurrentOperationCount_; }
  // Use ASIHTTPRequest::startAsynchronous(queue) to start a request here.
  void addOperation(std::shared_ptr<ASIHTTPRequest> request);
  // Requests running or waiting.
  int operationCount() const;
  // Makes the network thread look at its requests now (after a cancel).
  void wakeUp();
  // Stops the network thread; running requests end without telling anyone.
  void shutDown();

 private:
  void run();
  void admitWaitingRequests();
  void readFinishedTransfers();
  int pollMilliseconds() const;

  const int maxConcurrentOperationCount_;
  mutable std::mutex mutex_;
  std::deque<std::shared_ptr<ASIHTTPRequest>> waiting_;
  int runningCount_ = 0;
  bool stopping_ = false;
  CURLM* multi_ = nullptr;
  std::thread thread_;
  // Touched by the network thread only.
  std::vector<std::unique_ptr<ASIRequestRun>> running_;
};
