// The main list as a flat item model: one row per item of the main root, in
// list order. It follows the list's announcements, so it never reads the
// list again: rows are inserted, removed and moved as the tree says, and a
// change anywhere below an item repaints that item's row.
#pragma once

#include <QAbstractListModel>

#include "ValueObject/NodeTree.h"

class MediaListModel : public QAbstractListModel {
  Q_OBJECT

 public:
  enum Role { NodeRole = Qt::UserRole + 1 };

  // Follows `list`, which must outlive the model.
  explicit MediaListModel(NodeTree& list, QObject* parent = nullptr);

  int rowCount(const QModelIndex& parent = QModelIndex()) const override;
  QVariant data(const QModelIndex& index, int role) const override;
  Qt::ItemFlags flags(const QModelIndex& index) const override;
  // A new output name: kept, or refused with the alert, as the list's rules say.
  bool setData(const QModelIndex& index, const QVariant& value, int role = Qt::EditRole) override;

  NodeInfo::Ptr nodeAt(const QModelIndex& index) const;
  QModelIndex indexOf(const NodeInfo::Ptr& node) const;

 private:
  void aboutToChange(const NodeTreeChange& change);
  void changed(const NodeTreeChange& change);
  // The row of the main list that `node` is or hangs below; -1 when none.
  int topRowOf(const NodeInfo::Ptr& node) const;

  NodeTree& list_;
};

Q_DECLARE_METATYPE(NodeInfo::Ptr)
