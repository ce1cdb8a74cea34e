#include "NodeInfoAction.h"

namespace {
// Bytes to kilobytes: merged sizes are kept in kilobytes.
constexpr double kBytesToKilobytes = 0.0009765625;

NodeInfo::Ptr makeRoot() {
  NodeInfo::Ptr root = NodeInfo::create();
  root->setType(NodeInfo::kTypeRoot);
  root->setFileType(0);
  return root;
}
}  // namespace

NodeInfo::Ptr NodeInfoAction::rootOfTable(const QString& name) {
  UIInfoDB& db = UIInfoDB::defaultDB();
  std::shared_ptr<UIInfoDB::InfoTable> table = db.getInfoTable(name);
  if (!table) table = db.createInfoTable(name);
  if (table->isEmpty()) table->append(makeRoot());
  return table->first();
}

NodeInfo::Ptr NodeInfoAction::getRootNode() { return rootOfTable(QLatin1String(kMainTableName)); }

NodeInfo::Ptr NodeInfoAction::getMergeRootNode() { return rootOfTable(QLatin1String(kMergeTableName)); }

NodeInfo::Ptr NodeInfoAction::getTrimRootNode() { return rootOfTable(QLatin1String(kTrimTableName)); }

std::shared_ptr<UIInfoDB::InfoTable> NodeInfoAction::getInfoTable(const QString& name) {
  return UIInfoDB::defaultDB().getInfoTable(name);
}

NodeInfo::Ptr NodeInfoAction::rootNode() {
  return UIInfoDB::defaultDB().isChecked(QLatin1String(kMergeCheckBoxName)) ? getMergeRootNode() : getRootNode();
}

NodeInfo::List NodeInfoAction::getChildNodeData(const NodeInfo::Ptr& node) {
  if (!node) return {};
  if (node->type() != NodeInfo::kTypeMerged) return {node};
  return node->childNode();
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

void NodeInfoAction::clearAllMergeNodeInfo() {
  getMergeRootNode()->removeAllChildNode();
  UIInfoDB::defaultDB().dropInfoTable(QLatin1String(kMergeTableName));
}

void NodeInfoAction::createMergeTableNodeInfo() {
  const NodeInfo::Ptr mainRoot = getRootNode();
  const NodeInfo::Ptr first = mainRoot->getChildNodeAtIndex(0);
  if (!first) return;

  UIInfoDB::defaultDB().dropInfoTable(QLatin1String(kMergeTableName));
  const NodeInfo::Ptr mergeRoot = getMergeRootNode();

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
      merged->addChildNode(member);
    }
  }

  updateNodeInfo(merged);
  merged->setVideoClips(1);
  merged->setSplitRow(1);
  merged->setVideoMinutes(0);
  mergeRoot->addChildNode(merged);
  merged->setParentNode(mergeRoot);
}
