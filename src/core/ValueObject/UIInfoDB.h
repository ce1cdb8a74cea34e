// The table store of the list views: named information tables, each holding
// one node tree as its entry 0 (the main list, the merge tree, the trim
// segments), and the check state of named check boxes that list logic reads.
// One store is made at start-up and handed to whoever needs it; the command
// line and every test make their own. Used on the main thread only.
#pragma once

#include <QHash>
#include <QObject>
#include <QString>

#include "ValueObject/NodeTree.h"

class UIInfoDB {
 public:
  UIInfoDB() = default;
  UIInfoDB(const UIInfoDB&) = delete;
  UIInfoDB& operator=(const UIInfoDB&) = delete;
  ~UIInfoDB();

  // The table registered under `name`; nullptr when there is none.
  NodeTree* getInfoTable(const QString& name) const { return tables_.value(name); }
  // The table of that name, registered empty on first use. The object stays
  // the same for the life of the store, so that views can stay bound to it.
  NodeTree& infoTable(const QString& name);
  // Empties the table; its next root is a fresh one.
  void dropInfoTable(const QString& name);

  bool isChecked(const QString& checkBoxName) const { return checked_.value(checkBoxName, false); }
  void setChecked(const QString& checkBoxName, bool checked) { checked_.insert(checkBoxName, checked); }

 private:
  QHash<QString, NodeTree*> tables_;
  QHash<QString, bool> checked_;
};
