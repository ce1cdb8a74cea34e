#include "DroglineView.h"

#include <QTimer>

#include <algorithm>
#include <utility>

DroglineView::DroglineView(QObject* parent) : QObject(parent) {}

DroglineView::~DroglineView() {
  qDeleteAll(std::exchange(items_, {}));
  for (const QPointer<DrogItemView>& item : std::exchange(releasing_, {})) delete item.data();
}

void DroglineView::addItemView(DrogItemView* item, int index) {
  index = std::clamp(index, 0, static_cast<int>(items_.size()));
  emit itemAboutToBeInserted(index);
  items_.insert(index, item);
  item->setParent(nullptr);
  item->setList(this);
  connect(item, &DrogItemView::changed, this, [this, item] {
    const int row = indexOf(item);
    if (row >= 0) emit itemChanged(row);
  });
  emit itemInserted(index);
  if (items_.size() == 1) setSeleteView(item);
}

DrogItemView* DroglineView::getViewById(const VideoInfoObject* task) const {
  for (DrogItemView* item : items_) {
    if (item->itemInfo().get() == task) return item;
  }
  return nullptr;
}

void DroglineView::setSeleteView(DrogItemView* item) {
  if (selected_ == item) return;
  selected_ = item;
  for (DrogItemView* each : items_) each->setSeleted(each == item);
  emit selectionChanged(item);
}

void DroglineView::deleteSeleteView(DrogItemView* item) {
  const int index = indexOf(item);
  if (index < 0) return;
  item->setGetVideoInfo(nullptr);
  item->stopDownloadRequest();
  emit itemAboutToBeRemoved(index);
  items_.removeAt(index);
  item->disconnect(this);
  item->setList(nullptr);
  emit itemRemoved(index);
  if (selected_ == item) selected_ = nullptr;
  if (!items_.isEmpty()) setSeleteView(items_.value(index, items_.last()));
  if (delegate_ != nullptr) delegate_->droglineViewDidRemoveItemView(this, item);
  release(item);
}

void DroglineView::removeAllItems() {
  emit aboutToRemoveAll();
  const QList<DrogItemView*> removed = std::exchange(items_, {});
  selected_ = nullptr;
  emit allRemoved();
  emit selectionChanged(nullptr);
  for (DrogItemView* item : removed) {
    item->disconnect(this);
    item->setList(nullptr);
    release(item);
  }
}

void DroglineView::rightMouseDown() {
  if (delegate_ != nullptr) delegate_->DroglineViewDidReceiveRightMouseEvent(this);
}

void DroglineView::release(DrogItemView* item) {
  item->stopDownloadRequest();
  item->setGetVideoInfo(nullptr);
  // Whoever told of the deletion may still hold the item for a moment.
  releasing_.removeIf([](const QPointer<DrogItemView>& released) { return released.isNull(); });
  releasing_.append(item);
  QTimer::singleShot(kReleaseDelayMs, item, &QObject::deleteLater);
}
