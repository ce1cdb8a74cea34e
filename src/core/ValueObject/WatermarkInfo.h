// The picture or text drawn over a node's video. The picture and the text
// keep separate rectangles (source-frame pixels), so switching the type back
// and forth keeps both positions.
#pragma once

#include <QString>

#include <cstdint>

#include "ValueObject/SettingRange.h"

class WatermarkInfo {
 public:
  // m_watermarkType values.
  static constexpr int32_t kTypeNone = 0;
  static constexpr int32_t kTypePicture = 1;
  static constexpr int32_t kTypeText = 2;
  // m_fontstyle bits.
  static constexpr int32_t kStyleBold = 1;
  static constexpr int32_t kStyleItalic = 2;
  static constexpr int32_t kStyleUnderline = 4;
  static constexpr int32_t kStyleStrikethrough = 8;
  // Opacity in percent.
  static constexpr SettingRange kTransparencyRange{0, 100, 50};
  // The desktop's own sans-serif face, resolved by the font configuration.
  static constexpr const char* kDefaultFontName = "Sans";

  // Text rectangle.
  int32_t m_x() const { return m_x_; }
  void setM_x(int32_t value) { m_x_ = value; }
  int32_t m_y() const { return m_y_; }
  void setM_y(int32_t value) { m_y_ = value; }
  int32_t m_w() const { return m_w_; }
  void setM_w(int32_t value) { m_w_ = value; }
  int32_t m_h() const { return m_h_; }
  void setM_h(int32_t value) { m_h_ = value; }
  // Picture rectangle.
  int32_t m_imgX() const { return m_imgX_; }
  void setM_imgX(int32_t value) { m_imgX_ = value; }
  int32_t m_imgY() const { return m_imgY_; }
  void setM_imgY(int32_t value) { m_imgY_ = value; }
  int32_t m_imgW() const { return m_imgW_; }
  void setM_imgW(int32_t value) { m_imgW_ = value; }
  int32_t m_imgH() const { return m_imgH_; }
  void setM_imgH(int32_t value) { m_imgH_ = value; }
  // Opacity in percent.
  int32_t m_transparency() const { return m_transparency_; }
  void setM_transparency(int32_t percent) { m_transparency_ = percent; }
  int32_t m_watermarkType() const { return m_watermarkType_; }
  void setM_watermarkType(int32_t type) { m_watermarkType_ = type; }
  const QString& m_imagePath() const { return m_imagePath_; }
  void setM_imagePath(const QString& path) { m_imagePath_ = path; }
  const QString& m_text() const { return m_text_; }
  void setM_text(const QString& text) { m_text_ = text; }
  const QString& m_fontname() const { return m_fontname_; }
  void setM_fontname(const QString& name) { m_fontname_ = name; }
  int32_t m_fontstyle() const { return m_fontstyle_; }
  void setM_fontstyle(int32_t styleBits) { m_fontstyle_ = styleBits; }
  int32_t m_fontsize() const { return m_fontsize_; }
  void setM_fontsize(int32_t points) { m_fontsize_ = points; }
  // 0xAARRGGBB with alpha always 0xFF.
  uint32_t m_fontcolor() const { return m_fontcolor_; }
  void setM_fontcolor(uint32_t color) { m_fontcolor_ = color; }

  bool operator==(const WatermarkInfo&) const = default;

 private:
  int32_t m_x_ = 0;
  int32_t m_y_ = 0;
  int32_t m_w_ = 0;
  int32_t m_h_ = 0;
  int32_t m_imgX_ = 0;
  int32_t m_imgY_ = 0;
  int32_t m_imgW_ = 0;
  int32_t m_imgH_ = 0;
  int32_t m_transparency_ = kTransparencyRange.defaultValue;
  int32_t m_watermarkType_ = kTypeNone;
  QString m_imagePath_;
  QString m_text_;
  QString m_fontname_ = QString::fromLatin1(kDefaultFontName);
  int32_t m_fontstyle_ = 0;
  int32_t m_fontsize_ = 58;
  uint32_t m_fontcolor_ = 0xFFFFFFFF;
};
