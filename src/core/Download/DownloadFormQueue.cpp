// The download window's download slots: at most five downloads run, the
// rest wait first in, first out, and a one-second timer shows their
// progress while any runs.
#include <QFile>

#include "CommonClass/KMVLog.h"
#include "Download/DownloadFormController.h"

void DownloadFormController::initRequest(DrogItemView* item) {
  if (!getDownloadInfoTimer_) {
    getDownloadInfoTimer_ = std::make_unique<QTimer>();
    getDownloadInfoTimer_->setInterval(kDisplayIntervalMs);
    connect(getDownloadInfoTimer_.get(), &QTimer::timeout, this, &DownloadFormController::getVideoDownloadInfo);
    getDownloadInfoTimer_->start();
  }
  if (arrCurDownload_.size() == kMostDownloads) {
    if (!arrWaitForDownload_.contains(item)) arrWaitForDownload_.append(item);
    item->itemInfo()->setVideoDownState(kVideoDownStateWaiting);
    item->cellState(kVideoDownStateWaiting);
    saveDownloadList();
    return;
  }
  // Appended even when it runs already: the membership test before this has
  // always looked for the controller instead of the item and never matched,
  // and the slots are counted that way.
  arrCurDownload_.append(item);
  item->setDownloadFinishAction([this](DrogItemView* ended) { itemDownloadDidFinish(ended); });
  item->setDownloadFailAction(
      [this](DrogItemView* ended, const QString& reason) { itemDownloadDidFailed(ended, reason); });
  item->setTarget(this);
  item->initDownloadRequest();
  saveDownloadList();
}

void DownloadFormController::downloadNextWaitObj() {
  if (!arrWaitForDownload_.isEmpty()) {
    DrogItemView* next = arrWaitForDownload_.first();
    // Announces "resumeURL", which starts it through initRequest().
    next->startPrograss(false);
    arrWaitForDownload_.removeAll(next);
  }
  if (arrCurDownload_.isEmpty()) stopDisplayTimer();
}

void DownloadFormController::stopDisplayTimer() { getDownloadInfoTimer_.reset(); }

void DownloadFormController::getVideoDownloadInfo() {
  for (DrogItemView* item : droglineView_.getChildItem()) {
    if (item->itemInfo()->videoDownState() == kVideoDownStateDownloading) item->updateDownloadInfo();
  }
  emit downloadInfoUpdated();
}

void DownloadFormController::itemDownloadDidFinish(DrogItemView* item) {
  const VideoInfoObject& task = *item->itemInfo();
  if (task.htmUrlStr().toLower().contains(QLatin1String(kRenameOnFinishPrefix))) {
    QFile::rename(task.savePath(), task.savePath() + task.videoFormat());
  }
  arrCurDownload_.removeAll(item);
  downloadNextWaitObj();
  saveDownloadList();
}

void DownloadFormController::itemDownloadDidFailed(DrogItemView* item, const QString& reason) {
  KMVLog::Log(QStringLiteral("An error occurred: %1").arg(reason));
  arrCurDownload_.removeAll(item);
  downloadNextWaitObj();
  saveDownloadList();
}

void DownloadFormController::didPauseURLFetch(DrogItemView* item) {
  item->stopDownloadRequest();
  arrCurDownload_.removeAll(item);
  arrWaitForDownload_.removeAll(item);
  downloadNextWaitObj();
}

void DownloadFormController::resumeURLFetchWithProgress(DrogItemView* item) { initRequest(item); }
