// The download window's page analyses: one runs at a time, the rest wait
// first in, first out; a result is shown on its item and starts its download.
#include <QFileInfo>

#include "CommonClass/NotificationCenter.h"
#include "Download/DownloadFormController.h"
#include "Download/DownloadSiteIcon.h"
#include "Download/TiffImage.h"

namespace {

// The whole number a text starts with, as a duration's seconds; 0 when none.
qint64 leadingInteger(const QString& text) {
  const QString trimmed = text.trimmed();
  qsizetype end = 0;
  if (end < trimmed.size() && (trimmed[end] == QLatin1Char('-') || trimmed[end] == QLatin1Char('+'))) ++end;
  while (end < trimmed.size() && trimmed[end].isDigit()) ++end;
  return trimmed.left(end).toLongLong();
}

QString durationText(qint64 seconds) {
  if (seconds <= 0) return QStringLiteral("??:??:??");
  return QString::asprintf("%02lld:%02lld:%02lld", seconds / 3600, (seconds % 3600) / 60, seconds % 60);
}

}  // namespace

QString DownloadFormController::diffSiteIconImage(const QString& pageAddress) {
  return DownloadSiteIcon::diffSiteIconImage(pageAddress);
}

void DownloadFormController::startToGetVideoInfo(DrogItemView* item) {
  const std::shared_ptr<VideoInfoObject>& task = item->itemInfo();
  const QString icon = diffSiteIconImage(task->htmUrlStr());
  if (QFileInfo::exists(icon)) item->setIconImage(icon);
  item->setTitle(task->htmUrlStr());
  task->setVideoDownState(kVideoDownStateAnalysing);
  item->cellState(kVideoDownStateAnalysing);
  if (curParamView_ != nullptr && curParamView_ != item) {
    if (!arrWaitForParam_.contains(item)) arrWaitForParam_.append(item);
  } else {
    GetVideoInfoThread* worker = item->getVideoInfo();
    if (worker == nullptr) {
      worker = new GetVideoInfoThread();
      item->setGetVideoInfo(worker);
    }
    worker->getVideoInfo(task);
    curParamView_ = item;
  }
  saveDownloadList();
}

void DownloadFormController::startNextAnalysis() {
  if (arrWaitForParam_.isEmpty()) return;
  DrogItemView* next = arrWaitForParam_.first();
  startToGetVideoInfo(next);
  arrWaitForParam_.removeOne(next);
}

void DownloadFormController::getVideoUrlEnd(const Notification& notification) {
  const auto task = notification.object.value<std::shared_ptr<VideoInfoObject>>();
  DrogItemView* item = task ? droglineView_.getViewById(task.get()) : nullptr;
  if (item == nullptr) return;
  if (curParamView_ == item) curParamView_ = nullptr;
  setItemViewState(task.get());
  item->setGetVideoInfo(nullptr);
  startNextAnalysis();
}

void DownloadFormController::setItemViewState(VideoInfoObject* task) {
  DrogItemView* item = droglineView_.getViewById(task);
  if (item == nullptr) return;
  if (!task->downURLStr().isNull()) {
    const QImage thumbnail = decodeThumbnail(task->imageData());
    if (!thumbnail.isNull()) item->setBlogImage(thumbnail);
    const QString icon = diffSiteIconImage(task->htmUrlStr());
    if (QFileInfo::exists(icon)) item->setIconImage(icon);
    item->setTitle(task->titleStr().isNull() ? QLatin1String("") : task->titleStr());
    if (!task->videoTime().isNull()) {
      const QString shown = durationText(leadingInteger(task->videoTime()));
      item->setVideoTime(shown);
      task->setVideoTime(shown);
    }
    item->setVideoFormat(task->videoFormat().isNull() ? QLatin1String("") : task->videoFormat());
    item->setVideoSize(task->strVideoSize());
    initRequest(item);
  } else {
    item->setBlogSkinImage(QLatin1String(DrogItemView::kFailedThumbnail));
    task->setVideoDownState(kVideoDownStateFailed);
    item->cellState(kVideoDownStateFailed);
  }
  saveDownloadList();
}

void DownloadFormController::reParamURL(DrogItemView* item) { startToGetVideoInfo(item); }
