// The geometry of the picture edits, as pure functions shared by the
// conversion, the output-size rule, the preview and the editors: quarter
// turns, the part of a picture a fit mode keeps, crop rectangles kept inside
// the frame, and rectangles carried from the source frame to the output
// canvas and back. Sizes follow integer arithmetic; whatever a pixel format
// asks on top of that (even sizes) is the caller's own step.
#pragma once

#include <algorithm>
#include <cmath>
#include <optional>

namespace geometry {

struct Size {
  int width = 0;
  int height = 0;
  bool operator==(const Size&) const = default;
};

struct Rect {
  int x = 0;
  int y = 0;
  int width = 0;
  int height = 0;
  bool operator==(const Rect&) const = default;
  constexpr Size size() const { return {width, height}; }
};

// Values of the fit mode (MediaItem::m_ViewType, the crop settings' zoom).
enum class FitMode { kOriginal = 0, kWide = 1, kStandard = 2, kFull = 3 };

constexpr FitMode fitModeOf(int value) {
  return value >= 1 && value <= 3 ? static_cast<FitMode>(value) : FitMode::kOriginal;
}

// The editors keep at least this many pixels of picture each way.
inline constexpr int kMinimumCropSide = 32;

// The nearest of 0, 90, 180 and 270 to an angle in degrees, any sign.
constexpr int quarterTurn(int degrees) {
  const int normalized = ((degrees % 360) + 360) % 360;
  return (normalized + 45) / 90 % 4 * 90;
}

constexpr bool turnsSideways(int degrees) {
  const int turn = quarterTurn(degrees);
  return turn == 90 || turn == 270;
}

// Width and height swap for a quarter turn either way.
constexpr Size turnedSize(Size size, int degrees) {
  return turnsSideways(degrees) ? Size{size.height, size.width} : size;
}

// The size a fit mode keeps: the largest 16:9 or 4:3 part, the other side
// rounded down; the other modes keep the whole picture.
constexpr Size fitShape(Size size, FitMode mode) {
  int num = 0;
  int den = 0;
  if (mode == FitMode::kWide) {
    num = 16;
    den = 9;
  } else if (mode == FitMode::kStandard) {
    num = 4;
    den = 3;
  } else {
    return size;
  }
  if (size.width * den <= size.height * num) return {size.width, size.width * den / num};
  return {size.height * num / den, size.height};
}

// That part, centred in the picture.
constexpr Rect centredFitShape(Size size, FitMode mode) {
  const Size kept = fitShape(size, mode);
  return {(size.width - kept.width) / 2, (size.height - kept.height) / 2, kept.width, kept.height};
}

// A crop rectangle moved and cut to lie inside the frame, keeping at least
// minimumSide pixels each way (the whole side of a smaller frame). A
// rectangle without area stands for the whole frame.
constexpr Rect clampedCrop(Rect crop, Size frame, int minimumSide) {
  if (crop.width <= 0 || crop.height <= 0) return {0, 0, frame.width, frame.height};
  const int leastWidth = std::max(0, std::min(minimumSide, frame.width));
  const int leastHeight = std::max(0, std::min(minimumSide, frame.height));
  Rect kept;
  kept.x = std::clamp(crop.x, 0, std::max(0, frame.width - leastWidth));
  kept.y = std::clamp(crop.y, 0, std::max(0, frame.height - leastHeight));
  kept.width = std::clamp(crop.width, leastWidth, std::max(leastWidth, frame.width - kept.x));
  kept.height = std::clamp(crop.height, leastHeight, std::max(leastHeight, frame.height - kept.y));
  return kept;
}

// Where the pixels of a source frame go: the crop rectangle is cut out,
// turned counter-clockwise, mirrored, the fit shape is kept of it, and that
// shape is scaled into `picture` on the canvas.
struct Placement {
  Rect crop;             // in the upright source frame
  int turn = 0;          // 0, 90, 180 or 270 degrees counter-clockwise
  bool mirrorX = false;  // left-right, after the turn
  bool mirrorY = false;  // top-bottom, after the turn
  Rect shape;            // in the turned crop
  Rect picture;          // on the canvas
};

namespace detail {

struct Point {
  double x;
  double y;
};

constexpr Point topLeft(const Rect& rect) { return {static_cast<double>(rect.x), static_cast<double>(rect.y)}; }
constexpr Point bottomRight(const Rect& rect) {
  return {static_cast<double>(rect.x + rect.width), static_cast<double>(rect.y + rect.height)};
}

// Source frame to canvas.
inline Point forward(const Placement& placement, Point p) {
  const Rect& crop = placement.crop;
  const Size turned = turnedSize(crop.size(), placement.turn);
  p = {p.x - crop.x, p.y - crop.y};
  switch (placement.turn) {
    case 90: p = {p.y, crop.width - p.x}; break;
    case 180: p = {crop.width - p.x, crop.height - p.y}; break;
    case 270: p = {crop.height - p.y, p.x}; break;
    default: break;
  }
  if (placement.mirrorX) p.x = turned.width - p.x;
  if (placement.mirrorY) p.y = turned.height - p.y;
  const Rect& shape = placement.shape;
  const Rect& picture = placement.picture;
  return {(p.x - shape.x) * picture.width / shape.width + picture.x,
          (p.y - shape.y) * picture.height / shape.height + picture.y};
}

// Canvas to source frame.
inline Point backward(const Placement& placement, Point p) {
  const Rect& crop = placement.crop;
  const Size turned = turnedSize(crop.size(), placement.turn);
  const Rect& shape = placement.shape;
  const Rect& picture = placement.picture;
  p = {(p.x - picture.x) * shape.width / picture.width + shape.x,
       (p.y - picture.y) * shape.height / picture.height + shape.y};
  if (placement.mirrorX) p.x = turned.width - p.x;
  if (placement.mirrorY) p.y = turned.height - p.y;
  switch (placement.turn) {
    case 90: p = {crop.width - p.y, p.x}; break;
    case 180: p = {crop.width - p.x, crop.height - p.y}; break;
    case 270: p = {p.y, crop.height - p.x}; break;
    default: break;
  }
  return {p.x + crop.x, p.y + crop.y};
}

// The rectangle spanned by two mapped corners, cut to `visible`, in whole pixels.
inline std::optional<Rect> span(Point a, Point b, const Rect& visible) {
  const double left = std::max<double>(std::min(a.x, b.x), visible.x);
  const double top = std::max<double>(std::min(a.y, b.y), visible.y);
  const double right = std::min<double>(std::max(a.x, b.x), visible.x + visible.width);
  const double bottom = std::min<double>(std::max(a.y, b.y), visible.y + visible.height);
  Rect rect{static_cast<int>(std::lround(left)), static_cast<int>(std::lround(top)), 0, 0};
  rect.width = static_cast<int>(std::lround(right)) - rect.x;
  rect.height = static_cast<int>(std::lround(bottom)) - rect.y;
  if (rect.width <= 0 || rect.height <= 0) return std::nullopt;
  return rect;
}

}  // namespace detail

// The canvas area a rectangle of source pixels ends up in, cut to the
// picture (the bars beside it show nothing of the source); nothing when none
// of it shows.
inline std::optional<Rect> toCanvas(const Placement& placement, const Rect& source) {
  if (placement.shape.width <= 0 || placement.shape.height <= 0) return std::nullopt;
  const detail::Point a = detail::forward(placement, detail::topLeft(source));
  const detail::Point b = detail::forward(placement, detail::bottomRight(source));
  return detail::span(a, b, placement.picture);
}

// The source pixels that a canvas rectangle covers of the picture: how a
// rectangle dragged over the preview becomes one in the source frame.
inline std::optional<Rect> toSource(const Placement& placement, const Rect& canvas) {
  if (placement.picture.width <= 0 || placement.picture.height <= 0) return std::nullopt;
  const std::optional<Rect> shown =
      detail::span(detail::topLeft(canvas), detail::bottomRight(canvas), placement.picture);
  if (!shown) return std::nullopt;
  const detail::Point a = detail::backward(placement, detail::topLeft(*shown));
  const detail::Point b = detail::backward(placement, detail::bottomRight(*shown));
  return detail::span(a, b, placement.crop);
}

}  // namespace geometry
