// The shared queue runs at most four requests at once and starts the others
// as places free up; a queue of one's own runs beside it.

#include <gtest/gtest.h>

#include <algorithm>
#include <condition_variable>
#include <mutex>

#include "ASIHTTP/ASINetworkQueue.h"
#include "HttpTestSupport.h"

namespace {

// Each request is held on the server until the test lets one go.
class HoldingServer {
 public:
  HoldingServer() {
    httplib.server.Get("/held", [this](const httplib::Request&, httplib::Response& response) {
      std::unique_lock lock(mutex_);
      ++inFlight_;
      mostInFlight_ = std::max(mostInFlight_, inFlight_);
      released_.wait(lock, [this] { return releases_ > 0 || stopping_; });
      if (releases_ > 0) --releases_;
      --inFlight_;
      response.set_content("let go", "text/plain");
    });
  }
  ~HoldingServer() {
    {
      std::lock_guard lock(mutex_);
      stopping_ = true;
    }
    released_.notify_all();
  }

  void releaseOne() {
    {
      std::lock_guard lock(mutex_);
      ++releases_;
    }
    released_.notify_one();
  }
  int inFlight() {
    std::lock_guard lock(mutex_);
    return inFlight_;
  }
  int mostInFlight() {
    std::lock_guard lock(mutex_);
    return mostInFlight_;
  }

 private:
  std::mutex mutex_;
  std::condition_variable released_;
  int inFlight_ = 0;
  int mostInFlight_ = 0;
  int releases_ = 0;
  bool stopping_ = false;

 public:
  // Last, so that it stops before the members its handler uses go.
  LocalHttplibServer httplib;
};

TEST(SharedQueue, NeverRunsMoreThanFourRequestsAtOnce) {
  HoldingServer server;
  RecordingDelegate delegate;
  std::vector<std::shared_ptr<ASIHTTPRequest>> requests;
  for (int i = 0; i < 6; ++i) {
    requests.push_back(makeRequest(server.httplib.url("/held"), delegate));
    requests.back()->setTimeOutSeconds(120);
    requests.back()->startAsynchronous();
  }
  ASSERT_TRUE(waitUntil([&] { return server.inFlight() == 4; }));
  EXPECT_EQ(ASINetworkQueue::sharedQueue().operationCount(), 6);

  for (int released = 1; released <= 6; ++released) {
    server.releaseOne();
    ASSERT_TRUE(waitUntil([&] { return delegate.events.count("finished") == released; }));
  }

  EXPECT_EQ(server.mostInFlight(), 4);
  for (const std::shared_ptr<ASIHTTPRequest>& request : requests) EXPECT_EQ(request->responseData(), "let go");
  EXPECT_TRUE(waitUntil([] { return ASINetworkQueue::sharedQueue().operationCount() == 0; }));
}

TEST(OwnQueue, RunsItsRequestsWhileTheSharedQueueIsFullAndWakesOnCancel) {
  HoldingServer server;
  RecordingDelegate delegate;
  std::vector<std::shared_ptr<ASIHTTPRequest>> shared;
  for (int i = 0; i < 4; ++i) {
    shared.push_back(makeRequest(server.httplib.url("/held"), delegate));
    shared.back()->setTimeOutSeconds(120);
    shared.back()->startAsynchronous();
  }
  ASSERT_TRUE(waitUntil([&] { return server.inFlight() == 4; }));

  ASINetworkQueue own(1);
  RecordingDelegate ownDelegate;
  const std::shared_ptr<ASIHTTPRequest> beside = makeRequest(server.httplib.url("/held"), ownDelegate);
  beside->setTimeOutSeconds(120);
  beside->startAsynchronous(own);
  ASSERT_TRUE(waitUntil([&] { return server.inFlight() == 5; }));
  EXPECT_EQ(own.operationCount(), 1);
  beside->cancel();
  ASSERT_TRUE(waitUntil([&] { return ownDelegate.events.contains("failed"); }));
  EXPECT_EQ(beside->error()->code, ASIHTTPErrorCode::Cancelled);

  for (int released = 1; released <= 5; ++released) server.releaseOne();
  ASSERT_TRUE(waitUntil([&] { return delegate.events.count("finished") == 4; }));
}

}  // namespace
