// Named notifications with an object. A notification posted on the main
// thread is delivered at once; one posted on any other thread is queued to
// the main thread. Observers are called on the main thread only.
#pragma once

#include <QMutex>
#include <QString>
#include <QVariant>
#include <QVariantMap>

#include <functional>
#include <memory>
#include <vector>

struct Notification {
  QString name;
  QVariant object;
  QVariantMap userInfo;
};

class NotificationCenter {
 public:
  using Handler = std::function<void(const Notification&)>;

  static NotificationCenter& defaultCenter();

  // `observer` identifies the subscription for removal; it is not used
  // otherwise. An empty name observes every notification.
  void addObserver(const void* observer, const QString& name, Handler handler);
  void removeObserver(const void* observer);
  void removeObserver(const void* observer, const QString& name);

  void postNotificationName(const QString& name, const QVariant& object = {}, const QVariantMap& userInfo = {});

 protected:
  // Calls every matching observer; main thread only.
  void deliver(const Notification& notification);

 private:
  struct Observer {
    const void* owner;
    QString name;
    std::shared_ptr<Handler> handler;
  };
  QMutex mutex_;
  std::vector<Observer> observers_;
};
