#include "ASIProxySettings.h"

#include <QStringList>

namespace {

QString environmentValue(const char* lowerCaseName) {
  const QString value = qEnvironmentVariable(lowerCaseName);
  if (!value.isEmpty()) return value;
  return qEnvironmentVariable(QByteArray(lowerCaseName).toUpper().constData());
}

}  // namespace

namespace ASIProxySettings {

QString proxyForURL(const QUrl& url) {
  const QString scheme = url.scheme().toLower();
  const QString proxy = environmentValue(scheme == QLatin1String("https") ? "https_proxy" : "http_proxy");
  if (proxy.isEmpty() || isExcluded(url.host(), environmentValue("no_proxy"))) return {};
  return proxy;
}

bool isExcluded(const QString& host, const QString& noProxyList) {
  const QString name = host.toLower();
  for (const QString& item : noProxyList.split(QLatin1Char(','), Qt::SkipEmptyParts)) {
    QString entry = item.trimmed().toLower();
    if (entry == QLatin1String("*")) return true;
    if (entry.startsWith(QLatin1Char('.'))) entry.remove(0, 1);
    if (entry.isEmpty()) continue;
    if (name == entry || name.endsWith(QLatin1Char('.') + entry)) return true;
  }
  return false;
}

}  // namespace ASIProxySettings
