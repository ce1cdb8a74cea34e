// The windowed program.

#include <QApplication>

#include "Action/ApplicationLifecycle.h"
#include "MainWindow.h"
#include "QtPlatformServices.h"

int main(int argc, char** argv) {
  QApplication app(argc, argv);
  ApplicationLifecycle::identifyApplication();

  QtAlertPresenter alerts;
  QtFilePanels panels;
  QtWorkspace workspace;
  PlatformServices::install(&alerts, &panels, &workspace);

  MainWindow window;
  alerts.setParentWindow(&window);
  window.startUp();
  window.show();
  const int status = app.exec();
  ApplicationLifecycle::applicationShouldTerminate(window);
  PlatformServices::install(nullptr, nullptr, nullptr);
  return status;
}
