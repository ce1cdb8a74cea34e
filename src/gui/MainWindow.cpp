#include "MainWindow.h"

#include <QCloseEvent>
#include <QKeySequence>
#include <QLabel>
#include <QMenuBar>

#include "CommonClass/GlobalSettings.h"
#include "ProjectVersion.h"

MainWindow::MainWindow() {
  summary_ = new QLabel(this);
  summary_->setTextInteractionFlags(Qt::TextSelectableByMouse);
  summary_->setMargin(16);
  setCentralWidget(summary_);

  QMenu* fileMenu = menuBar()->addMenu(tr("&File"));
  fileMenu->addAction(tr("&Quit"), QKeySequence::Quit, this, &QWidget::close);
  resize(720, 420);
}

void MainWindow::startUp() {
  ApplicationLifecycle::startUp(*this);
  setWindowTitle(kProductName);
}

void MainWindow::setIdleState() {
  summary_->setText(tr("%1 %2\n\nOutput folder: %3\nInput folder: %4\nSnapshot folder: %5")
                        .arg(kProductName, QLatin1String(kBundleVersion), DefOutputPath, DefInputPath, photoOutputPath));
}

void MainWindow::closeEvent(QCloseEvent* event) {
  if (ApplicationLifecycle::windowShouldClose(*this)) {
    event->accept();
  } else {
    event->ignore();
  }
}
