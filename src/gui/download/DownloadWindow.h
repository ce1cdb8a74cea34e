// The download window ("winDownload"): the download list drawn from the
// core's DownloadFormController, the paste, import, resume, pause, delete
// and settings buttons, links dropped on the window, the list's context menu
// and the empty-list picture. It owns the controller, which it starts when
// made; closing the window only hides it, and downloads go on.
#pragma once

#include <QDialog>
#include <QStringList>
#include <QTimer>

#include "Download/DownloadFormController.h"
#include "QtPlatformServices.h"

class DownloadItemDelegate;
class DownloadListModel;
class QLabel;
class QListView;
class QMenu;
class QPushButton;
class QStackedWidget;

class DownloadWindow : public QDialog {
  Q_OBJECT

 public:
  explicit DownloadWindow(QWidget* parent = nullptr);
  ~DownloadWindow() override;

  DownloadFormController& controller() { return controller_; }
  QListView* downloadList() const { return list_; }
  DownloadItemDelegate* itemDelegate() const { return delegate_; }
  QMenu* contextMenu() const { return menuMainList_; }

  // Opens the settings sheet over the window.
  void settingClick();

 signals:
  // The user imported finished files for conversion.
  void downloadFormDidAddFiles(const QStringList& paths);

 protected:
  void dragEnterEvent(QDragEnterEvent* event) override;
  void dropEvent(QDropEvent* event) override;

 private:
  // Hands the controller's imports on as the window's signal.
  class ImportRelay : public DownloadFormControllerDelegate {
   public:
    explicit ImportRelay(DownloadWindow& window) : window_(window) {}
    void downloadFormDidAddFiles(const QStringList& paths) override { emit window_.downloadFormDidAddFiles(paths); }

   private:
    DownloadWindow& window_;
  };

  QWidget* makeButtonBar();
  QWidget* makeListPage();
  void showEmptyListPicture(bool visible);
  void showContextMenu();
  // Keeps the bars of analyses moving while any is shown.
  void animateAnalyses();

  QtPasteboard pasteboard_;
  ImportRelay importRelay_{*this};
  DownloadFormController controller_;
  DownloadListModel* model_ = nullptr;
  DownloadItemDelegate* delegate_ = nullptr;
  QStackedWidget* pages_ = nullptr;
  QListView* list_ = nullptr;
  QLabel* imgvMain_ = nullptr;
  QMenu* menuMainList_ = nullptr;
  QTimer animation_;
};
