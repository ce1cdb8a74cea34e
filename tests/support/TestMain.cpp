// Test entry: a private temporary home, the application identity, and a
// QCoreApplication so that tests can run the real event loop.

#include <QCoreApplication>
#include <QDir>
#include <QTemporaryDir>

#include <gtest/gtest.h>

#include <cstdlib>

#include "Action/ApplicationLifecycle.h"
#include "CommonClass/KMVLog.h"

int main(int argc, char** argv) {
  QTemporaryDir home;
  if (!home.isValid()) return 1;
  const QByteArray path = home.path().toLocal8Bit();
  setenv("HOME", path.constData(), 1);
  setenv("XDG_CONFIG_HOME", (path + "/.config").constData(), 1);
  setenv("XDG_DATA_HOME", (path + "/.local/share").constData(), 1);
  setenv("XDG_CACHE_HOME", (path + "/.cache").constData(), 1);
  unsetenv("DBUS_SESSION_BUS_ADDRESS");

  QCoreApplication app(argc, argv);
  ApplicationLifecycle::identifyApplication();
  const QString logFolder = home.path() + QStringLiteral("/log/");
  QDir().mkpath(logFolder);
  KMVLog::setFolder(logFolder);
  testing::InitGoogleTest(&argc, argv);
  return RUN_ALL_TESTS();
}
