#include <gtest/gtest.h>

#include "Action/NodeInfoAction.h"
#include "ValueObject/UIInfoDB.h"
#include "support/ListItems.h"

namespace {

class NodeTrees : public testing::Test {
 protected:
  // A file of the main list with its length (seconds) and size (bytes).
  NodeInfo::Ptr addFile(const QString& name, double seconds, double bytes, int width = 320, int height = 240) {
    NodeInfo::Ptr file = NodeInfo::create();
    file->setType(NodeInfo::kTypeFile);
    file->setFileType(1);
    file->setOutputFilename(name);
    file->mediaFileInfo().setDTotalTime(seconds);
    file->mediaFileInfo().setITotalTime(static_cast<int32_t>(seconds));
    file->mediaFileInfo().setSize(bytes);
    file->mediaFileInfo().setFrameWidth(width);
    file->mediaFileInfo().setFrameHeight(height);
    NodeInfoAction::mainList(db).addChild(NodeInfoAction::getRootNode(db), file);
    return file;
  }

  UIInfoDB db;
};

TEST_F(NodeTrees, EachTreeKeepsOneRootAsEntryZeroOfItsTableAndTheMergeBoxPicksTheOneInUse) {
  const NodeInfo::Ptr main = NodeInfoAction::getRootNode(db);
  EXPECT_EQ(main->type(), NodeInfo::kTypeRoot);
  EXPECT_EQ(main->fileType(), 0);
  EXPECT_EQ(NodeInfoAction::getRootNode(db), main);
  ASSERT_TRUE(NodeInfoAction::getInfoTable(db, QLatin1String(NodeInfoAction::kMainTableName)));
  EXPECT_EQ(NodeInfoAction::getInfoTable(db, QLatin1String(NodeInfoAction::kMainTableName))->root(), main);

  EXPECT_NE(NodeInfoAction::getMergeRootNode(db), main);
  EXPECT_NE(NodeInfoAction::getTrimRootNode(db), main);

  EXPECT_EQ(NodeInfoAction::rootNode(db), main);
  db.setChecked(QLatin1String(NodeInfoAction::kMergeCheckBoxName), true);
  EXPECT_EQ(NodeInfoAction::rootNode(db), NodeInfoAction::getMergeRootNode(db)) << "the root in use follows the box";
}

TEST_F(NodeTrees, MergingSumsLengthsAndGivesTheSizeInKilobytes) {
  const NodeInfo::Ptr merged = NodeInfo::create();
  merged->setType(NodeInfo::kTypeMerged);
  for (const auto& [seconds, bytes] : {std::pair{60.5, 2048.0}, std::pair{30.2, 1024.0}}) {
    const NodeInfo::Ptr member = NodeInfo::create();
    member->mediaFileInfo().setDTotalTime(seconds);
    member->mediaFileInfo().setITotalTime(static_cast<int32_t>(seconds));
    member->mediaFileInfo().setSize(bytes);
    merged->addChildNode(member);
  }
  merged->trimSettingInfo().setStartTime(7);

  NodeInfoAction::updateNodeInfo(merged);
  EXPECT_NEAR(merged->mediaFileInfo().dTotalTime(), 90.7, 1e-9);
  EXPECT_EQ(merged->mediaFileInfo().iTotalTime(), 90);
  EXPECT_EQ(merged->mediaFileInfo().size(), 3.0);
  EXPECT_EQ(merged->trimSettingInfo().startTime(), 0);
  EXPECT_EQ(merged->trimSettingInfo().endTime(), 90);
}

TEST_F(NodeTrees, AMergedNodeStandsForItsMembersAndAnyOtherNodeForItself) {
  const NodeInfo::Ptr file = addFile(QStringLiteral("a"), 1, 1);
  EXPECT_EQ(NodeInfoAction::getChildNodeData(file), NodeInfo::List{file});

  const NodeInfo::Ptr merged = NodeInfo::create();
  merged->setType(NodeInfo::kTypeMerged);
  EXPECT_TRUE(NodeInfoAction::getChildNodeData(merged).isEmpty());
  merged->addChildNode(file);
  merged->addChildNode(file->copy());
  EXPECT_EQ(NodeInfoAction::getChildNodeData(merged), merged->childNode());
  EXPECT_TRUE(NodeInfoAction::getChildNodeData(nullptr).isEmpty());
}

TEST_F(NodeTrees, TheMergeTreeJoinsCopiesOfEveryFileOfTheListAndAnEmptyListBuildsNone) {
  NodeInfoAction::createMergeTableNodeInfo(db);
  EXPECT_EQ(NodeInfoAction::getInfoTable(db, QLatin1String(NodeInfoAction::kMergeTableName)), nullptr);

  const NodeInfo::Ptr first = addFile(QStringLiteral("first"), 10.5, 4096, 640, 360);
  first->cropSettingInfo().setRect(10, 10, 100, 100);
  const NodeInfo::Ptr group = NodeInfo::create();
  group->setType(NodeInfo::kTypeMerged);
  group->setOutputFilename(QStringLiteral("Merge 1"));
  for (const char* name : {"inner1", "inner2"}) {
    const NodeInfo::Ptr member = NodeInfo::create();
    member->setType(NodeInfo::kTypeMergeMember);
    member->setOutputFilename(QLatin1String(name));
    member->mediaFileInfo().setDTotalTime(2);
    member->mediaFileInfo().setITotalTime(2);
    member->mediaFileInfo().setSize(1024);
    group->addChildNode(member);
  }
  NodeInfoAction::mainList(db).addChild(NodeInfoAction::getRootNode(db), group);
  addFile(QStringLiteral("last"), 3, 2048);

  NodeInfoAction::createMergeTableNodeInfo(db);

  const NodeInfo::Ptr mergeRoot = NodeInfoAction::getMergeRootNode(db);
  ASSERT_EQ(mergeRoot->getChildNodeCount(), 1);
  const NodeInfo::Ptr merged = mergeRoot->getChildNodeAtIndex(0);
  EXPECT_EQ(merged->parentNode(), mergeRoot);
  EXPECT_EQ(merged->type(), NodeInfo::kTypeMerged);
  EXPECT_EQ(merged->fileType(), 1);
  EXPECT_EQ(merged->outputFilename(), QStringLiteral("Merge Video"));
  EXPECT_EQ(merged->mediaFileInfo().fileName(), QStringLiteral("Merge Video"));
  EXPECT_EQ(merged->mediaFileInfo().source(), QStringLiteral("Merge Video"));
  EXPECT_EQ(merged->cropSettingInfo().w(), 640);
  EXPECT_EQ(merged->cropSettingInfo().h(), 360);
  EXPECT_EQ(merged->cropSettingInfo().x(), 0);

  EXPECT_EQ(modeltest::outputNames(merged->childNode()), QStringList({"first", "inner1", "inner2", "last"}));
  for (const NodeInfo::Ptr& member : merged->childNode()) EXPECT_EQ(member->type(), NodeInfo::kTypeMergeMember);
  EXPECT_NE(merged->getChildNodeAtIndex(0), first) << "members are copies";
  EXPECT_EQ(first->type(), NodeInfo::kTypeFile) << "the list keeps its own nodes";

  EXPECT_NEAR(merged->mediaFileInfo().dTotalTime(), 17.5, 1e-9);
  EXPECT_EQ(merged->trimSettingInfo().endTime(), 17);
  EXPECT_EQ(merged->mediaFileInfo().size(), 8.0);
  EXPECT_EQ(merged->videoClips(), 1);
  EXPECT_EQ(merged->splitRow(), 1);
  EXPECT_EQ(merged->VideoMinutes(), 0);
}

TEST_F(NodeTrees, RebuildingTheMergeTreeReplacesItKeepsMembersSegmentsAndSurvivesAnEmptiedList) {
  const NodeInfo::Ptr trimmed = addFile(QStringLiteral("trimmed"), 20, 0);
  trimmed->setType(NodeInfo::kTypeTrimmed);
  const NodeInfo::Ptr segment = NodeInfo::create();
  segment->setOutputFilename(QStringLiteral("trimmed_segment01"));
  trimmed->addChildNode(segment);
  addFile(QStringLiteral("other"), 5, 0);

  NodeInfoAction::createMergeTableNodeInfo(db);
  NodeInfoAction::createMergeTableNodeInfo(db);

  ASSERT_EQ(NodeInfoAction::getMergeRootNode(db)->getChildNodeCount(), 1);
  const NodeInfo::Ptr merged = NodeInfoAction::getMergeRootNode(db)->getChildNodeAtIndex(0);
  EXPECT_EQ(modeltest::outputNames(merged->childNode()), QStringList({"trimmed", "other"}));
  EXPECT_EQ(modeltest::outputNames(merged->getChildNodeAtIndex(0)->childNode()), QStringList({"trimmed_segment01"}))
      << "a member keeps its own segments";

  // An emptied list keeps the previous tree until it is cleared.
  NodeInfoAction::mainList(db).removeAllChildren(NodeInfoAction::getRootNode(db));
  NodeInfoAction::createMergeTableNodeInfo(db);
  EXPECT_EQ(NodeInfoAction::getMergeRootNode(db)->getChildNodeCount(), 1) << "the previous tree stays";
  NodeInfoAction::clearAllMergeNodeInfo(db);
  EXPECT_TRUE(NodeInfoAction::mergeTree(db).isEmpty());
}

TEST_F(NodeTrees, SameEffectGivesEachChildItsOwnCopy) {
  const NodeInfo::Ptr merged = NodeInfo::create();
  merged->setType(NodeInfo::kTypeMerged);
  merged->addChildNode(NodeInfo::create());
  merged->addChildNode(NodeInfo::create());
  merged->effectSettingInfo().setRotateAngle(90);
  merged->cropSettingInfo().setRect(4, 4, 100, 50);
  merged->watermarkInfo().setM_watermarkType(WatermarkInfo::kTypeText);

  NodeInfoAction::setSameEffect(merged);
  merged->effectSettingInfo().setRotateAngle(180);
  merged->getChildNodeAtIndex(1)->cropSettingInfo().setW(1);

  for (const NodeInfo::Ptr& child : merged->childNode()) {
    EXPECT_EQ(child->effectSettingInfo().rotateAngle(), 90);
    EXPECT_EQ(child->watermarkInfo().m_watermarkType(), WatermarkInfo::kTypeText);
  }
  EXPECT_EQ(merged->getChildNodeAtIndex(0)->cropSettingInfo().w(), 100);
  EXPECT_EQ(merged->cropSettingInfo().w(), 100);
}

}  // namespace
