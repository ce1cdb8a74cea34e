#include "WatermarkEditing.h"

#include <cmath>

#include "Action/NodeInfoAction.h"

namespace {

// A watermark rectangle relative to a crop rectangle: fractions of its size from its corner.
struct Placement {
  float x = 0;
  float y = 0;
  float w = 0;
  float h = 0;
};

struct Rect {
  int32_t x, y, w, h;
};

Placement relativeTo(const Rect& mark, const Rect& crop, float cropWidth, float cropHeight) {
  return {(mark.x - crop.x) / cropWidth, (mark.y - crop.y) / cropHeight, mark.w / cropWidth, mark.h / cropHeight};
}

Rect placedIn(const Placement& place, const CropSettingInfo& crop) {
  const auto width = static_cast<float>(crop.w());
  const auto height = static_cast<float>(crop.h());
  return {static_cast<int32_t>(width * place.x + crop.x()), static_cast<int32_t>(height * place.y + crop.y()),
          static_cast<int32_t>(width * place.w), static_cast<int32_t>(height * place.h)};
}

int32_t withBit(int32_t bits, int32_t bit, bool set) { return set ? bits | bit : bits & ~bit; }

}  // namespace

const QStringList& WatermarkEditing::pictureExtensions() {
  static const QStringList extensions = {QStringLiteral("jpg"), QStringLiteral("png"),  QStringLiteral("jpeg"),
                                         QStringLiteral("tif"), QStringLiteral("tiff"), QStringLiteral("bmp"),
                                         QStringLiteral("JPG"), QStringLiteral("PNG"),  QStringLiteral("JPEG"),
                                         QStringLiteral("TIF"), QStringLiteral("TIFF"), QStringLiteral("BMP")};
  return extensions;
}

void WatermarkEditing::setEnabled(bool text, bool transparency, bool textStyle, bool picture) {
  textEnabled_ = text;
  transparencyEnabled_ = transparency;
  textStyleEnabled_ = textStyle;
  pictureEnabled_ = picture;
}

void WatermarkEditing::initWatermarkDisplay() {
  if (nodeInfo_ == nullptr) return;
  const WatermarkInfo& watermark = nodeInfo_->watermarkInfo();
  text_ = watermark.m_text();
  transparency_ = watermark.m_transparency();
  transparencyLabel_ = QString::number(watermark.m_transparency());
  typeRow_ = watermark.m_watermarkType();
  switch (watermark.m_watermarkType()) {
    case WatermarkInfo::kTypeNone: setEnabled(false, false, false, false); break;
    case WatermarkInfo::kTypePicture: setEnabled(false, true, false, true); break;
    case WatermarkInfo::kTypeText: setEnabled(true, true, true, false); break;
    default: break;
  }
}

void WatermarkEditing::changeWatermarkType(int row) {
  if (nodeInfo_ == nullptr) return;
  nodeInfo_->watermarkInfo().setM_watermarkType(row);
  initWatermarkDisplay();
  effects_.refreshEffectPlayer();
}

void WatermarkEditing::changeWatermarkTrans(double percent) {
  if (nodeInfo_ == nullptr) return;
  const int32_t value = WatermarkInfo::kTransparencyRange.clamped(static_cast<int32_t>(std::trunc(percent)));
  nodeInfo_->watermarkInfo().setM_transparency(value);
  transparency_ = value;
  transparencyLabel_ = QString::number(value);
  effects_.refreshEffectPlayer();
}

void WatermarkEditing::selectWatermarkImage(const QString& path) {
  if (nodeInfo_ == nullptr || path.isEmpty()) return;
  WatermarkInfo& watermark = nodeInfo_->watermarkInfo();
  watermark.setM_imagePath(path);
  if (watermark.m_imgW() == 0 && watermark.m_imgH() == 0) {
    watermark.setM_imgW(nodeInfo_->mediaFileInfo().frameWidth() / 4);
    watermark.setM_imgH(nodeInfo_->mediaFileInfo().frameHeight() / 4);
  }
  effects_.refreshEffectPlayer();
}

void WatermarkEditing::controlTextDidChange(const QString& text) {
  if (nodeInfo_ == nullptr) return;
  WatermarkInfo& watermark = nodeInfo_->watermarkInfo();
  if (watermark.m_w() == 0 || watermark.m_h() == 0) {
    watermark.setM_w(nodeInfo_->mediaFileInfo().frameWidth() / 4);
    watermark.setM_h(nodeInfo_->mediaFileInfo().frameHeight() / 4);
  }
  watermark.setM_text(text);
  text_ = text;
  effects_.refreshEffectPlayer();
}

void WatermarkEditing::changeFont(const QString& name, double pointSize, bool bold, bool italic, int32_t traits) {
  if (nodeInfo_ == nullptr) return;
  WatermarkInfo& watermark = nodeInfo_->watermarkInfo();
  watermark.setM_fontname(name);
  watermark.setM_fontsize(static_cast<int32_t>(std::trunc(pointSize)));
  int32_t style = watermark.m_fontstyle();
  style = withBit(style, WatermarkInfo::kStyleBold, bold);
  style = withBit(style, WatermarkInfo::kStyleItalic, italic);
  if ((traits & kUnitalicTrait) != 0) style &= ~(WatermarkInfo::kStyleBold | WatermarkInfo::kStyleItalic);
  watermark.setM_fontstyle(style);
  effects_.refreshEffectPlayer();
}

void WatermarkEditing::changeAttributes(bool underline, bool strikethrough, const std::optional<RGBAColor>& color) {
  if (nodeInfo_ == nullptr) return;
  WatermarkInfo& watermark = nodeInfo_->watermarkInfo();
  int32_t style = withBit(watermark.m_fontstyle(), WatermarkInfo::kStyleUnderline, underline);
  style = withBit(style, WatermarkInfo::kStyleStrikethrough, strikethrough);
  watermark.setM_fontstyle(style);
  watermark.setM_fontcolor(color ? 0xFF000000u | CommonClass::getColorInteger(*color) : 0xFFFFFFFFu);
  effects_.refreshEffectPlayer();
}

RGBAColor WatermarkEditing::fontColor() const {
  const uint32_t color = nodeInfo_ != nullptr ? nodeInfo_->watermarkInfo().m_fontcolor() : 0xFFFFFFFFu;
  return {((color >> 16) & 0xFF) / 255.0, ((color >> 8) & 0xFF) / 255.0, (color & 0xFF) / 255.0, 1.0};
}

void WatermarkEditing::applyWatermarkToAll(const NodeInfo::List& items) {
  if (nodeInfo_ == nullptr) return;
  const WatermarkInfo& source = nodeInfo_->watermarkInfo();
  const CropSettingInfo& crop = nodeInfo_->cropSettingInfo();
  auto cropWidth = static_cast<float>(crop.w());
  auto cropHeight = static_cast<float>(crop.h());
  if (cropWidth < 0.1f) cropWidth = static_cast<float>(nodeInfo_->mediaFileInfo().frameWidth());
  if (cropHeight < 0.1f) cropHeight = static_cast<float>(nodeInfo_->mediaFileInfo().frameHeight());
  const Rect cropRect{crop.x(), crop.y(), crop.w(), crop.h()};
  const Placement picture =
      relativeTo({source.m_imgX(), source.m_imgY(), source.m_imgW(), source.m_imgH()}, cropRect, cropWidth, cropHeight);
  const Placement text =
      relativeTo({source.m_x(), source.m_y(), source.m_w(), source.m_h()}, cropRect, cropWidth, cropHeight);

  for (const NodeInfo::Ptr& item : items) {
    if (item == nullptr || item == nodeInfo_) continue;
    WatermarkInfo copy = source;
    const Rect placedPicture = placedIn(picture, item->cropSettingInfo());
    copy.setM_imgX(placedPicture.x);
    copy.setM_imgY(placedPicture.y);
    copy.setM_imgW(placedPicture.w);
    copy.setM_imgH(placedPicture.h);
    const Rect placedText = placedIn(text, item->cropSettingInfo());
    copy.setM_x(placedText.x);
    copy.setM_y(placedText.y);
    copy.setM_w(placedText.w);
    copy.setM_h(placedText.h);
    item->setWatermarkInfo(copy);
    NodeInfoAction::setSameEffect(item);
  }
}
