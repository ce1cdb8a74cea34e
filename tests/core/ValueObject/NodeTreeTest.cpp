// The owner of a node tree: its rules and the announcements an item model
// follows.
#include <gtest/gtest.h>

#include "Action/MainListAction.h"
#include "Action/NodeInfoAction.h"
#include "ValueObject/NodeTree.h"
#include "ValueObject/UIInfoDB.h"
#include "support/ListItems.h"

namespace {

using Kind = NodeTreeChange::Kind;

using modeltest::namedNode;
using modeltest::outputNames;

// Logs the tree's announcements and checks that each structural change is
// announced before it happens. (The window tests run the list model that
// follows them under Qt's model tester.)
class ChangeRecorder : public QObject {
 public:
  explicit ChangeRecorder(NodeTree& tree) {
    connect(&tree, &NodeTree::aboutToChange, this, [this](const NodeTreeChange&) {
      EXPECT_FALSE(pending_) << "announcements must not nest";
      pending_ = true;
    });
    connect(&tree, &NodeTree::changed, this, [this](const NodeTreeChange& change) { after(change); });
    connect(&tree, &NodeTree::reset, this, [this] { log.append(QStringLiteral("reset")); });
  }

  QStringList log;

 private:
  void after(const NodeTreeChange& change) {
    switch (change.kind) {
      case Kind::kAdded: log.append(QStringLiteral("added %1").arg(change.first)); break;
      case Kind::kRemoved: log.append(QStringLiteral("removed %1-%2").arg(change.first).arg(change.last)); break;
      case Kind::kMoved:
        log.append(QStringLiteral("moved %1>%2").arg(change.first).arg(change.destination));
        EXPECT_EQ(change.parent->getChildNodeAtIndex(change.destination), change.node);
        break;
      case Kind::kChanged:
        log.append(QStringLiteral("changed %1").arg(change.node->outputFilename()));
        EXPECT_EQ(change.parent->indexOfChild(change.node), change.first);
        break;
    }
    if (change.kind != Kind::kChanged) {
      EXPECT_TRUE(pending_) << "a structural change is announced before it happens";
    }
    pending_ = false;
  }

  bool pending_ = false;
};

TEST(NodeTreeOwner, EveryStructuralChangeIsAnnouncedWithItsRowsDownToChildrenOfChildren) {
  NodeTree tree;
  ChangeRecorder recorder(tree);
  const NodeInfo::Ptr root = tree.root();
  const NodeInfo::Ptr a = namedNode("a");
  const NodeInfo::Ptr b = namedNode("b");
  const NodeInfo::Ptr c = namedNode("c");

  tree.addChild(root, a);
  tree.addChild(root, c);
  tree.addChild(root, b, 1);
  tree.addChild(root, namedNode("d"), 99);
  EXPECT_EQ(outputNames(root->childNode()), QStringList({"a", "b", "c", "d"}));
  for (const NodeInfo::Ptr& child : root->childNode()) EXPECT_EQ(child->parentNode(), root);

  tree.moveChild(root, 0, 2);
  EXPECT_EQ(outputNames(root->childNode()), QStringList({"b", "c", "a", "d"}));
  tree.moveChild(root, 3, 0);
  tree.moveChild(root, 0, 7);
  tree.removeFromParent(c);
  EXPECT_EQ(c->parentNode(), nullptr);
  tree.removeFromParent(c);
  tree.removeAllChildren(root);
  EXPECT_TRUE(root->childNode().isEmpty());
  tree.clear();
  EXPECT_NE(tree.root(), root) << "an emptied table gets a fresh root";

  EXPECT_EQ(recorder.log, QStringList({"added 0", "added 1", "added 1", "added 3", "moved 0>2", "moved 3>0",
                                       "removed 2-2", "removed 0-2", "reset"}));

  // Children of children are followed; a group outside the tree is built without announcements.
  recorder.log.clear();
  const NodeInfo::Ptr group = namedNode("group", NodeInfo::kTypeMerged);
  tree.addChild(group, namedNode("before"));
  EXPECT_TRUE(recorder.log.isEmpty());
  EXPECT_FALSE(tree.contains(group));
  tree.addChild(tree.root(), group);
  tree.addChild(group, namedNode("inside"));
  EXPECT_TRUE(tree.contains(group->getChildNodeAtIndex(1)));
  tree.noteChanged(group->getChildNodeAtIndex(0));
  EXPECT_EQ(recorder.log, QStringList({"added 0", "added 1", "changed before"}));
}

TEST(NodeTreeOwner, CheckMarksPassDownAndEveryTouchedRowIsAnnounced) {
  NodeTree tree;
  ChangeRecorder recorder(tree);
  const NodeInfo::Ptr group = namedNode("clips", NodeInfo::kTypeGroup);
  const NodeInfo::Ptr file = namedNode("file");
  tree.addChild(tree.root(), group);
  tree.addChild(tree.root(), file);
  tree.addChild(group, namedNode("one"));
  tree.addChild(group, namedNode("two"));
  recorder.log.clear();

  tree.setSelected(group, false);
  for (const NodeInfo::Ptr& clip : group->childNode()) EXPECT_FALSE(clip->isSelected());
  tree.setSelected(file, false);
  EXPECT_EQ(recorder.log, QStringList({"changed clips", "changed one", "changed two", "changed file"}));
}

TEST(NodeTreeOwner, MergingMovesItemsIntoTheGroupCountsTheirLinksAndDropsEmptiedGroups) {
  UIInfoDB db;
  NodeTree& list = NodeInfoAction::mainList(db);
  ChangeRecorder recorder(list);
  const NodeInfo::Ptr split = namedNode("split", NodeInfo::kTypeGroup);
  const NodeInfo::Ptr file = namedNode("file");
  list.addChild(list.root(), split);
  list.addChild(list.root(), file);
  list.addChild(split, namedNode("clip1"));
  list.addChild(split, namedNode("clip2"));
  recorder.log.clear();

  const NodeInfo::List files = MainListAction::expandSlideAndMergeNode(db, {split, file});
  const NodeInfo::Ptr group = MainListAction::makeMergeBySelectedNodes(db, files);

  ASSERT_NE(group, nullptr);
  EXPECT_EQ(outputNames(list.root()->childNode()), QStringList({group->outputFilename()}));
  EXPECT_EQ(outputNames(group->childNode()), QStringList({"clip1", "clip2", "file"}));
  for (const NodeInfo::Ptr& member : group->childNode()) {
    EXPECT_EQ(member->parentNode(), group);
    EXPECT_EQ(member->type(), NodeInfo::kTypeMergeMember);
    EXPECT_EQ(member->linkedNum(), 1);
  }
  EXPECT_EQ(recorder.log.last(), QStringLiteral("added 0"));
  EXPECT_TRUE(recorder.log.contains(QStringLiteral("removed 0-0"))) << "the emptied split group leaves the list";
}

}  // namespace
