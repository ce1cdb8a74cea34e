// The owner of a node tree: its rules and the announcements an item model
// follows. A recorder replays every announcement on a shadow copy of the
// child counts, the way a model would, and checks that the tree agrees.
#include <gtest/gtest.h>

#include <QHash>

#include "Action/MainListAction.h"
#include "Action/NodeInfoAction.h"
#include "ValueObject/NodeTree.h"
#include "ValueObject/UIInfoDB.h"

namespace {

using Kind = NodeTreeChange::Kind;

NodeInfo::Ptr fileNamed(const QString& name, int type = NodeInfo::kTypeFile) {
  NodeInfo::Ptr node = NodeInfo::create();
  node->setType(type);
  node->setOutputFilename(name);
  return node;
}

QStringList names(const NodeInfo::Ptr& parent) {
  QStringList result;
  for (const NodeInfo::Ptr& child : parent->childNode()) result.append(child->outputFilename());
  return result;
}

// Follows the tree only through its announcements, as an item model would.
class ChangeRecorder : public QObject {
 public:
  explicit ChangeRecorder(NodeTree& tree) : tree_(tree) {
    connect(&tree, &NodeTree::aboutToChange, this, [this](const NodeTreeChange& change) { before(change); });
    connect(&tree, &NodeTree::changed, this, [this](const NodeTreeChange& change) { after(change); });
    connect(&tree, &NodeTree::reset, this, [this] {
      counts_.clear();
      log.append(QStringLiteral("reset"));
    });
  }

  QStringList log;

 private:
  int& shadowCount(const NodeInfo::Ptr& parent) {
    auto found = counts_.find(parent.get());
    if (found == counts_.end()) found = counts_.insert(parent.get(), parent->getChildNodeCount());
    return *found;
  }

  void before(const NodeTreeChange& change) {
    ASSERT_FALSE(pending_) << "announcements must not nest";
    pending_ = true;
    // Before the change the tree still looks as the model last saw it.
    EXPECT_EQ(change.parent->getChildNodeCount(), shadowCount(change.parent));
    if (change.kind == Kind::kRemoved || change.kind == Kind::kMoved) {
      EXPECT_LT(change.last, change.parent->getChildNodeCount());
    }
  }

  void after(const NodeTreeChange& change) {
    const int rows = change.last - change.first + 1;
    QString entry;
    switch (change.kind) {
      case Kind::kAdded:
        shadowCount(change.parent) += rows;
        entry = QStringLiteral("added %1").arg(change.first);
        break;
      case Kind::kRemoved:
        shadowCount(change.parent) -= rows;
        entry = QStringLiteral("removed %1-%2").arg(change.first).arg(change.last);
        break;
      case Kind::kMoved:
        entry = QStringLiteral("moved %1>%2").arg(change.first).arg(change.destination);
        EXPECT_EQ(change.parent->getChildNodeAtIndex(change.destination), change.node);
        break;
      case Kind::kChanged:
        entry = QStringLiteral("changed %1").arg(change.node->outputFilename());
        EXPECT_EQ(change.parent->indexOfChild(change.node), change.first);
        break;
    }
    if (change.kind != Kind::kChanged) {
      EXPECT_TRUE(pending_) << "a structural change is announced before it happens";
      EXPECT_EQ(change.parent->getChildNodeCount(), shadowCount(change.parent));
    }
    pending_ = false;
    log.append(entry);
  }

  NodeTree& tree_;
  QHash<const NodeInfo*, int> counts_;
  bool pending_ = false;
};

TEST(NodeTreeOwner, EveryStructuralChangeIsAnnouncedBeforeAndAfterWithItsRows) {
  NodeTree tree;
  ChangeRecorder recorder(tree);
  const NodeInfo::Ptr root = tree.root();
  const NodeInfo::Ptr a = fileNamed("a");
  const NodeInfo::Ptr b = fileNamed("b");
  const NodeInfo::Ptr c = fileNamed("c");

  tree.addChild(root, a);
  tree.addChild(root, c);
  tree.addChild(root, b, 1);
  tree.addChild(root, fileNamed("d"), 99);
  EXPECT_EQ(names(root), QStringList({"a", "b", "c", "d"}));
  for (const NodeInfo::Ptr& child : root->childNode()) EXPECT_EQ(child->parentNode(), root);

  tree.moveChild(root, 0, 2);
  EXPECT_EQ(names(root), QStringList({"b", "c", "a", "d"}));
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
}

TEST(NodeTreeOwner, ChildrenOfChildrenAreFollowedAndDetachedNodesChangeSilently) {
  NodeTree tree;
  ChangeRecorder recorder(tree);
  const NodeInfo::Ptr group = fileNamed("group", NodeInfo::kTypeMerged);
  tree.addChild(group, fileNamed("before"));
  EXPECT_TRUE(recorder.log.isEmpty()) << "a group outside the tree is built without announcements";
  EXPECT_FALSE(tree.contains(group));

  tree.addChild(tree.root(), group);
  tree.addChild(group, fileNamed("inside"));
  EXPECT_TRUE(tree.contains(group->getChildNodeAtIndex(1)));
  tree.noteChanged(group->getChildNodeAtIndex(0));
  EXPECT_EQ(recorder.log, QStringList({"added 0", "added 1", "changed before"}));
}

TEST(NodeTreeOwner, CheckMarksPassDownAndEveryTouchedRowIsAnnounced) {
  NodeTree tree;
  ChangeRecorder recorder(tree);
  const NodeInfo::Ptr group = fileNamed("clips", NodeInfo::kTypeGroup);
  const NodeInfo::Ptr file = fileNamed("file");
  tree.addChild(tree.root(), group);
  tree.addChild(tree.root(), file);
  tree.addChild(group, fileNamed("one"));
  tree.addChild(group, fileNamed("two"));
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
  const NodeInfo::Ptr split = fileNamed("split", NodeInfo::kTypeGroup);
  const NodeInfo::Ptr file = fileNamed("file");
  list.addChild(list.root(), split);
  list.addChild(list.root(), file);
  list.addChild(split, fileNamed("clip1"));
  list.addChild(split, fileNamed("clip2"));
  recorder.log.clear();

  const NodeInfo::List files = MainListAction::expandSlideAndMergeNode(db, {split, file});
  const NodeInfo::Ptr group = MainListAction::makeMergeBySelectedNodes(db, files);

  ASSERT_NE(group, nullptr);
  EXPECT_EQ(names(list.root()), QStringList({group->outputFilename()}));
  EXPECT_EQ(names(group), QStringList({"clip1", "clip2", "file"}));
  for (const NodeInfo::Ptr& member : group->childNode()) {
    EXPECT_EQ(member->parentNode(), group);
    EXPECT_EQ(member->type(), NodeInfo::kTypeMergeMember);
    EXPECT_EQ(member->linkedNum(), 1);
  }
  EXPECT_EQ(recorder.log.last(), QStringLiteral("added 0"));
  EXPECT_TRUE(recorder.log.contains(QStringLiteral("removed 0-0"))) << "the emptied split group leaves the list";
}

}  // namespace
