#include "PictureLayout.h"

#include <algorithm>
#include <cmath>

namespace engine {
namespace {

int evenDown(int value) { return value & ~1; }
int evenNearest(double value) { return std::max(2, static_cast<int>(std::lround(value / 2.0)) * 2); }

int quarterTurn(int degrees) {
  const int normalized = ((degrees % 360) + 360) % 360;
  return (normalized + 45) / 90 % 4 * 90;
}

FitMode fitModeOf(int viewType) {
  switch (viewType) {
    case 1: return FitMode::kWide;
    case 2: return FitMode::kStandard;
    case 3: return FitMode::kFull;
    default: return FitMode::kOriginal;
  }
}

// A crop of 0 x 0 (never cropped) keeps the whole frame; anything else is kept inside it.
PixelRect cropWithin(const MediaItem& item, int width, int height) {
  if (item.m_cropW <= 0 || item.m_cropH <= 0) return {0, 0, evenDown(width), evenDown(height)};
  PixelRect crop;
  crop.x = evenDown(std::clamp(item.m_cropX, 0, std::max(0, width - 2)));
  crop.y = evenDown(std::clamp(item.m_cropY, 0, std::max(0, height - 2)));
  crop.width = std::max(2, evenDown(std::min(item.m_cropW, width - crop.x)));
  crop.height = std::max(2, evenDown(std::min(item.m_cropH, height - crop.y)));
  return crop;
}

// The centred part of a width x height picture with the shape num:den.
PixelRect centredShape(int width, int height, int num, int den) {
  if (width * den <= height * num) {
    const int shapedHeight = std::max(2, evenDown(width * den / num));
    return {0, evenDown((height - shapedHeight) / 2), width, shapedHeight};
  }
  const int shapedWidth = std::max(2, evenDown(height * num / den));
  return {evenDown((width - shapedWidth) / 2), 0, shapedWidth, height};
}

struct Point {
  double x;
  double y;
};

}  // namespace

PictureLayout PictureLayout::of(const MediaItem& item, int sourceWidth, int sourceHeight, int canvasWidth,
                                int canvasHeight) {
  PictureLayout layout;
  layout.crop = cropWithin(item, sourceWidth, sourceHeight);
  layout.turn = quarterTurn(item.m_RotateAngle);
  layout.mirrorX = item.m_RotateFlip_X != 0;
  layout.mirrorY = item.m_RotateFlip_Y != 0;
  const bool sideways = layout.turn == 90 || layout.turn == 270;
  const int turnedWidth = sideways ? layout.crop.height : layout.crop.width;
  const int turnedHeight = sideways ? layout.crop.width : layout.crop.height;
  const FitMode mode = fitModeOf(item.m_ViewType);
  if (mode == FitMode::kWide) {
    layout.shape = centredShape(turnedWidth, turnedHeight, 16, 9);
  } else if (mode == FitMode::kStandard) {
    layout.shape = centredShape(turnedWidth, turnedHeight, 4, 3);
  } else {
    layout.shape = {0, 0, turnedWidth, turnedHeight};
  }
  const PixelRect& shape = layout.shape;
  layout.canvasWidth = canvasWidth > 0 ? std::max(2, evenDown(canvasWidth)) : shape.width;
  layout.canvasHeight = canvasHeight > 0 ? std::max(2, evenDown(canvasHeight)) : shape.height;
  const int w = layout.canvasWidth;
  const int h = layout.canvasHeight;
  if (mode == FitMode::kFull) {
    layout.scaledWidth = w;
    layout.scaledHeight = h;
  } else if (static_cast<int64_t>(shape.width) * h >= static_cast<int64_t>(shape.height) * w) {
    layout.scaledWidth = w;
    layout.scaledHeight = std::min(h, evenNearest(static_cast<double>(shape.height) * w / shape.width));
  } else {
    layout.scaledHeight = h;
    layout.scaledWidth = std::min(w, evenNearest(static_cast<double>(shape.width) * h / shape.height));
  }
  layout.offsetX = evenDown((w - layout.scaledWidth) / 2);
  layout.offsetY = evenDown((h - layout.scaledHeight) / 2);
  return layout;
}

std::optional<PixelRect> PictureLayout::toCanvas(const PixelRect& sourceRect) const {
  const bool sideways = turn == 90 || turn == 270;
  const double turnedWidth = sideways ? crop.height : crop.width;
  const double turnedHeight = sideways ? crop.width : crop.height;
  auto place = [&](double sourceX, double sourceY) {
    Point p{sourceX - crop.x, sourceY - crop.y};
    switch (turn) {
      case 90: p = {p.y, crop.width - p.x}; break;
      case 180: p = {crop.width - p.x, crop.height - p.y}; break;
      case 270: p = {crop.height - p.y, p.x}; break;
      default: break;
    }
    if (mirrorX) p.x = turnedWidth - p.x;
    if (mirrorY) p.y = turnedHeight - p.y;
    return Point{(p.x - shape.x) * scaledWidth / shape.width + offsetX,
                 (p.y - shape.y) * scaledHeight / shape.height + offsetY};
  };
  const Point a = place(sourceRect.x, sourceRect.y);
  const Point b = place(sourceRect.x + sourceRect.width, sourceRect.y + sourceRect.height);
  // The visible picture, not the bars around it, is what a source rectangle can cover.
  const double left = std::max<double>(std::min(a.x, b.x), offsetX);
  const double top = std::max<double>(std::min(a.y, b.y), offsetY);
  const double right = std::min<double>(std::max(a.x, b.x), offsetX + scaledWidth);
  const double bottom = std::min<double>(std::max(a.y, b.y), offsetY + scaledHeight);
  PixelRect mapped{static_cast<int>(std::lround(left)), static_cast<int>(std::lround(top)), 0, 0};
  mapped.width = static_cast<int>(std::lround(right)) - mapped.x;
  mapped.height = static_cast<int>(std::lround(bottom)) - mapped.y;
  if (mapped.width <= 0 || mapped.height <= 0) return std::nullopt;
  return mapped;
}

}  // namespace engine
