#include "PreviewView.h"

#include <QKeyEvent>
#include <QMouseEvent>
#include <QPainter>
#include <QPainterPath>

#include <cstring>

#include "FitGeometry.h"
#include "sound/PreviewSound.h"

namespace {

// How far from a handle's centre the pointer still grabs it, and its drawn side.
constexpr qreal kHandleReach = 6;
constexpr qreal kHandleSide = 7;
// A watermark may shrink to a single pixel; the crop keeps the editors' least side.
constexpr int kLeastWatermarkSide = 1;

Qt::CursorShape cursorFor(RectanglePart part) {
  switch (part) {
    case RectanglePart::kTopLeft:
    case RectanglePart::kBottomRight: return Qt::SizeFDiagCursor;
    case RectanglePart::kTopRight:
    case RectanglePart::kBottomLeft: return Qt::SizeBDiagCursor;
    case RectanglePart::kTop:
    case RectanglePart::kBottom: return Qt::SizeVerCursor;
    case RectanglePart::kLeft:
    case RectanglePart::kRight: return Qt::SizeHorCursor;
    default: return Qt::SizeAllCursor;
  }
}

QRect toQRect(const VideoConverter_Rect& rect) { return {rect.x, rect.y, rect.w, rect.h}; }
VideoConverter_Rect toRecord(const QRect& rect) { return {rect.x(), rect.y(), rect.width(), rect.height()}; }

}  // namespace

PreviewView::PreviewView(QWidget* parent) : QWidget(parent) {
  setFocusPolicy(Qt::StrongFocus);
  setMouseTracking(true);
  setAttribute(Qt::WA_OpaquePaintEvent);
  view_.context = this;
  view_.showFrame = &PreviewView::showFrame;
}

void PreviewView::setSound(PreviewSound* sound) {
  sound_ = sound;
  view_.playSound = sound != nullptr ? &PreviewView::playSound : nullptr;
  view_.soundPlayedUs = sound != nullptr ? &PreviewView::soundPlayedUs : nullptr;
  view_.flushSound = sound != nullptr ? &PreviewView::flushSound : nullptr;
}

void PreviewView::setStill(const QImage& still) {
  still_ = still;
  update();
}

void PreviewView::clearPicture() {
  {
    std::lock_guard lock(newestMutex_);
    newestWaiting_ = false;
  }
  shown_.reset();
  grab_.reset();
  update();
}

void PreviewView::setCropEditing(bool editing) {
  cropEditing_ = editing;
  update();
}

void PreviewView::setWatermarkEditing(bool editing) {
  watermarkEditing_ = editing;
  update();
}

void PreviewView::showFrame(void* context, const VideoConverter_Frame* frame) {
  if (frame != nullptr) static_cast<PreviewView*>(context)->keepNewest(*frame);
}

int PreviewView::playSound(void* context, const int16_t* samples, int frameCount) {
  return static_cast<PreviewView*>(context)->sound_->play(samples, frameCount);
}

int64_t PreviewView::soundPlayedUs(void* context) { return static_cast<PreviewView*>(context)->sound_->playedUs(); }

void PreviewView::flushSound(void* context) { static_cast<PreviewView*>(context)->sound_->flush(); }

// On a renderer thread: the pixels live only during the call, so they are
// copied into the newest picture's buffer, replacing one not drawn yet.
void PreviewView::keepNewest(const VideoConverter_Frame& frame) {
  if (frame.pixels == nullptr || frame.width <= 0 || frame.height <= 0 || frame.bytesPerRow < frame.width * 4) return;
  bool askToShow = false;
  {
    std::lock_guard lock(newestMutex_);
    QImage& image = newest_.image;
    if (image.width() != frame.width || image.height() != frame.height) {
      image = QImage(frame.width, frame.height, QImage::Format_RGB32);
    }
    for (int row = 0; row < frame.height; ++row) {
      std::memcpy(image.scanLine(row), frame.pixels + static_cast<ptrdiff_t>(row) * frame.bytesPerRow,
                  static_cast<size_t>(frame.width) * 4);
    }
    newest_.record = frame;
    newest_.record.pixels = nullptr;
    askToShow = !newestWaiting_;
    newestWaiting_ = true;
  }
  if (askToShow) QMetaObject::invokeMethod(this, &PreviewView::showNewest, Qt::QueuedConnection);
}

void PreviewView::showNewest() {
  {
    std::lock_guard lock(newestMutex_);
    if (!newestWaiting_) return;
    newestWaiting_ = false;
    if (!shown_) shown_ = Picture{};
    // The picture drawn before becomes the buffer for the next one.
    std::swap(*shown_, newest_);
  }
  // The renderer has not caught up with a drag going on.
  if (grab_) setRectangle(grab_->target, grab_->rectangle);
  update();
}

SourceMapping PreviewView::mapping() const {
  if (!shown_ || shown_->record.isSource != 1) return {};
  const VideoConverter_Frame& record = shown_->record;
  return {size(), shown_->image.size(), toQRect(record.picture), QSize(record.sourceWidth, record.sourceHeight)};
}

std::optional<QRect> PreviewView::editable(Target target) const {
  if (!shown_ || shown_->record.isSource != 1) return std::nullopt;
  const VideoConverter_Frame& record = shown_->record;
  if (target == Target::kCrop) {
    if (!cropEditing_) return std::nullopt;
    // A crop without area stands for the whole source.
    const geometry::Rect crop =
        geometry::clampedCrop({record.crop.x, record.crop.y, record.crop.w, record.crop.h},
                              {record.sourceWidth, record.sourceHeight}, geometry::kMinimumCropSide);
    return QRect(crop.x, crop.y, crop.width, crop.height);
  }
  if (!watermarkEditing_ || record.watermark.w <= 0 || record.watermark.h <= 0) return std::nullopt;
  return toQRect(record.watermark);
}

void PreviewView::setRectangle(Target target, const QRect& rectangle) {
  if (!shown_) return;
  (target == Target::kCrop ? shown_->record.crop : shown_->record.watermark) = toRecord(rectangle);
}

std::optional<PreviewView::Grab> PreviewView::grabAt(const QPointF& point) const {
  const SourceMapping sourceMapping = mapping();
  if (!sourceMapping.isValid()) return std::nullopt;
  // The watermark usually lies inside the crop: it is looked at first.
  for (const Target target : {Target::kWatermark, Target::kCrop}) {
    const std::optional<QRect> rectangle = editable(target);
    if (!rectangle) continue;
    const RectanglePart part = rectanglePartAt(sourceMapping.toView(*rectangle), point, kHandleReach);
    if (part == RectanglePart::kNone) continue;
    const int leastSide = target == Target::kCrop ? geometry::kMinimumCropSide : kLeastWatermarkSide;
    return Grab{target, sourceMapping,
                RectangleDrag(part, *rectangle, sourceMapping.toSource(point), sourceMapping.sourceSize(), leastSide),
                *rectangle};
  }
  return std::nullopt;
}

void PreviewView::paintEvent(QPaintEvent* /*event*/) {
  QPainter painter(this);
  painter.fillRect(rect(), Qt::black);
  const QImage& picture = shown_ ? shown_->image : still_;
  if (picture.isNull()) return;
  painter.setRenderHint(QPainter::SmoothPixmapTransform);
  painter.drawImage(fittedRect(picture.size(), size()), picture);
  const SourceMapping sourceMapping = mapping();
  if (!sourceMapping.isValid()) return;
  paintRectangle(painter, Target::kCrop, sourceMapping);
  paintRectangle(painter, Target::kWatermark, sourceMapping);
}

void PreviewView::paintRectangle(QPainter& painter, Target target, const SourceMapping& sourceMapping) const {
  const std::optional<QRect> rectangle = editable(target);
  if (!rectangle) return;
  const QRectF shown = sourceMapping.toView(*rectangle);
  if (target == Target::kCrop) {
    // What the crop leaves out is dimmed.
    QPainterPath outside;
    outside.addRect(sourceMapping.toView(QRect(QPoint(0, 0), sourceMapping.sourceSize())));
    outside.addRect(shown);
    painter.fillPath(outside, QColor(0, 0, 0, 140));
  }
  painter.setPen(target == Target::kCrop ? QPen(Qt::white, 1) : QPen(QColor(255, 200, 0), 1, Qt::DashLine));
  painter.setBrush(Qt::NoBrush);
  painter.drawRect(shown);
  painter.setPen(QPen(Qt::black, 1));
  painter.setBrush(Qt::white);
  for (const RectangleHandle& handle : rectangleHandles(shown)) {
    painter.drawRect(
        QRectF(handle.centre.x() - kHandleSide / 2, handle.centre.y() - kHandleSide / 2, kHandleSide, kHandleSide));
  }
}

void PreviewView::keyPressEvent(QKeyEvent* event) {
  const int direction = event->key() == Qt::Key_Left ? -1 : event->key() == Qt::Key_Right ? 1 : 0;
  if (direction != 0) {
    if (event->modifiers() & Qt::ShiftModifier) {
      emit secondStepRequested(direction);
    } else {
      emit frameStepRequested(direction);
    }
    return;
  }
  switch (event->key()) {
    case Qt::Key_Space: emit playPauseRequested(); return;
    case Qt::Key_Home: emit startRequested(); return;
    case Qt::Key_End: emit endRequested(); return;
    default: QWidget::keyPressEvent(event);
  }
}

void PreviewView::mousePressEvent(QMouseEvent* event) {
  if (event->button() == Qt::LeftButton) grab_ = grabAt(event->position());
  if (!grab_) QWidget::mousePressEvent(event);
}

void PreviewView::mouseMoveEvent(QMouseEvent* event) {
  if (!grab_) {
    if (const std::optional<Grab> under = grabAt(event->position())) {
      setCursor(cursorFor(under->drag.part()));
    } else {
      unsetCursor();
    }
    return;
  }
  const QRect rectangle = grab_->drag.rectangleAt(grab_->mapping.toSource(event->position()));
  if (rectangle == grab_->rectangle) return;
  grab_->rectangle = rectangle;
  setRectangle(grab_->target, rectangle);
  update();
  // The renderer writes it into the record it renders and calls the
  // window's read function at once. Without a running preview it answers
  // VC_ERROR_NO_PREVIEW: the rectangle then shows here only, which is all a
  // still picture can do.
  if (grab_->target == Target::kCrop) {
    VideoConverter_Render_DragCrop(rectangle.x(), rectangle.y(), rectangle.width(), rectangle.height());
  } else {
    VideoConverter_Render_DragWatermark(rectangle.x(), rectangle.y(), rectangle.width(), rectangle.height());
  }
}

void PreviewView::mouseReleaseEvent(QMouseEvent* event) {
  if (event->button() == Qt::LeftButton && grab_) {
    grab_.reset();
    return;
  }
  QWidget::mouseReleaseEvent(event);
}
