// A node of one of the three trees the application keeps: the main list, the
// merge tree and the trim segments. A node carries its input file, probed
// properties, output name and folder, output profile and editing settings.
// Nodes live in std::shared_ptr; the links to the parent and to the node a
// segment was cut from do not own it.
#pragma once

#include <QList>
#include <QString>

#include <cstdint>
#include <memory>

#include "ValueObject/CropSettingInfo.h"
#include "ValueObject/EffectSettingInfo.h"
#include "ValueObject/MediaFileInfo.h"
#include "ValueObject/MediaMetaData.h"
#include "ValueObject/ProfileSettingInfo.h"
#include "ValueObject/TrimSettingInfo.h"
#include "ValueObject/WatermarkInfo.h"
#include "videoconverter.h"

class NodeInfo {
 public:
  using Ptr = std::shared_ptr<NodeInfo>;
  using List = QList<Ptr>;

  // Kinds of node (`type`). Members of a merged node are marked with the
  // negative kind on purpose: code that wants "a file" tests for kTypeFile only.
  static constexpr int32_t kTypeRoot = 0;
  static constexpr int32_t kTypeFile = 1;
  static constexpr int32_t kTypeGroup = 2;
  static constexpr int32_t kTypeMerged = 3;
  static constexpr int32_t kTypeMergeMember = -3;
  static constexpr int32_t kTypeTrimmed = 4;
  static constexpr int32_t kTypeSegment = 5;

  NodeInfo() = default;
  NodeInfo(const NodeInfo&) = delete;
  NodeInfo& operator=(const NodeInfo&) = delete;

  static Ptr create() { return std::make_shared<NodeInfo>(); }

  // A deep copy: copies of every child and trim segment, of every settings
  // object and of the probed record; the same parent; no trim parent.
  Ptr copy() const;

  // Children. Out-of-range indexes are ignored (or give nullptr); a null
  // child is never added.
  void addChildNode(const Ptr& child);
  // Appends when `index` is outside 0 ... count, else inserts at `index`.
  void addChildNode(const Ptr& child, int index);
  int getChildNodeCount() const { return static_cast<int>(childNode_.size()); }
  Ptr getChildNodeAtIndex(int index) const;
  void removeChildNodeAtIndex(int index);
  void removeChildNode(const Ptr& child);
  void removeAllChildNode() { childNode_.clear(); }
  // 0 for a null child, -1 for a node that is not a child.
  int indexOfChild(const Ptr& child) const;
  void exchangeChildAtIndex(int first, int second);
  // Replaces the children by the given ones.
  void setChildArrayNode(const List& children) { childNode_ = children; }
  const List& childNode() const { return childNode_; }

  // The check mark; groups and merged nodes pass it on to their children.
  bool isSelected() const { return isSelected_; }
  void setIsSelected(bool selected);

  Ptr parentNode() const { return parentNode_.lock(); }
  void setParentNode(const Ptr& parent) { parentNode_ = parent; }
  Ptr trimParentNode() const { return trimParentNode_.lock(); }
  void setTrimParentNode(const Ptr& node) { trimParentNode_ = node; }

  // Stores a copy of `profile`; tag editing follows the profile's extension.
  const ProfileSettingInfo& curProfileSetting() const { return curProfileSetting_; }
  ProfileSettingInfo& curProfileSetting() { return curProfileSetting_; }
  void setCurProfileSetting(const ProfileSettingInfo& profile);
  bool metaEditEnable() const { return metaEditEnable_; }
  void setMetaEditEnable(bool enable) { metaEditEnable_ = enable; }
  // The tags to write into the output, and the tags as read from the input.
  const MediaMetaData& metaData() const { return metaData_; }
  MediaMetaData& metaData() { return metaData_; }
  void setMetaData(const MediaMetaData& tags) { metaData_ = tags; }
  const MediaMetaData& orgMetaData() const { return orgMetaData_; }
  void setOrgMetaData(const MediaMetaData& tags) { orgMetaData_ = tags; }

  // The node's own copy of the probed record; all zero until set.
  const DECODER_INFO* decoderInfo() const { return &decoderInfo_; }
  // Copies the whole record; a null record is ignored.
  void setDecoderInfo(const DECODER_INFO* record);

  const QString& inputFilename() const { return inputFilename_; }
  void setInputFilename(const QString& path) { inputFilename_ = path; }
  // Output name without folder or extension.
  const QString& outputFilename() const { return outputFilename_; }
  void setOutputFilename(const QString& name) { outputFilename_ = name; }
  const QString& outputPath() const { return outputPath_; }
  void setOutputPath(const QString& folder) { outputPath_ = folder; }
  int32_t type() const { return type_; }
  void setType(int32_t type) { type_ = type; }
  // 0 not converted, 1 conversion started.
  int32_t converterState() const { return converterState_; }
  void setConverterState(int32_t state) { converterState_ = state; }
  int32_t fileType() const { return fileType_; }
  void setFileType(int32_t fileType) { fileType_ = fileType; }
  int32_t linkedNum() const { return linkedNum_; }
  void setLinkedNum(int32_t count) { linkedNum_ = count; }
  int32_t addNum() const { return addNum_; }
  void setAddNum(int32_t number) { addNum_ = number; }
  int32_t addChildCount() const { return addChildCount_; }
  void setAddChildCount(int32_t count) { addChildCount_ = count; }
  const QString& nodeIconName() const { return nodeIconName_; }
  void setNodeIconName(const QString& name) { nodeIconName_ = name; }
  const MediaFileInfo& mediaFileInfo() const { return mediaFileInfo_; }
  MediaFileInfo& mediaFileInfo() { return mediaFileInfo_; }
  void setMediaFileInfo(const MediaFileInfo& info) { mediaFileInfo_ = info; }
  const TrimSettingInfo& trimSettingInfo() const { return trimSettingInfo_; }
  TrimSettingInfo& trimSettingInfo() { return trimSettingInfo_; }
  void setTrimSettingInfo(const TrimSettingInfo& trim) { trimSettingInfo_ = trim; }
  const List& trimData() const { return trimData_; }
  List& trimData() { return trimData_; }
  int32_t splitRow() const { return splitRow_; }
  void setSplitRow(int32_t mode) { splitRow_ = mode; }
  int32_t VideoMinutes() const { return VideoMinutes_; }
  void setVideoMinutes(int32_t minutes) { VideoMinutes_ = minutes; }
  int32_t videoClips() const { return videoClips_; }
  void setVideoClips(int32_t clips) { videoClips_ = clips; }
  // Index of the chosen audio stream, -1 for none.
  int32_t selectAudioStream() const { return selectAudioStream_; }
  void setSelectAudioStream(int32_t index) { selectAudioStream_ = index; }
  const EffectSettingInfo& effectSettingInfo() const { return effectSettingInfo_; }
  EffectSettingInfo& effectSettingInfo() { return effectSettingInfo_; }
  void setEffectSettingInfo(const EffectSettingInfo& effect) { effectSettingInfo_ = effect; }
  const CropSettingInfo& cropSettingInfo() const { return cropSettingInfo_; }
  CropSettingInfo& cropSettingInfo() { return cropSettingInfo_; }
  void setCropSettingInfo(const CropSettingInfo& crop) { cropSettingInfo_ = crop; }
  const WatermarkInfo& watermarkInfo() const { return watermarkInfo_; }
  WatermarkInfo& watermarkInfo() { return watermarkInfo_; }
  void setWatermarkInfo(const WatermarkInfo& watermark) { watermarkInfo_ = watermark; }

 private:
  bool isValidIndex(int index) const { return index >= 0 && index < childNode_.size(); }

  QString inputFilename_;
  QString outputFilename_;
  QString outputPath_;
  std::weak_ptr<NodeInfo> trimParentNode_;
  std::weak_ptr<NodeInfo> parentNode_;
  List childNode_;
  bool isSelected_ = true;
  int32_t type_ = kTypeRoot;
  int32_t converterState_ = 0;
  int32_t fileType_ = 0;
  int32_t linkedNum_ = 0;
  int32_t addNum_ = 0;
  int32_t addChildCount_ = 0;
  QString nodeIconName_;
  MediaFileInfo mediaFileInfo_;
  TrimSettingInfo trimSettingInfo_;
  List trimData_;
  int32_t splitRow_ = 1;
  int32_t VideoMinutes_ = 0;
  int32_t videoClips_ = 1;
  int32_t selectAudioStream_ = -1;
  ProfileSettingInfo curProfileSetting_;
  EffectSettingInfo effectSettingInfo_;
  CropSettingInfo cropSettingInfo_;
  WatermarkInfo watermarkInfo_;
  MediaMetaData metaData_;
  MediaMetaData orgMetaData_;
  bool metaEditEnable_ = false;
  DECODER_INFO decoderInfo_{};
};
