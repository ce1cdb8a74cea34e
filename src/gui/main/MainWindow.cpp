#include "MainWindow.h"

#include <QActionGroup>
#include <QApplication>
#include <QCheckBox>
#include <QCloseEvent>
#include <QDir>
#include <QGridLayout>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QListView>
#include <QMenuBar>
#include <QMimeData>
#include <QProgressBar>
#include <QPushButton>
#include <QSplitter>
#include <QStackedLayout>
#include <QStackedWidget>
#include <QStatusBar>
#include <QToolButton>
#include <QVBoxLayout>

#include "Action/MediaItemSummary.h"
#include "Action/ProfileAction.h"
#include "CommonClass/CommonClass.h"
#include "CommonClass/GlobalSettings.h"
#include "CommonClass/PlatformServices.h"
#include "DesktopNotification.h"
#include "Profile/KMVProfileCatalog.h"
#include "about/AboutDialog.h"
#include "download/DownloadWindow.h"
#include "editor/EditorDialog.h"
#include "main/ConversionListModel.h"
#include "main/ConversionRowDelegate.h"
#include "main/MediaListModel.h"
#include "main/PreviewPanel.h"
#include "main/ProfileMenu.h"
#include "options/OptionsDialog.h"
#include "properties/PropertiesDialog.h"
#include "settings/SettingsDialog.h"
#include "split/SplitDialog.h"
#include "tags/TagEditorDialog.h"
#include "trim/TrimDialog.h"

namespace {

// How long a passing message stays in the status bar.
constexpr int kStatusMessageMs = 6000;

QStringList localFiles(const QMimeData* data) {
  QStringList paths;
  if (data == nullptr) return paths;
  for (const QUrl& url : data->urls()) {
    if (url.isLocalFile()) paths.append(url.toLocalFile());
  }
  return paths;
}

QListView* makeRowList(QWidget* parent) {
  auto* list = new QListView(parent);
  list->setUniformItemSizes(true);
  list->setVerticalScrollMode(QAbstractItemView::ScrollPerPixel);
  list->setMouseTracking(true);
  list->setSpacing(2);
  list->setFrameShape(QFrame::NoFrame);
  list->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
  // Rows are drawn for the skin's width; the list never squeezes them.
  list->setMinimumWidth(ItemDefaultInfo::kDesignWidth + 2 * list->spacing() + 8 +
                        list->style()->pixelMetric(QStyle::PM_ScrollBarExtent));
  return list;
}

}  // namespace

MainWindow::MainWindow(UIInfoDB& db) : controller_(db) {
  setAcceptDrops(true);
  skin_.initInfo(palette());

  pages_ = new QStackedWidget(this);
  pages_->addWidget(makeListPage());
  convertList_ = makeRowList(pages_);
  convertModel_ = new ConversionListModel(controller_, this);
  convertList_->setModel(convertModel_);
  convertList_->setItemDelegate(new ConversionRowDelegate(skin_, convertList_));
  pages_->addWidget(convertList_);

  preview_ = new PreviewPanel(this);
  connect(preview_, &PreviewPanel::snapshotRequested, this, &MainWindow::takeSnapshot);
  connect(preview_, &PreviewPanel::snapshotFolderRequested, this, [] {
    CommonClass::creatOutputDirectory(photoOutputPath);
    if (Workspace* workspace = PlatformServices::workspace()) workspace->revealInFileViewer(photoOutputPath);
  });

  auto* splitter = new QSplitter(Qt::Horizontal, this);
  splitter->addWidget(pages_);
  splitter->addWidget(preview_);
  splitter->setStretchFactor(0, 3);
  splitter->setStretchFactor(1, 2);
  splitter->setChildrenCollapsible(false);
  splitter->setSizes({ItemDefaultInfo::kDesignWidth + 40, 400});

  auto* central = new QWidget(this);
  auto* layout = new QVBoxLayout(central);
  layout->setContentsMargins(8, 8, 8, 8);
  layout->addWidget(splitter, 1);
  layout->addWidget(makeBottomBar());
  setCentralWidget(central);

  addingProgress_ = new QProgressBar(this);
  addingProgress_->setMaximumWidth(240);
  addingProgress_->setFormat(tr("Adding %v of %m"));
  addingProgress_->hide();
  statusBar()->addPermanentWidget(addingProgress_);

  makeMenus();
  connect(&controller_, &MainFormController::windowStateChanged, this, &MainWindow::showWindowState);
  connect(&controller_, &MainFormController::addingProgress, this, [this](int done, int total) {
    addingProgress_->setRange(0, total);
    addingProgress_->setValue(done);
    addingProgress_->show();
  });
  connect(&controller_, &MainFormController::addingFinished, this, [this] {
    addingProgress_->hide();
    if (!list_->currentIndex().isValid() && listModel_->rowCount() > 0) list_->setCurrentIndex(listModel_->index(0));
  });
  connect(&controller_, &MainFormController::runEnding, this, &MainWindow::runEnding);
  resize(1180, 700);
}

MainWindow::~MainWindow() = default;

QWidget* MainWindow::makeListPage() {
  auto* page = new QWidget(this);
  list_ = makeRowList(page);
  list_->setEditTriggers(QAbstractItemView::DoubleClicked | QAbstractItemView::EditKeyPressed);
  listModel_ = new MediaListModel(controller_.mainList(), this);
  list_->setModel(listModel_);
  itemDelegate_ = new MediaItemDelegate(skin_, list_);
  list_->setItemDelegate(itemDelegate_);
  connect(itemDelegate_, &MediaItemDelegate::partClicked, this, &MainWindow::partClicked);
  connect(itemDelegate_, &MediaItemDelegate::repaintNeeded, list_->viewport(),
          [this](const QModelIndex& index) { list_->update(index); });
  connect(list_->selectionModel(), &QItemSelectionModel::currentChanged, this, &MainWindow::currentItemChanged);
  connect(listModel_, &QAbstractItemModel::dataChanged, this, [this](const QModelIndex& first) {
    if (first.row() != list_->currentIndex().row()) return;
    currentItemChanged();
    preview_->itemEdited(currentItem());
  });
  connect(listModel_, &QAbstractItemModel::rowsRemoved, this, &MainWindow::currentItemChanged);

  listPages_ = new QStackedLayout(page);
  listPages_->addWidget(list_);
  listPages_->addWidget(makeWelcome(page));
  return page;
}

QWidget* MainWindow::makeWelcome(QWidget* parent) {
  auto* welcome = new QWidget(parent);
  welcome->setAutoFillBackground(true);
  welcome->setBackgroundRole(QPalette::Base);
  auto* picture = new QLabel(welcome);
  const QIcon icon = windowIcon().isNull() ? skin_.videoImage : windowIcon();
  picture->setPixmap(icon.pixmap(QSize(96, 96)));
  picture->setAlignment(Qt::AlignCenter);
  auto* hint = new QLabel(tr("Drop video or audio files here, or choose Add Files (Ctrl+O)."), welcome);
  hint->setAlignment(Qt::AlignCenter);
  hint->setWordWrap(true);
  hint->setForegroundRole(QPalette::PlaceholderText);
  auto* add = new QPushButton(tr("Add Files..."), welcome);
  connect(add, &QPushButton::clicked, this, &MainWindow::addFilesClicked);

  auto* layout = new QVBoxLayout(welcome);
  layout->addStretch();
  layout->addWidget(picture);
  layout->addWidget(hint);
  layout->addWidget(add, 0, Qt::AlignHCenter);
  layout->addStretch();
  return welcome;
}

QWidget* MainWindow::makeBottomBar() {
  auto* bar = new QWidget(this);
  profileButton_ = new QToolButton(bar);
  profileButton_->setToolButtonStyle(Qt::ToolButtonTextBesideIcon);
  profileButton_->setPopupMode(QToolButton::InstantPopup);
  profileButton_->setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
  profileButton_->setToolTip(tr("Output profile of the selected item"));
  connect(profileButton_, &QToolButton::clicked, this, [this] {
    chooseProfile(currentItem(), profileButton_->mapToGlobal(QPoint(0, profileButton_->height())));
  });
  settingsButton_ = new QPushButton(tr("Settings..."), bar);
  connect(settingsButton_, &QPushButton::clicked, this, &MainWindow::showSettings);
  applyToAll_ = new QCheckBox(tr("Apply to all"), bar);
  applyToAll_->setToolTip(tr("A profile chosen for one item is given to every item"));
  mergeAll_ = new QCheckBox(tr("Merge into one file"), bar);
  connect(mergeAll_, &QCheckBox::toggled, &controller_, &MainFormController::setMergeChecked);

  outputFolder_ = new QLineEdit(bar);
  outputFolder_->setReadOnly(true);
  outputFolder_->setAccessibleName(tr("Output folder"));
  chooseFolder_ = new QPushButton(tr("Browse..."), bar);
  connect(chooseFolder_, &QPushButton::clicked, this, &MainWindow::chooseOutputFolder);
  openFolder_ = new QPushButton(tr("Open"), bar);
  connect(openFolder_, &QPushButton::clicked, &controller_, &MainFormController::openOutputPath);

  convertButton_ = new QPushButton(tr("Convert"), bar);
  convertButton_->setDefault(true);
  convertButton_->setMinimumSize(140, 48);
  QFont big = convertButton_->font();
  big.setPointSizeF(big.pointSizeF() * 1.25);
  big.setBold(true);
  convertButton_->setFont(big);
  connect(convertButton_, &QPushButton::clicked, this, &MainWindow::startConversion);
  cancelButton_ = new QPushButton(tr("Cancel"), bar);
  cancelButton_->setMinimumSize(140, 48);
  cancelButton_->setFont(big);
  cancelButton_->hide();
  connect(cancelButton_, &QPushButton::clicked, &controller_, &MainFormController::cancelConvertButtonClick);

  auto* rows = new QGridLayout;
  rows->addWidget(new QLabel(tr("Profile:"), bar), 0, 0);
  rows->addWidget(profileButton_, 0, 1);
  auto* profileTools = new QHBoxLayout;
  profileTools->addWidget(settingsButton_);
  profileTools->addWidget(applyToAll_);
  profileTools->addStretch();
  profileTools->addWidget(mergeAll_);
  rows->addLayout(profileTools, 0, 2, 1, 2);
  rows->addWidget(new QLabel(tr("Output:"), bar), 1, 0);
  rows->addWidget(outputFolder_, 1, 1);
  rows->addWidget(chooseFolder_, 1, 2);
  rows->addWidget(openFolder_, 1, 3);
  rows->setColumnStretch(1, 1);
  auto* layout = new QHBoxLayout(bar);
  layout->setContentsMargins(0, 6, 0, 0);
  layout->addLayout(rows, 1);
  layout->addSpacing(12);
  layout->addWidget(convertButton_);
  layout->addWidget(cancelButton_);
  return bar;
}

QAction* MainWindow::addCommand(QMenu* menu, const QString& text, const QKeySequence& keys,
                                void (MainWindow::*slot)()) {
  QAction* action = menu->addAction(text, this, slot);
  action->setShortcut(keys);
  return action;
}

void MainWindow::makeMenus() {
  QMenu* file = menuBar()->addMenu(tr("&File"));
  addFilesAction_ = addCommand(file, tr("&Add Files..."), QKeySequence::Open, &MainWindow::addFilesClicked);
  addCommand(file, tr("&Download Videos..."), QKeySequence(tr("Ctrl+D")), &MainWindow::showDownloads);
  addCommand(file, tr("&Output Folder..."), QKeySequence(), &MainWindow::chooseOutputFolder);
  file->addSeparator();
  listCommands_.append(addCommand(file, tr("&Clear List"), QKeySequence(), &MainWindow::clearList));
  file->addSeparator();
  file->addAction(tr("&Quit"), QKeySequence::Quit, this, &QWidget::close);

  QMenu* edit = menuBar()->addMenu(tr("&Edit"));
  itemCommands_.append(addCommand(edit, tr("&Trim..."), QKeySequence(tr("Ctrl+T")), &MainWindow::openTrim));
  itemCommands_.append(addCommand(edit, tr("&Effects..."), QKeySequence(tr("Ctrl+E")), &MainWindow::openEffects));
  itemCommands_.append(addCommand(edit, tr("S&plit..."), QKeySequence(tr("Ctrl+L")), &MainWindow::openSplit));
  itemCommands_.append(addCommand(edit, tr("&3D..."), QKeySequence(tr("Ctrl+3")), &MainWindow::open3D));
  itemCommands_.append(addCommand(edit, tr("Ta&gs..."), QKeySequence(tr("Ctrl+I")), &MainWindow::editTags));
  itemCommands_.append(addCommand(edit, tr("&Settings..."), QKeySequence(tr("Ctrl+P")), &MainWindow::showSettings));
  itemCommands_.append(addCommand(edit, tr("Prope&rties..."), QKeySequence(tr("Alt+Return")),
                                  &MainWindow::showProperties));
  edit->addSeparator();
  itemCommands_.append(addCommand(edit, tr("Re&name"), Qt::Key_F2, &MainWindow::renameCurrent));
  itemCommands_.append(addCommand(edit, tr("&Remove"), QKeySequence::Delete, &MainWindow::removeCurrent));
  itemCommands_.append(addCommand(edit, tr("Move &Up"), QKeySequence(tr("Ctrl+Up")), &MainWindow::moveCurrentUp));
  itemCommands_.append(
      addCommand(edit, tr("Move &Down"), QKeySequence(tr("Ctrl+Down")), &MainWindow::moveCurrentDown));
  listCommands_.append(addCommand(edit, tr("Select &All"), QKeySequence::SelectAll, &MainWindow::selectAll));
  listCommands_.append(addCommand(edit, tr("&Merge Ticked Items"), QKeySequence(tr("Ctrl+M")),
                                  &MainWindow::mergeChecked));
  edit->addSeparator();
  addCommand(edit, tr("&Options..."), QKeySequence(tr("Ctrl+Shift+,")), &MainWindow::showOptions);

  QMenu* convert = menuBar()->addMenu(tr("&Convert"));
  convertAction_ = addCommand(convert, tr("&Start"), QKeySequence(tr("Ctrl+Return")), &MainWindow::startConversion);
  cancelAction_ = convert->addAction(tr("&Cancel"), &controller_, &MainFormController::cancelConvertButtonClick);
  cancelAction_->setShortcut(QKeySequence(Qt::Key_Escape));

  QMenu* help = menuBar()->addMenu(tr("&Help"));
  help->addAction(tr("&Help"), QKeySequence::HelpContents, &controller_, &MainFormController::openHelpPage);
  help->addAction(tr("&Support"), &controller_, &MainFormController::openSupportPage);
  help->addAction(tr("Check for &Updates..."), this, [this] { controller_.checkForUpdates(true); });
  help->addSeparator();
  help->addAction(tr("&About"), this, &MainWindow::showAbout);
}

void MainWindow::startUp() {
  ApplicationLifecycle::startUp(*this);
  setWindowTitle(kProductName);
  if (const KMVProfileCatalog::Entry entry = KMVProfileCatalog::sharedCatalog().selectedProfile()) {
    if (const auto profile = ProfileAction::makeProfileSettingInfo(*entry)) controller_.setCurrentProfile(*profile);
  }
  controller_.setOutputFolder(DefOutputPath);
  outputFolder_->setText(QDir::toNativeSeparators(DefOutputPath));
  showWindowState(controller_.windowState());
}

void MainWindow::addFiles(const QStringList& paths) {
  QStringList absolute;
  for (const QString& path : paths) absolute.append(QFileInfo(path).absoluteFilePath());
  if (!absolute.isEmpty()) controller_.addFilesToMainList(absolute);
}

void MainWindow::createUpdater(bool checkNow) {
  if (checkNow) controller_.checkForUpdates(false);
}

void MainWindow::setIdleState() { showWindowState(controller_.windowState()); }

bool MainWindow::isConversionListVisible() const { return controller_.isConverting(); }

bool MainWindow::isCancelButtonVisible() const { return controller_.isCancelButtonVisible(); }

void MainWindow::hideCancelButton() { cancelButton_->hide(); }

void MainWindow::cancelConvertAll() { controller_.cancelAllConvert(); }

void MainWindow::showWindowState(MainFormController::WindowState state) {
  using State = MainFormController::WindowState;
  const bool converting = state == State::kConverting;
  const bool hasItems = state == State::kReady;
  pages_->setCurrentIndex(converting ? 1 : 0);
  listPages_->setCurrentIndex(state == State::kEmpty ? 1 : 0);
  cancelButton_->setVisible(converting);
  convertButton_->setVisible(!converting);
  for (QWidget* control : std::initializer_list<QWidget*>{profileButton_, settingsButton_, applyToAll_,
                                                          chooseFolder_, convertButton_}) {
    control->setEnabled(hasItems);
  }
  mergeAll_->setVisible(hasItems);
  for (QAction* action : itemCommands_) action->setEnabled(hasItems);
  for (QAction* action : listCommands_) action->setEnabled(hasItems);
  addFilesAction_->setEnabled(!converting);
  convertAction_->setEnabled(hasItems);
  cancelAction_->setEnabled(converting);
  preview_->setEnabled(!converting);
  currentItemChanged();
}

NodeInfo::Ptr MainWindow::currentItem() const { return listModel_->nodeAt(list_->currentIndex()); }

NodeInfo::List MainWindow::checkedItems() const {
  NodeInfo::List checked;
  for (const NodeInfo::Ptr& item : controller_.videoData()) {
    if (item->isSelected()) checked.append(item);
  }
  return checked;
}

void MainWindow::currentItemChanged() {
  const NodeInfo::Ptr item = currentItem();
  preview_->setItem(item);
  if (item == nullptr) {
    profileButton_->setText(tr("Choose a profile"));
    profileButton_->setIcon({});
    return;
  }
  const MediaItemSummary summary = MediaItemSummary::of(*item);
  profileButton_->setText(summary.profileName);
  profileButton_->setIcon(itemDelegate_->profilePicture(summary.profileImage));
}

void MainWindow::addFilesClicked() { controller_.addFileClick(); }

void MainWindow::clearList() { controller_.clearAllFile(); }

void MainWindow::mergeChecked() {
  NodeInfo::List items = checkedItems();
  if (items.isEmpty() && currentItem() != nullptr) items.append(currentItem());
  controller_.mergeNode(items);
}

void MainWindow::removeCurrent() {
  if (const NodeInfo::Ptr item = currentItem()) controller_.deleteItemView(item);
}

void MainWindow::moveCurrentUp() {
  if (const NodeInfo::Ptr item = currentItem()) {
    controller_.moveUpClick(item);
    list_->setCurrentIndex(listModel_->indexOf(item));
  }
}

void MainWindow::moveCurrentDown() {
  if (const NodeInfo::Ptr item = currentItem()) {
    controller_.moveNextClick(item);
    list_->setCurrentIndex(listModel_->indexOf(item));
  }
}

void MainWindow::renameCurrent() {
  if (list_->currentIndex().isValid()) list_->edit(list_->currentIndex());
}

void MainWindow::editTags() { editTagsOf(currentItem()); }

void MainWindow::editTagsOf(const NodeInfo::Ptr& item) {
  if (item == nullptr || controller_.isConverting()) return;
  controller_.setIsShowWindow(true);
  TagEditorDialog dialog(tagEditor_, controller_.videoData(), item, this);
  dialog.exec();
  controller_.setIsShowWindow(false);
  for (const NodeInfo::Ptr& edited : controller_.videoData()) controller_.itemChanged(edited);
}

void MainWindow::showSettings() {
  const NodeInfo::Ptr item = currentItem();
  if (item == nullptr || controller_.isConverting()) return;
  const KMVProfileCatalog::Entry entry =
      KMVProfileCatalog::sharedCatalog().profileNamed(item->curProfileSetting().profileName());
  if (entry == nullptr) return;
  SettingsDialog dialog(*entry, item, this);
  if (dialog.exec() != QDialog::Accepted) return;
  controller_.itemChanged(item);
  controller_.applyToAll(item, applyToAll_->isChecked());
}

NodeInfo::Ptr MainWindow::itemToEdit() {
  const NodeInfo::Ptr item = currentItem();
  if (item == nullptr || controller_.isConverting()) return nullptr;
  // The editors play the item themselves; the library has one preview.
  preview_->stop();
  return item;
}

void MainWindow::openTrim() {
  const NodeInfo::Ptr item = itemToEdit();
  if (item == nullptr) return;
  if (!MediaItemSummary::of(*item).hasVideo) {
    statusBar()->showMessage(tr("Trimming needs a video; %1 has sound only.").arg(item->outputFilename()),
                             kStatusMessageMs);
    return;
  }
  TrimDialog dialog(controller_, item, this);
  dialog.exec();
}

void MainWindow::openSplit() {
  if (const NodeInfo::Ptr item = itemToEdit()) {
    SplitDialog dialog(controller_, item, this);
    dialog.exec();
  }
}

void MainWindow::openEditor(int openModel) {
  if (const NodeInfo::Ptr item = itemToEdit()) {
    EditorDialog dialog(controller_, item, openModel, this);
    dialog.exec();
  }
}

void MainWindow::showDownloads() {
  // Made on first use and kept: closing it only hides it, and downloads go on.
  if (downloads_ == nullptr) {
    downloads_ = new DownloadWindow(this);
    connect(downloads_, &DownloadWindow::downloadFormDidAddFiles, this,
            [this](const QStringList& paths) { controller_.downloadFormDidAddFiles(paths); });
  }
  downloads_->show();
  downloads_->raise();
  downloads_->activateWindow();
}

void MainWindow::showOptions() {
  OptionsDialog dialog(this);
  if (dialog.exec() != QDialog::Accepted) return;
  controller_.setOutputFolder(DefOutputPath);
  outputFolder_->setText(QDir::toNativeSeparators(DefOutputPath));
}

void MainWindow::showProperties() {
  const NodeInfo::Ptr item = currentItem();
  if (item == nullptr) return;
  PropertiesDialog properties(*item, this);
  properties.exec();
}

void MainWindow::showAbout() {
  if (controller_.isConverting()) return;
  AboutDialog about(AboutBox::read(), this);
  about.exec();
}

void MainWindow::chooseOutputFolder() {
  controller_.selectPath();
  outputFolder_->setText(QDir::toNativeSeparators(controller_.outputFolder()));
}

void MainWindow::takeSnapshot() {
  const QString path = controller_.photoButtonClick(
      [this](const QString& file, int32_t imageType) { return preview_->takeSnapshot(file, imageType); });
  statusBar()->showMessage(path.isEmpty() ? tr("The snapshot could not be saved in %1").arg(photoOutputPath)
                                          : tr("Snapshot saved: %1").arg(QDir::toNativeSeparators(path)),
                           kStatusMessageMs);
}

void MainWindow::startConversion() {
  preview_->setItem(nullptr);
  controller_.showConverterWindowModal();
}

void MainWindow::partClicked(const QModelIndex& index, MediaItemDelegate::Part part, const QRect& where) {
  const NodeInfo::Ptr item = listModel_->nodeAt(index);
  if (item == nullptr) return;
  const QPoint below = list_->viewport()->mapToGlobal(where.bottomLeft());
  switch (part) {
    case MediaItemDelegate::Part::Check:
      controller_.mainList().setSelected(item, !item->isSelected());
      break;
    case MediaItemDelegate::Part::Profile:
      chooseProfile(item, below);
      break;
    case MediaItemDelegate::Part::Audio:
      chooseAudioStream(item, below);
      break;
    case MediaItemDelegate::Part::TagEdit:
      editTagsOf(item);
      break;
    case MediaItemDelegate::Part::Remove:
      controller_.deleteItemView(item);
      break;
    case MediaItemDelegate::Part::MoveUp:
      controller_.moveUpClick(item);
      break;
    case MediaItemDelegate::Part::MoveDown:
      controller_.moveNextClick(item);
      break;
    case MediaItemDelegate::Part::Name:
    case MediaItemDelegate::Part::None:
      break;
  }
}

void MainWindow::chooseProfile(const NodeInfo::Ptr& item, const QPoint& where) {
  if (item == nullptr || controller_.isConverting()) return;
  ProfileMenu menu(KMVProfileCatalog::sharedCatalog(), this);
  menu.markCurrent(item->curProfileSetting().profileName());
  connect(&menu, &ProfileMenu::profileChosen, this, [this, item](const KMVProfileCatalog::Entry& entry) {
    if (!controller_.OnProfileSelect(item, *entry)) {
      // The catalogue is damaged: the controller has told the user; the program ends.
      QApplication::exit(1);
      return;
    }
    controller_.applyToAll(item, applyToAll_->isChecked());
    currentItemChanged();
  });
  menu.exec(where);
}

void MainWindow::chooseAudioStream(const NodeInfo::Ptr& item, const QPoint& where) {
  const MediaItemSummary summary = MediaItemSummary::of(*item);
  if (summary.audioStreams.isEmpty() || controller_.isConverting()) return;
  QMenu menu(this);
  auto* choices = new QActionGroup(&menu);
  for (int choice = 0; choice < summary.audioStreams.size(); ++choice) {
    QAction* action = menu.addAction(summary.audioStreams[choice]);
    action->setCheckable(true);
    action->setChecked(choice == summary.selectedAudio);
    choices->addAction(action);
    connect(action, &QAction::triggered, this, [this, item, choice] {
      controller_.audioStreamDidChange(item, MediaItemSummary::streamForChoice(*item, choice));
    });
  }
  menu.exec(where);
}

void MainWindow::runEnding(bool cancelled) {
  if (cancelled || isActiveWindow()) return;
  DesktopNotification::send(kProductName, QLatin1String(MainFormController::kCompleteAlert));
}

void MainWindow::closeEvent(QCloseEvent* event) {
  if (ApplicationLifecycle::windowShouldClose(*this)) {
    event->accept();
  } else {
    event->ignore();
  }
}

void MainWindow::dragEnterEvent(QDragEnterEvent* event) {
  if (!controller_.isConverting() && !localFiles(event->mimeData()).isEmpty()) event->acceptProposedAction();
}

void MainWindow::dropEvent(QDropEvent* event) {
  const QStringList paths = localFiles(event->mimeData());
  if (paths.isEmpty()) return;
  controller_.addViewByPbData(paths);
  event->acceptProposedAction();
}
