// Removes the thumbnails and saved covers of items that leave the main list,
// and of every item when the list goes away, so that the thumbnail folder
// does not fill up over the runs. Only files inside the thumbnail folder are
// removed, and none that an item still in the list shows.
#pragma once

#include <QObject>
#include <QSet>
#include <QString>

#include "ValueObject/NodeTree.h"

class ListThumbnails : public QObject {
 public:
  // Follows `list`, which must outlive this object.
  explicit ListThumbnails(NodeTree& list);
  // Removes the pictures of every item still in the list.
  ~ListThumbnails() override;

 private:
  void collect(const NodeInfo::Ptr& node);
  void removeUnused();

  NodeTree& list_;
  QSet<QString> leaving_;
};
