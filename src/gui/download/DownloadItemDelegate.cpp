#include "DownloadItemDelegate.h"

#include <QAbstractItemView>
#include <QApplication>
#include <QDateTime>
#include <QHelpEvent>
#include <QMouseEvent>
#include <QPainter>
#include <QPainterPath>
#include <QToolTip>

#include <algorithm>
#include <array>

#include "Download/DroglineView.h"
#include "download/DownloadListModel.h"
#include "widgets/RowPainting.h"
#include "widgets/ItemDefaultInfo.h"
#include "widgets/SkinImage.h"

namespace {

using Element = DrogItemView::Element;

// The buttons from left to right; those a state hides leave no gap.
constexpr std::array kButtons{Element::btPause,    Element::btResume, Element::btReParam, Element::btImportToConverter,
                              Element::btOpenFile, Element::btDelete};
constexpr int kButtonSize = 24;
constexpr int kButtonStep = 28;
// Room for the widest set of buttons a state shows, so the texts keep their place.
constexpr int kButtonGroupWidth = 4 * kButtonStep + 8;

constexpr int kThumbnailWidth = 80;
constexpr int kTextLeft = 96;
constexpr int kSpeedWidth = 100;
constexpr int kSizeWidth = 140;
constexpr int kProgressHeight = 8;
// One sweep of the bar of an analysis, in milliseconds.
constexpr int kSweepMs = 1400;

DrogItemView* itemOf(const QModelIndex& index) {
  return qobject_cast<DrogItemView*>(index.data(DownloadListModel::ItemRole).value<QObject*>());
}

QString pictureOf(Element button) {
  switch (button) {
    case Element::btPause: return QStringLiteral("pause.svg");
    case Element::btResume: return QStringLiteral("start.svg");
    case Element::btImportToConverter: return QStringLiteral("importToConvert.svg");
    case Element::btOpenFile: return QStringLiteral("openFile.svg");
    case Element::btReParam: return QStringLiteral("reParam.svg");
    default: return QStringLiteral("remove.svg");
  }
}

int buttonGroupLeft(const QRect& line) { return line.right() - kButtonGroupWidth; }

QRect secondLine(const QRect& line) { return {line.left() + kTextLeft, line.top() + 31, 0, 20}; }

QRect iconAt(const QRect& lineOfText, int x) { return {x, lineOfText.top() + 2, 16, 16}; }

}  // namespace

DownloadItemDelegate::DownloadItemDelegate(QObject* parent) : QStyledItemDelegate(parent) {}

QSize DownloadItemDelegate::sizeHint(const QStyleOptionViewItem& /*option*/, const QModelIndex& /*index*/) const {
  return {DrogItemView::kWidth, DrogItemView::kHeight};
}

QRect DownloadItemDelegate::lineRect(const QRect& cell) { return cell.adjusted(4, 2, -4, -2); }

QRect DownloadItemDelegate::elementRect(const DrogItemView& item, Element element, const QRect& line) {
  const QRect second = secondLine(line);
  const int left = second.left();
  const int groupLeft = buttonGroupLeft(line);
  const int textRight = groupLeft - 8;
  switch (element) {
    case Element::imgvBlog: return {line.left() + 6, line.top() + 4, kThumbnailWidth, line.height() - 8};
    case Element::imgvIcon: return {left, line.top() + 7, 16, 16};
    case Element::labTitle: return {left + 22, line.top() + 5, textRight - left - 22, 20};
    case Element::imgvVideoTime: return iconAt(second, left);
    case Element::labVideoTime: return {left + 20, second.top(), 70, second.height()};
    case Element::imgvVideoFormat: return iconAt(second, left + 100);
    case Element::labVideoFormat: return {left + 120, second.top(), 60, second.height()};
    case Element::imgvVideoSize: return iconAt(second, left + 190);
    case Element::labVideoSize: return {left + 210, second.top(), 110, second.height()};
    case Element::imgvFail:
    case Element::imgvWait: return iconAt(second, left);
    case Element::labFail:
    case Element::labWait: return {left + 20, second.top(), textRight - left - 20, second.height()};
    case Element::progressBar: {
      const int right =
          item.isVisible(Element::labDownloadSpeed) ? textRight - kSpeedWidth - kSizeWidth - 8 : textRight;
      return {left, second.center().y() - kProgressHeight / 2, right - left, kProgressHeight};
    }
    case Element::labDownloadSpeed:
      return {textRight - kSpeedWidth - kSizeWidth, second.top(), kSpeedWidth, second.height()};
    case Element::labDownloadSize: return {textRight - kSizeWidth, second.top(), kSizeWidth, second.height()};
    case Element::imgvBg:
    case Element::imgvHighBg: return line;
    default: break;
  }
  // A button: packed to the right among those shown.
  int shownAfter = 0;
  bool found = false;
  for (const Element button : kButtons) {
    if (button == element) found = true;
    if (found && item.isVisible(button)) ++shownAfter;
  }
  if (!found || !item.isVisible(element)) return {};
  return {line.right() - 6 - shownAfter * kButtonStep + (kButtonStep - kButtonSize),
          line.center().y() - kButtonSize / 2, kButtonSize, kButtonSize};
}

std::optional<Element> DownloadItemDelegate::buttonAt(const DrogItemView& item, const QRect& line,
                                                      const QPoint& point) {
  for (const Element button : kButtons) {
    if (elementRect(item, button, line).contains(point)) return button;
  }
  return std::nullopt;
}

const QIcon& DownloadItemDelegate::skinPicture(const QString& name) const {
  auto found = pictures_.constFind(name);
  if (found == pictures_.constEnd()) {
    const QString path = name.startsWith(QLatin1Char('/'))
                             ? name
                             : ItemDefaultInfo::skinFolder() + QStringLiteral("Images/") + name +
                                   (name.contains(QLatin1Char('.')) ? QString() : QStringLiteral(".svg"));
    found = pictures_.insert(name, SkinImage::load(path, QApplication::palette()));
  }
  return *found;
}

void DownloadItemDelegate::paint(QPainter* painter, const QStyleOptionViewItem& option,
                                 const QModelIndex& index) const {
  const DrogItemView* item = itemOf(index);
  if (item == nullptr) return;
  const QRect line = lineRect(option.rect);
  const QPalette& palette = option.palette;
  painter->save();
  painter->setRenderHint(QPainter::Antialiasing);
  RowPainting::drawCard(painter, line, item->isSeleted(), palette, skinPicture(QStringLiteral("itemBg.svg")));
  const QIcon& placeholder =
      skinPicture(item->blogSkinImage().isEmpty() ? QStringLiteral("videoPlaceholder.svg") : item->blogSkinImage());
  RowPainting::drawThumbnail(painter, elementRect(*item, Element::imgvBlog, line), item->getBlogImage(), placeholder);
  if (!item->iconImage().isEmpty()) {
    RowPainting::drawIcon(painter, elementRect(*item, Element::imgvIcon, line), skinPicture(item->iconImage()));
  }
  RowPainting::drawText(painter, elementRect(*item, Element::labTitle, line), item->title(), palette, QPalette::Text,
                        true);
  paintSecondLine(painter, *item, line, palette);
  paintButtons(painter, *item, line, index);
  painter->restore();
}

void DownloadItemDelegate::paintSecondLine(QPainter* painter, const DrogItemView& item, const QRect& line,
                                           const QPalette& palette) const {
  const auto rect = [&item, &line](Element element) { return elementRect(item, element, line); };
  const auto text = [&](Element element, const QString& shown, QPalette::ColorRole role = QPalette::PlaceholderText) {
    if (item.isVisible(element)) RowPainting::drawText(painter, rect(element), shown, palette, role);
  };
  const auto icon = [&](Element element, const QString& picture) {
    if (item.isVisible(element)) RowPainting::drawIcon(painter, rect(element), skinPicture(picture));
  };
  icon(Element::imgvVideoTime, QStringLiteral("clock.svg"));
  text(Element::labVideoTime, item.videoTime());
  icon(Element::imgvVideoFormat, QStringLiteral("film.svg"));
  text(Element::labVideoFormat, item.videoFormat());
  icon(Element::imgvVideoSize, QStringLiteral("disk.svg"));
  text(Element::labVideoSize, item.videoSize());
  icon(Element::imgvFail, QLatin1String(DrogItemView::kFailIcon));
  text(Element::labFail, QLatin1String(DrogItemView::kFailText), QPalette::Text);
  icon(Element::imgvWait, QLatin1String(DrogItemView::kWaitIcon));
  text(Element::labWait, QLatin1String(DrogItemView::kWaitText), QPalette::Text);
  if (item.isVisible(Element::progressBar)) paintProgress(painter, item, rect(Element::progressBar), palette);
  text(Element::labDownloadSpeed, item.downloadSpeed());
  text(Element::labDownloadSize, item.downloadSize());
}

void DownloadItemDelegate::paintProgress(QPainter* painter, const DrogItemView& item, const QRect& rect,
                                         const QPalette& palette) const {
  if (rect.width() <= rect.height()) return;
  RowPainting::drawIcon(painter, rect, skinPicture(QStringLiteral("progressBg.svg")));
  QRect filled = rect;
  if (item.isProgressIndeterminate()) {
    // A stripe sweeping along the bar while the page is analysed.
    const double phase = item.isProgressAnimating()
                             ? static_cast<double>(QDateTime::currentMSecsSinceEpoch() % kSweepMs) / kSweepMs
                             : 0.0;
    const int width = rect.width() / 4;
    filled =
        QRect(rect.left() + static_cast<int>((rect.width() + width) * phase) - width, rect.top(), width, rect.height())
            .intersected(rect);
    QPainterPath stripe;
    stripe.addRoundedRect(QRectF(filled), rect.height() / 2.0, rect.height() / 2.0);
    painter->fillPath(stripe, palette.color(QPalette::Highlight));
    return;
  }
  const double fraction = std::clamp(item.progressValue(), 0.0, 1.0);
  if (fraction <= 0) return;
  filled.setWidth(std::max(rect.height(), static_cast<int>(rect.width() * fraction)));
  RowPainting::drawIcon(painter, filled, skinPicture(QStringLiteral("progressFill.svg")));
}

void DownloadItemDelegate::paintButtons(QPainter* painter, const DrogItemView& item, const QRect& line,
                                        const QModelIndex& index) const {
  for (const Element button : kButtons) {
    const QRect rect = elementRect(item, button, line);
    if (rect.isEmpty()) continue;
    const bool enabled = button != Element::btReParam || item.isReParamEnabled();
    if (pressedIndex_ == index && pressedButton_ == button) {
      QPainterPath circle;
      circle.addEllipse(QRectF(rect));
      painter->fillPath(circle, QApplication::palette().color(QPalette::Mid));
    }
    skinPicture(pictureOf(button)).paint(painter, rect, Qt::AlignCenter, enabled ? QIcon::Normal : QIcon::Disabled);
  }
}

void DownloadItemDelegate::press(DrogItemView& item, Element button) {
  switch (button) {
    case Element::btPause: item.pausePrograss(true); break;
    case Element::btResume: item.startPrograss(true); break;
    case Element::btImportToConverter: item.importToConverter(true); break;
    case Element::btOpenFile: item.openFile(); break;
    case Element::btReParam:
      if (item.isReParamEnabled()) item.startParam();
      break;
    case Element::btDelete: item.deleteItemView(); break;
    default: break;
  }
}

bool DownloadItemDelegate::editorEvent(QEvent* event, QAbstractItemModel* model, const QStyleOptionViewItem& option,
                                       const QModelIndex& index) {
  if (event->type() != QEvent::MouseButtonPress && event->type() != QEvent::MouseButtonRelease) {
    return QStyledItemDelegate::editorEvent(event, model, option, index);
  }
  DrogItemView* item = itemOf(index);
  if (item == nullptr) return false;
  const auto* mouse = static_cast<QMouseEvent*>(event);
  const std::optional<Element> button = buttonAt(*item, lineRect(option.rect), mouse->position().toPoint());
  if (event->type() == QEvent::MouseButtonPress) {
    pressedIndex_ =
        button && mouse->button() == Qt::LeftButton ? QPersistentModelIndex(index) : QPersistentModelIndex();
    pressedButton_ = pressedIndex_.isValid() ? button : std::nullopt;
    if (!button) item->mousePressed();
    if (mouse->button() == Qt::RightButton && item->list() != nullptr) item->list()->rightMouseDown();
    return true;
  }
  const bool click = pressedIndex_ == index && button && button == pressedButton_;
  pressedIndex_ = QPersistentModelIndex();
  pressedButton_.reset();
  if (click) press(*item, *button);
  return true;
}

bool DownloadItemDelegate::helpEvent(QHelpEvent* event, QAbstractItemView* view, const QStyleOptionViewItem& option,
                                     const QModelIndex& index) {
  const DrogItemView* item = itemOf(index);
  if (item == nullptr || event->type() != QEvent::ToolTip) {
    return QStyledItemDelegate::helpEvent(event, view, option, index);
  }
  const std::optional<Element> button = buttonAt(*item, lineRect(option.rect), event->pos());
  QToolTip::showText(event->globalPos(),
                     button ? DrogItemView::toolTip(*button) : index.data(Qt::ToolTipRole).toString(), view);
  return true;
}
