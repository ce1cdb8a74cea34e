// Where a redirect leads, and what the request looks like when it gets there.
#pragma once

#include <QString>
#include <QUrl>

#include <optional>

#include "ASIHeaderFields.h"

struct ASIRedirect {
  QUrl url;
  QString method;
  // The caller's header fields that go with the redirected request.
  ASIHeaderFields headers;
};

namespace ASIRedirectRule {

// Redirects followed before the next one fails the request.
inline constexpr int kMaximumRedirects = 5;

// The redirect a response asks for: statuses 301, 302, 303 and 307 with a
// "Location", resolved against `currentURL`. 301, 302 and 303 turn into a GET
// that keeps only "User-Agent" and "Accept"; 307 keeps method and fields.
std::optional<ASIRedirect> redirectFor(int statusCode, const ASIHeaderFields& responseHeaders, const QUrl& currentURL,
                                       const QString& method, const ASIHeaderFields& requestHeaders);

}  // namespace ASIRedirectRule
