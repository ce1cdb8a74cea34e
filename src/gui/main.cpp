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

  DesktopServices services;
  UIInfoDB db;
  MainWindow window(db);
  services.setParentWindow(&window);
  window.startUp();
  window.show();
  window.addFiles(QApplication::arguments().mid(1));
  const int status = QApplication::exec();
  ApplicationLifecycle::applicationShouldTerminate(window);
  return status;
}
