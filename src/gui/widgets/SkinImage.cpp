#include "SkinImage.h"

#include <QFile>
#include <QFileInfo>
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

// Renders the SVG afresh for every size and density asked for.
class SvgIconEngine : public QIconEngine {
 public:
  explicit SvgIconEngine(QByteArray svg) : svg_(std::move(svg)) {}

  void paint(QPainter* painter, const QRect& rect, QIcon::Mode mode, QIcon::State /*state*/) override {
    QSvgRenderer renderer(svg_);
    if (mode == QIcon::Disabled) painter->setOpacity(painter->opacity() * 0.4);
    renderer.render(painter, rect);
  }

  QPixmap pixmap(const QSize& size, QIcon::Mode mode, QIcon::State state) override {
    return scaledPixmap(size, mode, state, 1.0);
  }

  QPixmap scaledPixmap(const QSize& size, QIcon::Mode mode, QIcon::State state, qreal scale) override {
    QPixmap pixmap(size * scale);
    pixmap.setDevicePixelRatio(scale);
    pixmap.fill(Qt::transparent);
    QPainter painter(&pixmap);
    paint(&painter, QRect(QPoint(0, 0), size), mode, state);
    return pixmap;
  }

  QSize actualSize(const QSize& size, QIcon::Mode /*mode*/, QIcon::State /*state*/) override { return size; }
  QIconEngine* clone() const override { return new SvgIconEngine(svg_); }

 private:
  QByteArray svg_;
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
