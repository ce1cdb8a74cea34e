// The table store of the skinned views: named information tables whose
// entries the list views show (the three node trees each live as entry 0 of
// one table), and the check state of named check boxes that list logic reads.
// Used on the main thread only.
#pragma once

#include <QHash>
#include <QString>

#include <memory>

#include "ValueObject/NodeInfo.h"

class UIInfoDB {
 public:
  using InfoTable = NodeInfo::List;

  static UIInfoDB& defaultDB();

  // The table registered under `name`; nullptr when there is none.
  std::shared_ptr<InfoTable> getInfoTable(const QString& name) const;
  // Registers a new empty table under `name`, replacing any previous one.
  std::shared_ptr<InfoTable> createInfoTable(const QString& name);
  void dropInfoTable(const QString& name);

  bool isChecked(const QString& checkBoxName) const { return checked_.value(checkBoxName, false); }
  void setChecked(const QString& checkBoxName, bool checked) { checked_.insert(checkBoxName, checked); }

 private:
  QHash<QString, std::shared_ptr<InfoTable>> tables_;
  QHash<QString, bool> checked_;
};
