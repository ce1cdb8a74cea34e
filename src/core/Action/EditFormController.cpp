#include "EditFormController.h"

#include "CommonClass/NotificationCenter.h"
#include "MediaClass/PlayVideo.h"

namespace {
constexpr int32_t kQuarterTurn = 90;
constexpr int32_t kFullTurn = 360;
}  // namespace

EditFormController::EditFormController(QObject* parent) : QObject(parent) {
  NotificationCenter& center = NotificationCenter::defaultCenter();
  center.addObserver(this, QLatin1String(PlayVideo::kReadCropInfo), [this](const Notification&) { readCropInfo(); });
  center.addObserver(this, QLatin1String(PlayVideo::kReadWatermarkInfo),
                     [this](const Notification&) { readWatermarkInfo(); });
}

EditFormController::~EditFormController() {
  NotificationCenter::defaultCenter().removeObserver(this);
  player_.stopPlay();
}

void EditFormController::showWindowModal(const NodeInfo::List& items, const NodeInfo::Ptr& selected) {
  items_ = items;
  nodeInfo_.reset();
  shown_ = true;
  rotateCounter_ = 0;
  hasVideo_ = true;
  selectTab(openModel_ == 0 ? kTabCrop : kTab3D);
  itemViewClick(selected != nullptr ? selected : items.value(0));
}

void EditFormController::itemViewClick(const NodeInfo::Ptr& node) {
  if (node == nullptr) return;
  effectStop();
  nodeInfo_ = node;
  crop_.setNodeInfo(node);
  effects_.setNodeInfo(node);
  watermark_.setNodeInfo(node);
  crop_.initCropWindow();
  effects_.refreshEffectWindow();
  effects_.refreshAudioEffect();
  effects_.refreshTransEffect();
  effects_.refresh3DEffect();
  rotateCounter_ = node->effectSettingInfo().rotateAngle();
  effects_.updateMediaData();
  effectPlay();
  watermark_.initWatermarkDisplay();
  hasVideo_ = node->mediaFileInfo().videoStream() != 0;
  if (!hasVideo_) selectTab(kTabAudio);
  emit formChanged();
}

void EditFormController::selectTab(Tab tab) {
  if (!isTabEnabled(tab) || tab == selectedTab_) return;
  selectedTab_ = tab;
  emit tabChanged(tab);
}

void EditFormController::setSlider(EffectFormAction::SliderId id, double value) {
  effects_.setSlider(id, value);
  emit formChanged();
}

void EditFormController::selectEffect(int position) {
  effects_.selectEffect(position);
  emit formChanged();
}

void EditFormController::select3DModel(int position) {
  effects_.select3DModel(position);
  emit formChanged();
}

void EditFormController::selectZoom(int position) {
  if (position < 0 || position >= static_cast<int>(CropSettingInfo::kZoomChoices.size())) return;
  crop_.setZoomIndex(position);
  crop_.updateMediaData();
  effects_.updateMediaData();
  emit formChanged();
}

void EditFormController::setHoriflipFilm() {
  effects_.videoFlipX();
  emit formChanged();
}

void EditFormController::setVertfilpFilm() {
  effects_.videoFlipY();
  emit formChanged();
}

void EditFormController::rotate1ButtonClick() {
  rotateCounter_ += kQuarterTurn;
  if (rotateCounter_ == kFullTurn) rotateCounter_ = 0;
  rotateTo(rotateCounter_ % kFullTurn);
}

void EditFormController::rotate2ButtonClick() {
  if (rotateCounter_ == 0) rotateCounter_ = kFullTurn;
  rotateCounter_ -= kQuarterTurn;
  rotateTo(rotateCounter_ % kFullTurn);
}

void EditFormController::rotateTo(int32_t degrees) {
  effects_.rotateAngle(degrees);
  emit formChanged();
}

void EditFormController::cropTextDidChange(CropFormAction::Margin margin, const QString& text) {
  crop_.txtDidChange(margin, text);
  emit formChanged();
}

void EditFormController::cropTextDidEndEditing(CropFormAction::Margin margin, const QString& text) {
  crop_.txtDidChange(margin, text);
  storeCrop();
}

void EditFormController::cropStepperClick(CropFormAction::Margin margin, int32_t value) {
  crop_.stepperDidChange(margin, value);
  storeCrop();
}

void EditFormController::storeCrop() {
  crop_.updateMediaData();
  effects_.updateMediaData();
  effects_.refreshPlayerCropRect();
  emit formChanged();
}

void EditFormController::effectReset() {
  effects_.effectReset();
  emit formChanged();
}

void EditFormController::audioReset() {
  effects_.audioEffectReset();
  emit formChanged();
}

void EditFormController::transReset() {
  effects_.transEffectReset();
  emit formChanged();
}

void EditFormController::reset3DEffect() {
  effects_.reset3DEffect();
  emit formChanged();
}

void EditFormController::cropReset() {
  crop_.cropReset();
  effects_.refreshEffectPlayer();
  effects_.refreshPlayerCropRect();
  emit formChanged();
}

void EditFormController::editReset() {
  crop_.cropReset();
  effects_.refreshPlayerCropRect();
  effects_.effectReset();
  emit formChanged();
}

void EditFormController::changeWatermarkType(int row) {
  watermark_.changeWatermarkType(row);
  emit formChanged();
}

void EditFormController::changeWatermarkTrans(double percent) {
  watermark_.changeWatermarkTrans(percent);
  emit formChanged();
}

void EditFormController::selectWatermarkImage(const QString& path) {
  watermark_.selectWatermarkImage(path);
  emit formChanged();
}

void EditFormController::controlTextDidChange(const QString& text) {
  watermark_.controlTextDidChange(text);
  emit formChanged();
}

void EditFormController::changeFont(const QString& name, double pointSize, bool bold, bool italic, int32_t traits) {
  watermark_.changeFont(name, pointSize, bold, italic, traits);
  emit formChanged();
}

void EditFormController::changeAttributes(bool underline, bool strikethrough, const std::optional<RGBAColor>& color) {
  watermark_.changeAttributes(underline, strikethrough, color);
  emit formChanged();
}

void EditFormController::applyWatermarkToAll() { watermark_.applyWatermarkToAll(items_); }

void EditFormController::readCropInfo() {
  if (!shown_ || !player_.isPlaying()) return;
  effects_.cropInfo();
  effects_.refreshPlayerCropRect();
  crop_.initStepperAndText();
  emit formChanged();
}

void EditFormController::readWatermarkInfo() {
  if (!shown_ || !player_.isPlaying()) return;
  effects_.readWatermarkInfo();
  emit formChanged();
}

void EditFormController::effectOk() {
  effects_.effectOk();
  crop_.cropOk();
  closeWindow();
}

void EditFormController::effectCancel() { closeWindow(); }

void EditFormController::effectPlay() {
  if (nodeInfo_ == nullptr) return;
  player_.playEffectVideo(nodeInfo_);
  emit playingChanged(player_.isPlaying());
}

void EditFormController::effectPause() { player_.pauseVideo(); }

void EditFormController::effectStop() {
  player_.stopPlay();
  emit playingChanged(false);
}

bool EditFormController::windowShouldClose() {
  closeWindow();
  return true;
}

void EditFormController::closeWindow() {
  if (!shown_) return;
  effectStop();
  shown_ = false;
  const NodeInfo::Ptr node = nodeInfo_;
  items_.clear();
  emit windowClosed();
  if (delegate_ != nullptr) delegate_->editWindowClose(node);
}
