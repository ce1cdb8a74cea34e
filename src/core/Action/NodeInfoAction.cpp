#include "NodeInfoAction.h"

namespace {
// Bytes to kilobytes: merged sizes are kept in kilobytes.
constexpr double kBytesToKilobytes = 0.0009765625;
}  // namespace

NodeInfo::Ptr NodeInfoAction::rootNode(UIInfoDB& db) {
  return db.isChecked(QLatin1String(kMergeCheckBoxName)) ? getMergeRootNode(db) : getRootNode(db);
}

NodeInfo::List NodeInfoAction::getChildNodeData(const NodeInfo::Ptr& node) {
  if (!node) return {};
  if (node->type() != NodeInfo::kTypeMerged) return {node};
  return node->childNode();
}

NodeInfo::List NodeInfoAction::getSuitableNode(UIInfoDB& db) {
  NodeInfo::List items;
  for (const NodeInfo::Ptr& item : getRootNode(db)->childNode()) {
    if (item->type() != NodeInfo::kTypeMerged) items.append(item);
  }
  return items;
}

void NodeInfoAction::updateNodeInfo(const NodeInfo::Ptr& mergedNode) {
  if (!mergedNode) return;
  double totalTime = 0;
  int32_t wholeSeconds = 0;
  double size = 0;
  for (const NodeInfo::Ptr& child : mergedNode->childNode()) {
    totalTime += child->mediaFileInfo().dTotalTime();
    wholeSeconds += child->mediaFileInfo().iTotalTime();
    size += child->mediaFileInfo().size();
  }
  MediaFileInfo& media = mergedNode->mediaFileInfo();
  media.setDTotalTime(totalTime);
  media.setITotalTime(wholeSeconds);
  media.setSize(size * kBytesToKilobytes);
  mergedNode->trimSettingInfo().setStartTime(0);
  mergedNode->trimSettingInfo().setEndTime(wholeSeconds);
}

void NodeInfoAction::setSameEffect(const NodeInfo::Ptr& node) {
  if (!node) return;
  for (const NodeInfo::Ptr& child : node->childNode()) {
    child->setEffectSettingInfo(node->effectSettingInfo());
    child->setCropSettingInfo(node->cropSettingInfo());
    child->setWatermarkInfo(node->watermarkInfo());
  }
}

void NodeInfoAction::clearAllMergeNodeInfo(UIInfoDB& db) {
  NodeTree& tree = mergeTree(db);
  tree.removeAllChildren(tree.root());
  tree.clear();
}

void NodeInfoAction::createMergeTableNodeInfo(UIInfoDB& db) {
  const NodeInfo::Ptr mainRoot = getRootNode(db);
  const NodeInfo::Ptr first = mainRoot->getChildNodeAtIndex(0);
  if (!first) return;

  NodeTree& tree = mergeTree(db);
  tree.clear();

  const NodeInfo::Ptr merged = first->copy();
  merged->setType(NodeInfo::kTypeMerged);
  merged->setFileType(1);
  merged->mediaFileInfo().setFileName(QLatin1String(kMergedName));
  merged->mediaFileInfo().setSource(QLatin1String(kMergedName));
  merged->setOutputFilename(QLatin1String(kMergedName));
  merged->cropSettingInfo().setRect(0, 0, first->mediaFileInfo().frameWidth(), first->mediaFileInfo().frameHeight());
  // The members below are the merged node's only children, whatever the
  // first item carried (a trimmed item brings its segments along in the copy).
  merged->removeAllChildNode();

  for (const NodeInfo::Ptr& item : mainRoot->childNode()) {
    for (const NodeInfo::Ptr& file : getChildNodeData(item)) {
      const NodeInfo::Ptr member = file->copy();
      member->setType(NodeInfo::kTypeMergeMember);
      tree.addChild(merged, member);
    }
  }

  updateNodeInfo(merged);
  merged->setVideoClips(1);
  merged->setSplitRow(1);
  merged->setVideoMinutes(0);
  tree.addChild(tree.root(), merged);
}
