#include "CropFormAction.h"

#include <algorithm>

#include "ValueObject/IntValue.h"

void CropFormAction::initCropWindow() {
  if (nodeInfo_ == nullptr) return;
  frameHeight_ = nodeInfo_->mediaFileInfo().frameHeight();
  frameWidth_ = nodeInfo_->mediaFileInfo().frameWidth();
  initStepperAndText();
  zoomIndex_ = indexOfValue(CropSettingInfo::kZoomChoices, nodeInfo_->cropSettingInfo().zoom());
}

void CropFormAction::initStepperAndText() {
  if (nodeInfo_ == nullptr) return;
  const CropSettingInfo& crop = nodeInfo_->cropSettingInfo();
  setMargins(crop.y(), frameHeight_ - crop.h() - crop.y(), crop.x(), frameWidth_ - crop.w() - crop.x());
}

void CropFormAction::setMargins(int32_t top, int32_t bottom, int32_t left, int32_t right) {
  texts_[kTop] = QString::number(top);
  texts_[kBottom] = QString::number(bottom);
  texts_[kLeft] = QString::number(left);
  texts_[kRight] = QString::number(right);
  setStepper();
}

void CropFormAction::setStepper() {
  std::array<int32_t, kMarginCount> typed{};
  for (int which = 0; which < kMarginCount; ++which) typed[which] = std::max(0, intValue(texts_[which]));
  // Each margin may grow until the picture between it and the opposite margin is kLeastPicture wide.
  const std::array<int32_t, kMarginCount> maxima = {
      frameHeight_ - typed[kBottom] - kLeastPicture,
      frameHeight_ - typed[kTop] - kLeastPicture,
      frameWidth_ - typed[kRight] - kLeastPicture,
      frameWidth_ - typed[kLeft] - kLeastPicture,
  };
  for (int which = 0; which < kMarginCount; ++which) {
    Stepper& stepper = steppers_[which];
    stepper.minimum = 0;
    stepper.maximum = std::max(0, maxima[which]);
    stepper.value = std::clamp(typed[which], stepper.minimum, stepper.maximum);
  }
}

void CropFormAction::txtDidChange(Margin margin, const QString& text) {
  const int32_t value = intValue(text);
  const Stepper& limits = steppers_[margin];
  if (value > limits.maximum) {
    texts_[margin] = QString::number(limits.maximum);
  } else if (value >= limits.minimum) {
    texts_[margin] = QString::number(value);
  } else {
    texts_[margin] = text;
  }
  setStepper();
}

void CropFormAction::stepperDidChange(Margin margin, int32_t value) {
  const Stepper& limits = steppers_[margin];
  texts_[margin] = QString::number(std::clamp(value, limits.minimum, limits.maximum));
  setStepper();
}

void CropFormAction::updateMediaData() {
  if (nodeInfo_ == nullptr) return;
  CropSettingInfo& crop = nodeInfo_->cropSettingInfo();
  crop.setRect(margin(kLeft), margin(kTop), frameWidth_ - margin(kRight) - margin(kLeft),
               frameHeight_ - margin(kBottom) - margin(kTop));
  if (zoomIndex_ >= 0 && zoomIndex_ < static_cast<int>(CropSettingInfo::kZoomChoices.size())) {
    crop.setZoom(CropSettingInfo::kZoomChoices[zoomIndex_].value);
  }
}

void CropFormAction::cropReset() {
  if (nodeInfo_ == nullptr) return;
  nodeInfo_->cropSettingInfo().setRect(0, 0, frameWidth_, frameHeight_);
  setMargins(0, 0, 0, 0);
  zoomIndex_ = 0;
  updateMediaData();
}
