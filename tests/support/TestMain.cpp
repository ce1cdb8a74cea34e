// Test entry: a private temporary home, the application identity, and a
// QCoreApplication (a QApplication for window tests) so that tests can run
// the real event loop.

#include <QCoreApplication>
#include <QDir>
#ifdef VC_TEST_WIDGETS
#include <QApplication>
#endif
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

#ifdef VC_TEST_WIDGETS
  // Window tests draw off screen unless a platform is asked for.
  if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM")) setenv("QT_QPA_PLATFORM", "offscreen", 1);
  QApplication app(argc, argv);
#else
  QCoreApplication app(argc, argv);
#endif
  ApplicationLifecycle::identifyApplication();
  const QString logFolder = home.path() + QStringLiteral("/log/");
  QDir().mkpath(logFolder);
  KMVLog::setFolder(logFolder);
  testing::InitGoogleTest(&argc, argv);
  const int result = RUN_ALL_TESTS();
  // Objects a test let go of on its last turn go before the process ends.
  QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
  return result;
}
