#include "RectangleDrag.h"

#include <algorithm>
#include <cmath>

#include "FitGeometry.h"

QRectF fittedRect(const QSizeF& content, const QSizeF& area) {
  if (content.isEmpty() || area.isEmpty()) return {};
  const QSizeF size = content.scaled(area, Qt::KeepAspectRatio);
  return {(area.width() - size.width()) / 2, (area.height() - size.height()) / 2, size.width(), size.height()};
}

SourceMapping::SourceMapping(const QSize& viewSize, const QSize& frameSize, const QRect& picture,
                             const QSize& sourceSize)
    : sourceSize_(sourceSize) {
  const QRectF frame = fittedRect(frameSize, viewSize);
  if (frame.isEmpty()) return;
  const qreal scale = frame.width() / frameSize.width();
  pictureInView_ = QRectF(frame.x() + picture.x() * scale, frame.y() + picture.y() * scale, picture.width() * scale,
                          picture.height() * scale);
}

QRectF SourceMapping::toView(const QRect& source) const {
  const qreal scaleX = pictureInView_.width() / sourceSize_.width();
  const qreal scaleY = pictureInView_.height() / sourceSize_.height();
  return {pictureInView_.x() + source.x() * scaleX, pictureInView_.y() + source.y() * scaleY, source.width() * scaleX,
          source.height() * scaleY};
}

QPointF SourceMapping::toSource(const QPointF& viewPoint) const {
  return {(viewPoint.x() - pictureInView_.x()) * sourceSize_.width() / pictureInView_.width(),
          (viewPoint.y() - pictureInView_.y()) * sourceSize_.height() / pictureInView_.height()};
}

std::array<RectangleHandle, 8> rectangleHandles(const QRectF& shown) {
  const QPointF centre = shown.center();
  return {{
      {RectanglePart::kTopLeft, shown.topLeft()},
      {RectanglePart::kTopRight, QPointF(shown.right(), shown.top())},
      {RectanglePart::kBottomRight, QPointF(shown.right(), shown.bottom())},
      {RectanglePart::kBottomLeft, QPointF(shown.left(), shown.bottom())},
      {RectanglePart::kTop, QPointF(centre.x(), shown.top())},
      {RectanglePart::kRight, QPointF(shown.right(), centre.y())},
      {RectanglePart::kBottom, QPointF(centre.x(), shown.bottom())},
      {RectanglePart::kLeft, QPointF(shown.left(), centre.y())},
  }};
}

RectanglePart rectanglePartAt(const QRectF& shown, const QPointF& point, qreal reach) {
  // The handles come corners first, so a corner wins where handles overlap.
  for (const RectangleHandle& handle : rectangleHandles(shown)) {
    if (std::abs(point.x() - handle.centre.x()) <= reach && std::abs(point.y() - handle.centre.y()) <= reach) {
      return handle.part;
    }
  }
  return shown.contains(point) ? RectanglePart::kInside : RectanglePart::kNone;
}

namespace {

bool movesLeft(RectanglePart part) {
  return part == RectanglePart::kTopLeft || part == RectanglePart::kLeft || part == RectanglePart::kBottomLeft;
}
bool movesRight(RectanglePart part) {
  return part == RectanglePart::kTopRight || part == RectanglePart::kRight || part == RectanglePart::kBottomRight;
}
bool movesTop(RectanglePart part) {
  return part == RectanglePart::kTopLeft || part == RectanglePart::kTop || part == RectanglePart::kTopRight;
}
bool movesBottom(RectanglePart part) {
  return part == RectanglePart::kBottomLeft || part == RectanglePart::kBottom || part == RectanglePart::kBottomRight;
}

}  // namespace

RectangleDrag::RectangleDrag(RectanglePart part, const QRect& start, const QPointF& pressed, const QSize& bounds,
                             int leastSide)
    : part_(part),
      pressed_(pressed),
      bounds_(bounds),
      least_(std::clamp(leastSide, 0, bounds.width()), std::clamp(leastSide, 0, bounds.height())) {
  const geometry::Rect kept = geometry::clampedCrop({start.x(), start.y(), start.width(), start.height()},
                                                    {bounds.width(), bounds.height()}, leastSide);
  start_ = QRect(kept.x, kept.y, kept.width, kept.height);
}

QRect RectangleDrag::rectangleAt(const QPointF& point) const {
  const int dx = static_cast<int>(std::lround(point.x() - pressed_.x()));
  const int dy = static_cast<int>(std::lround(point.y() - pressed_.y()));
  if (part_ == RectanglePart::kInside) {
    const int x = std::clamp(start_.x() + dx, 0, bounds_.width() - start_.width());
    const int y = std::clamp(start_.y() + dy, 0, bounds_.height() - start_.height());
    return {x, y, start_.width(), start_.height()};
  }
  // Edges as positions between pixels: the right one is x + width.
  int left = start_.x();
  int top = start_.y();
  int right = start_.x() + start_.width();
  int bottom = start_.y() + start_.height();
  if (movesLeft(part_)) left = std::clamp(left + dx, 0, right - least_.width());
  if (movesRight(part_)) right = std::clamp(right + dx, left + least_.width(), bounds_.width());
  if (movesTop(part_)) top = std::clamp(top + dy, 0, bottom - least_.height());
  if (movesBottom(part_)) bottom = std::clamp(bottom + dy, top + least_.height(), bounds_.height());
  return {left, top, right - left, bottom - top};
}
