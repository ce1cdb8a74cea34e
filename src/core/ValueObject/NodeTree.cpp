#include "NodeTree.h"

namespace {

NodeTreeChange rows(NodeTreeChange::Kind kind, const NodeInfo::Ptr& parent, int first, int last,
                    const NodeInfo::Ptr& node = nullptr) {
  return {kind, parent, first, last, first, node};
}

}  // namespace

NodeInfo::Ptr NodeTree::root() {
  if (entries_.isEmpty()) {
    NodeInfo::Ptr root = NodeInfo::create();
    root->setType(NodeInfo::kTypeRoot);
    root->setFileType(0);
    entries_.append(root);
  }
  return entries_.first();
}

void NodeTree::clear() {
  if (entries_.isEmpty()) return;
  emit aboutToReset();
  entries_.clear();
  emit reset();
}

bool NodeTree::contains(const NodeInfo::Ptr& node) const {
  if (entries_.isEmpty() || node == nullptr) return false;
  NodeInfo::Ptr ancestor = node;
  while (ancestor->parentNode() != nullptr) ancestor = ancestor->parentNode();
  return ancestor == entries_.first();
}

void NodeTree::addChild(const NodeInfo::Ptr& parent, const NodeInfo::Ptr& child, int index) {
  if (parent == nullptr || child == nullptr) return;
  const int count = parent->getChildNodeCount();
  const int row = index < 0 || index > count ? count : index;
  const bool announced = contains(parent);
  const NodeTreeChange change = rows(NodeTreeChange::Kind::kAdded, parent, row, row, child);
  if (announced) emit aboutToChange(change);
  parent->addChildNode(child, row);
  child->setParentNode(parent);
  if (announced) emit changed(change);
}

void NodeTree::removeFromParent(const NodeInfo::Ptr& child) {
  const NodeInfo::Ptr parent = child != nullptr ? child->parentNode() : nullptr;
  const int row = parent != nullptr ? parent->indexOfChild(child) : -1;
  if (row < 0) return;
  const bool announced = contains(parent);
  const NodeTreeChange change = rows(NodeTreeChange::Kind::kRemoved, parent, row, row, child);
  if (announced) emit aboutToChange(change);
  parent->removeChildNodeAtIndex(row);
  child->setParentNode(nullptr);
  if (announced) emit changed(change);
}

void NodeTree::removeAllChildren(const NodeInfo::Ptr& parent) {
  if (parent == nullptr || parent->getChildNodeCount() == 0) return;
  const bool announced = contains(parent);
  const NodeTreeChange change = rows(NodeTreeChange::Kind::kRemoved, parent, 0, parent->getChildNodeCount() - 1);
  if (announced) emit aboutToChange(change);
  const NodeInfo::List children = parent->childNode();
  parent->removeAllChildNode();
  for (const NodeInfo::Ptr& child : children) child->setParentNode(nullptr);
  if (announced) emit changed(change);
}

void NodeTree::moveChild(const NodeInfo::Ptr& parent, int from, int to) {
  if (parent == nullptr || from == to) return;
  const int count = parent->getChildNodeCount();
  if (from < 0 || from >= count || to < 0 || to >= count) return;
  const bool announced = contains(parent);
  NodeTreeChange change = rows(NodeTreeChange::Kind::kMoved, parent, from, from, parent->getChildNodeAtIndex(from));
  change.destination = to;
  if (announced) emit aboutToChange(change);
  NodeInfo::List children = parent->childNode();
  children.move(from, to);
  parent->setChildArrayNode(children);
  if (announced) emit changed(change);
}

void NodeTree::joinMergeGroup(const NodeInfo::Ptr& group, const NodeInfo::Ptr& item) {
  if (group == nullptr || item == nullptr) return;
  removeFromParent(item);
  item->setType(NodeInfo::kTypeMergeMember);
  item->setLinkedNum(item->linkedNum() + 1);
  addChild(group, item);
}

void NodeTree::setSelected(const NodeInfo::Ptr& node, bool selected) {
  if (node == nullptr) return;
  node->setIsSelected(selected);
  noteChanged(node);
  if (node->type() != NodeInfo::kTypeGroup && node->type() != NodeInfo::kTypeMerged) return;
  for (const NodeInfo::Ptr& child : node->childNode()) noteChanged(child);
}

void NodeTree::noteChanged(const NodeInfo::Ptr& node) {
  if (!contains(node)) return;
  const NodeInfo::Ptr parent = node->parentNode();
  const int row = parent != nullptr ? parent->indexOfChild(node) : 0;
  emit changed(rows(NodeTreeChange::Kind::kChanged, parent, row, row, node));
}
