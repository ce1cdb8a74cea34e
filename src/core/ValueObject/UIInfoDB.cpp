#include "UIInfoDB.h"

UIInfoDB::~UIInfoDB() { qDeleteAll(tables_); }

NodeTree& UIInfoDB::infoTable(const QString& name) {
  NodeTree*& table = tables_[name];
  if (table == nullptr) table = new NodeTree;
  return *table;
}

void UIInfoDB::dropInfoTable(const QString& name) {
  if (NodeTree* table = getInfoTable(name)) table->clear();
}
