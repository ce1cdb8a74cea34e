#include "EventLoopWait.h"

#include <QCoreApplication>
#include <QDeadlineTimer>
#include <QTimer>

bool waitUntil(const std::function<bool()>& condition, std::chrono::milliseconds bound) {
  const QDeadlineTimer deadline(bound);
  // Some conditions change on other threads without an event: the ticks make
  // the loop look again.
  QTimer tick;
  tick.start(5);
  while (!condition()) {
    if (deadline.hasExpired()) return false;
    QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
  }
  return true;
}
