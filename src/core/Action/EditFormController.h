// The editor window's logic: the item on screen among the strip's items, the
// tabs (crop, effect, sound, video fades, 3D, watermark), rotation and
// mirrors, the resets, and the preview that shows the source and the result
// side by side. Every change is written into the node at once; "Cancel"
// therefore only closes. The window draws this state and forwards input.
#pragma once

#include <QObject>

#include <cstdint>

#include "Action/CropFormAction.h"
#include "Action/EffectFormAction.h"
#include "Action/PlayVideoAction.h"
#include "Action/WatermarkEditing.h"
#include "ValueObject/NodeInfo.h"

// Told, with the node on screen, when the editor window closes.
class EditFormDelegate {
 public:
  virtual ~EditFormDelegate() = default;
  virtual void editWindowClose(const NodeInfo::Ptr& /*node*/) {}
};

class EditFormController : public QObject {
  Q_OBJECT

 public:
  enum Tab { kTabCrop, kTabEffect, kTabAudio, kTabTrans, kTab3D, kTabWatermark };
  static constexpr int kTabCount = kTabWatermark + 1;

  explicit EditFormController(QObject* parent = nullptr);
  ~EditFormController() override;

  void setDelegate(EditFormDelegate* delegate) { delegate_ = delegate; }
  // 0 opens on the crop tab, anything else on the 3D tab.
  void setOpenModel(int model) { openModel_ = model; }
  // The preview: set its two views before showing the window.
  PlayVideoAction& player() { return player_; }
  const CropFormAction& crop() const { return crop_; }
  const EffectFormAction& effects() const { return effects_; }
  const WatermarkEditing& watermark() const { return watermark_; }

  // Opens the window on the strip's `items`, showing `selected` (the first when null).
  void showWindowModal(const NodeInfo::List& items, const NodeInfo::Ptr& selected = nullptr);
  bool isShown() const { return shown_; }
  const NodeInfo::List& items() const { return items_; }
  const NodeInfo::Ptr& currentNode() const { return nodeInfo_; }
  // Another item chosen in the strip: loaded, stored once and played.
  void itemViewClick(const NodeInfo::Ptr& node);

  void selectTab(Tab tab);
  Tab selectedTab() const { return selectedTab_; }
  // Without a picture only the sound tab, and no rotation or mirror, is offered.
  bool isTabEnabled(Tab tab) const { return tab == kTabAudio || hasVideo_; }
  bool areTurnsEnabled() const { return hasVideo_; }

  // Sliders, choices and buttons of the tabs.
  void setSlider(EffectFormAction::SliderId id, double value);
  void setBrightness(double value) { setSlider(EffectFormAction::kBrightness, value); }
  void setContrast(double value) { setSlider(EffectFormAction::kContrast, value); }
  void setSaturation(double value) { setSlider(EffectFormAction::kSaturation, value); }
  void setFadeIn(double value) { setSlider(EffectFormAction::kFadeIn, value); }
  void setFadeOut(double value) { setSlider(EffectFormAction::kFadeOut, value); }
  void setVolumeZoom(double value) { setSlider(EffectFormAction::kVolume, value); }
  void setVideoTransIn(double value) { setSlider(EffectFormAction::kVideoFadeIn, value); }
  void setVideoTransOut(double value) { setSlider(EffectFormAction::kVideoFadeOut, value); }
  void set3DDepth(double value) { setSlider(EffectFormAction::kDepth, value); }
  void selectEffect(int position);
  void select3DModel(int position);
  // A fit mode: the crop is stored, then the effects.
  void selectZoom(int position);
  void setHoriflipFilm();
  void setVertfilpFilm();
  // "Rotate left" adds 90 degrees, "Rotate right" takes 90 away.
  void rotate1ButtonClick();
  void rotate2ButtonClick();
  int32_t rotateCounter() const { return rotateCounter_; }

  // Margins: typed text (not stored), and stepper clicks (stored).
  void cropTextDidChange(CropFormAction::Margin margin, const QString& text);
  // A margin field left with Return or by moving on: the typed text as above,
  // then stored like a stepper click, so that the preview shows it at once.
  void cropTextDidEndEditing(CropFormAction::Margin margin, const QString& text);
  void cropStepperClick(CropFormAction::Margin margin, int32_t value);

  void effectReset();
  void audioReset();
  void transReset();
  void reset3DEffect();
  void cropReset();
  // "Reset all": the crop and the picture effects only.
  void editReset();

  // Watermark tab.
  void changeWatermarkType(int row);
  void changeWatermarkTrans(double percent);
  void selectWatermarkImage(const QString& path);
  void controlTextDidChange(const QString& text);
  void changeFont(const QString& name, double pointSize, bool bold, bool italic, int32_t traits = 0);
  void changeAttributes(bool underline, bool strikethrough, const std::optional<RGBAColor>& color);
  void applyWatermarkToAll();

  // "Done" stores the effects, then the crop, and closes; "Cancel" only closes.
  void effectOk();
  void effectCancel();
  void effectPlay();
  void effectPause();
  void effectStop();
  bool windowShouldClose();

 signals:
  // Controls of any tab changed.
  void formChanged();
  void tabChanged(EditFormController::Tab tab);
  void playingChanged(bool playing);
  void windowClosed();

 private:
  // The preview wrote a dragged rectangle into its record.
  void readCropInfo();
  // The margins into the node's rectangle, the effects after them, and the preview's crop rectangle.
  void storeCrop();
  void readWatermarkInfo();
  void rotateTo(int32_t degrees);
  void closeWindow();

  EditFormDelegate* delegate_ = nullptr;
  PlayVideoAction player_;
  CropFormAction crop_;
  EffectFormAction effects_{&player_};
  WatermarkEditing watermark_{effects_};
  NodeInfo::List items_;
  NodeInfo::Ptr nodeInfo_;
  bool shown_ = false;
  bool hasVideo_ = true;
  int openModel_ = 0;
  Tab selectedTab_ = kTabCrop;
  int32_t rotateCounter_ = 0;
};
