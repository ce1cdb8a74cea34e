// Whether a connection may carry the next request to its host, and the
// class-wide table of hosts that have an idle connection open.
#pragma once

#include <QHash>
#include <QString>
#include <QUrl>

#include <chrono>
#include <mutex>

#include "ASIHeaderFields.h"

struct ASIConnectionReuse {
  bool reusable = false;
  // How long the connection may sit idle and still be reused.
  double idleSeconds = 0;
};

namespace ASIPersistentConnection {

// A connection is reusable unless the response says "Connection: close", or
// is HTTP 1.0 without "keep-alive" there. A "Keep-Alive" field narrows it:
// reused only when its max is above 5, idle for at most its timeout.
ASIConnectionReuse reuseAfterResponse(const QString& httpVersion, const ASIHeaderFields& headers,
                                      double defaultIdleSeconds);

}  // namespace ASIPersistentConnection

class ASIPersistentConnectionPool {
 public:
  using Clock = std::chrono::steady_clock;

  static ASIPersistentConnectionPool& shared();

  // "scheme://host:port" of an address: the connections it may share.
  static QString keyFor(const QUrl& url);

  // A request to `key` ended on a connection that stays open for reuse.
  void connectionBecameIdle(const QString& key, double idleSeconds);
  // The connection to `key` is not to be reused.
  void connectionClosed(const QString& key);
  // True while a connection to `key` is within its idle life.
  bool hasReusableConnection(const QString& key) const;

 private:
  mutable std::mutex mutex_;
  QHash<QString, Clock::time_point> idleUntil_;
};
