// One named tree of nodes (the main list, the merge tree, the trim segments)
// and the only way its nodes are added, removed, moved and marked changed.
// It keeps the tree's rules: adding a child sets the child's parent link,
// check marks pass down to a group's children, a node joining a merge group
// counts one more link. Each change of a node inside the tree is announced
// twice, before and after, so that an item model can follow the tree
// without reading it again. Changes of nodes not (yet) inside the tree are
// carried out silently.
#pragma once

#include <QObject>

#include "ValueObject/NodeInfo.h"

// What changed: `first` ... `last` are rows among `parent`'s children. For a
// move, `first` is the row the node leaves and `destination` the row it has
// afterwards. For a change of settings, `node` is the changed node and
// `first` = `last` its row.
struct NodeTreeChange {
  enum class Kind { kAdded, kRemoved, kMoved, kChanged };
  Kind kind = Kind::kChanged;
  NodeInfo::Ptr parent;
  int first = 0;
  int last = 0;
  int destination = 0;
  NodeInfo::Ptr node;
};

class NodeTree : public QObject {
  Q_OBJECT

 public:
  explicit NodeTree(QObject* parent = nullptr) : QObject(parent) {}

  // Entry 0 of the table: a root of kind 0 and file type 0, made when the
  // table holds no entry.
  NodeInfo::Ptr root();
  bool isEmpty() const { return entries_.isEmpty(); }
  // Empties the table; the next root() is a fresh one.
  void clear();
  // Whether `node` is the root or hangs below it.
  bool contains(const NodeInfo::Ptr& node) const;

  // Appends, or inserts at `index` when that lies within 0 ... count.
  void addChild(const NodeInfo::Ptr& parent, const NodeInfo::Ptr& child, int index = -1);
  // Takes `child` out of its parent, if it has one.
  void removeFromParent(const NodeInfo::Ptr& child);
  void removeAllChildren(const NodeInfo::Ptr& parent);
  // Moves the child at `from` to row `to` among the same parent's children.
  void moveChild(const NodeInfo::Ptr& parent, int from, int to);
  // Moves `item` out of its parent into the merge group as a member: kind
  // -3, one more link.
  void joinMergeGroup(const NodeInfo::Ptr& group, const NodeInfo::Ptr& item);

  // Sets the check mark, which groups and merged nodes pass to their children.
  void setSelected(const NodeInfo::Ptr& node, bool selected);
  // Announces that the settings of `node` were changed in place.
  void noteChanged(const NodeInfo::Ptr& node);

 signals:
  void aboutToChange(const NodeTreeChange& change);
  void changed(const NodeTreeChange& change);
  // The whole table was emptied.
  void aboutToReset();
  void reset();

 private:
  NodeInfo::List entries_;
};

Q_DECLARE_METATYPE(NodeTreeChange)
