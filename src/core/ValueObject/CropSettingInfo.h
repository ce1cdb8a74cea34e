// The kept rectangle of a node's picture (source-frame pixels) and its fit
// mode. A node that was never cropped has a 0 x 0 rectangle; adding a file
// sets it to the full frame.
#pragma once

#include <QString>

#include <array>
#include <cstdint>

#include "ValueObject/ValueChoice.h"

class CropSettingInfo {
 public:
  // The fit modes of the crop editor in display order.
  static constexpr std::array<ValueChoice, 4> kZoomChoices{{
      {"Original", 0},
      {"Full", 3},
      {"16:9", 1},
      {"4:3", 2},
  }};

  int32_t x() const { return x_; }
  void setX(int32_t x) { x_ = x; }
  int32_t y() const { return y_; }
  void setY(int32_t y) { y_ = y; }
  int32_t w() const { return w_; }
  void setW(int32_t w) { w_ = w; }
  int32_t h() const { return h_; }
  void setH(int32_t h) { h_ = h; }
  // Sets x, y, w and h at once.
  void setRect(int32_t x, int32_t y, int32_t w, int32_t h) {
    x_ = x;
    y_ = y;
    w_ = w;
    h_ = h;
  }
  // Fit mode, one of the values of kZoomChoices.
  int32_t zoom() const { return zoom_; }
  void setZoom(int32_t zoom) { zoom_ = zoom; }
  int32_t isCustomSize() const { return isCustomSize_; }
  void setIsCustomSize(int32_t isCustomSize) { isCustomSize_ = isCustomSize; }
  const QString& strWidth() const { return strWidth_; }
  void setStrWidth(const QString& text) { strWidth_ = text; }
  const QString& strHeight() const { return strHeight_; }
  void setStrHeight(const QString& text) { strHeight_ = text; }

  bool operator==(const CropSettingInfo&) const = default;

 private:
  int32_t x_ = 0;
  int32_t y_ = 0;
  int32_t w_ = 0;
  int32_t h_ = 0;
  int32_t zoom_ = 0;
  int32_t isCustomSize_ = 0;
  QString strWidth_;
  QString strHeight_;
};
