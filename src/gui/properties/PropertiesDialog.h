// The properties of one item: its file, what the probe found in it and its
// tags, in titled sections; the whole list can be copied as text.
#pragma once

#include <QDialog>

#include "Action/MediaProperties.h"

class QTreeWidget;

class PropertiesDialog : public QDialog {
  Q_OBJECT

 public:
  PropertiesDialog(const NodeInfo& item, QWidget* parent = nullptr);

  // The sections as plain text, one "label: value" line a row.
  QString text() const;

 private:
  QList<PropertySection> sections_;
  QTreeWidget* tree_ = nullptr;
};
