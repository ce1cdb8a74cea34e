#include "DrogItemView.h"

#include <QFileInfo>
#include <QUrl>

#include <array>

#include "CommonClass/CommonClass.h"
#include "CommonClass/NotificationCenter.h"
#include "CommonClass/PlatformServices.h"
#include "Download/DownloadFileName.h"
#include "Download/DownloadSettings.h"
#include "Download/DroglineView.h"
#include "Download/TiffImage.h"

namespace {

using Element = DrogItemView::Element;

constexpr std::array<const char*, DrogItemView::kElementCount> kElementNames{
    "imgvBlog",       "imgvIcon",         "labTitle",
    "imgvVideoTime",  "labVideoTime",     "imgvVideoFormat",
    "labVideoFormat", "imgvVideoSize",    "labVideoSize",
    "imgvBg",         "imgvHighBg",       "imgvFail",
    "labFail",        "imgvWait",         "labWait",
    "progressBar",    "labDownloadSpeed", "labDownloadSize",
    "btPause",        "btResume",         "btImportToConverter",
    "btOpenFile",     "btReParam",        "btDelete",
};

// Shown only when the download has finished.
constexpr std::array kFinishedElements{Element::imgvVideoTime,  Element::labVideoTime,       Element::imgvVideoFormat,
                                       Element::labVideoFormat, Element::imgvVideoSize,      Element::labVideoSize,
                                       Element::btOpenFile,     Element::btImportToConverter};

constexpr const char* kUnknownSize = "??? MB";

QString orSpace(const QString& text) { return text.isNull() ? QStringLiteral(" ") : text; }

}  // namespace

QString DrogItemView::skinName(Element element) {
  return QStringLiteral("winDownload.list.") + QLatin1String(kElementNames[static_cast<size_t>(element)]);
}

QString DrogItemView::toolTip(Element button) {
  switch (button) {
    case Element::btPause: return QStringLiteral("Pause");
    case Element::btResume: return QStringLiteral("Start");
    case Element::btImportToConverter: return QStringLiteral("Import to Convert");
    case Element::btOpenFile: return QStringLiteral("Show in Finder");
    case Element::btReParam: return QStringLiteral("Re-analyze");
    case Element::btDelete: return QStringLiteral("Delete");
    default: return {};
  }
}

DrogItemView::DrogItemView(std::shared_ptr<VideoInfoObject> task, QObject* parent)
    : QObject(parent), itemInfo_(std::move(task)) {
  for (const Element element :
       {Element::imgvBlog, Element::imgvIcon, Element::labTitle, Element::imgvBg, Element::btDelete}) {
    show(element, true);
  }
}

DrogItemView::~DrogItemView() {
  if (downloadRequest_) downloadRequest_->disconnect(this);
  downloadRequest_.reset();
  // Nothing of the worker is on the stack now: it goes at once.
  if (getVideoInfo_) {
    getVideoInfo_->stopGetVideoInfo();
    delete getVideoInfo_;
  }
}

void DrogItemView::setGetVideoInfo(GetVideoInfoThread* worker) {
  if (getVideoInfo_ == worker) return;
  if (getVideoInfo_) {
    getVideoInfo_->stopGetVideoInfo();
    // It may be the one announcing its end right now.
    getVideoInfo_->deleteLater();
  }
  getVideoInfo_ = worker;
}

void DrogItemView::show(Element element, bool visible) { visible_.set(static_cast<size_t>(element), visible); }

void DrogItemView::cellState(int32_t code) {
  cellState_ = code;
  for (const Element element : kFinishedElements) show(element, code == kVideoDownStateFinished);
  show(Element::labDownloadSpeed, code == kVideoDownStateDownloading);
  show(Element::labDownloadSize, code == kVideoDownStateDownloading);
  show(Element::imgvFail, code == kVideoDownStateFailed);
  show(Element::labFail, code == kVideoDownStateFailed);
  show(Element::imgvWait, code == kVideoDownStateWaiting);
  show(Element::labWait, code == kVideoDownStateWaiting);
  switch (code) {
    case kVideoDownStateAnalysing:
      show(Element::progressBar, true);
      progressIndeterminate_ = true;
      progressAnimating_ = true;
      show(Element::btPause, false);
      show(Element::btResume, false);
      show(Element::btReParam, false);
      reParamEnabled_ = false;
      break;
    case kVideoDownStateDownloading:
      show(Element::progressBar, true);
      progressIndeterminate_ = false;
      progressAnimating_ = false;
      show(Element::btPause, true);
      show(Element::btResume, false);
      show(Element::btReParam, false);
      break;
    case kVideoDownStateFinished:
      show(Element::progressBar, false);
      show(Element::btPause, false);
      show(Element::btResume, false);
      show(Element::btReParam, false);
      break;
    case kVideoDownStateFailed:
      show(Element::progressBar, false);
      progressAnimating_ = false;
      show(Element::btPause, false);
      show(Element::btResume, false);
      show(Element::btReParam, true);
      reParamEnabled_ = true;
      break;
    case kVideoDownStateWaiting:
      show(Element::progressBar, false);
      show(Element::btPause, true);
      show(Element::btResume, false);
      show(Element::btReParam, false);
      break;
    default: break;
  }
  show(Element::btDelete, true);
  emit changed();
}

void DrogItemView::setState(int32_t code) {
  itemInfo_->setVideoDownState(code);
  cellState(code);
}

void DrogItemView::setTitle(const QString& title) {
  title_ = title;
  emit changed();
}

void DrogItemView::setVideoTime(const QString& time) {
  videoTime_ = time;
  emit changed();
}

void DrogItemView::setVideoFormat(const QString& format) {
  videoFormat_ = format;
  emit changed();
}

void DrogItemView::setVideoSize(const QString& size) {
  videoSize_ = size;
  emit changed();
}

void DrogItemView::setIconImage(const QString& path) {
  iconImage_ = path;
  emit changed();
}

void DrogItemView::setBlogImage(const QImage& image) {
  blogImage_ = image.width() > kThumbnailSide || image.height() > kThumbnailSide
                   ? image.scaled(kThumbnailSide, kThumbnailSide, Qt::KeepAspectRatio, Qt::SmoothTransformation)
                   : image;
  blogImageTiff_ = TiffImage::encode(blogImage_);
  blogSkinImage_.clear();
  emit changed();
}

void DrogItemView::setBlogSkinImage(const QString& name) {
  blogImage_ = QImage();
  blogImageTiff_.clear();
  blogSkinImage_ = name;
  emit changed();
}

void DrogItemView::setSeleted(bool selected) {
  if (isSeleted_ == selected) return;
  isSeleted_ = selected;
  show(Element::imgvHighBg, selected);
  emit changed();
}

void DrogItemView::setProgressValue(double value) {
  progressValue_ = value;
  emit changed();
}

void DrogItemView::initViewValue() {
  if (itemInfo_->videoDownState() == kVideoDownStateAnalysing) {
    setBlogSkinImage(QLatin1String(kAnalysingThumbnail));
  } else {
    setBlogImage(decodeThumbnail(itemInfo_->blogData()));
  }
  title_ = orSpace(itemInfo_->titleStr());
  videoTime_ = orSpace(itemInfo_->videoTime());
  videoFormat_ = orSpace(itemInfo_->videoFormat());
  videoSize_ = orSpace(itemInfo_->strVideoSize());
  emit changed();
}

void DrogItemView::initDownloadRequest() {
  const QUrl address(itemInfo_->downURLStr());
  const QString scheme = address.scheme().toLower();
  if (!address.isValid() || address.host().isEmpty() ||
      (scheme != QLatin1String("http") && scheme != QLatin1String("https"))) {
    setBlogSkinImage(QLatin1String(kFailedThumbnail));
    URLFetchWithProgressFailed(QStringLiteral("'%1' is no download address").arg(itemInfo_->downURLStr()));
    return;
  }
  if (itemInfo_->videoFormat().isNull()) itemInfo_->setVideoFormat(QLatin1String(""));
  if (itemInfo_->savePath().isEmpty()) {
    CommonClass::creatOutputDirectory(::savePath);
    itemInfo_->setSavePath(freeDownloadPath(::savePath, itemInfo_->titleStr(), itemInfo_->videoFormat()));
  }
  // A resumed task keeps its name, which may be in a folder chosen earlier.
  CommonClass::creatOutputDirectory(QFileInfo(itemInfo_->savePath()).path());
  // Shown with the name already chosen.
  setState(kVideoDownStateDownloading);

  stopDownloadRequest();
  failureReason_.clear();
  downloadRequest_ = ItemDownload::forAddress(address, itemInfo_->savePath());
  connect(downloadRequest_.get(), &ItemDownload::progressChanged, this, &DrogItemView::setProgressValue);
  connect(downloadRequest_.get(), &ItemDownload::didFinish, this, &DrogItemView::URLFetchWithProgressComplete);
  connect(downloadRequest_.get(), &ItemDownload::didFail, this, &DrogItemView::URLFetchWithProgressFailed);
  lastBytesReceived_ = static_cast<double>(QFileInfo(downloadRequest_->temporaryPath()).size());
  downloadRequest_->start();
}

void DrogItemView::stopDownloadRequest() {
  if (!downloadRequest_) return;
  downloadRequest_->disconnect(this);
  downloadRequest_->stop();
  // It may be the one telling of its end right now.
  downloadRequest_.release()->deleteLater();
}

void DrogItemView::updateDownloadInfo() {
  const double current = static_cast<double>(QFileInfo(itemInfo_->savePath() + QStringLiteral(".download")).size());
  downloadSpeed_ = QString::asprintf("%0.02f Kb/s", (current - lastBytesReceived_) / 1000.0);
  const double megabytes = current / 1000000.0;
  if (itemInfo_->strVideoSize() == QLatin1String(kUnknownSize)) {
    downloadSize_ = QString::asprintf("%0.02f MB", megabytes);
  } else {
    downloadSize_ = QString::asprintf("%0.02f MB/", megabytes) + itemInfo_->strVideoSize();
  }
  lastBytesReceived_ = current;
  emit changed();
}

void DrogItemView::URLFetchWithProgressComplete() {
  stopDownloadRequest();
  progressValue_ = 1.0;
  setState(kVideoDownStateFinished);
  if (!target_ || !downloadFinishAction_) return;
  QMetaObject::invokeMethod(
      target_,
      [action = downloadFinishAction_, item = QPointer<DrogItemView>(this)] {
        if (item) action(item);
      },
      Qt::QueuedConnection);
}

void DrogItemView::URLFetchWithProgressFailed(const QString& reason) {
  stopDownloadRequest();
  failureReason_ = reason;
  setState(kVideoDownStateFailed);
  if (!target_ || !downloadFailAction_) return;
  QMetaObject::invokeMethod(
      target_,
      [action = downloadFailAction_, item = QPointer<DrogItemView>(this), reason] {
        if (item) action(item, reason);
      },
      Qt::QueuedConnection);
}

void DrogItemView::post(const char* notification) {
  NotificationCenter::defaultCenter().postNotificationName(QLatin1String(notification),
                                                           QVariant::fromValue<QObject*>(this));
}

void DrogItemView::selectInList() {
  if (list_ != nullptr) list_->setSeleteView(this);
}

void DrogItemView::startPrograss(bool bySender) {
  show(Element::btPause, true);
  show(Element::btResume, false);
  emit changed();
  post(kResumeNotification);
  if (cellState_ == kVideoDownStateWaiting) {
    show(Element::imgvWait, true);
    emit changed();
  }
  if (bySender) selectInList();
}

void DrogItemView::pausePrograss(bool bySender) {
  post(kPauseNotification);
  show(Element::btPause, false);
  show(Element::btResume, true);
  show(Element::imgvWait, false);
  show(Element::labWait, false);
  show(Element::labDownloadSpeed, false);
  emit changed();
  if (bySender) selectInList();
}

void DrogItemView::importToConverter(bool /*bySender*/) {
  selectInList();
  post(kImportNotification);
}

void DrogItemView::startParam() {
  post(kReParamNotification);
  selectInList();
}

void DrogItemView::deleteItemView() {
  if (list_ != nullptr) list_->deleteSeleteView(this);
}

void DrogItemView::openFile() {
  selectInList();
  if (Workspace* workspace = PlatformServices::workspace()) workspace->revealInFileViewer(itemInfo_->savePath());
}

void DrogItemView::mousePressed() { selectInList(); }
