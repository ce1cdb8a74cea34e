// The download window's start-up, the list file, adding addresses, the
// commands on all items and the import of finished files.
#include "DownloadFormController.h"

#include <QFile>
#include <QFileInfo>
#include <QUrl>

#include "CommonClass/CommonClass.h"
#include "CommonClass/NotificationCenter.h"
#include "CommonClass/Pasteboard.h"
#include "CommonClass/PlatformServices.h"
#include "Download/DownloadSettings.h"
#include "Download/PublicAction.h"
#include "parseurl.h"

namespace {

// The folder the page analysis may work in.
constexpr const char* kAnalysisWorkFolder = "/tmp/";

// The pasted text without white space, with "http://" in front when it names no scheme.
QString completedAddress(const QString& pasted) {
  const QString text = CommonClass::NSStringTrim(pasted);
  if (text.isEmpty() || text.contains(QLatin1String("http://")) || text.contains(QLatin1String("https://"))) {
    return text;
  }
  return QStringLiteral("http://") + text;
}

// More than a scheme and a bare host.
bool isLink(const QString& address) {
  const QString host = QUrl(address).host();
  const QString trimmed = address.trimmed();
  return trimmed.size() > 5 && !host.isEmpty() && trimmed != QStringLiteral("http://") + host;
}

void removeTemporaryFile(const DrogItemView& item) {
  const QString& path = item.itemInfo()->savePath();
  if (!path.isEmpty()) QFile::remove(path + QStringLiteral(".download"));
}

}  // namespace

DownloadFormController::DownloadFormController(Pasteboard* pasteboard, QObject* parent)
    : QObject(parent), pasteboard_(pasteboard) {
  droglineView_.setDelegate(this);
}

DownloadFormController::~DownloadFormController() {
  NotificationCenter::defaultCenter().removeObserver(this);
  droglineView_.setDelegate(nullptr);
}

void DownloadFormController::windowDidLoad() {
  SetWorkPath(kAnalysisWorkFolder);
  initDownloadList();
  setEmptyListPictureVisible(droglineView_.getChildItem().isEmpty());
  savePath = DownloadSettings::startSavePath();
  PublicAction::creatOutputDirectory(savePath);
  subscribe();
}

void DownloadFormController::subscribe() {
  if (std::exchange(subscribed_, true)) return;
  NotificationCenter& center = NotificationCenter::defaultCenter();
  center.addObserver(this, QLatin1String(GetVideoInfoThread::kAnalysisEndNotification),
                     [this](const Notification& notification) { getVideoUrlEnd(notification); });
  const auto observe = [this, &center](const char* name, void (DownloadFormController::*handler)(DrogItemView*)) {
    center.addObserver(this, QLatin1String(name), [this, handler](const Notification& notification) {
      if (DrogItemView* item = ownItem(notification)) (this->*handler)(item);
    });
  };
  observe(DrogItemView::kResumeNotification, &DownloadFormController::resumeURLFetchWithProgress);
  observe(DrogItemView::kPauseNotification, &DownloadFormController::didPauseURLFetch);
  observe(DrogItemView::kReParamNotification, &DownloadFormController::reParamURL);
  observe(DrogItemView::kImportNotification, &DownloadFormController::drogItemViewImportClick);
}

DrogItemView* DownloadFormController::ownItem(const Notification& notification) const {
  auto* item = qobject_cast<DrogItemView*>(notification.object.value<QObject*>());
  return item != nullptr && droglineView_.indexOf(item) >= 0 ? item : nullptr;
}

void DownloadFormController::setEmptyListPictureVisible(bool visible) {
  if (imgvMainVisible_ == visible) return;
  imgvMainVisible_ = visible;
  emit emptyListPictureChanged(visible);
}

void DownloadFormController::initDownloadList() {
  const QList<std::shared_ptr<VideoInfoObject>> tasks = PublicAction::readDownloadList();
  if (!tasks.isEmpty()) setEmptyListPictureVisible(false);
  // Every item is in the list before any of them saves it.
  for (qsizetype i = tasks.size() - 1; i >= 0; --i) {
    auto* item = new DrogItemView(tasks[i]);
    item->initViewValue();
    droglineView_.addItemView(item, 0);
    item->setIconImage(diffSiteIconImage(tasks[i]->htmUrlStr()));
  }
  const QList<DrogItemView*> items = droglineView_.getChildItem();
  for (qsizetype i = items.size() - 1; i >= 0; --i) {
    DrogItemView* item = items[i];
    const auto state = static_cast<int32_t>(item->itemInfo()->videoDownState());
    switch (state) {
      case kVideoDownStateAnalysing: startToGetVideoInfo(item); break;
      case kVideoDownStateDownloading:
      case kVideoDownStateWaiting:
        // Shown paused: nothing starts by itself.
        item->cellState(state);
        item->pausePrograss(false);
        break;
      case kVideoDownStateFinished:
      case kVideoDownStateFailed: item->cellState(state); break;
      default: break;
    }
  }
}

void DownloadFormController::saveDownloadList() {
  PublicAction::saveDownloadList(droglineView_.getChildItem());
  emit downloadListSaved();
}

QString DownloadFormController::pageAddressOf(const QString& text) {
  const QString address = completedAddress(text);
  return isLink(address) ? address.trimmed() : QString();
}

DrogItemView* DownloadFormController::itemWithPageAddress(const QString& address) const {
  for (DrogItemView* item : droglineView_.getChildItem()) {
    if (item->itemInfo()->htmUrlStr() == address) return item;
  }
  return nullptr;
}

void DownloadFormController::getVideoDownloadURL() {
  const QString address = completedAddress(pasteboard_ != nullptr ? pasteboard_->string() : QString());
  if (DrogItemView* existing = itemWithPageAddress(address)) {
    askAboutExistingTask(existing);
    return;
  }
  if (addPageAddress(address) == AddResult::kNoLink) {
    CommonClass::showMessage(QLatin1String(kNoLinksTitle), QLatin1String(kNoLinksText));
  }
}

void DownloadFormController::addDroppedLinks(const QStringList& texts) {
  for (const QString& text : texts) {
    if (DrogItemView* existing = itemWithPageAddress(completedAddress(text))) {
      askAboutExistingTask(existing);
    } else {
      addPageAddress(text);
    }
  }
}

void DownloadFormController::askAboutExistingTask(DrogItemView* item) {
  AlertPresenter* alerts = PlatformServices::alerts();
  const QStringList buttons{QLatin1String(kContinueButton), QLatin1String(kRedownloadButton)};
  if (alerts != nullptr && alerts->ask(QLatin1String(kTaskExistsTitle), QLatin1String(kTaskExistsText), buttons) == 1) {
    redownload(item);
  }
}

DownloadFormController::AddResult DownloadFormController::addPageAddress(const QString& text) {
  const QString completed = completedAddress(text);
  if (itemWithPageAddress(completed) != nullptr) return AddResult::kExists;
  if (!isLink(completed)) return AddResult::kNoLink;
  addNewItem(completed.trimmed());
  return AddResult::kAdded;
}

DrogItemView* DownloadFormController::addNewItem(const QString& pageAddress) {
  setEmptyListPictureVisible(false);
  auto task = std::make_shared<VideoInfoObject>();
  task->setHtmUrlStr(pageAddress);
  auto* item = new DrogItemView(task);
  item->initViewValue();
  droglineView_.addItemView(item, 0);
  droglineView_.setSeleteView(item);
  droglineView_.scrollPointToOrigin();
  startToGetVideoInfo(item);
  return item;
}

void DownloadFormController::redownload(DrogItemView* item) {
  item->setGetVideoInfo(nullptr);
  const QString& path = item->itemInfo()->savePath();
  if (!path.isEmpty()) {
    QFile::remove(path);
    QFile::remove(path + QStringLiteral(".download"));
  }
  item->stopDownloadRequest();
  if (curParamView_ == item) curParamView_ = nullptr;
  startToGetVideoInfo(item);
}

void DownloadFormController::pauseAllClick() {
  arrWaitForDownload_.clear();
  arrCurDownload_.clear();
  // Items queued for analysis keep state 1 and are not analysed.
  arrWaitForParam_.clear();
  for (DrogItemView* item : QList<DrogItemView*>(droglineView_.getChildItem())) {
    if (item->itemInfo()->videoDownState() != kVideoDownStateFinished) item->pausePrograss(false);
  }
  saveDownloadList();
}

void DownloadFormController::resumeAllClick() {
  const QList<DrogItemView*> items = droglineView_.getChildItem();
  for (qsizetype i = items.size() - 1; i >= 0; --i) {
    const qint64 state = items[i]->itemInfo()->videoDownState();
    const bool resumable =
        state == kVideoDownStateFailed || state == kVideoDownStateWaiting || state == kVideoDownStateDownloading;
    if (resumable && !arrCurDownload_.contains(items[i])) items[i]->startPrograss(false);
  }
  saveDownloadList();
}

void DownloadFormController::deleteAllClick() {
  setEmptyListPictureVisible(true);
  arrWaitForDownload_.clear();
  arrCurDownload_.clear();
  arrWaitForParam_.clear();
  curParamView_ = nullptr;
  for (DrogItemView* item : droglineView_.getChildItem()) removeTemporaryFile(*item);
  droglineView_.removeAllItems();
  stopDisplayTimer();
  saveDownloadList();
}

void DownloadFormController::importAllClick() {
  QStringList paths;
  for (const DrogItemView* item : droglineView_.getChildItem()) {
    const QString& path = item->itemInfo()->savePath();
    if (!path.isEmpty() && QFileInfo(path).isFile()) paths.append(path);
  }
  if (!paths.isEmpty() && delegate_ != nullptr) delegate_->downloadFormDidAddFiles(paths);
}

void DownloadFormController::drogItemViewImportClick(DrogItemView* item) {
  const QString& path = item->itemInfo()->savePath();
  if (!path.isEmpty() && QFileInfo(path).isFile() && delegate_ != nullptr) delegate_->downloadFormDidAddFiles({path});
}

void DownloadFormController::copyUrlClick() {
  const DrogItemView* selected = droglineView_.getSeleteView();
  if (selected != nullptr && pasteboard_ != nullptr) pasteboard_->setString(selected->itemInfo()->htmUrlStr());
}

void DownloadFormController::droglineViewDidRemoveItemView(DroglineView*, DrogItemView* item) {
  if (curParamView_ == item) {
    curParamView_ = nullptr;
    startNextAnalysis();
  }
  removeTemporaryFile(*item);
  arrWaitForDownload_.removeAll(item);
  if (arrCurDownload_.contains(item)) {
    arrCurDownload_.removeAll(item);
    downloadNextWaitObj();
  }
  saveDownloadList();
  arrWaitForParam_.removeAll(item);
  if (droglineView_.getChildItem().isEmpty()) setEmptyListPictureVisible(true);
}

void DownloadFormController::DroglineViewDidReceiveRightMouseEvent(DroglineView*) { emit contextMenuRequested(); }
