// The windowed program: videoconverter-gui [FILE...] opens the main window
// and adds the files given.

#include <QApplication>

#include "Action/ApplicationLifecycle.h"
#include "ApplicationIdentity.h"
#include "QtPlatformServices.h"
#include "ValueObject/UIInfoDB.h"
#include "main/MainWindow.h"

int main(int argc, char** argv) {
  QApplication app(argc, argv);
  setUpApplicationIdentity();

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
