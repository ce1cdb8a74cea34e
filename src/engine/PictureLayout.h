// Where the picture of one input goes on the output canvas: the crop
// rectangle, the turn and mirrors, the part kept for a 16:9 or 4:3 fit, and
// the scaled size and position, all made even for the 4:2:0 pixel formats the
// filters work in. Rectangles drawn on the source frame (the watermark's)
// are carried through the same steps.
#pragma once

#include <optional>

#include "FitGeometry.h"
#include "videoconverter.h"

namespace engine {

struct PictureLayout : geometry::Placement {
  int canvasWidth = 0;
  int canvasHeight = 0;

  // A canvas of 0 x 0 keeps the picture's own size.
  static PictureLayout of(const MediaItem& item, int sourceWidth, int sourceHeight, int canvasWidth, int canvasHeight);

  bool fillsCanvas() const { return picture == geometry::Rect{0, 0, canvasWidth, canvasHeight}; }
  // Canvas pixels per source pixel, vertically.
  double verticalScale() const { return static_cast<double>(picture.height) / shape.height; }
  // The canvas area that a rectangle of source pixels ends up in, clipped to
  // the picture; nothing when none of it is visible.
  std::optional<geometry::Rect> toCanvas(const geometry::Rect& sourceRect) const {
    return geometry::toCanvas(*this, sourceRect);
  }
};

}  // namespace engine
