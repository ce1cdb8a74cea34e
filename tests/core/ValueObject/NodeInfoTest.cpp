#include <gtest/gtest.h>

#include <cstring>

#include "ValueObject/NodeInfo.h"
#include "support/ListItems.h"

namespace {

using modeltest::namedNode;
using modeltest::outputNames;

bool isAllZero(const DECODER_INFO* record) {
  const auto* bytes = reinterpret_cast<const unsigned char*>(record);
  return std::all_of(bytes, bytes + sizeof(DECODER_INFO), [](unsigned char byte) { return byte == 0; });
}

TEST(NodeInfo, ANewNodeIsCheckedUnsplitAndHasAnEmptyRecord) {
  const NodeInfo::Ptr node = NodeInfo::create();
  EXPECT_TRUE(node->isSelected());
  EXPECT_EQ(node->videoClips(), 1);
  EXPECT_EQ(node->splitRow(), 1);
  EXPECT_EQ(node->VideoMinutes(), 0);
  EXPECT_EQ(node->getChildNodeCount(), 0);
  EXPECT_TRUE(isAllZero(node->decoderInfo()));
}

TEST(NodeInfo, ChildIndexesOutOfRangeAppendOrChangeNothingAndNullChildrenAreIgnored) {
  const NodeInfo::Ptr parent = namedNode({}, NodeInfo::kTypeRoot);
  for (const char* name : {"a", "b", "c"}) parent->addChildNode(namedNode(QLatin1String(name), NodeInfo::kTypeFile));
  parent->addChildNode(namedNode(QStringLiteral("far"), NodeInfo::kTypeFile), 10);
  parent->addChildNode(namedNode(QStringLiteral("first"), NodeInfo::kTypeFile), 0);
  parent->addChildNode(nullptr);
  parent->addChildNode(nullptr, 1);
  EXPECT_EQ(outputNames(parent->childNode()), QStringList({"first", "a", "b", "c", "far"}));

  EXPECT_EQ(parent->getChildNodeAtIndex(-1), nullptr);
  EXPECT_EQ(parent->getChildNodeAtIndex(5), nullptr);
  parent->removeChildNodeAtIndex(-1);
  parent->removeChildNodeAtIndex(5);
  parent->exchangeChildAtIndex(0, 7);
  parent->exchangeChildAtIndex(-2, 1);
  EXPECT_EQ(outputNames(parent->childNode()), QStringList({"first", "a", "b", "c", "far"}));

  EXPECT_EQ(parent->indexOfChild(parent->getChildNodeAtIndex(2)), 2);
  EXPECT_EQ(parent->indexOfChild(nullptr), 0);
  EXPECT_EQ(parent->indexOfChild(NodeInfo::create()), -1);
  parent->exchangeChildAtIndex(0, 4);
  parent->removeChildNodeAtIndex(1);
  parent->removeChildNode(parent->getChildNodeAtIndex(0));
  EXPECT_EQ(outputNames(parent->childNode()), QStringList({"b", "c", "first"}));
}

TEST(NodeInfo, TheCheckMarkOfGroupsAndMergedNodesReachesEveryMember) {
  const NodeInfo::Ptr merged = namedNode({}, NodeInfo::kTypeMerged);
  const NodeInfo::Ptr group = namedNode({}, NodeInfo::kTypeGroup);
  const NodeInfo::Ptr clip = namedNode({}, NodeInfo::kTypeFile);
  const NodeInfo::Ptr member = namedNode({}, NodeInfo::kTypeMergeMember);
  group->addChildNode(clip);
  merged->addChildNode(group);
  merged->addChildNode(member);

  merged->setIsSelected(false);
  EXPECT_FALSE(group->isSelected());
  EXPECT_FALSE(clip->isSelected()) << "passed on through the group";
  EXPECT_FALSE(member->isSelected());

  const NodeInfo::Ptr file = namedNode({}, NodeInfo::kTypeFile);
  const NodeInfo::Ptr segment = namedNode({}, NodeInfo::kTypeSegment);
  file->addChildNode(segment);
  file->setIsSelected(false);
  EXPECT_TRUE(segment->isSelected()) << "a file's mark is its own";
}

TEST(NodeInfo, TheRecordIsCopiedIntoTheNodesOwnBuffer) {
  DECODER_INFO record{};
  record.m_Width = 640;
  std::strcpy(record.m_AudioStreamInfo[98].m_audioStreamName, "last stream");
  std::strcpy(record.m_framesPosFileName, "/tmp/index");

  const NodeInfo::Ptr node = NodeInfo::create();
  node->setDecoderInfo(&record);
  record.m_Width = 1;
  EXPECT_EQ(node->decoderInfo()->m_Width, 640);
  EXPECT_STREQ(node->decoderInfo()->m_AudioStreamInfo[98].m_audioStreamName, "last stream");
  EXPECT_STREQ(node->decoderInfo()->m_framesPosFileName, "/tmp/index");

  node->setDecoderInfo(nullptr);
  EXPECT_EQ(node->decoderInfo()->m_Width, 640);
}

TEST(NodeInfo, ADeepCopySharesNothingButTheParentAndDropsTheTrimParent) {
  const NodeInfo::Ptr root = namedNode({}, NodeInfo::kTypeRoot);
  const NodeInfo::Ptr source = namedNode(QStringLiteral("holiday"), NodeInfo::kTypeTrimmed);
  source->setParentNode(root);
  source->setTrimParentNode(root);
  source->cropSettingInfo().setRect(1, 2, 300, 200);
  source->watermarkInfo().setM_text(QStringLiteral("mine"));
  DECODER_INFO record{};
  record.m_Duration = 12500000;
  source->setDecoderInfo(&record);
  source->addChildNode(namedNode(QStringLiteral("holiday_segment01"), NodeInfo::kTypeSegment));
  source->trimData().append(namedNode(QStringLiteral("cut"), NodeInfo::kTypeSegment));

  const NodeInfo::Ptr copy = source->copy();
  EXPECT_EQ(copy->parentNode(), root);
  EXPECT_EQ(copy->trimParentNode(), nullptr);
  EXPECT_EQ(copy->decoderInfo()->m_Duration, 12500000);
  EXPECT_NE(copy->decoderInfo(), source->decoderInfo());
  ASSERT_EQ(outputNames(copy->childNode()), QStringList({"holiday_segment01"}));
  EXPECT_NE(copy->getChildNodeAtIndex(0), source->getChildNodeAtIndex(0));
  ASSERT_EQ(copy->trimData().size(), 1);
  EXPECT_NE(copy->trimData().first(), source->trimData().first());

  copy->cropSettingInfo().setW(8);
  copy->watermarkInfo().setM_text(QStringLiteral("theirs"));
  copy->getChildNodeAtIndex(0)->effectSettingInfo().setContrast(-50);
  copy->trimData().first()->setOutputFilename(QStringLiteral("changed"));
  EXPECT_EQ(source->cropSettingInfo().w(), 300);
  EXPECT_EQ(source->watermarkInfo().m_text(), QStringLiteral("mine"));
  EXPECT_EQ(source->getChildNodeAtIndex(0)->effectSettingInfo().contrast(), 0);
  EXPECT_EQ(source->trimData().first()->outputFilename(), QStringLiteral("cut"));
}

TEST(NodeInfo, TheParentLinksDoNotKeepTheParentAlive) {
  NodeInfo::Ptr parent = namedNode({}, NodeInfo::kTypeRoot);
  const NodeInfo::Ptr child = namedNode({}, NodeInfo::kTypeFile);
  parent->addChildNode(child);
  child->setParentNode(parent);
  child->setTrimParentNode(parent);
  std::weak_ptr<NodeInfo> watch = parent;
  parent.reset();
  EXPECT_TRUE(watch.expired());
  EXPECT_EQ(child->parentNode(), nullptr);
  EXPECT_EQ(child->trimParentNode(), nullptr);
}

}  // namespace
