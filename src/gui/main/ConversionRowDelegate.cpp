#include "ConversionRowDelegate.h"

#include <QApplication>
#include <QMouseEvent>
#include <QPainter>
#include <QPainterPath>

#include <algorithm>

#include "Action/ConvertView.h"
#include "Action/MediaItemSummary.h"
#include "main/ConversionListModel.h"
#include "widgets/RowPainting.h"
#include "widgets/SkinImage.h"

namespace {

using Outcome = ConvertView::Outcome;

ConvertView* rowOf(const QModelIndex& index) {
  return qobject_cast<ConvertView*>(index.data(ConversionListModel::RowRole).value<QObject*>());
}

QColor outcomeColour(Outcome outcome, const QPalette& palette) {
  switch (outcome) {
    case Outcome::kFinished:
      return {46, 157, 87};
    case Outcome::kWarning:
      return {201, 138, 0};
    case Outcome::kFailed:
      return {214, 69, 65};
    case Outcome::kConverting:
      return palette.color(QPalette::Highlight);
    case Outcome::kWaiting:
    case Outcome::kStopped:
    case Outcome::kCancelled:
      break;
  }
  return palette.color(QPalette::PlaceholderText);
}

QIcon skinPicture(const char* name) {
  return SkinImage::load(ItemDefaultInfo::skinFolder() + QLatin1String(name), QApplication::palette());
}

}  // namespace

ConversionRowDelegate::ConversionRowDelegate(const ItemDefaultInfo& skin, QObject* parent)
    : QStyledItemDelegate(parent),
      skin_(skin),
      startImage_(skinPicture(ConvertView::kStartImage)),
      startPressedImage_(skinPicture(ConvertView::kStartPressedImage)),
      stopImage_(skinPicture(ConvertView::kStopImage)),
      stopPressedImage_(skinPicture(ConvertView::kStopPressedImage)) {}

QSize ConversionRowDelegate::sizeHint(const QStyleOptionViewItem& /*option*/, const QModelIndex& /*index*/) const {
  return {ItemDefaultInfo::kDesignWidth, ItemDefaultInfo::kRowHeight};
}

QRect ConversionRowDelegate::buttonRect(const QRect& row) const {
  return ItemDefaultInfo::placed(skin_.stopButtonRect, row);
}

void ConversionRowDelegate::paint(QPainter* painter, const QStyleOptionViewItem& option,
                                  const QModelIndex& index) const {
  const ConvertView* view = rowOf(index);
  if (view == nullptr) return;
  const MediaItemSummary item = MediaItemSummary::of(*view->nodeInfo());
  const QRect row = option.rect.adjusted(4, 2, -4, -2);
  const QPalette& palette = option.palette;
  painter->save();
  painter->setRenderHint(QPainter::Antialiasing);
  RowPainting::drawCard(painter, row, option.state & QStyle::State_Selected, palette, skin_.bgImage);
  RowPainting::drawThumbnail(painter, ItemDefaultInfo::placed(skin_.videoImageRect, row), item.thumbnailPath,
                             item.hasVideo ? skin_.videoImage : skin_.videoImage2);
  RowPainting::drawIcon(painter, ItemDefaultInfo::placed(skin_.videoIcoRect, row),
                        item.hasVideo ? skin_.videoIco : skin_.audioIco);
  const QRect name = ItemDefaultInfo::placed(skin_.videoNameRect, row);
  RowPainting::drawText(painter, name, item.name + QLatin1Char('.') + view->nodeInfo()->curProfileSetting().extName(),
                        palette, QPalette::Text, true);

  // The status line spans the middle of the row, up to the button.
  const QRect timeRect = ItemDefaultInfo::placed(skin_.timeRect, row);
  const QRect status(timeRect.left() - 20, timeRect.top(), buttonRect(row).left() - timeRect.left() + 12,
                     timeRect.height());
  RowPainting::drawIcon(painter, ItemDefaultInfo::placed(skin_.timeIcoRect, row), skin_.timeIco);
  painter->setPen(outcomeColour(view->outcome(), palette));
  painter->drawText(status.adjusted(20, 0, 0, 0), Qt::AlignVCenter | Qt::AlignLeft,
                    painter->fontMetrics().elidedText(view->statusLine(), Qt::ElideRight, status.width() - 20));

  paintProgress(painter, ItemDefaultInfo::placed(skin_.progressRect, row), *view, palette);
  RowPainting::drawText(painter, ItemDefaultInfo::placed(skin_.profileImageRect, row).adjusted(8, 0, -40, -30),
                        item.profileName, palette, QPalette::PlaceholderText);
  paintButton(painter, row, index, *view);
  painter->restore();
}

void ConversionRowDelegate::paintProgress(QPainter* painter, const QRect& rect, const ConvertView& row,
                                          const QPalette& palette) const {
  if (rect.isEmpty()) return;
  RowPainting::drawIcon(painter, rect, skin_.progressBgImage);
  const double fraction =
      row.progressMaximum() > 0 ? std::clamp(row.progressValue() / row.progressMaximum(), 0.0, 1.0) : 0.0;
  if (fraction <= 0) return;
  QRect filled = rect;
  filled.setWidth(std::max(rect.height(), static_cast<int>(rect.width() * fraction)));
  if (row.outcome() == Outcome::kConverting || row.outcome() == Outcome::kFinished) {
    RowPainting::drawIcon(painter, filled, skin_.progressFillImage);
    return;
  }
  QPainterPath bar;
  bar.addRoundedRect(QRectF(filled), rect.height() / 2.0, rect.height() / 2.0);
  painter->fillPath(bar, outcomeColour(row.outcome(), palette));
}

void ConversionRowDelegate::paintButton(QPainter* painter, const QRect& row, const QModelIndex& index,
                                        const ConvertView& view) const {
  const bool pressed = pressed_ == index;
  if (view.isStopButtonVisible()) {
    RowPainting::drawIcon(painter, buttonRect(row), pressed ? stopPressedImage_ : stopImage_);
  } else if (view.isStartButtonVisible()) {
    const QIcon& icon = pressed ? startPressedImage_ : startImage_;
    if (view.isStartButtonEnabled()) {
      RowPainting::drawIcon(painter, buttonRect(row), icon);
    } else {
      icon.paint(painter, buttonRect(row), Qt::AlignCenter, QIcon::Disabled);
    }
  }
}

bool ConversionRowDelegate::editorEvent(QEvent* event, QAbstractItemModel* model, const QStyleOptionViewItem& option,
                                        const QModelIndex& index) {
  if (event->type() != QEvent::MouseButtonPress && event->type() != QEvent::MouseButtonRelease) {
    return QStyledItemDelegate::editorEvent(event, model, option, index);
  }
  const auto* mouse = static_cast<QMouseEvent*>(event);
  const bool onButton = buttonRect(option.rect.adjusted(4, 2, -4, -2)).contains(mouse->position().toPoint());
  if (event->type() == QEvent::MouseButtonPress) {
    pressed_ = onButton && mouse->button() == Qt::LeftButton ? QPersistentModelIndex(index) : QPersistentModelIndex();
    return false;
  }
  const bool click = pressed_ == index && onButton;
  pressed_ = QPersistentModelIndex();
  ConvertView* view = rowOf(index);
  if (!click || view == nullptr) return false;
  if (view->isStopButtonVisible()) {
    view->stopButtonClick();
  } else {
    view->encodeButtonClick();
  }
  return true;
}
