#include "DesktopNotification.h"

#include <QDBusConnection>
#include <QDBusMessage>
#include <QStringList>
#include <QVariantMap>

namespace DesktopNotification {

void send(const QString& title, const QString& body) {
  QDBusConnection bus = QDBusConnection::sessionBus();
  if (!bus.isConnected()) return;
  QDBusMessage call =
      QDBusMessage::createMethodCall(QStringLiteral("org.freedesktop.Notifications"),
                                     QStringLiteral("/org/freedesktop/Notifications"),
                                     QStringLiteral("org.freedesktop.Notifications"), QStringLiteral("Notify"));
  call << QStringLiteral("videoconverter") << 0u << QStringLiteral("videoconverter") << title << body
       << QStringList() << QVariantMap() << -1;
  bus.send(call);
}

}  // namespace DesktopNotification
