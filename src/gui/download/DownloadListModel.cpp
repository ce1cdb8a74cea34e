#include "DownloadListModel.h"

DownloadListModel::DownloadListModel(DroglineView& list, QObject* parent) : QAbstractListModel(parent), list_(list) {
  connect(&list, &DroglineView::itemAboutToBeInserted, this, [this](int row) { beginInsertRows({}, row, row); });
  connect(&list, &DroglineView::itemInserted, this, [this] { endInsertRows(); });
  connect(&list, &DroglineView::itemAboutToBeRemoved, this, [this](int row) { beginRemoveRows({}, row, row); });
  connect(&list, &DroglineView::itemRemoved, this, [this] { endRemoveRows(); });
  connect(&list, &DroglineView::aboutToRemoveAll, this, [this] { beginResetModel(); });
  connect(&list, &DroglineView::allRemoved, this, [this] { endResetModel(); });
  connect(&list, &DroglineView::itemChanged, this, [this](int row) { emit dataChanged(index(row), index(row)); });
}

int DownloadListModel::rowCount(const QModelIndex& parent) const {
  return parent.isValid() ? 0 : static_cast<int>(list_.getChildItem().size());
}

DrogItemView* DownloadListModel::itemAt(const QModelIndex& index) const {
  if (!index.isValid() || index.row() >= rowCount()) return nullptr;
  return list_.getChildItem()[index.row()];
}

QVariant DownloadListModel::data(const QModelIndex& index, int role) const {
  DrogItemView* item = itemAt(index);
  if (item == nullptr) return {};
  switch (role) {
    case Qt::DisplayRole: return item->title();
    case Qt::ToolTipRole: return item->itemInfo()->htmUrlStr();
    case ItemRole: return QVariant::fromValue(static_cast<QObject*>(item));
    default: return {};
  }
}
