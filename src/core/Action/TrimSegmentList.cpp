#include "TrimSegmentList.h"

#include <QFileInfo>

#include "CommonClass/CommonClass.h"

const QStringList& TrimSegmentList::columns() {
  static const QStringList names = {QStringLiteral("Title"), QStringLiteral("startTime"), QStringLiteral("endTime"),
                                    QStringLiteral("duration")};
  return names;
}

NodeInfo::Ptr TrimSegmentList::creatNewSegment(const NodeInfo::Ptr& source) {
  if (source == nullptr) return nullptr;
  NodeInfo::Ptr segment = NodeInfo::create();
  segment->setType(NodeInfo::kTypeSegment);
  segment->setFileType(source->fileType());
  segment->setInputFilename(source->inputFilename());
  segment->setNodeIconName(QLatin1String(kSegmentIcon));
  segment->setIsSelected(true);
  segment->setMediaFileInfo(source->mediaFileInfo());
  segment->setMetaData(source->metaData());
  segment->setOrgMetaData(source->orgMetaData());
  segment->setCurProfileSetting(source->curProfileSetting());
  segment->setEffectSettingInfo(source->effectSettingInfo());
  segment->setWatermarkInfo(source->watermarkInfo());
  segment->setCropSettingInfo(source->cropSettingInfo());
  segment->setMetaEditEnable(source->metaEditEnable());
  segment->setDecoderInfo(source->decoderInfo());
  segment->setSelectAudioStream(source->selectAudioStream());
  segment->trimSettingInfo().setStartTime(0);
  segment->trimSettingInfo().setEndTime(static_cast<int32_t>(static_cast<float>(source->mediaFileInfo().totalTime())));
  const QString name = QFileInfo(source->inputFilename()).completeBaseName();
  segment->setOutputFilename(QString::asprintf("%s_segment%.2d", qUtf8Printable(name), curVideoAddChildrenNum_));
  segment->setAddNum(curVideoAddChildrenNum_);
  segment->setTrimParentNode(source);
  curVideoChildren_.append(segment);
  segment->removeAllChildNode();
  ++curVideoAddChildrenNum_;
  return segment;
}

void TrimSegmentList::initTableView(const NodeInfo::Ptr& source) {
  curVideoAddChildrenNum_ = 0;
  curVideoChildren_.clear();
  if (source == nullptr) return;
  const int count = source->getChildNodeCount();
  if (source->type() == NodeInfo::kTypeMerged) {
    source->setType(NodeInfo::kTypeTrimmed);
  } else if (source->type() != NodeInfo::kTypeTrimmed && count < 1) {
    curVideoAddChildrenNum_ = 1;
    creatNewSegment(source);
  }
  for (int index = 0; index < count; ++index) {
    const NodeInfo::Ptr child = source->getChildNodeAtIndex(index);
    if (child == nullptr) break;
    if (curVideoAddChildrenNum_ <= child->addNum()) curVideoAddChildrenNum_ = child->addNum() + 1;
    child->setType(NodeInfo::kTypeSegment);
    curVideoChildren_.append(child);
  }
  updateDurations();
}

bool TrimSegmentList::deleteSegment(const NodeInfo::Ptr& source, int row) {
  const NodeInfo::Ptr segment = at(row);
  if (segment == nullptr || segment->type() != NodeInfo::kTypeSegment) return false;
  curVideoChildren_.removeAt(row);
  deleteNodeData_.append(segment);
  if (curVideoChildren_.isEmpty()) {
    curVideoAddChildrenNum_ = 1;
    creatNewSegment(source);
  }
  updateDurations();
  return true;
}

void TrimSegmentList::clear() {
  curVideoChildren_.clear();
  deleteNodeData_.clear();
  curVideoAddChildrenNum_ = 1;
}

void TrimSegmentList::updateDurations() {
  for (const NodeInfo::Ptr& segment : curVideoChildren_) {
    const int32_t length = segment->trimSettingInfo().endTime() - segment->trimSettingInfo().startTime();
    segment->mediaFileInfo().setDTotalTime(length);
    segment->mediaFileInfo().setITotalTime(length);
  }
}

QString TrimSegmentList::cellText(int row, const QString& column) const {
  const NodeInfo::Ptr segment = at(row);
  if (segment == nullptr) return {};
  const TrimSettingInfo& trim = segment->trimSettingInfo();
  if (column == QLatin1String("Title")) return segment->outputFilename();
  if (column == QLatin1String("startTime")) return CommonClass::timeStrBySecond(trim.startTime());
  if (column == QLatin1String("endTime")) return CommonClass::timeStrBySecond(trim.endTime());
  if (column == QLatin1String("duration")) return CommonClass::timeStrBySecond(trim.endTime() - trim.startTime());
  return {};
}
