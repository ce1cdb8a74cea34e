// Drawing pieces that the media list's rows and the conversion list's rows share.
#pragma once

#include <QIcon>
#include <QImage>
#include <QPalette>
#include <QRect>
#include <QString>

class QPainter;

namespace RowPainting {

// One line of text, elided in the middle to fit.
void drawText(QPainter* painter, const QRect& rect, const QString& text, const QPalette& palette,
              QPalette::ColorRole role = QPalette::Text, bool bold = false);
void drawIcon(QPainter* painter, const QRect& rect, const QIcon& icon);
// The thumbnail at `path` fitted into a rounded dark frame, or `placeholder`
// when there is none. Scaled pictures are cached.
void drawThumbnail(QPainter* painter, const QRect& rect, const QString& path, const QIcon& placeholder);
// The same for a picture in memory; not cached.
void drawThumbnail(QPainter* painter, const QRect& rect, const QImage& image, const QIcon& placeholder);
// The rounded card of a row: tinted with the highlight when selected,
// otherwise the skin's background.
void drawCard(QPainter* painter, const QRect& row, bool selected, const QPalette& palette, const QIcon& background);

}  // namespace RowPainting
