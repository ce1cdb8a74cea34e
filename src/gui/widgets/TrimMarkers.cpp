#include "TrimMarkers.h"

#include <QMouseEvent>
#include <QPainter>
#include <QPainterPath>

#include <algorithm>
#include <cmath>

#include "Action/TrimFormController.h"
#include "CommonClass/NotificationCenter.h"

namespace {

constexpr qreal kSideMargin = 8;
constexpr qreal kMarkerReach = 6;
// The markers never meet: the out marker stays this far after the in marker.
constexpr double kLeastSegment = 1.0;

}  // namespace

TrimMarkers::TrimMarkers(QWidget* parent) : QWidget(parent) {
  setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
  setMouseTracking(true);
  setAccessibleName(tr("Position and trim markers"));
}

void TrimMarkers::setMaximum(double seconds) {
  maximum_ = std::max(0.0, seconds);
  update();
}

void TrimMarkers::setPosition(double seconds) {
  if (grab_ == Grab::kPosition) return;
  position_ = std::clamp(seconds, 0.0, maximum_);
  update();
}

void TrimMarkers::setMarkers(double in, double out) {
  in_ = in;
  out_ = out;
  update();
}

void TrimMarkers::setKeyframes(const QVector<double>& seconds) {
  keyframes_ = seconds;
  update();
}

QRectF TrimMarkers::track() const { return QRectF(kSideMargin, height() / 2.0 - 3, width() - 2 * kSideMargin, 6); }

double TrimMarkers::secondsAt(double x) const {
  const QRectF groove = track();
  if (groove.width() <= 0 || maximum_ <= 0) return 0;
  return std::clamp((x - groove.left()) / groove.width(), 0.0, 1.0) * maximum_;
}

double TrimMarkers::xOf(double seconds) const {
  const QRectF groove = track();
  return maximum_ > 0 ? groove.left() + groove.width() * std::clamp(seconds / maximum_, 0.0, 1.0) : groove.left();
}

void TrimMarkers::paintEvent(QPaintEvent* /*event*/) {
  QPainter painter(this);
  painter.setRenderHint(QPainter::Antialiasing);
  const QRectF groove = track();
  painter.setPen(Qt::NoPen);
  painter.setBrush(palette().color(QPalette::Mid));
  painter.drawRoundedRect(groove, 3, 3);
  // The kept part between the markers.
  painter.setBrush(palette().color(QPalette::Highlight));
  painter.drawRect(QRectF(QPointF(xOf(in_), groove.top()), QPointF(xOf(out_), groove.bottom())));

  // One tick per pixel column however many keyframes share it.
  QVector<QLineF> ticks;
  int lastColumn = -1;
  for (double seconds : keyframes_) {
    const qreal x = std::round(xOf(seconds)) + 0.5;
    if (static_cast<int>(x) == lastColumn) continue;
    lastColumn = static_cast<int>(x);
    ticks.append(QLineF(x, groove.bottom() + 3, x, groove.bottom() + 7));
  }
  painter.setPen(QPen(palette().color(QPalette::PlaceholderText), 1));
  painter.setRenderHint(QPainter::Antialiasing, false);
  painter.drawLines(ticks);
  painter.setRenderHint(QPainter::Antialiasing);

  const auto marker = [&](double seconds, bool isIn) {
    const qreal x = xOf(seconds);
    QPainterPath flag;
    flag.moveTo(x, 2);
    flag.lineTo(x, height() - 2);
    flag.lineTo(x + (isIn ? 7 : -7), height() - 8);
    flag.lineTo(x, height() - 14);
    painter.setBrush(isIn ? QColor(0x2e, 0x9d, 0x4f) : QColor(0xc8, 0x3c, 0x2c));
    painter.setPen(QPen(painter.brush().color().darker(), 1));
    painter.drawPath(flag);
  };
  marker(in_, true);
  marker(out_, false);

  painter.setPen(QPen(palette().color(QPalette::WindowText), 1));
  painter.setBrush(palette().color(QPalette::Base));
  painter.drawEllipse(QPointF(xOf(position_), groove.center().y()), 6, 6);
}

void TrimMarkers::mousePressEvent(QMouseEvent* event) {
  if (event->button() != Qt::LeftButton) return;
  const double x = event->position().x();
  if (std::abs(x - xOf(in_)) <= kMarkerReach && event->position().y() > height() / 2.0) {
    grab_ = Grab::kIn;
  } else if (std::abs(x - xOf(out_)) <= kMarkerReach && event->position().y() > height() / 2.0) {
    grab_ = Grab::kOut;
  } else {
    grab_ = Grab::kPosition;
    emit positionPressed(true);
  }
  moveGrabbed(x);
}

void TrimMarkers::mouseMoveEvent(QMouseEvent* event) {
  if (grab_ != Grab::kNone) moveGrabbed(event->position().x());
}

void TrimMarkers::mouseReleaseEvent(QMouseEvent* event) {
  if (grab_ == Grab::kNone) return;
  moveGrabbed(event->position().x());
  if (grab_ == Grab::kPosition) emit positionPressed(false);
  grab_ = Grab::kNone;
}

void TrimMarkers::moveGrabbed(double x) {
  const double seconds = secondsAt(x);
  NotificationCenter& center = NotificationCenter::defaultCenter();
  switch (grab_) {
    case Grab::kPosition:
      position_ = seconds;
      emit positionMoved(seconds);
      break;
    case Grab::kIn:
      in_ = std::min(seconds, std::max(0.0, out_ - kLeastSegment));
      center.postNotificationName(QLatin1String(TrimFormController::kStartTimeChange), in_);
      break;
    case Grab::kOut:
      out_ = std::max(seconds, std::min(maximum_, in_ + kLeastSegment));
      center.postNotificationName(QLatin1String(TrimFormController::kEndTimeChange), out_);
      break;
    case Grab::kNone: return;
  }
  update();
}
