#include "PropertiesDialog.h"

#include <QApplication>
#include <QClipboard>
#include <QDialogButtonBox>
#include <QHeaderView>
#include <QPushButton>
#include <QTreeWidget>
#include <QVBoxLayout>

PropertiesDialog::PropertiesDialog(const NodeInfo& item, QWidget* parent)
    : QDialog(parent), sections_(mediaPropertiesOf(item)) {
  setWindowTitle(tr("Properties: %1").arg(item.outputFilename()));
  tree_ = new QTreeWidget(this);
  tree_->setColumnCount(2);
  tree_->setHeaderHidden(true);
  tree_->setRootIsDecorated(false);
  tree_->setSelectionMode(QAbstractItemView::NoSelection);
  tree_->setFocusPolicy(Qt::NoFocus);
  tree_->setAccessibleName(tr("Properties"));
  for (const PropertySection& section : sections_) {
    auto* heading = new QTreeWidgetItem(tree_, {section.title});
    QFont bold = heading->font(0);
    bold.setBold(true);
    heading->setFont(0, bold);
    heading->setFirstColumnSpanned(true);
    for (const PropertyRow& row : section.rows) {
      auto* line = new QTreeWidgetItem(heading, {row.label, row.value});
      line->setToolTip(1, row.value);
      line->setForeground(0, palette().brush(QPalette::PlaceholderText));
    }
  }
  tree_->expandAll();
  tree_->header()->setSectionResizeMode(0, QHeaderView::ResizeToContents);
  tree_->header()->setStretchLastSection(true);

  auto* buttons = new QDialogButtonBox(QDialogButtonBox::Close, this);
  QPushButton* copy = buttons->addButton(tr("Copy"), QDialogButtonBox::ActionRole);
  copy->setToolTip(tr("Copy every property as text"));
  connect(copy, &QPushButton::clicked, this, [this] { QApplication::clipboard()->setText(text()); });
  connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);

  auto* layout = new QVBoxLayout(this);
  layout->addWidget(tree_);
  layout->addWidget(buttons);
  resize(480, 460);
}

QString PropertiesDialog::text() const {
  QStringList lines;
  for (const PropertySection& section : sections_) {
    if (!lines.isEmpty()) lines.append(QString());
    lines.append(section.title);
    for (const PropertyRow& row : section.rows) lines.append(QStringLiteral("%1: %2").arg(row.label, row.value));
  }
  return lines.join(QLatin1Char('\n'));
}
