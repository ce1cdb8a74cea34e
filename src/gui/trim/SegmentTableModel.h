// The segment table of the trim window: one row per segment of the trim
// logic, the columns "Title", "startTime", "endTime" and "duration" as the
// logic formats them. It is reset whenever the logic says the rows changed.
#pragma once

#include <QAbstractTableModel>

#include "Action/TrimFormController.h"

class SegmentTableModel : public QAbstractTableModel {
  Q_OBJECT

 public:
  explicit SegmentTableModel(TrimFormController& controller, QObject* parent = nullptr);

  int rowCount(const QModelIndex& parent = QModelIndex()) const override;
  int columnCount(const QModelIndex& parent = QModelIndex()) const override;
  QVariant data(const QModelIndex& index, int role) const override;
  QVariant headerData(int section, Qt::Orientation orientation, int role) const override;

 private:
  TrimFormController& controller_;
};
