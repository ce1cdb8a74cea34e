#include "SkinImage.h"

#include <QFile>
#include <QFileInfo>
#include <QHash>
#include <QIconEngine>
#include <QPainter>
#include <QSvgRenderer>

namespace {

QByteArray withPaletteColours(QByteArray svg, const QPalette& palette) {
  const std::pair<const char*, QPalette::ColorRole> tokens[] = {
      {"{base}", QPalette::Base},         {"{text}", QPalette::Text},
      {"{mid}", QPalette::Mid},           {"{highlight}", QPalette::Highlight},
      {"{highlightedText}", QPalette::HighlightedText}, {"{button}", QPalette::Button},
  };
  for (const auto& [token, role] : tokens) svg.replace(token, palette.color(role).name().toLatin1());
  return svg;
}

// Draws the SVG sharp at every size and density asked for. Each size is
// rendered once and kept: list rows paint the same icons many times a second.
class SvgIconEngine : public QIconEngine {
 public:
  explicit SvgIconEngine(QByteArray svg) : svg_(std::move(svg)) {}

  void paint(QPainter* painter, const QRect& rect, QIcon::Mode mode, QIcon::State state) override {
    const qreal scale = painter->device() != nullptr ? painter->device()->devicePixelRatioF() : 1.0;
    painter->drawPixmap(rect, scaledPixmap(rect.size(), mode, state, scale));
  }

  QPixmap pixmap(const QSize& size, QIcon::Mode mode, QIcon::State state) override {
    return scaledPixmap(size, mode, state, 1.0);
  }

  QPixmap scaledPixmap(const QSize& size, QIcon::Mode mode, QIcon::State /*state*/, qreal scale) override {
    const QString key = QStringLiteral("%1x%2@%3/%4").arg(size.width()).arg(size.height()).arg(scale).arg(mode);
    if (const auto kept = rendered_.constFind(key); kept != rendered_.constEnd()) return *kept;
    QPixmap pixmap(size * scale);
    pixmap.setDevicePixelRatio(scale);
    pixmap.fill(Qt::transparent);
    QPainter painter(&pixmap);
    if (mode == QIcon::Disabled) painter.setOpacity(0.4);
    QSvgRenderer renderer(svg_);
    renderer.render(&painter, QRectF(QPointF(0, 0), QSizeF(size)));
    painter.end();
    rendered_.insert(key, pixmap);
    return pixmap;
  }

  QSize actualSize(const QSize& size, QIcon::Mode /*mode*/, QIcon::State /*state*/) override { return size; }
  QIconEngine* clone() const override { return new SvgIconEngine(svg_); }

 private:
  QByteArray svg_;
  QHash<QString, QPixmap> rendered_;
};

}  // namespace

namespace SkinImage {

QIcon load(const QString& requested, const QPalette& palette) {
  // The skin draws its pictures as SVG: a bitmap name finds its SVG sibling.
  QString path = requested;
  if (!QFileInfo::exists(path)) {
    const QFileInfo bitmap(requested);
    const QString svg = bitmap.path() + QLatin1Char('/') + bitmap.completeBaseName() + QStringLiteral(".svg");
    if (QFileInfo::exists(svg)) path = svg;
  }
  QFile file(path);
  if (!file.open(QIODevice::ReadOnly)) return {};
  if (QFileInfo(path).suffix().compare(QLatin1String("svg"), Qt::CaseInsensitive) != 0) {
    const QPixmap picture(path);
    return picture.isNull() ? QIcon() : QIcon(picture);
  }
  QByteArray svg = withPaletteColours(file.readAll(), palette);
  if (!QSvgRenderer(svg).isValid()) return {};
  return QIcon(new SvgIconEngine(std::move(svg)));
}

}  // namespace SkinImage
