#include "RowPainting.h"

#include <QPainter>
#include <QPainterPath>
#include <QPixmapCache>

namespace RowPainting {

void drawText(QPainter* painter, const QRect& rect, const QString& text, const QPalette& palette,
              QPalette::ColorRole role, bool bold) {
  if (rect.isEmpty()) return;
  const QFont before = painter->font();
  QFont font = before;
  font.setBold(bold);
  painter->setFont(font);
  painter->setPen(palette.color(role));
  const QString shown = QFontMetrics(font).elidedText(text, Qt::ElideMiddle, rect.width());
  painter->drawText(rect, Qt::AlignVCenter | Qt::AlignLeft, shown);
  painter->setFont(before);
}

void drawIcon(QPainter* painter, const QRect& rect, const QIcon& icon) {
  if (!rect.isEmpty() && !icon.isNull()) icon.paint(painter, rect);
}

namespace {

// `picture` (scaled for the device already) centred in a rounded dark frame,
// or `placeholder` when it is null.
void drawFramed(QPainter* painter, const QRect& rect, const QPixmap& picture, const QIcon& placeholder) {
  QPainterPath frame;
  frame.addRoundedRect(QRectF(rect), 6, 6);
  painter->save();
  painter->setClipPath(frame);
  painter->fillRect(rect, QColor(20, 20, 24));
  if (!picture.isNull()) {
    QRect shown(QPoint(0, 0), picture.size() / picture.devicePixelRatio());
    shown.moveCenter(rect.center());
    painter->drawPixmap(shown, picture);
  } else {
    drawIcon(painter, rect, placeholder);
  }
  painter->restore();
}

QPixmap fitted(const QPixmap& picture, const QRect& rect, qreal scale) {
  if (picture.isNull()) return {};
  QPixmap scaled = picture.scaled(rect.size() * scale, Qt::KeepAspectRatio, Qt::SmoothTransformation);
  scaled.setDevicePixelRatio(scale);
  return scaled;
}

}  // namespace

void drawThumbnail(QPainter* painter, const QRect& rect, const QString& path, const QIcon& placeholder) {
  if (rect.isEmpty()) return;
  QPixmap picture;
  const qreal scale = painter->device()->devicePixelRatioF();
  const QString key = QStringLiteral("%1@%2x%3").arg(path).arg(rect.width()).arg(scale);
  if (!path.isEmpty() && !QPixmapCache::find(key, &picture)) {
    picture = fitted(QPixmap(path), rect, scale);
    if (!picture.isNull()) QPixmapCache::insert(key, picture);
  }
  drawFramed(painter, rect, picture, placeholder);
}

void drawThumbnail(QPainter* painter, const QRect& rect, const QImage& image, const QIcon& placeholder) {
  if (rect.isEmpty()) return;
  drawFramed(painter, rect, fitted(QPixmap::fromImage(image), rect, painter->device()->devicePixelRatioF()),
             placeholder);
}

void drawCard(QPainter* painter, const QRect& row, bool selected, const QPalette& palette, const QIcon& background) {
  if (!selected) {
    drawIcon(painter, row, background);
    return;
  }
  QPainterPath card;
  card.addRoundedRect(QRectF(row).adjusted(0.5, 0.5, -0.5, -0.5), 8, 8);
  QColor fill = palette.color(QPalette::Highlight);
  fill.setAlpha(50);
  painter->fillPath(card, fill);
  painter->setPen(QPen(palette.color(QPalette::Highlight), 1.5));
  painter->drawPath(card);
}

}  // namespace RowPainting
