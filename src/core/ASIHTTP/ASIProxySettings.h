// The proxy a request goes through, from the environment: http_proxy for
// http addresses, https_proxy for https ones (or their upper-case forms), and
// no_proxy naming the hosts that are reached directly.
#pragma once

#include <QString>
#include <QUrl>

namespace ASIProxySettings {

// The proxy address for `url`, or an empty string for a direct connection.
QString proxyForURL(const QUrl& url);

// True when `host` is named in the comma-separated `noProxyList`: "*" names
// every host; "example.com" and ".example.com" name it and its sub-domains.
bool isExcluded(const QString& host, const QString& noProxyList);

}  // namespace ASIProxySettings
