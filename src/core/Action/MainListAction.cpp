#include "MainListAction.h"

#include "Action/NodeInfoAction.h"

int32_t MainListAction::totalMakeMergeCount = 1;

namespace {

bool hasVideo(const NodeInfo::Ptr& item) {
  const NodeInfo::Ptr& probed =
      item->type() == NodeInfo::kTypeMerged && item->getChildNodeCount() > 0 ? item->getChildNodeAtIndex(0) : item;
  return probed->mediaFileInfo().videoStream() > 0;
}

}  // namespace

QString MainListAction::whyMergeRefused(const NodeInfo::List& items) {
  if (items.size() < 2) return QStringLiteral("Merge is effective only when two or more files are chosen");
  const bool firstHasVideo = hasVideo(items.front());
  for (const NodeInfo::Ptr& item : items) {
    if (hasVideo(item) != firstHasVideo) {
      return QStringLiteral("Merge is effective only when all selected files are video or audio");
    }
  }
  return {};
}

NodeInfo::List MainListAction::expandSlideAndMergeNode(UIInfoDB& db, const NodeInfo::List& selection) {
  NodeTree& list = NodeInfoAction::mainList(db);
  NodeInfo::List files;
  for (const NodeInfo::Ptr& item : selection) {
    const bool isGroup = item->type() == NodeInfo::kTypeGroup || item->type() == NodeInfo::kTypeMerged;
    if (isGroup) {
      files.append(item->childNode());
    } else {
      files.append(item);
    }
    list.setSelected(item, false);
  }
  return files;
}

NodeInfo::Ptr MainListAction::makeMergeBySelectedNodes(UIInfoDB& db, const NodeInfo::List& items) {
  if (items.isEmpty()) return nullptr;
  NodeTree& list = NodeInfoAction::mainList(db);
  const NodeInfo::Ptr root = list.root();
  const NodeInfo::Ptr& last = items.back();
  NodeInfo::Ptr group = NodeInfo::create();
  group->setType(NodeInfo::kTypeMerged);
  group->setFileType(-1);
  group->setNodeIconName(QStringLiteral("iconMerge"));
  group->setCurProfileSetting(last->curProfileSetting());

  int32_t seconds = 0;
  double bytes = 0;
  for (const NodeInfo::Ptr& item : items) {
    const NodeInfo::Ptr formerParent = item->parentNode();
    list.joinMergeGroup(group, item);
    if (formerParent != nullptr && formerParent != root && formerParent->getChildNodeCount() == 0) {
      list.removeFromParent(formerParent);
    }
    seconds += item->trimSettingInfo().endTime() - item->trimSettingInfo().startTime();
    bytes += item->mediaFileInfo().size();
  }

  MediaFileInfo& media = group->mediaFileInfo();
  const MediaFileInfo& lastMedia = last->mediaFileInfo();
  media.setFrameWidth(lastMedia.frameWidth());
  media.setFrameHeight(lastMedia.frameHeight());
  media.setVideoStream(lastMedia.videoStream());
  media.setAudioStream(lastMedia.audioStream());
  media.setDTotalTime(seconds);
  media.setITotalTime(seconds);
  media.setTotalTime(seconds);
  media.setSize(bytes / 1024);
  group->trimSettingInfo().setStartTime(0);
  group->trimSettingInfo().setEndTime(seconds);

  const QString name = QStringLiteral("Merge %1").arg(totalMakeMergeCount++);
  media.setFileName(name);
  media.setSource(name);
  group->setOutputFilename(name);

  list.addChild(root, group);
  return group;
}

void MainListAction::clearAllFile(UIInfoDB& db) {
  NodeTree& list = NodeInfoAction::mainList(db);
  list.removeAllChildren(list.root());
  NodeInfoAction::clearAllMergeNodeInfo(db);
}

void MainListAction::removeFiles(UIInfoDB& db, const NodeInfo::List& items) {
  NodeTree& list = NodeInfoAction::mainList(db);
  const NodeInfo::Ptr root = list.root();
  for (const NodeInfo::Ptr& item : items) {
    if (item != nullptr && item->parentNode() == root) list.removeFromParent(item);
  }
}

bool MainListAction::fileMoveUp(UIInfoDB& db, const NodeInfo::Ptr& item) { return moveBy(db, item, -1); }

bool MainListAction::fileMoveDown(UIInfoDB& db, const NodeInfo::Ptr& item) { return moveBy(db, item, 1); }

bool MainListAction::moveBy(UIInfoDB& db, const NodeInfo::Ptr& item, int step) {
  NodeTree& list = NodeInfoAction::mainList(db);
  const NodeInfo::Ptr root = list.root();
  const int index = item == nullptr ? -1 : root->indexOfChild(item);
  const int target = index + step;
  if (index < 0 || target < 0 || target >= root->getChildNodeCount()) return false;
  list.moveChild(root, index, target);
  return true;
}

void MainListAction::applyToAll(UIInfoDB& db, const NodeInfo::Ptr& source) {
  NodeTree& list = NodeInfoAction::mainList(db);
  const NodeInfo::Ptr root = list.root();
  if (source == nullptr || root->getChildNodeCount() < 2) return;
  const ProfileSettingInfo profile = source->curProfileSetting();
  for (const NodeInfo::Ptr& item : root->childNode()) {
    item->setCurProfileSetting(profile);
    for (const NodeInfo::Ptr& child : item->childNode()) child->setCurProfileSetting(profile);
    list.noteChanged(item);
  }
}
