#include "SplitController.h"

#include "CommonClass/CommonClass.h"
#include "ValueObject/IntValue.h"
#include "ValueObject/SplitLimits.h"

void SplitController::showWindowModal(const NodeInfo::List& items, const NodeInfo::Ptr& selected) {
  items_ = items;
  nodeInfo_.reset();
  shown_ = true;
  itemViewClick(selected != nullptr ? selected : items.value(0));
}

void SplitController::itemViewClick(const NodeInfo::Ptr& node) {
  saveData();
  nodeInfo_ = node;
  minutesText_ = QStringLiteral("1");
  clipsText_ = QStringLiteral("1");
  if (node == nullptr) {
    lengthText_ = CommonClass::timeStrBySecond(0);
    emit formChanged();
    return;
  }
  lengthText_ = CommonClass::timeStrBySecond(node->mediaFileInfo().iTotalTime());
  if (node->VideoMinutes() >= 1 && node->splitRow() == kRowMinutes) {
    minutesText_ = QString::number(node->VideoMinutes());
    clipsText_.clear();
    selectedRow_ = kRowMinutes;
  } else {
    clipsText_ = QString::number(std::max(node->videoClips(), 1));
    minutesText_.clear();
    selectedRow_ = kRowClips;
  }
  emit formChanged();
}

void SplitController::radioSelectClick(int row) {
  selectedRow_ = row == kRowMinutes ? kRowMinutes : kRowClips;
  emit formChanged();
}

void SplitController::resetButtonClick() {
  minutesText_.clear();
  clipsText_ = QStringLiteral("1");
  radioSelectClick(kRowClips);
}

bool SplitController::saveData() {
  if (nodeInfo_ == nullptr) return false;
  nodeInfo_->setSplitRow(selectedRow_);
  const bool saved = selectedRow_ == kRowClips ? saveClips() : saveMinutes();
  emit formChanged();
  return saved;
}

bool SplitController::saveClips() {
  if (nodeInfo_ == nullptr) return false;
  if (clipsText_.isEmpty()) return true;
  const int32_t clips = intValue(clipsText_);
  const int32_t seconds = nodeInfo_->mediaFileInfo().iTotalTime();
  if (clips > 0 && clips <= seconds) {
    nodeInfo_->setVideoClips(clips);
    minutesText_.clear();
    return true;
  }
  if (clips > 0) {
    CommonClass::showMessage(QLatin1String(kClipsOverLength));
    clipsText_ = QStringLiteral("1");
    minutesText_ = QStringLiteral("0");
    nodeInfo_->setVideoClips(0);
    return false;
  }
  nodeInfo_->setVideoClips(0);
  CommonClass::showMessage(QLatin1String(kClipsUnderOne));
  clipsText_ = QStringLiteral("1");
  return false;
}

bool SplitController::saveMinutes() {
  if (nodeInfo_ == nullptr) return false;
  if (minutesText_.isEmpty()) return true;
  const int32_t minutes = intValue(minutesText_);
  const int32_t startedMinutes = SplitLimits::startedMinutes(nodeInfo_->mediaFileInfo().iTotalTime());
  if (minutes > 0 && minutes <= startedMinutes) {
    nodeInfo_->setVideoMinutes(minutes);
    nodeInfo_->setVideoClips(startedMinutes / minutes);
    clipsText_.clear();
    return true;
  }
  if (minutes > 0) {
    nodeInfo_->setVideoMinutes(0);
    CommonClass::showMessage(QLatin1String(kMinutesOverLength));
    return false;
  }
  CommonClass::showMessage(QLatin1String(kMinutesUnderOne));
  return false;
}

void SplitController::doneButtonClick() {
  if (!saveData()) return;
  minutesText_.clear();
  clipsText_.clear();
  emit formChanged();
  closeWindow();
}

void SplitController::cancelButtonClick() { closeWindow(); }

bool SplitController::windowShouldClose() {
  closeWindow();
  return true;
}

void SplitController::closeWindow() {
  if (!shown_) return;
  shown_ = false;
  nodeInfo_.reset();
  items_.clear();
  emit windowClosed();
  if (delegate_ != nullptr) delegate_->splitWindowClose(this);
}
