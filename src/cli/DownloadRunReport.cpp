#include "DownloadRunReport.h"

namespace {

QString nameOf(const DrogItemView& item) {
  const VideoInfoObject& task = *item.itemInfo();
  return task.titleStr().isEmpty() ? task.htmUrlStr() : task.titleStr();
}

int percentOf(const DrogItemView& item) { return static_cast<int>(item.progressValue() * 100); }

}  // namespace

DownloadRunReport::DownloadRunReport(DownloadFormController& controller, bool onTerminal)
    : controller_(controller), onTerminal_(onTerminal) {
  DroglineView& list = controller.droglineView();
  for (const DrogItemView* item : list.getChildItem()) states_.insert(item, item->itemInfo()->videoDownState());
  connect(&list, &DroglineView::itemChanged, this,
          [this, &list](int index) { itemChanged(list.getChildItem().value(index)); });
  connect(&controller, &DownloadFormController::downloadInfoUpdated, this, &DownloadRunReport::showProgress);
}

void DownloadRunReport::itemChanged(const DrogItemView* item) {
  if (item == nullptr) return;
  const qint64 state = item->itemInfo()->videoDownState();
  const auto seen = states_.constFind(item);
  if (seen != states_.constEnd() && *seen == state) return;
  states_.insert(item, state);
  const VideoInfoObject& task = *item->itemInfo();
  eraseBlock();
  switch (state) {
    case kVideoDownStateAnalysing: out_ << "Analysing " << task.htmUrlStr() << Qt::endl; break;
    case kVideoDownStateDownloading:
      out_ << "Downloading " << nameOf(*item) << " to " << task.savePath() << Qt::endl;
      break;
    case kVideoDownStateWaiting: out_ << "Waiting " << nameOf(*item) << Qt::endl; break;
    case kVideoDownStateFinished:
      out_ << "Finished " << nameOf(*item) << ": " << task.savePath() << Qt::endl;
      finishedFiles_.append(task.savePath());
      break;
    case kVideoDownStateFailed:
      err_ << "Failed " << nameOf(*item) << ": "
           << (task.downURLStr().isNull() ? QStringLiteral("no video to download on the page") : item->failureReason())
           << Qt::endl;
      break;
    default: break;
  }
  // A download that has ended leaves the block at once.
  if (state != kVideoDownStateDownloading) {
    block_.removeIf([item](const std::pair<const DrogItemView*, QString>& line) { return line.first == item; });
  }
  drawBlock();
}

QString DownloadRunReport::progressLine(const DrogItemView& item) const {
  return QStringLiteral("  %1  %2%  %3  %4")
      .arg(nameOf(item))
      .arg(percentOf(item), 3)
      .arg(item.downloadSpeed(), item.downloadSize());
}

void DownloadRunReport::showProgress() {
  QList<std::pair<const DrogItemView*, QString>> lines;
  for (const DrogItemView* item : controller_.arrCurDownload()) {
    if (item->itemInfo()->videoDownState() != kVideoDownStateDownloading) continue;
    const QString line = progressLine(*item);
    if (onTerminal_) {
      // An item runs twice in the list when it was started again while running.
      if (!lines.contains(std::pair(item, line))) lines.append({item, line});
    } else if (const int tenth = percentOf(*item) / 10; tenth > tenths_.value(item, -1)) {
      tenths_.insert(item, tenth);
      err_ << line << Qt::endl;
    }
  }
  if (!onTerminal_) return;
  eraseBlock();
  block_ = lines;
  drawBlock();
}

void DownloadRunReport::finish() {
  eraseBlock();
  block_.clear();
}

void DownloadRunReport::eraseBlock() {
  if (drawnLines_ == 0) return;
  // Up to the block's first line, then everything below is cleared.
  err_ << "\x1b[" << drawnLines_ << "A\r\x1b[J" << Qt::flush;
  drawnLines_ = 0;
}

void DownloadRunReport::drawBlock() {
  for (const auto& [item, line] : block_) err_ << line << '\n';
  err_ << Qt::flush;
  drawnLines_ = static_cast<int>(block_.size());
}
