// The crop box's logic: four margins (text and stepper each) over the kept
// rectangle of a node's picture, and the fit mode. The user edits margins;
// the node keeps a rectangle in source-frame pixels. Steppers never let the
// picture shrink below 32 pixels in either direction.
#pragma once

#include <QString>

#include <array>
#include <cstdint>

#include "ValueObject/NodeInfo.h"

class CropFormAction {
 public:
  enum Margin { kTop, kBottom, kLeft, kRight };
  static constexpr int kMarginCount = 4;
  // Pixels of picture always kept in each direction.
  static constexpr int32_t kLeastPicture = 32;

  // A stepper's limits and value; it steps by 1.
  struct Stepper {
    int32_t minimum = 0;
    int32_t maximum = 0;
    int32_t value = 0;
  };

  void setNodeInfo(const NodeInfo::Ptr& node) { nodeInfo_ = node; }
  const NodeInfo::Ptr& nodeInfo() const { return nodeInfo_; }

  // Takes the node's frame size, loads the margins and selects its fit mode.
  void initCropWindow();
  // Margins, fields and steppers from the node's rectangle.
  void initStepperAndText();
  // Steppers (values and limits) from the fields.
  void setStepper();
  // A typed margin: within the stepper's limits it is kept as a plain number,
  // above them it becomes the maximum, below them it stays as typed. Nothing
  // is stored.
  void txtDidChange(Margin margin, const QString& text);
  void txtTopDidChange(const QString& text) { txtDidChange(kTop, text); }
  void txtBottomDidChange(const QString& text) { txtDidChange(kBottom, text); }
  void txtLeftDidChange(const QString& text) { txtDidChange(kLeft, text); }
  void txtRightDidChange(const QString& text) { txtDidChange(kRight, text); }
  // A stepper was clicked to `value`: its field shows it. Nothing is stored.
  void stepperDidChange(Margin margin, int32_t value);
  // Stores the rectangle from the margins and the selected fit mode.
  void updateMediaData();
  void cropOk() { updateMediaData(); }
  // Full frame, margins 0, fit mode "Original"; stored.
  void cropReset();

  const QString& marginText(Margin margin) const { return texts_[margin]; }
  const Stepper& stepper(Margin margin) const { return steppers_[margin]; }
  // Position in CropSettingInfo::kZoomChoices; -1 when the node's value is not listed.
  int zoomIndex() const { return zoomIndex_; }
  void setZoomIndex(int index) { zoomIndex_ = index; }

 private:
  void setMargins(int32_t top, int32_t bottom, int32_t left, int32_t right);
  int32_t margin(Margin which) const { return steppers_[which].value; }

  NodeInfo::Ptr nodeInfo_;
  int32_t frameWidth_ = 0;
  int32_t frameHeight_ = 0;
  std::array<QString, kMarginCount> texts_;
  std::array<Stepper, kMarginCount> steppers_{};
  int zoomIndex_ = 0;
};
