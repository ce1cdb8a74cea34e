#include "ASIPersistentConnection.h"

#include <QStringList>

namespace {

constexpr long long kMinimumRequestsLeftForReuse = 5;

bool listContains(const QString& list, const char* token) {
  for (const QString& item : list.split(QLatin1Char(','))) {
    if (item.trimmed().compare(QLatin1String(token), Qt::CaseInsensitive) == 0) return true;
  }
  return false;
}

// The number after "name=" in a "timeout=5, max=100" list, or `fallback`.
double keepAliveNumber(const QString& keepAlive, const char* name, double fallback) {
  for (const QString& item : keepAlive.split(QLatin1Char(','))) {
    const QString entry = item.trimmed();
    const qsizetype equals = entry.indexOf(QLatin1Char('='));
    if (equals <= 0 || entry.left(equals).trimmed().compare(QLatin1String(name), Qt::CaseInsensitive) != 0) continue;
    bool numeric = false;
    const double value = entry.mid(equals + 1).trimmed().toDouble(&numeric);
    return numeric ? value : fallback;
  }
  return fallback;
}

}  // namespace

namespace ASIPersistentConnection {

ASIConnectionReuse reuseAfterResponse(const QString& httpVersion, const ASIHeaderFields& headers,
                                      double defaultIdleSeconds) {
  const QString connection = headers.value(QStringLiteral("Connection"));
  if (listContains(connection, "close")) return {};
  if (httpVersion == QLatin1String("1.0") && !listContains(connection, "keep-alive")) return {};

  const QString keepAlive = headers.value(QStringLiteral("Keep-Alive"));
  if (keepAlive.isNull()) return {true, defaultIdleSeconds};
  if (keepAliveNumber(keepAlive, "max", 0) <= kMinimumRequestsLeftForReuse) return {};
  return {true, keepAliveNumber(keepAlive, "timeout", defaultIdleSeconds)};
}

}  // namespace ASIPersistentConnection

ASIPersistentConnectionPool& ASIPersistentConnectionPool::shared() {
  static ASIPersistentConnectionPool pool;
  return pool;
}

QString ASIPersistentConnectionPool::keyFor(const QUrl& url) {
  const QString scheme = url.scheme().toLower();
  const int defaultPort = scheme == QLatin1String("https") ? 443 : 80;
  return QStringLiteral("%1://%2:%3").arg(scheme, url.host().toLower()).arg(url.port(defaultPort));
}

void ASIPersistentConnectionPool::connectionBecameIdle(const QString& key, double idleSeconds) {
  const auto idleLife = std::chrono::duration_cast<Clock::duration>(std::chrono::duration<double>(idleSeconds));
  std::lock_guard lock(mutex_);
  idleUntil_.insert(key, Clock::now() + idleLife);
}

void ASIPersistentConnectionPool::connectionClosed(const QString& key) {
  std::lock_guard lock(mutex_);
  idleUntil_.remove(key);
}

bool ASIPersistentConnectionPool::hasReusableConnection(const QString& key) const {
  std::lock_guard lock(mutex_);
  const auto found = idleUntil_.constFind(key);
  return found != idleUntil_.constEnd() && Clock::now() < found.value();
}
