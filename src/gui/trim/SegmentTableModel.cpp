#include "SegmentTableModel.h"

SegmentTableModel::SegmentTableModel(TrimFormController& controller, QObject* parent)
    : QAbstractTableModel(parent), controller_(controller) {
  connect(&controller_, &TrimFormController::tableChanged, this, [this] {
    beginResetModel();
    endResetModel();
  });
}

int SegmentTableModel::rowCount(const QModelIndex& parent) const {
  return parent.isValid() ? 0 : controller_.segments().count();
}

int SegmentTableModel::columnCount(const QModelIndex& parent) const {
  return parent.isValid() ? 0 : static_cast<int>(TrimSegmentList::columns().size());
}

QVariant SegmentTableModel::data(const QModelIndex& index, int role) const {
  if (!index.isValid() || role != Qt::DisplayRole) return {};
  return controller_.segments().cellText(index.row(), TrimSegmentList::columns().value(index.column()));
}

QVariant SegmentTableModel::headerData(int section, Qt::Orientation orientation, int role) const {
  if (orientation != Qt::Horizontal || role != Qt::DisplayRole) return {};
  static const char* const kHeaders[] = {"Title", "Start", "End", "Duration"};
  return section >= 0 && section < 4 ? tr(kHeaders[section]) : QVariant();
}
