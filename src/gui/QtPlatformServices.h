// The platform services of the windowed program: Qt message boxes, file
// dialogs, the desktop services and the clipboard.
#pragma once

#include <QPointer>
#include <QWidget>

#include "CommonClass/Pasteboard.h"
#include "CommonClass/PlatformServices.h"

class QtAlertPresenter : public AlertPresenter {
 public:
  void setParentWindow(QWidget* window) { parent_ = window; }
  void showMessage(const QString& message, const QString& informativeText) override;
  int ask(const QString& message, const QString& informativeText, const QStringList& buttons) override;

 private:
  QPointer<QWidget> parent_;
};

class QtFilePanels : public FilePanels {
 public:
  void setParentWindow(QWidget* window) { parent_ = window; }
  QString savePanel(const QString& suggestedPath, const QString& message) override;
  QString openFolder(const QString& startFolder) override;
  QString openSingleFile(const QStringList& extensions) override;
  QStringList openFiles(const QStringList& extensions) override;
  QStringList openFilesWithFilters(const QString& startFolder, const QList<Filter>& filters,
                                   int& chosenFilter) override;

 private:
  QPointer<QWidget> parent_;
};

class QtWorkspace : public Workspace {
 public:
  bool revealInFileViewer(const QString& path) override;
  bool openAddress(const QString& address) override;
};

// The three services above, installed for the lifetime of the object; the
// alerts and panels open over the window given.
class DesktopServices {
 public:
  DesktopServices() { PlatformServices::install(&alerts_, &panels_, &workspace_); }
  ~DesktopServices() { PlatformServices::install(nullptr, nullptr, nullptr); }
  DesktopServices(const DesktopServices&) = delete;
  DesktopServices& operator=(const DesktopServices&) = delete;

  void setParentWindow(QWidget* window) {
    alerts_.setParentWindow(window);
    panels_.setParentWindow(window);
  }

 private:
  QtAlertPresenter alerts_;
  QtFilePanels panels_;
  QtWorkspace workspace_;
};

// The desktop's clipboard.
class QtPasteboard : public Pasteboard {
 public:
  QString string() const override;
  void setString(const QString& text) override;
};
