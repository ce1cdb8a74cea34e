// What the properties window lists for an item: the file, everything the
// probe found in it (picture, each audio stream) and its tags, as titled
// sections of label and value rows. Rows without a value are left out.
#pragma once

#include <QList>
#include <QString>

#include "ValueObject/NodeInfo.h"

struct PropertyRow {
  QString label;
  QString value;
  bool operator==(const PropertyRow&) const = default;
};

struct PropertySection {
  QString title;
  QList<PropertyRow> rows;
};

QList<PropertySection> mediaPropertiesOf(const NodeInfo& item);
