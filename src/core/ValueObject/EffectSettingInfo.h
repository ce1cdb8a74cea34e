// The picture levels, rotation, mirroring, special and 3D effects, volume and
// fades of one list node. Times are whole seconds, the volume is a percentage.
#pragma once

#include <array>
#include <cstdint>

#include "ValueObject/SettingRange.h"
#include "ValueObject/ValueChoice.h"

class EffectSettingInfo {
 public:
  // The special effects of the effect editor in display order.
  static constexpr std::array<ValueChoice, 4> kEffectChoices{{
      {"No Effect", 0},
      {"Gray", 1036},
      {"Emboss", 1034},
      {"Old film", 1035},
  }};
  // The 3D modes of the effect editor in display order.
  static constexpr std::array<ValueChoice, 4> kModelOf3DChoices{{
      {"Turn off", 0},
      {"Red/Blue", 1071},
      {"Red/Green", 1072},
      {"Yellow/Blue", 1073},
  }};

  // What the editors allow, and the values of a fresh object.
  static constexpr SettingRange kBrightnessRange{-255, 255, 0};
  static constexpr SettingRange kContrastRange{-200, 200, 0};
  static constexpr SettingRange kSaturationRange{-200, 200, 0};
  // Seconds, for the sound's and the picture's fades alike.
  static constexpr SettingRange kFadeRange{0, 10, 0};
  // Percent; 100 leaves the sound as it is.
  static constexpr SettingRange kVolumeRange{0, 400, 100};
  static constexpr SettingRange kDepthRange{-100, 100, 5};

  int32_t brightness() const { return brightness_; }
  void setBrightness(int32_t level) { brightness_ = level; }
  int32_t contrast() const { return contrast_; }
  void setContrast(int32_t level) { contrast_ = level; }
  int32_t saturation() const { return saturation_; }
  void setSaturation(int32_t level) { saturation_ = level; }
  // Degrees: 0, 90, 180 or 270.
  int32_t rotateAngle() const { return rotateAngle_; }
  void setRotateAngle(int32_t degrees) { rotateAngle_ = degrees; }
  // One of the values of kEffectChoices.
  int32_t effectModel() const { return effectModel_; }
  void setEffectModel(int32_t effect) { effectModel_ = effect; }
  int32_t rotateFlipX() const { return rotateFlipX_; }
  void setRotateFlipX(int32_t flip) { rotateFlipX_ = flip; }
  int32_t rotateFlipY() const { return rotateFlipY_; }
  void setRotateFlipY(int32_t flip) { rotateFlipY_ = flip; }
  int32_t fadeIn() const { return fadeIn_; }
  void setFadeIn(int32_t seconds) { fadeIn_ = seconds; }
  int32_t fadeOut() const { return fadeOut_; }
  void setFadeOut(int32_t seconds) { fadeOut_ = seconds; }
  int32_t volume() const { return volume_; }
  void setVolume(int32_t percent) { volume_ = percent; }
  // One of the values of kModelOf3DChoices.
  int32_t modelOf3D() const { return modelOf3D_; }
  void setModelOf3D(int32_t model) { modelOf3D_ = model; }
  int32_t depth() const { return depth_; }
  void setDepth(int32_t depth) { depth_ = depth; }
  int32_t videoFadeIn() const { return videoFadeIn_; }
  void setVideoFadeIn(int32_t seconds) { videoFadeIn_ = seconds; }
  int32_t videoFadeOut() const { return videoFadeOut_; }
  void setVideoFadeOut(int32_t seconds) { videoFadeOut_ = seconds; }

  bool operator==(const EffectSettingInfo&) const = default;

 private:
  int32_t brightness_ = kBrightnessRange.defaultValue;
  int32_t contrast_ = kContrastRange.defaultValue;
  int32_t saturation_ = kSaturationRange.defaultValue;
  int32_t rotateAngle_ = 0;
  int32_t effectModel_ = 0;
  int32_t rotateFlipX_ = 0;
  int32_t rotateFlipY_ = 0;
  int32_t fadeIn_ = kFadeRange.defaultValue;
  int32_t fadeOut_ = kFadeRange.defaultValue;
  int32_t volume_ = kVolumeRange.defaultValue;
  int32_t modelOf3D_ = 0;
  int32_t depth_ = kDepthRange.defaultValue;
  int32_t videoFadeIn_ = kFadeRange.defaultValue;
  int32_t videoFadeOut_ = kFadeRange.defaultValue;
};
