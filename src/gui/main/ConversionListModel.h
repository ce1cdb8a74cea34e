// The conversion list as an item model: one row per ConvertView of the
// controller's last start, repainted whenever a row changes.
#pragma once

#include <QAbstractListModel>

#include "Action/MainFormController.h"

class ConversionListModel : public QAbstractListModel {
  Q_OBJECT

 public:
  enum Role { RowRole = Qt::UserRole + 1 };

  // Follows `controller`, which must outlive the model.
  explicit ConversionListModel(MainFormController& controller, QObject* parent = nullptr);

  int rowCount(const QModelIndex& parent = QModelIndex()) const override;
  QVariant data(const QModelIndex& index, int role) const override;
  ConvertView* rowAt(const QModelIndex& index) const;

 private:
  // A run started: the rows are new.
  void takeRows();

  MainFormController& controller_;
};
