// The main window: the media list (or, while converting, the conversion
// list), the preview, the profile and output folder bar, the menus and the
// keys. Every command goes to the core's MainFormController; the window
// draws its state and its lists.
#pragma once

#include <QMainWindow>

#include "Action/ApplicationLifecycle.h"
#include "Action/MainFormController.h"
#include "Action/MetaEditFormController.h"
#include "main/MediaItemDelegate.h"
#include "widgets/ItemDefaultInfo.h"

class ConversionListModel;
class MediaListModel;
class DownloadWindow;
class PreviewPanel;
class QAction;
class QCheckBox;
class QLabel;
class QLineEdit;
class QListView;
class QProgressBar;
class QPushButton;
class QStackedLayout;
class QStackedWidget;
class QToolButton;

class MainWindow : public QMainWindow, public MainWindowShell {
  Q_OBJECT

 public:
  // `db` holds the lists; it must outlive the window.
  explicit MainWindow(UIInfoDB& db);
  ~MainWindow() override;

  // Runs the start-up sequence and shows the idle window.
  void startUp();
  // Adds files given on the command line.
  void addFiles(const QStringList& paths);

  MainFormController& controller() { return controller_; }
  QListView* mediaList() const { return list_; }
  QListView* conversionList() const { return convertList_; }
  PreviewPanel* preview() const { return preview_; }

  // MainWindowShell
  void createUpdater(bool checkNow) override;
  void setIdleState() override;
  bool isConversionListVisible() const override;
  bool isCancelButtonVisible() const override;
  void hideCancelButton() override;
  void cancelConvertAll() override;

 protected:
  void closeEvent(QCloseEvent* event) override;
  void dragEnterEvent(QDragEnterEvent* event) override;
  void dropEvent(QDropEvent* event) override;

 private:
  QWidget* makeListPage();
  // What the list's place shows while the list is empty: how to add files.
  QWidget* makeWelcome(QWidget* parent);
  QWidget* makeBottomBar();
  void makeMenus();
  QAction* addCommand(QMenu* menu, const QString& text, const QKeySequence& keys, void (MainWindow::*slot)());

  // Controls follow the controller's window state.
  void showWindowState(MainFormController::WindowState state);
  void currentItemChanged();
  NodeInfo::Ptr currentItem() const;
  NodeInfo::List checkedItems() const;

  // Commands.
  void addFilesClicked();
  void clearList();
  void mergeChecked();
  void selectAll() { controller_.selectAllItems(); }
  void removeCurrent();
  void moveCurrentUp();
  void moveCurrentDown();
  void renameCurrent();
  void editTags();
  void editTagsOf(const NodeInfo::Ptr& item);
  void showSettings();
  void showOptions();
  void showDownloads();
  // The current item, for an editor: none while converting; the preview stops for it.
  NodeInfo::Ptr itemToEdit();
  void openTrim();
  void openSplit();
  // 0 opens on the crop tab, 1 on the 3D tab.
  void openEditor(int openModel);
  void openEffects() { openEditor(0); }
  void open3D() { openEditor(1); }
  void showProperties();
  void showAbout();
  void chooseOutputFolder();
  void takeSnapshot();
  void startConversion();
  void partClicked(const QModelIndex& index, MediaItemDelegate::Part part, const QRect& where);
  void chooseProfile(const NodeInfo::Ptr& item, const QPoint& where);
  void chooseAudioStream(const NodeInfo::Ptr& item, const QPoint& where);
  void runEnding(bool cancelled);

  MainFormController controller_;
  MetaEditFormController tagEditor_;
  ItemDefaultInfo skin_;
  MediaListModel* listModel_ = nullptr;
  ConversionListModel* convertModel_ = nullptr;
  MediaItemDelegate* itemDelegate_ = nullptr;
  QStackedWidget* pages_ = nullptr;
  QListView* list_ = nullptr;
  QListView* convertList_ = nullptr;
  QStackedLayout* listPages_ = nullptr;  // the list, or the welcome while it is empty
  PreviewPanel* preview_ = nullptr;
  DownloadWindow* downloads_ = nullptr;
  QToolButton* profileButton_ = nullptr;
  QPushButton* settingsButton_ = nullptr;
  QCheckBox* applyToAll_ = nullptr;
  QCheckBox* mergeAll_ = nullptr;
  QLineEdit* outputFolder_ = nullptr;
  QPushButton* chooseFolder_ = nullptr;
  QPushButton* openFolder_ = nullptr;
  QPushButton* convertButton_ = nullptr;
  QPushButton* cancelButton_ = nullptr;
  QProgressBar* addingProgress_ = nullptr;
  QList<QAction*> itemCommands_;
  QList<QAction*> listCommands_;
  QAction* addFilesAction_ = nullptr;
  QAction* convertAction_ = nullptr;
  QAction* cancelAction_ = nullptr;
};
