// The geometry of the rectangles dragged over a preview picture, without
// widgets: where the source picture lies in a view (the frame scaled to fit
// the view and centred, the source at its place in the frame), which part of
// a shown rectangle a point grabs, and the rectangle a drag makes, in source
// pixels, kept inside the source and never thinner than a least side.
#pragma once

#include <QPointF>
#include <QRect>
#include <QRectF>
#include <QSize>

#include <array>

// Where `content` is drawn in `area` when scaled to fit, keeping its aspect,
// centred; empty when either has no area.
QRectF fittedRect(const QSizeF& content, const QSizeF& area);

// Between view coordinates and source pixels.
class SourceMapping {
 public:
  SourceMapping() = default;
  // A frame of `frameSize` shown in a view of `viewSize`; the source, of
  // `sourceSize`, lies at `picture` in the frame's pixels.
  SourceMapping(const QSize& viewSize, const QSize& frameSize, const QRect& picture, const QSize& sourceSize);

  // False when the frame, the picture or the source has no area.
  bool isValid() const { return !pictureInView_.isEmpty() && !sourceSize_.isEmpty(); }
  const QSize& sourceSize() const { return sourceSize_; }
  QRectF toView(const QRect& source) const;
  QPointF toSource(const QPointF& viewPoint) const;

 private:
  QRectF pictureInView_;
  QSize sourceSize_;
};

// The parts of a rectangle that a pointer can grab: the inside moves it, the
// eight handles (corners and edge middles) move their edges.
enum class RectanglePart {
  kNone,
  kInside,
  kTopLeft,
  kTop,
  kTopRight,
  kRight,
  kBottomRight,
  kBottom,
  kBottomLeft,
  kLeft
};

struct RectangleHandle {
  RectanglePart part;
  QPointF centre;
};
std::array<RectangleHandle, 8> rectangleHandles(const QRectF& shown);

// The part of `shown` under `point`: a handle whose centre is within `reach`
// each way (corners before edge middles, for rectangles too small to keep
// them apart), else the inside, else none.
RectanglePart rectanglePartAt(const QRectF& shown, const QPointF& point, qreal reach);

// One drag of a part of a rectangle, in source pixels.
class RectangleDrag {
 public:
  // `start` is first brought inside `bounds` with at least `leastSide`
  // pixels each way (the whole side of a smaller source); the pointer went
  // down at `pressed`.
  RectangleDrag(RectanglePart part, const QRect& start, const QPointF& pressed, const QSize& bounds, int leastSide);

  RectanglePart part() const { return part_; }
  // The rectangle with the pointer at `point`: the grabbed edges follow the
  // pointer's way from where it went down, stopping at the bounds and at the
  // least side; the inside moves the whole rectangle, stopping at the bounds
  // with its size kept.
  QRect rectangleAt(const QPointF& point) const;

 private:
  RectanglePart part_;
  QRect start_;
  QPointF pressed_;
  QSize bounds_;
  QSize least_;
};
