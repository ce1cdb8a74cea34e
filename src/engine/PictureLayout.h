// Where the picture of one input goes on the output canvas: the crop
// rectangle, the turn and mirrors, the part kept for a 16:9 or 4:3 fit, and
// the scaled size and position. Rectangles drawn on the source frame (the
// watermark's) are carried through the same steps.
#pragma once

#include <optional>

#include "videoconverter.h"

namespace engine {

struct PixelRect {
  int x = 0;
  int y = 0;
  int width = 0;
  int height = 0;
  bool operator==(const PixelRect&) const = default;
};

// Values of MediaItem::m_ViewType.
enum class FitMode { kOriginal = 0, kWide = 1, kStandard = 2, kFull = 3 };

struct PictureLayout {
  PixelRect crop;        // in the upright source frame, even values
  int turn = 0;          // counter-clockwise quarter turns: 0, 90, 180 or 270
  bool mirrorX = false;  // left-right, after the turn
  bool mirrorY = false;  // top-bottom, after the turn
  PixelRect shape;       // part of the turned picture kept for the fit
  int scaledWidth = 0;   // size of the kept part on the canvas
  int scaledHeight = 0;
  int canvasWidth = 0;
  int canvasHeight = 0;
  int offsetX = 0;  // where the scaled picture sits on the canvas
  int offsetY = 0;

  // A canvas of 0 x 0 keeps the picture's own size.
  static PictureLayout of(const MediaItem& item, int sourceWidth, int sourceHeight, int canvasWidth, int canvasHeight);

  bool fillsCanvas() const { return scaledWidth == canvasWidth && scaledHeight == canvasHeight; }
  // Canvas pixels per source pixel, vertically.
  double verticalScale() const { return static_cast<double>(scaledHeight) / shape.height; }
  // The canvas area that a rectangle of source pixels ends up in, clipped to
  // the canvas; nothing when none of it is visible.
  std::optional<PixelRect> toCanvas(const PixelRect& sourceRect) const;
};

}  // namespace engine
