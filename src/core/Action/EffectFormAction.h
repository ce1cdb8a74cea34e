// The effect, sound, fade and 3D controls of the editor and the node's
// EffectSettingInfo behind them. Controls are models here (slider values,
// choice positions, labels, enabled flags); storing reads them into the node
// and hands the node to the preview, which shows the change at once.
#pragma once

#include <QString>

#include <array>
#include <cstdint>

#include "Action/PlayVideoAction.h"
#include "ValueObject/NodeInfo.h"

class EffectFormAction {
 public:
  // A slider's value and its label ("" for sliders without one).
  struct Slider {
    double value = 0;
    QString label;
    bool enabled = true;
  };
  enum SliderId {
    kBrightness,
    kContrast,
    kSaturation,
    kFadeIn,
    kFadeOut,
    kVolume,
    kVideoFadeIn,
    kVideoFadeOut,
    kDepth,
  };
  static constexpr int kSliderCount = kDepth + 1;
  static constexpr double kDepthOff = 5.0;

  // The range of the setting a slider stands for.
  static const SettingRange& rangeOf(SliderId id);

  // The preview is not owned; nullptr for none.
  explicit EffectFormAction(PlayVideoAction* player = nullptr) : player_(player) {}

  void setNodeInfo(const NodeInfo::Ptr& node) { nodeInfo_ = node; }
  const NodeInfo::Ptr& nodeInfo() const { return nodeInfo_; }

  // Controls into the node, then the preview.
  void updateMediaData();
  // The node into the controls, tab by tab.
  void refreshEffectWindow();
  void refreshAudioEffect();
  void refreshTransEffect();
  void refresh3DEffect();

  // A slider moved: it is kept within the setting's range, its label follows, and everything is stored.
  void setSlider(SliderId id, double value);
  // A choice was made in the special-effect or the 3D list; stored.
  void selectEffect(int position);
  void select3DModel(int position);

  void effectReset();
  void audioEffectReset();
  void transEffectReset();
  void reset3DEffect();

  // Stores the angle (degrees), or toggles a mirror; each stores everything.
  void rotateAngle(int32_t degrees);
  void videoFlipX();
  void videoFlipY();
  void effectOk() { updateMediaData(); }

  // The preview: redraw with the node, show its crop rectangle, read a dragged rectangle back.
  void refreshEffectPlayer();
  void refreshPlayerCropRect();
  void cropInfo();
  void readWatermarkInfo();

  const Slider& slider(SliderId id) const { return sliders_[id]; }
  int effectIndex() const { return effectIndex_; }
  int model3DIndex() const { return model3DIndex_; }

 private:
  void setSliderValue(SliderId id, double value);
  void showDepth(bool enabled, double value);

  PlayVideoAction* player_;
  NodeInfo::Ptr nodeInfo_;
  std::array<Slider, kSliderCount> sliders_{};
  int effectIndex_ = 0;
  int model3DIndex_ = 0;
};
