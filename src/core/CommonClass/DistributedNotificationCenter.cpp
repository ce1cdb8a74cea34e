#include "DistributedNotificationCenter.h"

#include <QCoreApplication>
#include <QDBusConnection>
#include <QDBusMessage>
#include <QUuid>

#include "CommonClass/MainThread.h"

namespace {
const QString kPath = QStringLiteral("/org/palvinor/Notifications");
const QString kInterface = QStringLiteral("org.palvinor.DistributedNotification");
const QString kSignal = QStringLiteral("Posted");
}  // namespace

DistributedNotificationCenter& DistributedNotificationCenter::defaultCenter() {
  static DistributedNotificationCenter* center = new DistributedNotificationCenter();
  return *center;
}

DistributedNotificationCenter::DistributedNotificationCenter()
    : senderId_(QUuid::createUuid().toString(QUuid::WithoutBraces)) {
  if (QCoreApplication::instance() != nullptr) moveToThread(QCoreApplication::instance()->thread());
  QDBusConnection bus = QDBusConnection::sessionBus();
  if (bus.isConnected()) {
    connectedToBus_ = bus.connect(QString(), kPath, kInterface, kSignal, this,
                                  SLOT(receivedFromBus(QString, QString, QString)));
  }
}

void DistributedNotificationCenter::postNotificationName(const QString& name, const QString& object,
                                                         bool deliverImmediately) {
  Notification notification{name, object, {}};
  if (deliverImmediately) {
    MainThread::run([this, notification] { deliver(notification); });
  } else {
    MainThread::post([this, notification] { deliver(notification); });
  }
  if (connectedToBus_) {
    QDBusMessage message = QDBusMessage::createSignal(kPath, kInterface, kSignal);
    message << name << object << senderId_;
    QDBusConnection::sessionBus().send(message);
  }
}

void DistributedNotificationCenter::receivedFromBus(const QString& name, const QString& object,
                                                    const QString& senderId) {
  if (senderId == senderId_) return;  // our own broadcast, already delivered
  deliver(Notification{name, object, {}});
}
