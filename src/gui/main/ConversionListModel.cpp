#include "ConversionListModel.h"

ConversionListModel::ConversionListModel(MainFormController& controller, QObject* parent)
    : QAbstractListModel(parent), controller_(controller) {
  connect(&controller, &MainFormController::windowStateChanged, this, [this](MainFormController::WindowState state) {
    if (state == MainFormController::WindowState::kConverting) takeRows();
  });
}

void ConversionListModel::takeRows() {
  beginResetModel();
  endResetModel();
  for (int row = 0; row < rowCount(); ++row) {
    ConvertView* view = controller_.convertViews()[static_cast<size_t>(row)].get();
    connect(view, &ConvertView::changed, this, [this, row] { emit dataChanged(index(row), index(row)); });
  }
}

int ConversionListModel::rowCount(const QModelIndex& parent) const {
  return parent.isValid() ? 0 : static_cast<int>(controller_.convertViews().size());
}

ConvertView* ConversionListModel::rowAt(const QModelIndex& index) const {
  if (!index.isValid() || index.row() >= rowCount()) return nullptr;
  return controller_.convertViews()[static_cast<size_t>(index.row())].get();
}

QVariant ConversionListModel::data(const QModelIndex& index, int role) const {
  ConvertView* row = rowAt(index);
  if (row == nullptr) return {};
  switch (role) {
    case Qt::DisplayRole:
      return row->nodeInfo()->outputFilename();
    case Qt::ToolTipRole: {
      QString tip = row->statusLine();
      if (!row->outputFiles().isEmpty()) tip += QLatin1Char('\n') + row->outputFiles().join(QLatin1Char('\n'));
      return tip;
    }
    case RowRole:
      return QVariant::fromValue(static_cast<QObject*>(row));
    default:
      return {};
  }
}
