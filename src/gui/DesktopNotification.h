// A notification in the desktop's notification area, sent over the session
// bus without waiting for an answer; nothing happens where no service listens.
#pragma once

#include <QString>

namespace DesktopNotification {

void send(const QString& title, const QString& body);

}  // namespace DesktopNotification
