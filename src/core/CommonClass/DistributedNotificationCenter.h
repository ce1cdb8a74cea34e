// Notifications shared with the other programs of the family: delivered
// in-process like NotificationCenter, and broadcast on the D-Bus session bus
// when there is one, whose broadcasts from other processes are delivered
// here too. Objects travel as strings.
#pragma once

#include <QObject>

#include "CommonClass/NotificationCenter.h"

class DistributedNotificationCenter : public QObject, private NotificationCenter {
  Q_OBJECT

 public:
  using NotificationCenter::addObserver;
  using NotificationCenter::Handler;
  using NotificationCenter::removeObserver;

  static DistributedNotificationCenter& defaultCenter();

  // `deliverImmediately` delivers in-process before returning when called on
  // the main thread (otherwise the delivery is queued to it either way).
  void postNotificationName(const QString& name, const QString& object, bool deliverImmediately = false);

  bool isConnectedToBus() const { return connectedToBus_; }

 private slots:
  void receivedFromBus(const QString& name, const QString& object, const QString& senderId);

 private:
  DistributedNotificationCenter();
  QString senderId_;
  bool connectedToBus_ = false;
};
