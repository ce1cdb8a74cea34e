// Redirects: which statuses turn into a GET with only "User-Agent" and
// "Accept", what 307 keeps, relative addresses, and the limit of five.

#include <gtest/gtest.h>

#include <mutex>

#include "HttpTestSupport.h"

namespace {

struct ArrivedRequest {
  QString method;
  QString token;
  QString userAgent;
  QString accept;
};

class RedirectingServer : public testing::Test {
 protected:
  void SetUp() override {
    // /redirect/<status> sends the request on to /target with that status.
    const auto redirect = [](const httplib::Request& request, httplib::Response& response) {
      response.status = std::stoi(request.matches[1]);
      response.set_header("Location", "/target");
    };
    httplib.server.Get(R"(/redirect/(\d+))", redirect);
    httplib.server.Post(R"(/redirect/(\d+))", redirect);
    const auto target = [this](const httplib::Request& request, httplib::Response& response) {
      std::lock_guard lock(mutex);
      arrived.push_back({QString::fromStdString(request.method),
                         QString::fromStdString(request.get_header_value("X-Token")),
                         QString::fromStdString(request.get_header_value("User-Agent")),
                         QString::fromStdString(request.get_header_value("Accept"))});
      response.set_content("target body", "text/plain");
    };
    httplib.server.Get("/target", target);
    httplib.server.Post("/target", target);
    // /hops/<n> is n redirects away from its end, each to a relative address.
    httplib.server.Get(R"(/hops/(\d+))", [](const httplib::Request& request, httplib::Response& response) {
      const int left = std::stoi(request.matches[1]);
      if (left == 0) {
        response.set_content("arrived", "text/plain");
        return;
      }
      response.status = 302;
      response.set_header("Location", std::to_string(left - 1));
    });
    httplib.redirect("/to-a-local-file", "file:///etc/hostname", 302);
  }

  std::shared_ptr<ASIHTTPRequest> postWithHeaders(const QString& path) {
    std::shared_ptr<ASIHTTPRequest> request = makeRequest(httplib.url(path), delegate);
    request->setRequestMethod("POST");
    request->addRequestHeader("X-Token", "secret");
    request->addRequestHeader("User-Agent", "TestAgent/1.0");
    request->addRequestHeader("Accept", "text/plain");
    return request;
  }

  LocalHttplibServer httplib;
  std::mutex mutex;
  std::vector<ArrivedRequest> arrived;
  RecordingDelegate delegate;
};

TEST_F(RedirectingServer, MovedFoundAndSeeOtherBecomeAGetKeepingOnlyUserAgentAndAcceptAndATemporaryOneKeepsAll) {
  for (const char* status : {"301", "302", "303", "307"}) {
    SCOPED_TRACE(status);
    const bool temporary = QByteArray(status) == "307";
    arrived.clear();
    delegate.events.clear();
    const std::shared_ptr<ASIHTTPRequest> request = postWithHeaders(QStringLiteral("/redirect/") + status);

    ASSERT_TRUE(runToEnd(request));

    ASSERT_EQ(arrived.size(), 1u);
    EXPECT_EQ(arrived[0].method, temporary ? "POST" : "GET");
    EXPECT_EQ(arrived[0].token, temporary ? "secret" : "");
    EXPECT_EQ(arrived[0].userAgent, "TestAgent/1.0");
    EXPECT_EQ(arrived[0].accept, "text/plain");
    EXPECT_EQ(request->url(), httplib.url("/target"));
    EXPECT_EQ(request->requestMethod(), temporary ? "POST" : "GET");
    EXPECT_EQ(request->redirectCount(), 1);
    EXPECT_EQ(request->responseData(), "target body");
    EXPECT_EQ(delegate.events,
              QStringList({"started", "redirect " + httplib.url("/target").toString(), "headers", "finished"}));
  }
}

TEST_F(RedirectingServer, FiveRedirectsAreFollowedAndTheSixthFails) {
  const std::shared_ptr<ASIHTTPRequest> fiveAway = makeRequest(httplib.url("/hops/5"), delegate);
  ASSERT_TRUE(runToEnd(fiveAway));
  EXPECT_FALSE(fiveAway->error());
  EXPECT_EQ(fiveAway->redirectCount(), 5);
  EXPECT_EQ(fiveAway->url(), httplib.url("/hops/0"));
  EXPECT_EQ(fiveAway->responseData(), "arrived");

  const std::shared_ptr<ASIHTTPRequest> sixAway = makeRequest(httplib.url("/hops/6"), delegate);
  ASSERT_TRUE(runToEnd(sixAway));
  ASSERT_TRUE(sixAway->error());
  EXPECT_EQ(sixAway->error()->code, ASIHTTPErrorCode::TooManyRedirects);
  EXPECT_EQ(sixAway->error()->localizedDescription, "The request failed because it redirected too many times");
  EXPECT_EQ(delegate.events.last(), "failed");
}

TEST_F(RedirectingServer, ARedirectNotFollowedIsTheAnswerAndOneAwayFromHttpFailsAsABadAddress) {
  const std::shared_ptr<ASIHTTPRequest> kept = makeRequest(httplib.url("/redirect/302"), delegate);
  kept->setShouldRedirect(false);
  ASSERT_TRUE(runToEnd(kept));
  EXPECT_FALSE(kept->error());
  EXPECT_EQ(kept->responseStatusCode(), 302);
  EXPECT_EQ(kept->responseHeaders().value("location"), "/target");
  EXPECT_TRUE(arrived.empty());

  const std::shared_ptr<ASIHTTPRequest> away = makeRequest(httplib.url("/to-a-local-file"), delegate);
  ASSERT_TRUE(runToEnd(away));
  ASSERT_TRUE(away->error());
  EXPECT_EQ(away->error()->code, ASIHTTPErrorCode::UnableToCreateRequest);
  EXPECT_TRUE(away->responseData().isEmpty());
}

}  // namespace
