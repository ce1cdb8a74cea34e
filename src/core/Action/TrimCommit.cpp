#include "TrimCommit.h"

#include "Action/MainFormAction.h"
#include "Action/NodeInfoAction.h"

namespace {

int32_t wholeSeconds(double seconds) { return static_cast<int32_t>(seconds); }

void setUnsplit(NodeInfo& node) {
  node.setVideoMinutes(0);
  node.setVideoClips(1);
}

}  // namespace

void TrimCommit::resetEdits(NodeInfo& node, const NodeInfo& frameSource) {
  CropSettingInfo crop;
  crop.setRect(0, 0, frameSource.mediaFileInfo().frameWidth(), frameSource.mediaFileInfo().frameHeight());
  node.setCropSettingInfo(crop);
  node.setEffectSettingInfo(EffectSettingInfo());
  node.setWatermarkInfo(WatermarkInfo());
}

void TrimCommit::addTrimNodeInfo(UIInfoDB& db, TrimFormDelegate* delegate, PlayVideoAction& player,
                                 const NodeInfo::Ptr& source, TrimSegmentList& segments, bool merge) {
  if (delegate == nullptr || source == nullptr) return;
  NodeTree& list = NodeInfoAction::mainList(db);
  for (const NodeInfo::Ptr& deleted : segments.deleteNodeData()) delegate->deleteItemView(deleted);
  segments.deleteNodeData().clear();
  // Segments that were items already come back below.
  const NodeInfo::List table = segments.curVideoChildren();
  for (const NodeInfo::Ptr& segment : table) {
    list.removeAllChildren(segment);
    delegate->deleteItemView(segment);
  }

  if (merge && table.size() > 1) {
    mergeSegments(db, delegate, source, table);
    segments.clearSegments();
    return;
  }

  list.removeAllChildren(source);
  source->trimSettingInfo().setEndTime(wholeSeconds(source->mediaFileInfo().totalTime()));
  if (table.size() == 1 && source->type() == NodeInfo::kTypeFile) {
    const TrimSettingInfo& only = table.front()->trimSettingInfo();
    const TrimSettingInfo& whole = source->trimSettingInfo();
    if (whole.startTime() == 0 && only.startTime() == 0 && only.endTime() == whole.endTime()) {
      segments.clearSegments();
      return;
    }
  }
  if (restoresUntrimmed(source, table)) {
    source->trimSettingInfo().setEndTime(untrimmedLength(*source, *table.front()));
    source->setType(NodeInfo::kTypeFile);
    resetEdits(*source, *source);
    MainFormAction::addNodeToRootNode(db, source);
    delegate->addTrimItemView(source);
    segments.clearSegments();
    return;
  }
  addSegmentsAsItems(db, delegate, player, source, table);
  segments.clearSegments();
}

void TrimCommit::mergeSegments(UIInfoDB& db, TrimFormDelegate* delegate, const NodeInfo::Ptr& source,
                               const NodeInfo::List& segments) {
  NodeTree& list = NodeInfoAction::mainList(db);
  const bool wasTrimmed = source->type() == NodeInfo::kTypeTrimmed;
  list.removeAllChildren(source);
  if (wasTrimmed) {
    source->setTrimParentNode(nullptr);
  } else {
    source->setType(NodeInfo::kTypeFile);
  }
  for (const NodeInfo::Ptr& segment : segments) {
    if (wasTrimmed) {
      segment->setType(NodeInfo::kTypeFile);
      setUnsplit(*segment);
    } else {
      segment->setSelectAudioStream(source->selectAudioStream());
    }
    resetEdits(*segment, *source);
    list.addChild(source, segment);
  }
  NodeInfoAction::updateNodeInfo(source);
  setUnsplit(*source);
  resetEdits(*source, *source);
  if (wasTrimmed) {
    // Its segments were items of their own; now the source is the one item that joins them.
    MainFormAction::addNodeToRootNode(db, source);
    delegate->addTrimItemView(source);
  } else {
    list.noteChanged(source);
  }
}

int32_t TrimCommit::untrimmedLength(const NodeInfo& source, const NodeInfo& segment) {
  return segment.trimParentNode() != nullptr ? wholeSeconds(source.mediaFileInfo().totalTime())
                                             : source.mediaFileInfo().iTotalTime();
}

bool TrimCommit::restoresUntrimmed(const NodeInfo::Ptr& source, const NodeInfo::List& segments) {
  if (segments.size() != 1 || source->type() != NodeInfo::kTypeTrimmed) return false;
  const NodeInfo& segment = *segments.front();
  return source->trimSettingInfo().startTime() == 0 && segment.trimSettingInfo().startTime() == 0 &&
         segment.trimSettingInfo().endTime() == untrimmedLength(*source, segment);
}

void TrimCommit::addSegmentsAsItems(UIInfoDB& db, TrimFormDelegate* delegate, PlayVideoAction& player,
                                    const NodeInfo::Ptr& source, const NodeInfo::List& segments) {
  NodeTree& list = NodeInfoAction::mainList(db);
  delegate->deleteItemView(source);
  for (const NodeInfo::Ptr& segment : segments) {
    list.removeAllChildren(segment);
    setUnsplit(*segment);
    list.addChild(source, segment);
  }
  resetEdits(*source, *source);
  source->trimSettingInfo().setStartTime(0);
  source->trimSettingInfo().setEndTime(wholeSeconds(source->mediaFileInfo().totalTime()));
  source->setType(NodeInfo::kTypeTrimmed);
  setUnsplit(*source);
  for (const NodeInfo::Ptr& segment : segments) {
    player.getCurrentImage(segment, segment->trimSettingInfo().startTime());
    segment->setType(NodeInfo::kTypeFile);
    MainFormAction::addNodeToRootNode(db, segment);
    delegate->addTrimItemView(segment);
  }
}
