// The main window. It runs the start-up sequence when shown and the close
// question when closed; the conversion list and editors arrive with their
// controllers.
#pragma once

#include <QMainWindow>

#include "Action/ApplicationLifecycle.h"

class QLabel;

class MainWindow : public QMainWindow, public MainWindowShell {
  Q_OBJECT

 public:
  MainWindow();
  void startUp();

  // MainWindowShell
  void setIdleState() override;

 protected:
  void closeEvent(QCloseEvent* event) override;

 private:
  QLabel* summary_ = nullptr;
};
