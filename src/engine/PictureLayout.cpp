#include "PictureLayout.h"

#include <algorithm>
#include <cmath>

namespace engine {
namespace {

// Every edge of a 4:2:0 picture lies on an even pixel, so no side is shorter than two.
constexpr int kLeastSide = 2;

int evenDown(int value) { return value & ~1; }
int evenNearest(double value) { return std::max(kLeastSide, static_cast<int>(std::lround(value / 2.0)) * 2); }
geometry::Rect evenForChroma(const geometry::Rect& rect) {
  return {evenDown(rect.x), evenDown(rect.y), std::max(kLeastSide, evenDown(rect.width)),
          std::max(kLeastSide, evenDown(rect.height))};
}

// The size of the kept shape within the canvas: stretched for the full fit,
// else as large as fits with its own proportions.
geometry::Size scaledSize(const geometry::Size& shape, int width, int height, geometry::FitMode mode) {
  if (mode == geometry::FitMode::kFull) return {width, height};
  if (static_cast<int64_t>(shape.width) * height >= static_cast<int64_t>(shape.height) * width) {
    return {width, std::min(height, evenNearest(static_cast<double>(shape.height) * width / shape.width))};
  }
  return {std::min(width, evenNearest(static_cast<double>(shape.width) * height / shape.height)), height};
}

}  // namespace

PictureLayout PictureLayout::of(const MediaItem& item, int sourceWidth, int sourceHeight, int canvasWidth,
                                int canvasHeight) {
  const geometry::Rect requested{item.m_cropX, item.m_cropY, item.m_cropW, item.m_cropH};
  const geometry::FitMode mode = geometry::fitModeOf(item.m_ViewType);
  PictureLayout layout;
  layout.crop = evenForChroma(geometry::clampedCrop(requested, {sourceWidth, sourceHeight}, kLeastSide));
  layout.turn = geometry::quarterTurn(item.m_RotateAngle);
  layout.mirrorX = item.m_RotateFlip_X != 0;
  layout.mirrorY = item.m_RotateFlip_Y != 0;
  layout.shape = evenForChroma(geometry::centredFitShape(geometry::turnedSize(layout.crop.size(), layout.turn), mode));
  layout.canvasWidth = canvasWidth > 0 ? std::max(kLeastSide, evenDown(canvasWidth)) : layout.shape.width;
  layout.canvasHeight = canvasHeight > 0 ? std::max(kLeastSide, evenDown(canvasHeight)) : layout.shape.height;
  const geometry::Size scaled = scaledSize(layout.shape.size(), layout.canvasWidth, layout.canvasHeight, mode);
  layout.picture = {evenDown((layout.canvasWidth - scaled.width) / 2),
                    evenDown((layout.canvasHeight - scaled.height) / 2), scaled.width, scaled.height};
  return layout;
}

}  // namespace engine
