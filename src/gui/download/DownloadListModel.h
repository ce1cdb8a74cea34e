// The download list as an item model: one row per item of the list
// container, top first. It follows the container's announcements, so rows
// come and go as the container says and a changed item repaints its row.
#pragma once

#include <QAbstractListModel>

#include "Download/DroglineView.h"

class DownloadListModel : public QAbstractListModel {
  Q_OBJECT

 public:
  enum Role { ItemRole = Qt::UserRole + 1 };

  // Follows `list`, which must outlive the model.
  explicit DownloadListModel(DroglineView& list, QObject* parent = nullptr);

  int rowCount(const QModelIndex& parent = QModelIndex()) const override;
  QVariant data(const QModelIndex& index, int role) const override;

  DrogItemView* itemAt(const QModelIndex& index) const;

 private:
  DroglineView& list_;
};
