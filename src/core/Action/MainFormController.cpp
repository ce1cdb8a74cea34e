#include "MainFormController.h"

#include <QCoreApplication>
#include <QFileInfo>
#include <QThread>

#include <algorithm>

#include "Action/MainListAction.h"
#include "Action/MediaFileTypes.h"
#include "Action/NodeInfoAction.h"
#include "Action/ProfileAction.h"
#include "Action/UIAction.h"
#include "CommonClass/CommonClass.h"
#include "CommonClass/GlobalSettings.h"
#include "CommonClass/KMVLog.h"
#include "CommonClass/PlatformServices.h"
#include "CommonClass/UserDefaults.h"
#include "Profile/KMVProfileCatalog.h"
#include "videoconverter.h"

int32_t MainFormController::lastSelectAllowFiles = 0;
int32_t MainFormController::kImageIndex = 1;

namespace {

// The index of the button chosen; without a presenter the first (default)
// button is taken and the question logged.
int ask(const QString& message, const QString& informativeText, const QStringList& buttons) {
  if (AlertPresenter* alerts = PlatformServices::alerts()) return alerts->ask(message, informativeText, buttons);
  KMVLog::Log(message + QLatin1Char(' ') + informativeText);
  return 0;
}

bool revealInFileViewer(const QString& path) {
  Workspace* workspace = PlatformServices::workspace();
  return workspace != nullptr && workspace->revealInFileViewer(path);
}

bool carriesCoverIntoWindowsMedia(const NodeInfo& item) {
  const QString extension = item.curProfileSetting().extName().toLower();
  return !item.metaData().image().isEmpty() && (extension == QLatin1String("wmv") || extension == QLatin1String("wma"));
}

int32_t snapshotImageType(const QString& format) {
  if (format == QLatin1String("png")) return 4;
  if (format == QLatin1String("jpg")) return 3;
  return 1;
}

}  // namespace

MainFormController::MainFormController(UIInfoDB& db, int addWorkers)
    : db_(db),
      mainFormAction_(std::make_unique<MainFormAction>(db, this, addWorkers)),
      thumbnails_(NodeInfoAction::mainList(db)),
      outputFolder_(DefOutputPath) {
  connect(mainFormAction_.get(), &MainFormAction::progress, this, &MainFormController::addingProgress);
  connect(mainFormAction_.get(), &MainFormAction::finished, this, &MainFormController::addingEnded);
}

// The queue refers to the rows, so it goes first.
MainFormController::~MainFormController() { convertViewList_.reset(); }

NodeTree& MainFormController::mainList() const { return NodeInfoAction::mainList(db_); }

bool MainFormController::isMergeChecked() const {
  return db_.isChecked(QLatin1String(NodeInfoAction::kMergeCheckBoxName));
}

void MainFormController::setMergeChecked(bool checked) {
  db_.setChecked(QLatin1String(NodeInfoAction::kMergeCheckBoxName), checked);
}

NodeInfo::List MainFormController::videoData() const { return NodeInfoAction::getRootNode(db_)->childNode(); }

void MainFormController::addFileClick() {
  if (isConverting() || isShowWindow_) return;
  FilePanels* panels = PlatformServices::panels();
  if (panels == nullptr) return;
  QList<FilePanels::Filter> filters;
  for (int index = 0; index < MediaFileTypes::filterNames().size(); ++index) {
    filters.append({MediaFileTypes::filterNames()[index], MediaFileTypes::configOpenAllowFileWithIndex(index)});
  }
  int chosenFilter = lastSelectAllowFiles;
  const QStringList paths = panels->openFilesWithFilters(DefInputPath, filters, chosenFilter);
  lastSelectAllowFiles = chosenFilter;
  if (!paths.isEmpty()) addFilesToMainList(paths);
}

void MainFormController::addFilesToMainList(const QStringList& paths) {
  if (paths.isEmpty()) return;
  mainFormAction_->addFile(paths);
  DefInputPath = QFileInfo(paths.front()).absolutePath();
  UserDefaults& defaults = UserDefaults::standardUserDefaults();
  defaults.setObject(DefInputPath, QStringLiteral("DefInputPath"));
  defaults.synchronize();
}

void MainFormController::addViewByPbData(const QStringList& paths) {
  if (isShowWindow_) return;
  QStringList accepted;
  for (const QString& path : paths) {
    if (MediaFileTypes::isAccepted(path)) accepted.append(path);
  }
  if (accepted.isEmpty()) return;
  mainFormAction_->addFile(accepted);
}

void MainFormController::andViewByPb(const QString& path) { addViewByPbData({path}); }

void MainFormController::downloadFormDidAddFiles(const QStringList& paths) {
  if (isConverting()) {
    CommonClass::showMessage(QLatin1String(kImportRefusal), QString());
    return;
  }
  addFilesToMainList(paths);
}

void MainFormController::clearAllFile() {
  if (isConverting()) return;
  MainListAction::clearAllFile(db_);
  updateListState();
}

void MainFormController::selectAllItems() {
  if (isConverting()) return;
  for (const NodeInfo::Ptr& item : videoData()) mainList().setSelected(item, true);
}

void MainFormController::mergeNode(const NodeInfo::List& selection) {
  if (isConverting()) return;
  if (const QString refusal = MainListAction::whyMergeRefused(selection); !refusal.isEmpty()) {
    CommonClass::showMessage(refusal);
    return;
  }
  MainListAction::makeMergeBySelectedNodes(db_, MainListAction::expandSlideAndMergeNode(db_, selection));
}

void MainFormController::applyToAll(const NodeInfo::Ptr& current, bool applyAllChecked) {
  if (isConverting() || current == nullptr) return;
  if (applyAllChecked) MainListAction::applyToAll(db_, current);
}

void MainFormController::deleteItemView(const NodeInfo::Ptr& item) {
  if (isConverting()) return;
  MainListAction::removeFiles(db_, {item});
  updateListState();
}

void MainFormController::moveUpClick(const NodeInfo::Ptr& item) {
  if (!isConverting()) MainListAction::fileMoveUp(db_, item);
}

void MainFormController::moveNextClick(const NodeInfo::Ptr& item) {
  if (!isConverting()) MainListAction::fileMoveDown(db_, item);
}

void MainFormController::selectPath() {
  UIAction::creatOutputDirectory(outputFolder_);
  FilePanels* panels = PlatformServices::panels();
  if (panels == nullptr) return;
  const QString chosen = panels->openFolder(outputFolder_);
  if (chosen.isEmpty()) return;
  outputFolder_ = chosen;
  DefOutputPath = chosen;
}

void MainFormController::openOutputPath() {
  UIAction::creatOutputDirectory(outputFolder_);
  revealInFileViewer(outputFolder_);
}

QString MainFormController::photoButtonClick(const SnapshotTaker& takeSnapshot) {
  if (!takeSnapshot) return {};
  UIAction::creatOutputDirectory(photoOutputPath);
  const QString path =
      QString::asprintf("%s/%05d.%s", qUtf8Printable(photoOutputPath), kImageIndex, qUtf8Printable(photoOutputFormat));
  if (takeSnapshot(path, snapshotImageType(photoOutputFormat)) != 0) return {};
  ++kImageIndex;
  KMVLog::Log(path);
  return path;
}

bool MainFormController::itemCanSelectProfile(const KMVProfileDataInfo& entry) {
  const auto needed = std::find_if(kAppleCodecProfiles.begin(), kAppleCodecProfiles.end(),
                                   [&entry](const auto& row) { return row.first == entry.identifier; });
  if (needed == kAppleCodecProfiles.end() || VideoConverter_CheckEncoder(needed->second) == 1) return true;
  QMetaObject::invokeMethod(
      QCoreApplication::instance(),
      [] {
        const int answer = ask(QLatin1String(kCodecMissingTitle), QLatin1String(kCodecMissingText),
                               {QStringLiteral("Click to download"), QStringLiteral("Close")});
        Workspace* workspace = PlatformServices::workspace();
        if (answer == 0 && workspace != nullptr) {
          workspace->openAddress(UIAction::serviceAddress(QStringLiteral("codecdownload")));
        }
      },
      Qt::QueuedConnection);
  return false;
}

bool MainFormController::OnProfileSelect(const NodeInfo::Ptr& item, const KMVProfileDataInfo& entry) {
  if (item == nullptr || isConverting() || !itemCanSelectProfile(entry)) return true;
  if (!ProfileAction::initProfileSettingInfo(*item, &entry)) return false;
  for (const NodeInfo::Ptr& child : item->childNode()) child->setCurProfileSetting(item->curProfileSetting());
  kProfileName = entry.DisplayName;
  KMVProfileCatalog::sharedCatalog().selectProfile(entry.DisplayName);
  currentProfile_ = item->curProfileSetting();
  mainList().noteChanged(item);
  return true;
}

void MainFormController::audioStreamDidChange(const NodeInfo::Ptr& item, int32_t streamIndex) {
  if (item == nullptr || isConverting()) return;
  item->setSelectAudioStream(streamIndex);
  mainList().noteChanged(item);
}

void MainFormController::itemChanged(const NodeInfo::Ptr& item) { mainList().noteChanged(item); }

void MainFormController::openHelpPage() {
  const auto info = CommonClass::readProductInfo();
  Workspace* workspace = PlatformServices::workspace();
  if (info && workspace != nullptr) workspace->openAddress(UIAction::pageWithLinkID(info->decryptedText(info->helpURL)));
}

void MainFormController::openSupportPage() {
  const auto info = CommonClass::readProductInfo();
  Workspace* workspace = PlatformServices::workspace();
  if (info && workspace != nullptr) {
    workspace->openAddress(UIAction::pageWithLinkID(info->decryptedText(info->supportURL)));
  }
}

void MainFormController::checkForUpdates(bool interactive) {
  if (isConverting()) return;
  updateCheck_.check(QUrl(UIAction::serviceAddress(QStringLiteral("appcast"))), interactive);
}

void MainFormController::showConverterWindowModal() {
  if (isConverting() || isAdding()) return;
  if (videoData().isEmpty()) {
    CommonClass::showMessage(QLatin1String(kEmptyListAlert));
    return;
  }
  if (!confirmCoverInWindowsMedia()) return;
  prepareOutputs();
  if (isMergeChecked()) NodeInfoAction::createMergeTableNodeInfo(db_);

  convertViewList_.reset();
  initKMVViewList();
  QThread::usleep(100);
  // Made before the state changes, so that observers of the Converting state
  // find the queue and its rows.
  convertViewList_ = std::make_unique<ConvertViewList>();
  convertViewList_->setDelegate(this);
  setWindowState(WindowState::kConverting);
  cancelButtonVisible_ = true;
  QThread::usleep(500);
  isCancelAllConvert_ = false;
  QList<ConvertView*> rows;
  for (const auto& row : convertViews_) rows.append(row.get());
  convertViewList_->encode(rows);
}

bool MainFormController::confirmCoverInWindowsMedia() {
  for (const NodeInfo::Ptr& item : videoData()) {
    if (carriesCoverIntoWindowsMedia(*item)) {
      return ask(QLatin1String(kCoverQuestion), QString(), {QStringLiteral("YES"), QStringLiteral("NO")}) == 0;
    }
  }
  return true;
}

void MainFormController::prepareOutputs() {
  const NodeInfo::Ptr root = NodeInfoAction::getRootNode(db_);
  root->setOutputPath(outputFolder_);
  for (const NodeInfo::Ptr& item : root->childNode()) {
    item->setOutputPath(outputFolder_);
    item->setConverterState(0);
  }
  UIAction::creatOutputDirectory(outputFolder_);
  QThread::usleep(100);
}

void MainFormController::initKMVViewList() {
  convertViews_.clear();
  for (const NodeInfo::Ptr& item : NodeInfoAction::rootNode(db_)->childNode()) {
    if (item->isSelected()) convertViews_.push_back(std::make_unique<ConvertView>(item));
  }
}

void MainFormController::cancelConvertButtonClick() {
  if (!isConverting() || convertViewList_ == nullptr) return;
  if (ask(kProductName, QLatin1String(kCancelQuestion), {QStringLiteral("Yes"), QStringLiteral("No")}) != 0) return;
  cancelAllConvert();
}

void MainFormController::cancelAllConvert() {
  if (!isConverting() || convertViewList_ == nullptr) return;
  cancelButtonVisible_ = false;
  isCancelAllConvert_ = true;
  convertViewList_->cancelConvertAll();
}

void MainFormController::addItemView(const NodeInfo::Ptr& node) {
  if (!currentProfile_) return;
  node->setCurProfileSetting(*currentProfile_);
  mainList().noteChanged(node);
}

void MainFormController::addTrimItemView(const NodeInfo::Ptr& node) {
  mainList().noteChanged(node);
  updateListState();
}

void MainFormController::trimWindowClose(TrimFormController* /*controller*/) {
  isShowWindow_ = false;
  updateListState();
}

void MainFormController::splitWindowClose(SplitController* /*controller*/) {
  isShowWindow_ = false;
  for (const NodeInfo::Ptr& item : videoData()) mainList().noteChanged(item);
}

void MainFormController::editWindowClose(const NodeInfo::Ptr& node) {
  isShowWindow_ = false;
  if (node != nullptr) mainList().noteChanged(node);
}

void MainFormController::addingEnded() {
  updateListState();
  emit addingFinished();
}

void MainFormController::convertEnd() {
  if (!isConverting()) return;
  emit runEnding(isCancelAllConvert_);
  if (!isCancelAllConvert_) CommonClass::showMessage(QLatin1String(kCompleteAlert));
  cancelButtonVisible_ = false;
  updateListState();
  if (!isCancelAllConvert_) revealInFileViewer(outputFolder_);
  isCancelAllConvert_ = false;
}

void MainFormController::showMessage(const QString& message) { CommonClass::showMessage(message); }

void MainFormController::setWindowState(WindowState state) {
  if (state == state_) return;
  state_ = state;
  emit windowStateChanged(state);
}

void MainFormController::updateListState() {
  setWindowState(videoData().isEmpty() ? WindowState::kEmpty : WindowState::kReady);
}
