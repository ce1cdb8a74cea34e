// Class operations on the three node trees: finding their roots in the table
// store, expanding merged nodes, building the merge tree and keeping derived
// nodes in step with their children.
#pragma once

#include <QString>

#include <memory>

#include "ValueObject/NodeInfo.h"
#include "ValueObject/UIInfoDB.h"

class NodeInfoAction {
 public:
  static constexpr const char* kMainTableName = "winMain.otlvMain";
  static constexpr const char* kMergeTableName = "mergeNodeInfo";
  static constexpr const char* kTrimTableName = "winTrim.segmentTree";
  static constexpr const char* kMergeCheckBoxName = "winMain.mergeCheckBox";
  static constexpr const char* kMergedName = "Merge Video";

  // Entry 0 of each tree's table; the table and its root (kind 0, file type 0)
  // are made on first use.
  static NodeInfo::Ptr getRootNode();
  static NodeInfo::Ptr getMergeRootNode();
  static NodeInfo::Ptr getTrimRootNode();
  // The table of that name; nullptr when none is registered.
  static std::shared_ptr<UIInfoDB::InfoTable> getInfoTable(const QString& name);
  // The merge root while the main window's merge check box is on, else the main root.
  static NodeInfo::Ptr rootNode();

  // The file nodes a node stands for: the children of a merged node, in
  // order, or the node itself.
  static NodeInfo::List getChildNodeData(const NodeInfo::Ptr& node);
  // Recomputes a merged node's length, size and trim from its children. A
  // merged node's size is in kilobytes while a file's is in bytes.
  static void updateNodeInfo(const NodeInfo::Ptr& mergedNode);
  // Gives every child its own copy of the node's effect, crop and watermark.
  static void setSameEffect(const NodeInfo::Ptr& node);

  // Empties the merge root and drops the merge table.
  static void clearAllMergeNodeInfo();
  // Rebuilds the merge table: one merged node whose children are copies of
  // every file of the main list, in order. Nothing happens on an empty list.
  static void createMergeTableNodeInfo();

 private:
  static NodeInfo::Ptr rootOfTable(const QString& name);
};
