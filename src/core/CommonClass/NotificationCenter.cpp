#include "NotificationCenter.h"

#include <algorithm>

#include "CommonClass/MainThread.h"

NotificationCenter& NotificationCenter::defaultCenter() {
  static NotificationCenter center;
  return center;
}

void NotificationCenter::addObserver(const void* observer, const QString& name, Handler handler) {
  QMutexLocker locker(&mutex_);
  observers_.push_back({observer, name, std::make_shared<Handler>(std::move(handler))});
}

void NotificationCenter::removeObserver(const void* observer) {
  QMutexLocker locker(&mutex_);
  std::erase_if(observers_, [observer](const Observer& o) { return o.owner == observer; });
}

void NotificationCenter::removeObserver(const void* observer, const QString& name) {
  QMutexLocker locker(&mutex_);
  std::erase_if(observers_, [&](const Observer& o) { return o.owner == observer && o.name == name; });
}

void NotificationCenter::postNotificationName(const QString& name, const QVariant& object,
                                              const QVariantMap& userInfo) {
  Notification notification{name, object, userInfo};
  MainThread::run([this, notification] { deliver(notification); });
}

void NotificationCenter::deliver(const Notification& notification) {
  // Handlers may add or remove observers, so call a snapshot, and skip those
  // removed in the meantime.
  std::vector<Observer> matching;
  {
    QMutexLocker locker(&mutex_);
    for (const Observer& o : observers_) {
      if (o.name.isEmpty() || o.name == notification.name) matching.push_back(o);
    }
  }
  for (const Observer& o : matching) {
    bool stillObserving = false;
    {
      QMutexLocker locker(&mutex_);
      stillObserving = std::any_of(observers_.begin(), observers_.end(),
                                   [&](const Observer& current) { return current.handler == o.handler; });
    }
    if (stillObserving) (*o.handler)(notification);
  }
}
