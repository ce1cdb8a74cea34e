#include "ConvertViewList.h"

#include <QMutexLocker>
#include <QThread>

#include "Action/NodeInfoAction.h"
#include "CommonClass/DistributedNotificationCenter.h"
#include "CommonClass/KMVLog.h"
#include "MediaClass/AddMetaDataAction.h"

ConvertViewList::ConvertViewList() : convertMedia_(std::make_unique<ConvertMedia>()) {
  DistributedNotificationCenter::defaultCenter().addObserver(this, QLatin1String(ConvertMedia::kConvertEndNotification),
                                                             [this](const Notification&) { convertEnd(); });
}

ConvertViewList::~ConvertViewList() {
  DistributedNotificationCenter::defaultCenter().removeObserver(this);
  stopTimer();
  if (isConvert_) convertMedia_->stopEnCode();
}

QList<ConvertView*> ConvertViewList::queuedRows() const {
  QMutexLocker locker(&condition_);
  QList<ConvertView*> rows;
  for (const QPointer<ConvertView>& row : viewData_) {
    if (row != nullptr) rows.append(row);
  }
  return rows;
}

void ConvertViewList::encode(const QList<ConvertView*>& rows) {
  {
    QMutexLocker locker(&condition_);
    viewData_.clear();
    for (ConvertView* row : rows) {
      if (row == nullptr) continue;
      row->setConvertDelegate(this);
      row->showQueued();
      row->setOutcome(ConvertView::Outcome::kWaiting);
      row->setTimes(0, -1);
      viewData_.append(row);
    }
    isCancelAll_ = false;
    nodeCount_ = static_cast<int>(viewData_.size());
  }
  isConvert_ = true;
  if (nodeCount_ == 0) {
    endRun();
    return;
  }
  convert();
}

int32_t ConvertViewList::convert() {
  ConvertView* row = nullptr;
  {
    QMutexLocker locker(&condition_);
    isCancelConvert_ = false;
    while (!viewData_.isEmpty() && viewData_.front() == nullptr) viewData_.removeFirst();
    if (viewData_.isEmpty()) return -1;
    row = viewData_.front();
    currentView_ = row;
    row->setConvertDelegate(this);

    convertMedia_->stopEnCode();
    convertMedia_ = std::make_unique<ConvertMedia>();
    convertMedia_->setDelegate(this);

    const NodeInfo::Ptr& node = row->nodeInfo();
    if (node->getChildNodeCount() > 0) NodeInfoAction::updateNodeInfo(node);
    timeCount_ = node->mediaFileInfo().dTotalTime();
    row->resetProgress(timeCount_);
    row->setRateText(timeCount_ > 0 ? QStringLiteral("1%") : QString());
    row->showQueued();
    startTimer();
  }

  const int32_t result = convertMedia_->encode(row->nodeInfo());
  // Gives the converter time to change state before it is asked anything.
  QThread::usleep(500);
  if (result != 0) {
    KMVLog::Log(QStringLiteral("convert reConvert....."));
    const QString reason = convertMedia_->refusal().isEmpty()
                               ? QStringLiteral("The converter could not start (code %1).").arg(result)
                               : convertMedia_->refusal();
    KMVLog::Log(reason);
    row->showStopped();
    row->setOutcome(ConvertView::Outcome::kFailed, reason);
    removeRow(row);
    emit rowEnded(row);
    reConvert();
    return result;
  }
  row->setOutputPath(convertMedia_->videoPath());
  row->setOutcome(ConvertView::Outcome::kConverting);
  row->setTimes(0, -1);
  rowClock_.start();
  row->setIsConvert(true);
  KMVLog::Log(QStringLiteral("Converting ..."));
  emit rowStarted(row);
  return result;
}

void ConvertViewList::reConvert() {
  if (nodeCount_ > 0) {
    convert();
    return;
  }
  stopEncode();
  if (currentView_ != nullptr) currentView_->fillProgress();
  endRun();
}

void ConvertViewList::reConvert(ConvertView* row) {
  if (row == nullptr) return;
  QMutexLocker locker(&condition_);
  if (viewData_.contains(row)) return;
  row->setConvertDelegate(this);
  row->showQueued();
  row->setOutcome(ConvertView::Outcome::kWaiting);
  viewData_.append(row);
  nodeCount_ = static_cast<int>(viewData_.size());
}

void ConvertViewList::cancelConvert(ConvertView* row) {
  if (row == nullptr) return;
  if (row != currentView_ || !row->isConvert()) {
    removeRow(row);
    row->setOutcome(ConvertView::Outcome::kStopped, QStringLiteral("Stopped before it started."));
    return;
  }
  convertMedia_->deleteVideoName();
  isCancelConvert_ = true;
  stopEncode();
  removeRow(row);
  // Gives the converter time to begin the abort, which ends in "CONVERTEND".
  QThread::usleep(100);
}

void ConvertViewList::cancelConvertAll() {
  convertMedia_->deleteVideoName();
  isCancelAll_ = true;
  stopEncode();
  QMutexLocker locker(&condition_);
  for (const QPointer<ConvertView>& row : viewData_) {
    if (row != nullptr && row != currentView_) {
      row->setOutcome(ConvertView::Outcome::kCancelled, QStringLiteral("Cancelled before it started."));
    }
  }
  viewData_.clear();
  nodeCount_ = 0;
}

void ConvertViewList::stopEncode() {
  if (currentView_ == nullptr || !currentView_->isConvert()) return;
  stopTimer();
  convertMedia_->stopEnCode();
  currentView_->setIsConvert(false);
}

void ConvertViewList::getEncodeCurrentTime() {
  if (convertMedia_ == nullptr || currentView_ == nullptr) return;
  const double seconds = convertMedia_->getCurrentTime() / 1000000.0;
  const double elapsed = rowClock_.isValid() ? rowClock_.elapsed() / 1000.0 : 0;
  // The estimate waits for a few percent of the work, when the pace has settled.
  const double fraction = timeCount_ > 0 ? seconds / timeCount_ : 0;
  currentView_->setTimes(elapsed, fraction >= 0.03 ? elapsed * (1 - fraction) / fraction : -1);
  if (seconds <= 0) return;
  currentView_->setProgressValue(seconds);
  if (timeCount_ > 0) currentView_->setRateText(QString::asprintf("%0.0f%%", seconds / timeCount_ * 100));
}

void ConvertViewList::convertEnd() {
  // The distributed centre also delivers the ends of other programs' conversions.
  if (currentView_ == nullptr || !convertMedia_->hasEnded()) return;
  KMVLog::Log(QStringLiteral("convertEnd ....1"));
  ConvertView* row = currentView_;
  // A stop that reached the converter after it had written the whole output
  // came too late: the row is finished, so that putting it back cannot write
  // its output a second time.
  const bool stopTooLate = (isCancelConvert_ || isCancelAll_) && hasWrittenWholeOutput();
  const ConvertMedia::Ending ending = convertMedia_->ending();
  setOutcome(*row, ending, stopTooLate);
  if (row->isConverted()) {
    const AddMetaDataResult tags = AddMetaDataAction::addMetaData(*row->nodeInfo(), convertMedia_->videoPath());
    for (const AddMetaDataResult::Failure& failure : tags.failures) {
      KMVLog::Log(QStringLiteral("Tags not written into %1: %2")
                      .arg(failure.path, QString::fromUtf8(GetMetaDataErrorText(failure.code))));
    }
  }
  row->setIsConvert(false);
  if (isCancelConvert_ && !stopTooLate) {
    KMVLog::Log(QStringLiteral("CancelConvert"));
  } else {
    row->finishConvert();
    row->fillProgress();
  }
  KMVLog::Log(QStringLiteral("convertEnd ....2"));
  removeRow(row);
  currentView_ = nullptr;
  emit rowEnded(row);

  if (nodeCount_ > 0) {
    KMVLog::Log(QStringLiteral("convertEnd ....3"));
    convert();
    return;
  }
  KMVLog::Log(QStringLiteral("convertEnd ....4"));
  stopTimer();
  KMVLog::Log(QStringLiteral("convertEnd ....5"));
  endRun();
}

void ConvertViewList::setOutcome(ConvertView& row, const ConvertMedia::Ending& ending, bool stopTooLate) const {
  using Outcome = ConvertView::Outcome;
  const double elapsed = rowClock_.isValid() ? rowClock_.elapsed() / 1000.0 : row.elapsedSeconds();
  row.setTimes(elapsed, -1);
  if (stopTooLate || ending.outcome == VC_OUTCOME_FINISHED) {
    row.setOutcome(Outcome::kFinished, QString(), ending.files);
  } else if (ending.outcome == VC_OUTCOME_WARNING) {
    row.setOutcome(Outcome::kWarning, ending.reason, ending.files);
  } else if (ending.outcome == VC_OUTCOME_ABORTED) {
    row.setOutcome(isCancelConvert_ ? Outcome::kStopped : Outcome::kCancelled, ending.reason, ending.files);
  } else if (ending.outcome == VC_OUTCOME_FAILED) {
    row.setOutcome(Outcome::kFailed, ending.reason);
  } else {
    row.setOutcome(Outcome::kFailed, QStringLiteral("The converter did not tell how the conversion ended."));
  }
}

bool ConvertViewList::hasWrittenWholeOutput() const {
  const double length = convertMedia_->getLength();
  return length > 0 && convertMedia_->getCurrentTime() >= length;
}

void ConvertViewList::showMessage(const QString& message) {
  if (delegate_ != nullptr) delegate_->showMessage(message);
}

void ConvertViewList::removeRow(ConvertView* row) {
  QMutexLocker locker(&condition_);
  viewData_.removeAll(row);
  nodeCount_ = static_cast<int>(viewData_.size());
}

void ConvertViewList::startTimer() {
  if (timer_ != nullptr) return;
  timer_ = new QTimer(this);
  timer_->setInterval(kProgressIntervalMs);
  connect(timer_, &QTimer::timeout, this, &ConvertViewList::getEncodeCurrentTime);
  timer_->start();
}

void ConvertViewList::stopTimer() {
  delete timer_;
  timer_ = nullptr;
}

void ConvertViewList::endRun() {
  stopTimer();
  currentView_ = nullptr;
  if (!isConvert_) return;
  isConvert_ = false;
  if (delegate_ != nullptr) delegate_->convertEnd();
}
