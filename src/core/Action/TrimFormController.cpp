#include "TrimFormController.h"

#include <algorithm>

#include "Action/NodeInfoAction.h"
#include "MediaClass/MediaFileProbe.h"
#include "CommonClass/CommonClass.h"
#include "CommonClass/NotificationCenter.h"

TrimFormController::TrimFormController(UIInfoDB& db, QObject* parent) : QObject(parent), db_(db) {
  player_.setDelegate(this);
  seekTimer_.setSingleShot(true);
  seekTimer_.setInterval(kSeekDelay);
  connect(&seekTimer_, &QTimer::timeout, this, [this] { seek(newTime_); });
  NotificationCenter& center = NotificationCenter::defaultCenter();
  center.addObserver(this, QLatin1String(kStartTimeChange),
                     [this](const Notification& note) { startTimeChange(note.object.toDouble()); });
  center.addObserver(this, QLatin1String(kEndTimeChange),
                     [this](const Notification& note) { endTimeChange(note.object.toDouble()); });
}

TrimFormController::~TrimFormController() {
  NotificationCenter::defaultCenter().removeObserver(this);
  player_.stopPlay();
}

NodeInfo::Ptr TrimFormController::trimSourceOf(const NodeInfo::Ptr& item) {
  if (item == nullptr) return nullptr;
  const NodeInfo::Ptr source = item->trimParentNode();
  return source != nullptr ? source : item;
}

NodeInfo::List TrimFormController::getSuitableNode(UIInfoDB& db) {
  NodeInfo::List sources;
  for (const NodeInfo::Ptr& item : NodeInfoAction::getRootNode(db)->childNode()) {
    const NodeInfo::Ptr source = trimSourceOf(item);
    if (source->mediaFileInfo().videoStream() != 0 && !sources.contains(source)) sources.append(source);
  }
  return sources;
}

void TrimFormController::showWindowModal(const NodeInfo::List& items, const NodeInfo::Ptr& selected) {
  player_.stopPlay();
  items_ = items;
  nodeInfo_.reset();
  segments_.clear();
  shown_ = true;
  itemViewClick(selected != nullptr ? trimSourceOf(selected) : items.value(0));
}

void TrimFormController::itemViewClick(const NodeInfo::Ptr& node) {
  if (node == nullptr || node == nodeInfo_) return;
  stopButtonClick();
  addTrimNodeInfo();
  nodeInfo_ = node;
  keyframeTimes_ = keyframeSeconds(*node->decoderInfo());
  // A source whose segments were merged into it is opened with merge ticked, so that closing keeps them merged.
  merge_ = node->getChildNodeCount() > 0 && node->parentNode() == NodeInfoAction::getRootNode(db_);
  segments_.initTableView(node);
  selectedRow_ = -1;
  emit tableChanged();
  playButtonClick();
  tableViewSelectDidChange(segments_.count() - 1);
}

double TrimFormController::markerMaximum() const {
  return nodeInfo_ != nullptr ? nodeInfo_->mediaFileInfo().totalTime() : 0;
}

void TrimFormController::tableViewSelectDidChange(int row) {
  if (segments_.count() == 0 || row < 0 || row >= segments_.count()) return;
  selectedRow_ = row;
  const TrimSettingInfo& trim = segments_.at(row)->trimSettingInfo();
  setMarkers(trim.startTime(), trim.endTime() != 0 ? trim.endTime() : markerMaximum());
  seek(trim.startTime());
  emit selectionChanged(row);
}

void TrimFormController::setMarkers(double left, double right) {
  leftMarker_ = left;
  rightMarker_ = right;
  startStepper_ = left;
  endStepper_ = right;
  emit markersChanged();
  emit steppersChanged();
}

double TrimFormController::inMarkerAt(double seconds) const {
  return std::clamp(seconds, 0.0, std::max(0.0, rightMarker_ - kLeastSegment));
}

double TrimFormController::outMarkerAt(double seconds) const {
  return std::clamp(seconds, std::min(leftMarker_ + kLeastSegment, markerMaximum()), markerMaximum());
}

void TrimFormController::reloadTable() {
  segments_.updateDurations();
  emit tableChanged();
}

void TrimFormController::addSegment() {
  segments_.creatNewSegment(nodeInfo_);
  reloadTable();
  tableViewSelectDidChange(segments_.count() - 1);
}

void TrimFormController::deleteSegment() {
  const int row = selectedRow_;
  if (!segments_.deleteSegment(nodeInfo_, row)) return;
  reloadTable();
  selectedRow_ = -1;
  tableViewSelectDidChange(std::min(row, segments_.count() - 1));
}

void TrimFormController::startTimeChange(double seconds) {
  if (segments_.count() == 0) {
    seek(seconds);
    return;
  }
  const NodeInfo::Ptr segment = selectedSegment();
  if (segment == nullptr) return;
  leftMarker_ = seconds;
  startStepper_ = seconds;
  segment->trimSettingInfo().setStartTime(static_cast<int32_t>(seconds));
  scheduleSeek(seconds);
  reloadTable();
  emit steppersChanged();
}

void TrimFormController::endTimeChange(double seconds) {
  if (segments_.count() == 0) {
    if (seconds > 1) seek(seconds);
    return;
  }
  const NodeInfo::Ptr segment = selectedSegment();
  if (segment == nullptr) return;
  rightMarker_ = seconds;
  endStepper_ = seconds;
  segment->trimSettingInfo().setEndTime(static_cast<int32_t>(seconds));
  scheduleSeek(seconds);
  reloadTable();
  emit steppersChanged();
}

void TrimFormController::scheduleSeek(double seconds) {
  newTime_ = seconds;
  seekTimer_.start();
}

void TrimFormController::seek(double seconds) { player_.setCurrentTime(seconds); }

void TrimFormController::trimButtonGoLeft() {
  player_.syncSlider();
  leftMarker_ = inMarkerAt(player_.sliderValue());
  startStepper_ = leftMarker_;
  if (const NodeInfo::Ptr segment = selectedSegment()) {
    segment->trimSettingInfo().setStartTime(static_cast<int32_t>(leftMarker_));
    reloadTable();
  }
  emit markersChanged();
  emit steppersChanged();
}

void TrimFormController::trimButtonGoRight() {
  player_.syncSlider();
  rightMarker_ = outMarkerAt(player_.sliderValue());
  endStepper_ = rightMarker_;
  if (const NodeInfo::Ptr segment = selectedSegment()) {
    segment->trimSettingInfo().setEndTime(static_cast<int32_t>(rightMarker_));
    reloadTable();
  }
  emit markersChanged();
  emit steppersChanged();
}

QString TrimFormController::startStepperText() const { return CommonClass::formatTimeForDouble(startStepper_); }

QString TrimFormController::endStepperText() const { return CommonClass::formatTimeForDouble(endStepper_); }

void TrimFormController::setStartStepper(double seconds) {
  startStepper_ = std::clamp(seconds, 0.0, markerMaximum());
  emit steppersChanged();
}

void TrimFormController::setEndStepper(double seconds) {
  endStepper_ = std::clamp(seconds, 0.0, markerMaximum());
  emit steppersChanged();
}

void TrimFormController::stepStart(int direction) { setStartStepper(startStepper_ + direction * kStepperIncrement); }

void TrimFormController::stepEnd(int direction) { setEndStepper(endStepper_ + direction * kStepperIncrement); }

void TrimFormController::trimStartOKButtonClick() {
  leftMarker_ = inMarkerAt(startStepper_);
  startStepper_ = leftMarker_;
  seek(leftMarker_);
  if (const NodeInfo::Ptr segment = selectedSegment()) {
    segment->trimSettingInfo().setStartTime(static_cast<int32_t>(leftMarker_));
    reloadTable();
  }
  emit markersChanged();
  emit steppersChanged();
}

void TrimFormController::trimEndOKButtonClick() {
  rightMarker_ = outMarkerAt(endStepper_);
  endStepper_ = rightMarker_;
  seek(rightMarker_);
  if (const NodeInfo::Ptr segment = selectedSegment()) {
    segment->trimSettingInfo().setEndTime(static_cast<int32_t>(rightMarker_));
    reloadTable();
  }
  emit markersChanged();
  emit steppersChanged();
}

void TrimFormController::trimComeLeft() { seek(leftMarker_); }

void TrimFormController::playButtonClick() {
  if (nodeInfo_ == nullptr) return;
  player_.playOrigisVideo(nodeInfo_);
  emit playingChanged(player_.isPlaying());
}

void TrimFormController::pauseButtonClick() { player_.pauseVideo(); }

void TrimFormController::stopButtonClick() {
  seekTimer_.stop();
  player_.stopPlay();
  emit playingChanged(false);
}

void TrimFormController::playTrimingMovies() {
  if (!player_.isPlaying()) playButtonClick();
  trimComeLeft();
}

void TrimFormController::playVideoEnd() { player_.player().setCurrentTime(0); }

void TrimFormController::addTrimNodeInfo() {
  TrimCommit::addTrimNodeInfo(db_, delegate_, player_, nodeInfo_, segments_, merge_);
}

bool TrimFormController::windowShouldClose() {
  if (!shown_) return true;
  stopButtonClick();
  addTrimNodeInfo();
  shown_ = false;
  items_.clear();
  emit windowClosed();
  if (delegate_ != nullptr) delegate_->trimWindowClose(this);
  nodeInfo_.reset();
  segments_.clear();
  return true;
}
