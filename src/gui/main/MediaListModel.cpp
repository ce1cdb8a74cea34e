#include "MediaListModel.h"

#include "Action/ItemNameEditing.h"

MediaListModel::MediaListModel(NodeTree& list, QObject* parent) : QAbstractListModel(parent), list_(list) {
  connect(&list, &NodeTree::aboutToChange, this, &MediaListModel::aboutToChange);
  connect(&list, &NodeTree::changed, this, &MediaListModel::changed);
  connect(&list, &NodeTree::aboutToReset, this, &MediaListModel::beginResetModel);
  connect(&list, &NodeTree::reset, this, &MediaListModel::endResetModel);
}

int MediaListModel::rowCount(const QModelIndex& parent) const {
  if (parent.isValid() || list_.isEmpty()) return 0;
  return list_.root()->getChildNodeCount();
}

NodeInfo::Ptr MediaListModel::nodeAt(const QModelIndex& index) const {
  if (!index.isValid() || index.model() != this || list_.isEmpty()) return nullptr;
  return list_.root()->getChildNodeAtIndex(index.row());
}

QModelIndex MediaListModel::indexOf(const NodeInfo::Ptr& node) const {
  const int row = topRowOf(node);
  return row < 0 ? QModelIndex() : index(row);
}

QVariant MediaListModel::data(const QModelIndex& index, int role) const {
  const NodeInfo::Ptr node = nodeAt(index);
  if (node == nullptr) return {};
  switch (role) {
    case Qt::DisplayRole:
    case Qt::EditRole:
      return node->outputFilename();
    case Qt::ToolTipRole:
      return node->type() == NodeInfo::kTypeFile ? node->inputFilename() : node->outputFilename();
    case Qt::CheckStateRole:
      return node->isSelected() ? Qt::Checked : Qt::Unchecked;
    case NodeRole:
      return QVariant::fromValue(node);
    default:
      return {};
  }
}

Qt::ItemFlags MediaListModel::flags(const QModelIndex& index) const {
  if (!index.isValid()) return Qt::NoItemFlags;
  return Qt::ItemIsEnabled | Qt::ItemIsSelectable | Qt::ItemIsEditable;
}

bool MediaListModel::setData(const QModelIndex& index, const QVariant& value, int role) {
  const NodeInfo::Ptr node = nodeAt(index);
  if (node == nullptr || role != Qt::EditRole) return false;
  return ItemNameEditing::endEditing(list_, node, value.toString()) == ItemNameEditing::Outcome::kAccepted;
}

int MediaListModel::topRowOf(const NodeInfo::Ptr& node) const {
  if (list_.isEmpty()) return -1;
  const NodeInfo::Ptr root = list_.root();
  NodeInfo::Ptr item = node;
  while (item != nullptr && item->parentNode() != root) item = item->parentNode();
  return item == nullptr ? -1 : root->indexOfChild(item);
}

void MediaListModel::aboutToChange(const NodeTreeChange& change) {
  if (change.parent != list_.root()) return;
  switch (change.kind) {
    case NodeTreeChange::Kind::kAdded:
      beginInsertRows({}, change.first, change.last);
      break;
    case NodeTreeChange::Kind::kRemoved:
      beginRemoveRows({}, change.first, change.last);
      break;
    case NodeTreeChange::Kind::kMoved:
      // The model's destination is the row before which the node goes.
      beginMoveRows({}, change.first, change.first, {},
                    change.destination > change.first ? change.destination + 1 : change.destination);
      break;
    case NodeTreeChange::Kind::kChanged:
      break;
  }
}

void MediaListModel::changed(const NodeTreeChange& change) {
  if (change.parent == list_.root()) {
    switch (change.kind) {
      case NodeTreeChange::Kind::kAdded:
        endInsertRows();
        return;
      case NodeTreeChange::Kind::kRemoved:
        endRemoveRows();
        return;
      case NodeTreeChange::Kind::kMoved:
        endMoveRows();
        return;
      case NodeTreeChange::Kind::kChanged:
        break;
    }
  }
  // Anything else changed what an item's row shows.
  const int row = topRowOf(change.kind == NodeTreeChange::Kind::kChanged ? change.node : change.parent);
  if (row >= 0) emit dataChanged(index(row), index(row));
}
