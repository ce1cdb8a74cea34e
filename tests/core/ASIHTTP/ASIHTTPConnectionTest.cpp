// Connections: reuse by the "Connection" and "Keep-Alive" rules, proxies from
// the environment, and the errors of addresses and connections that fail.

#include <gtest/gtest.h>

#include "ASIHTTP/ASIProxySettings.h"
#include "HttpTestSupport.h"
#include "ScriptedHttpServer.h"
#include "TestEnvironment.h"

namespace {

using Exchange = ScriptedHttpServer::Exchange;

// Connections that two requests in a row to a server answering with `fields` open.
int connectionsForTwoRequests(const QList<QByteArray>& fields, bool attemptPersistentConnection = true) {
  ScriptedHttpServer server(
      [&fields](Exchange& exchange) { exchange.send(ScriptedHttpServer::response(200, fields, "body")); });
  RecordingDelegate delegate;
  for (int i = 0; i < 2; ++i) {
    const std::shared_ptr<ASIHTTPRequest> request = makeRequest(server.url("/again"), delegate);
    request->setShouldAttemptPersistentConnection(attemptPersistentConnection);
    if (!runToEnd(request) || request->error()) return -1;
  }
  return server.connectionCount();
}

TEST(ConnectionReuse, FollowsTheConnectionAndKeepAliveFieldsOfTheResponse) {
  EXPECT_EQ(connectionsForTwoRequests({}), 1);
  EXPECT_EQ(connectionsForTwoRequests({"Keep-Alive: timeout=30, max=100"}), 1);
  EXPECT_EQ(connectionsForTwoRequests({"Keep-Alive: timeout=30, max=5"}), 2);
  EXPECT_EQ(connectionsForTwoRequests({"Keep-Alive: timeout=0, max=100"}), 2);
  EXPECT_EQ(connectionsForTwoRequests({"Connection: close"}), 2);
  EXPECT_EQ(connectionsForTwoRequests({}, false), 2);
}

TEST(Proxies, HttpProxyCarriesTheRequestUnlessNoProxyNamesTheHost) {
  ScriptedHttpServer proxy(
      [](Exchange& exchange) { exchange.send(ScriptedHttpServer::response(200, {}, "through the proxy")); });
  ScriptedHttpServer direct([](Exchange& exchange) { exchange.send(ScriptedHttpServer::response(200, {}, "direct")); });
  TestEnvironment::ScopedEnvironment environment;
  environment.set("http_proxy", proxy.url("").toEncoded());
  environment.set("no_proxy", "localhost,.internal.example");
  RecordingDelegate delegate;

  const std::shared_ptr<ASIHTTPRequest> viaProxy = makeRequest(QUrl("http://videos.example/clip.mp4"), delegate);
  ASSERT_TRUE(runToEnd(viaProxy));
  EXPECT_EQ(viaProxy->responseData(), "through the proxy");
  EXPECT_EQ(proxy.requests().value(0).target, "http://videos.example/clip.mp4");

  environment.set("no_proxy", "127.0.0.1");
  const std::shared_ptr<ASIHTTPRequest> excluded = makeRequest(direct.url("/clip.mp4"), delegate);
  ASSERT_TRUE(runToEnd(excluded));
  EXPECT_EQ(excluded->responseData(), "direct");
  EXPECT_EQ(proxy.requests().size(), 1);
}

TEST(Proxies, NoProxyNamesAHostAndItsSubdomainsOnly) {
  EXPECT_TRUE(ASIProxySettings::isExcluded("cdn.example.com", "localhost, example.com"));
  EXPECT_TRUE(ASIProxySettings::isExcluded("example.com", ".example.com"));
  EXPECT_TRUE(ASIProxySettings::isExcluded("anything.org", "*"));
  EXPECT_FALSE(ASIProxySettings::isExcluded("badexample.com", "example.com"));
  EXPECT_FALSE(ASIProxySettings::isExcluded("example.com", ""));
}

std::optional<ASIHTTPError> errorOf(const QUrl& url) {
  RecordingDelegate delegate;
  const std::shared_ptr<ASIHTTPRequest> request = makeRequest(url, delegate);
  if (!runToEnd(request)) return std::nullopt;
  return request->error();
}

TEST(FailingAddresses, BadAddressesRefusedConnectionsSecureTransportAndCredentialsHaveTheirTexts) {
  for (const char* address : {"ftp://127.0.0.1/file", "not an address"}) {
    const std::optional<ASIHTTPError> error = errorOf(QUrl(address));
    ASSERT_TRUE(error) << address;
    EXPECT_EQ(error->code, ASIHTTPErrorCode::UnableToCreateRequest) << address;
    EXPECT_EQ(error->localizedDescription, "Unable to create request (bad url?)") << address;
  }

  const std::optional<ASIHTTPError> refused =
      errorOf(QUrl(QStringLiteral("http://127.0.0.1:%1/").arg(closedLoopbackPort())));
  ASSERT_TRUE(refused);
  EXPECT_EQ(refused->code, ASIHTTPErrorCode::ConnectionFailure);
  EXPECT_EQ(refused->localizedDescription, "A connection failure occurred");

  // Plain HTTP where a TLS handshake was expected.
  const LocalHttplibServer plain;
  QUrl secure = plain.url("/");
  secure.setScheme("https");
  const std::optional<ASIHTTPError> handshake = errorOf(secure);
  ASSERT_TRUE(handshake);
  EXPECT_EQ(handshake->code, ASIHTTPErrorCode::ConnectionFailure);
  EXPECT_EQ(handshake->localizedDescription,
            "A connection failure occurred: SSL problem (Possible causes may include a bad/expired/self-signed "
            "certificate, clock set to wrong date)");

  const ScriptedHttpServer asking([](Exchange& exchange) {
    exchange.send(ScriptedHttpServer::response(401, {"WWW-Authenticate: Basic realm=\"videos\""}, "no"));
  });
  const std::optional<ASIHTTPError> credentials = errorOf(asking.url("/private"));
  ASSERT_TRUE(credentials);
  EXPECT_EQ(credentials->code, ASIHTTPErrorCode::AuthenticationNeeded);
  EXPECT_EQ(credentials->localizedDescription, "Authentication needed");
}

}  // namespace
