#include "ApplicationIdentity.h"

#include <QApplication>
#include <QIcon>

#include "Action/ApplicationLifecycle.h"
#include "CommonClass/StandardPaths.h"

void setUpApplicationIdentity() {
  ApplicationLifecycle::identifyApplication();
  QApplication::setDesktopFileName(QStringLiteral("videoconverter"));
  // The installed theme's icon, else the copy beside the skin.
  QApplication::setWindowIcon(QIcon::fromTheme(
      QStringLiteral("videoconverter"), QIcon(StandardPaths::resourcePath() + QStringLiteral("/videoconverter.svg"))));
}
