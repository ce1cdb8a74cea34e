#include "UIInfoDB.h"

UIInfoDB& UIInfoDB::defaultDB() {
  static UIInfoDB db;
  return db;
}

std::shared_ptr<UIInfoDB::InfoTable> UIInfoDB::getInfoTable(const QString& name) const { return tables_.value(name); }

std::shared_ptr<UIInfoDB::InfoTable> UIInfoDB::createInfoTable(const QString& name) {
  auto table = std::make_shared<InfoTable>();
  tables_.insert(name, table);
  return table;
}

void UIInfoDB::dropInfoTable(const QString& name) { tables_.remove(name); }
