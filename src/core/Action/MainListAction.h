// Changes to the items of the main list: merging several items into one
// output, clearing, deleting and reordering. Every change goes through the
// main list's tree, which announces it.
#pragma once

#include <QString>

#include <cstdint>

#include "ValueObject/NodeInfo.h"
#include "ValueObject/UIInfoDB.h"

class MainListAction {
 public:
  // Number of the next merge group, "Merge <n>"; counts every merge of the process.
  static int32_t totalMakeMergeCount;

  // Whether `items` may be merged: an empty text, or the alert text that refuses.
  static QString whyMergeRefused(const NodeInfo::List& items);
  // The files a selection stands for: split and merge groups give their
  // children in order. Every selected item loses its selection.
  static NodeInfo::List expandSlideAndMergeNode(UIInfoDB& db, const NodeInfo::List& selection);
  // Moves the items into a new merge group appended to the main list and
  // returns it; nullptr (nothing changed) for no items. Groups left empty are
  // removed from the list.
  static NodeInfo::Ptr makeMergeBySelectedNodes(UIInfoDB& db, const NodeInfo::List& items);

  // Empties the main list and the merge tree.
  static void clearAllFile(UIInfoDB& db);
  // Removes the items from the main list.
  static void removeFiles(UIInfoDB& db, const NodeInfo::List& items);
  // Swaps the item with its neighbour; false at either end or for a node not in the list.
  static bool fileMoveUp(UIInfoDB& db, const NodeInfo::Ptr& item);
  static bool fileMoveDown(UIInfoDB& db, const NodeInfo::Ptr& item);

  // Gives every item of the list its own copy of `source`'s output profile;
  // an item's children share its copy. Nothing happens with fewer than two items.
  static void applyToAll(UIInfoDB& db, const NodeInfo::Ptr& source);

 private:
  static bool moveBy(UIInfoDB& db, const NodeInfo::Ptr& item, int step);
};
