#include "ASIRedirectRule.h"

namespace ASIRedirectRule {

std::optional<ASIRedirect> redirectFor(int statusCode, const ASIHeaderFields& responseHeaders, const QUrl& currentURL,
                                       const QString& method, const ASIHeaderFields& requestHeaders) {
  if (statusCode != 301 && statusCode != 302 && statusCode != 303 && statusCode != 307) return std::nullopt;
  const QString location = responseHeaders.value(QStringLiteral("Location"));
  if (location.isEmpty()) return std::nullopt;

  ASIRedirect redirect;
  redirect.url = currentURL.resolved(QUrl(location));
  if (statusCode == 307) {
    redirect.method = method;
    redirect.headers = requestHeaders;
    return redirect;
  }
  redirect.method = QStringLiteral("GET");
  for (const char* kept : {"User-Agent", "Accept"}) {
    const QString name = QLatin1String(kept);
    if (requestHeaders.contains(name)) redirect.headers.setValue(name, requestHeaders.value(name));
  }
  return redirect;
}

}  // namespace ASIRedirectRule
