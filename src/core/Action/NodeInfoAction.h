// Class operations on the three node trees: finding their roots in the table
// store, expanding merged nodes, building the merge tree and keeping derived
// nodes in step with their children.
#pragma once

#include <QString>

#include "ValueObject/NodeInfo.h"
#include "ValueObject/UIInfoDB.h"

class NodeInfoAction {
 public:
  static constexpr const char* kMainTableName = "winMain.otlvMain";
  static constexpr const char* kMergeTableName = "mergeNodeInfo";
  static constexpr const char* kTrimTableName = "winTrim.segmentTree";
  static constexpr const char* kMergeCheckBoxName = "winMain.mergeCheckBox";
  static constexpr const char* kMergedName = "Merge Video";

  // The tables of the three trees, registered on first use.
  static NodeTree& mainList(UIInfoDB& db) { return db.infoTable(QLatin1String(kMainTableName)); }
  static NodeTree& mergeTree(UIInfoDB& db) { return db.infoTable(QLatin1String(kMergeTableName)); }
  static NodeTree& trimTree(UIInfoDB& db) { return db.infoTable(QLatin1String(kTrimTableName)); }

  // Entry 0 of each tree's table; the root (kind 0, file type 0) is made on first use.
  static NodeInfo::Ptr getRootNode(UIInfoDB& db) { return mainList(db).root(); }
  static NodeInfo::Ptr getMergeRootNode(UIInfoDB& db) { return mergeTree(db).root(); }
  static NodeInfo::Ptr getTrimRootNode(UIInfoDB& db) { return trimTree(db).root(); }
  // The table of that name; nullptr when none is registered.
  static NodeTree* getInfoTable(const UIInfoDB& db, const QString& name) { return db.getInfoTable(name); }
  // The merge root while the main window's merge check box is on, else the main root.
  static NodeInfo::Ptr rootNode(UIInfoDB& db);

  // The file nodes a node stands for: the children of a merged node, in
  // order, or the node itself.
  static NodeInfo::List getChildNodeData(const NodeInfo::Ptr& node);
  // The items the editors' strips offer: every item of the main list but merge groups.
  static NodeInfo::List getSuitableNode(UIInfoDB& db);
  // Recomputes a merged node's length, size and trim from its children. A
  // merged node's size is in kilobytes while a file's is in bytes.
  static void updateNodeInfo(const NodeInfo::Ptr& mergedNode);
  // Gives every child its own copy of the node's effect, crop and watermark.
  static void setSameEffect(const NodeInfo::Ptr& node);

  // Empties the merge root and drops the merge table.
  static void clearAllMergeNodeInfo(UIInfoDB& db);
  // Rebuilds the merge table: one merged node whose children are copies of
  // every file of the main list, in order. Nothing happens on an empty list.
  static void createMergeTableNodeInfo(UIInfoDB& db);
};
