#include "NodeInfo.h"

#include <cstring>

namespace {
NodeInfo::List copiesOf(const NodeInfo::List& nodes) {
  NodeInfo::List copies;
  copies.reserve(nodes.size());
  for (const NodeInfo::Ptr& node : nodes) copies.append(node->copy());
  return copies;
}
}  // namespace

NodeInfo::Ptr NodeInfo::copy() const {
  Ptr node = create();
  node->inputFilename_ = inputFilename_;
  node->parentNode_ = parentNode_;
  node->outputFilename_ = outputFilename_;
  node->outputPath_ = outputPath_;
  node->childNode_ = copiesOf(childNode_);
  node->isSelected_ = isSelected_;
  node->type_ = type_;
  node->fileType_ = fileType_;
  node->converterState_ = converterState_;
  node->linkedNum_ = linkedNum_;
  node->addNum_ = addNum_;
  node->addChildCount_ = addChildCount_;
  node->selectAudioStream_ = selectAudioStream_;
  node->splitRow_ = splitRow_;
  node->VideoMinutes_ = VideoMinutes_;
  node->videoClips_ = videoClips_;
  node->mediaFileInfo_ = mediaFileInfo_;
  node->trimSettingInfo_ = trimSettingInfo_;
  node->nodeIconName_ = nodeIconName_;
  node->trimData_ = copiesOf(trimData_);
  node->watermarkInfo_ = watermarkInfo_;
  node->curProfileSetting_ = curProfileSetting_;
  node->effectSettingInfo_ = effectSettingInfo_;
  node->cropSettingInfo_ = cropSettingInfo_;
  node->metaData_ = metaData_;
  node->orgMetaData_ = orgMetaData_;
  node->metaEditEnable_ = metaEditEnable_;
  node->decoderInfo_ = decoderInfo_;
  return node;
}

void NodeInfo::addChildNode(const Ptr& child) {
  if (child) childNode_.append(child);
}

void NodeInfo::addChildNode(const Ptr& child, int index) {
  if (!child) return;
  if (index < 0 || index > childNode_.size()) {
    childNode_.append(child);
  } else {
    childNode_.insert(index, child);
  }
}

NodeInfo::Ptr NodeInfo::getChildNodeAtIndex(int index) const {
  return isValidIndex(index) ? childNode_.at(index) : nullptr;
}

void NodeInfo::removeChildNodeAtIndex(int index) {
  if (isValidIndex(index)) childNode_.removeAt(index);
}

void NodeInfo::removeChildNode(const Ptr& child) { childNode_.removeAll(child); }

int NodeInfo::indexOfChild(const Ptr& child) const {
  if (!child) return 0;
  return static_cast<int>(childNode_.indexOf(child));
}

void NodeInfo::exchangeChildAtIndex(int first, int second) {
  if (isValidIndex(first) && isValidIndex(second)) childNode_.swapItemsAt(first, second);
}

void NodeInfo::setIsSelected(bool selected) {
  isSelected_ = selected;
  if (type_ != kTypeGroup && type_ != kTypeMerged) return;
  for (const Ptr& child : childNode_) child->setIsSelected(selected);
}

void NodeInfo::setCurProfileSetting(const ProfileSettingInfo& profile) {
  curProfileSetting_ = profile;
  metaEditEnable_ = profile.isCanEditMeta();
}

void NodeInfo::setDecoderInfo(const DECODER_INFO* record) {
  if (record != nullptr) std::memcpy(&decoderInfo_, record, sizeof decoderInfo_);
}
