// The windowed program: videoconverter-gui [FILE...] opens the main window
// and adds the files given.

#include <QApplication>
#include <QIcon>

#include "Action/ApplicationLifecycle.h"
#include "CommonClass/StandardPaths.h"
#include "QtPlatformServices.h"
#include "ValueObject/UIInfoDB.h"
#include "main/MainWindow.h"

int main(int argc, char** argv) {
  QApplication app(argc, argv);
  ApplicationLifecycle::identifyApplication();
  QApplication::setDesktopFileName(QStringLiteral("videoconverter"));
  // The installed theme's icon, else the copy beside the skin.
  QApplication::setWindowIcon(QIcon::fromTheme(
      QStringLiteral("videoconverter"), QIcon(StandardPaths::resourcePath() + QStringLiteral("/videoconverter.svg"))));

  QtAlertPresenter alerts;
  QtFilePanels panels;
  QtWorkspace workspace;
  PlatformServices::install(&alerts, &panels, &workspace);

  UIInfoDB db;
  int status = 0;
  {
    MainWindow window(db);
    alerts.setParentWindow(&window);
    panels.setParentWindow(&window);
    window.startUp();
    window.show();
    window.addFiles(QApplication::arguments().mid(1));
    status = QApplication::exec();
    ApplicationLifecycle::applicationShouldTerminate(window);
  }
  PlatformServices::install(nullptr, nullptr, nullptr);
  return status;
}
