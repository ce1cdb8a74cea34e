#include "EffectFormAction.h"

#include <algorithm>
#include <cmath>

namespace {

QString labelOf(EffectFormAction::SliderId id, int32_t value) {
  using Id = EffectFormAction::SliderId;
  switch (id) {
    case Id::kFadeIn:
    case Id::kVideoFadeIn: return QString::asprintf("Fade In: %d s", value);
    case Id::kFadeOut:
    case Id::kVideoFadeOut: return QString::asprintf("Fade Out: %d s", value);
    case Id::kVolume: return QString::asprintf("Volume: %d%%", value);
    case Id::kDepth: return QString::number(value);
    default: return {};
  }
}

int32_t truncated(double value) { return static_cast<int32_t>(std::trunc(value)); }

template <class Choices>
int32_t valueAt(const Choices& choices, int position) {
  return position >= 0 && position < static_cast<int>(choices.size()) ? choices[position].value : 0;
}

}  // namespace

const SettingRange& EffectFormAction::rangeOf(SliderId id) {
  switch (id) {
    case kBrightness: return EffectSettingInfo::kBrightnessRange;
    case kContrast: return EffectSettingInfo::kContrastRange;
    case kSaturation: return EffectSettingInfo::kSaturationRange;
    case kVolume: return EffectSettingInfo::kVolumeRange;
    case kDepth: return EffectSettingInfo::kDepthRange;
    default: return EffectSettingInfo::kFadeRange;
  }
}

void EffectFormAction::setSliderValue(SliderId id, double value) {
  const SettingRange& range = rangeOf(id);
  Slider& slider = sliders_[id];
  slider.value = std::clamp(value, static_cast<double>(range.minimum), static_cast<double>(range.maximum));
  slider.label = labelOf(id, truncated(slider.value));
}

void EffectFormAction::updateMediaData() {
  if (nodeInfo_ == nullptr) return;
  EffectSettingInfo& effect = nodeInfo_->effectSettingInfo();
  effect.setEffectModel(valueAt(EffectSettingInfo::kEffectChoices, effectIndex_));
  effect.setModelOf3D(valueAt(EffectSettingInfo::kModelOf3DChoices, model3DIndex_));
  effect.setDepth(truncated(sliders_[kDepth].value));
  effect.setContrast(truncated(sliders_[kContrast].value));
  effect.setSaturation(truncated(sliders_[kSaturation].value));
  effect.setBrightness(truncated(sliders_[kBrightness].value));
  effect.setFadeIn(truncated(sliders_[kFadeIn].value));
  effect.setFadeOut(truncated(sliders_[kFadeOut].value));
  effect.setVideoFadeIn(truncated(sliders_[kVideoFadeIn].value));
  effect.setVideoFadeOut(truncated(sliders_[kVideoFadeOut].value));
  effect.setVolume(truncated(sliders_[kVolume].value));
  refreshEffectPlayer();
}

void EffectFormAction::refreshEffectWindow() {
  if (nodeInfo_ == nullptr) return;
  const EffectSettingInfo& effect = nodeInfo_->effectSettingInfo();
  setSliderValue(kBrightness, effect.brightness());
  setSliderValue(kContrast, effect.contrast());
  setSliderValue(kSaturation, effect.saturation());
  effectIndex_ = std::max(0, indexOfValue(EffectSettingInfo::kEffectChoices, effect.effectModel()));
}

void EffectFormAction::refreshAudioEffect() {
  if (nodeInfo_ == nullptr) return;
  const EffectSettingInfo& effect = nodeInfo_->effectSettingInfo();
  setSliderValue(kFadeIn, effect.fadeIn());
  setSliderValue(kFadeOut, effect.fadeOut());
  setSliderValue(kVolume, effect.volume());
}

void EffectFormAction::refreshTransEffect() {
  if (nodeInfo_ == nullptr) return;
  const EffectSettingInfo& effect = nodeInfo_->effectSettingInfo();
  setSliderValue(kVideoFadeIn, effect.videoFadeIn());
  setSliderValue(kVideoFadeOut, effect.videoFadeOut());
}

void EffectFormAction::refresh3DEffect() {
  if (nodeInfo_ == nullptr) return;
  const EffectSettingInfo& effect = nodeInfo_->effectSettingInfo();
  model3DIndex_ = std::max(0, indexOfValue(EffectSettingInfo::kModelOf3DChoices, effect.modelOf3D()));
  showDepth(effect.modelOf3D() != 0, effect.depth());
}

void EffectFormAction::showDepth(bool enabled, double value) {
  Slider& depth = sliders_[kDepth];
  depth.enabled = enabled;
  if (enabled) {
    setSliderValue(kDepth, value);
  } else {
    depth.value = kDepthOff;
    depth.label.clear();
  }
}

void EffectFormAction::setSlider(SliderId id, double value) {
  if (id == kDepth && !sliders_[kDepth].enabled) return;
  setSliderValue(id, value);
  updateMediaData();
}

void EffectFormAction::selectEffect(int position) {
  if (position < 0 || position >= static_cast<int>(EffectSettingInfo::kEffectChoices.size())) return;
  effectIndex_ = position;
  updateMediaData();
}

void EffectFormAction::select3DModel(int position) {
  if (position < 0 || position >= static_cast<int>(EffectSettingInfo::kModelOf3DChoices.size())) return;
  model3DIndex_ = position;
  const bool on = EffectSettingInfo::kModelOf3DChoices[position].value != 0;
  // Turned off, the depth goes back to its rest value before it is stored.
  if (!on) showDepth(false, kDepthOff);
  updateMediaData();
  if (on && nodeInfo_ != nullptr) showDepth(true, nodeInfo_->effectSettingInfo().depth());
}

void EffectFormAction::effectReset() {
  setSliderValue(kBrightness, 0);
  setSliderValue(kContrast, 0);
  setSliderValue(kSaturation, 0);
  effectIndex_ = 0;
  if (nodeInfo_ != nullptr) {
    EffectSettingInfo& effect = nodeInfo_->effectSettingInfo();
    effect.setRotateAngle(0);
    effect.setRotateFlipX(0);
    effect.setRotateFlipY(0);
    effect.setContrast(0);
    effect.setSaturation(0);
    effect.setBrightness(0);
    effect.setEffectModel(0);
  }
  updateMediaData();
}

void EffectFormAction::audioEffectReset() {
  setSliderValue(kFadeIn, 0);
  setSliderValue(kFadeOut, 0);
  setSliderValue(kVolume, EffectSettingInfo::kVolumeRange.defaultValue);
  updateMediaData();
}

void EffectFormAction::transEffectReset() {
  setSliderValue(kVideoFadeIn, 0);
  setSliderValue(kVideoFadeOut, 0);
  updateMediaData();
}

void EffectFormAction::reset3DEffect() {
  model3DIndex_ = 0;
  showDepth(false, kDepthOff);
  updateMediaData();
}

void EffectFormAction::rotateAngle(int32_t degrees) {
  if (nodeInfo_ == nullptr) return;
  nodeInfo_->effectSettingInfo().setRotateAngle(degrees);
  updateMediaData();
}

void EffectFormAction::videoFlipX() {
  if (nodeInfo_ == nullptr) return;
  EffectSettingInfo& effect = nodeInfo_->effectSettingInfo();
  effect.setRotateFlipX(effect.rotateFlipX() == 0 ? 1 : 0);
  updateMediaData();
}

void EffectFormAction::videoFlipY() {
  if (nodeInfo_ == nullptr) return;
  EffectSettingInfo& effect = nodeInfo_->effectSettingInfo();
  effect.setRotateFlipY(effect.rotateFlipY() == 0 ? 1 : 0);
  updateMediaData();
}

void EffectFormAction::refreshEffectPlayer() {
  if (player_ != nullptr && nodeInfo_ != nullptr) player_->updateMediaData(nodeInfo_);
}

void EffectFormAction::refreshPlayerCropRect() {
  if (player_ != nullptr && nodeInfo_ != nullptr) player_->refreshPlayerCropRect(nodeInfo_);
}

void EffectFormAction::cropInfo() {
  if (player_ != nullptr && nodeInfo_ != nullptr) player_->cropInfo(nodeInfo_);
}

void EffectFormAction::readWatermarkInfo() {
  if (player_ != nullptr && nodeInfo_ != nullptr) player_->watermarkInfo(nodeInfo_);
}
