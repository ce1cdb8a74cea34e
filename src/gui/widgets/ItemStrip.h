// The column of items beside an editor's preview: each item's thumbnail and
// output name, so the user can move between the items without closing the
// editor. Choosing an item with the mouse or the keyboard tells which.
#pragma once

#include <QListWidget>

#include "ValueObject/NodeInfo.h"

class ItemStrip : public QListWidget {
  Q_OBJECT

 public:
  ItemStrip(const NodeInfo::List& items, QWidget* parent = nullptr);

  // Marks the item on screen without telling it as chosen.
  void showItem(const NodeInfo::Ptr& item);

 signals:
  void itemChosen(const NodeInfo::Ptr& item);

 private:
  NodeInfo::List items_;
};
