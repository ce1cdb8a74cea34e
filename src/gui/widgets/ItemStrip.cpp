#include "ItemStrip.h"

#include <QPainter>
#include <QSignalBlocker>
#include <QStyle>

#include "widgets/ItemDefaultInfo.h"
#include "widgets/RowPainting.h"

namespace {

constexpr QSize kThumbnailSize(128, 72);

// The item's thumbnail in the same rounded frame as the main list draws it.
QIcon thumbnailOf(const NodeInfo& item, const QIcon& soundPicture, qreal scale) {
  QPixmap picture(kThumbnailSize * scale);
  picture.setDevicePixelRatio(scale);
  picture.fill(Qt::transparent);
  QPainter painter(&picture);
  painter.setRenderHint(QPainter::Antialiasing);
  RowPainting::drawThumbnail(&painter, QRect(QPoint(0, 0), kThumbnailSize), item.mediaFileInfo().imageName(),
                             soundPicture);
  painter.end();
  return QIcon(picture);
}

}  // namespace

ItemStrip::ItemStrip(const NodeInfo::List& items, QWidget* parent) : QListWidget(parent), items_(items) {
  setAccessibleName(tr("Items"));
  setSpacing(4);
  setIconSize(kThumbnailSize);
  // Room for the scroll bar, and for two and a half items so that more are seen to follow.
  const QSize cell(kThumbnailSize.width() + 8, kThumbnailSize.height() + fontMetrics().height() + 12);
  setFixedWidth(cell.width() + 2 * spacing() + style()->pixelMetric(QStyle::PM_ScrollBarExtent) + 2 * frameWidth() + 8);
  setMinimumHeight(cell.height() * 5 / 2);
  // Pictures above their names, in one column.
  setViewMode(QListView::IconMode);
  setFlow(QListView::TopToBottom);
  setWrapping(false);
  setMovement(QListView::Static);
  setResizeMode(QListView::Adjust);
  setTextElideMode(Qt::ElideMiddle);
  setUniformItemSizes(true);
  setVerticalScrollMode(QAbstractItemView::ScrollPerPixel);

  ItemDefaultInfo skin;
  skin.initInfo(palette());
  const qreal scale = devicePixelRatioF();
  for (const NodeInfo::Ptr& item : items_) {
    auto* row = new QListWidgetItem(thumbnailOf(*item, skin.videoImage2, scale), item->outputFilename(), this);
    row->setTextAlignment(Qt::AlignHCenter);
    row->setSizeHint(cell);
    row->setToolTip(item->mediaFileInfo().fileName());
  }
  connect(this, &QListWidget::currentRowChanged, this, [this](int row) {
    if (row >= 0 && row < items_.size()) emit itemChosen(items_[row]);
  });
}

void ItemStrip::showItem(const NodeInfo::Ptr& item) {
  const QSignalBlocker quiet(this);
  setCurrentRow(static_cast<int>(items_.indexOf(item)));
}
