#include "options/OptionsDialog.h"

#include <QCheckBox>
#include <QComboBox>
#include <QDialogButtonBox>
#include <QDir>
#include <QFileDialog>
#include <QFormLayout>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QMessageBox>
#include <QPushButton>

#include "Action/OptionFormAction.h"

OptionsDialog::OptionsDialog(QWidget* parent) : QDialog(parent) {
  setWindowTitle(tr("Options"));
  const OptionValues values = OptionFormAction::current();
  auto* form = new QFormLayout;
  form->setFieldGrowthPolicy(QFormLayout::ExpandingFieldsGrow);

  outputFolder_ = addFolderRow(form, tr("&Output folder:"), values.outputPath);
  photoFolder_ = addFolderRow(form, tr("&Snapshot folder:"), values.photoOutputPath);
  format_ = new QComboBox(this);
  for (const QString& format : OptionFormAction::pictureFormats()) format_->addItem(format.toUpper(), format);
  format_->setCurrentIndex(std::max(0, format_->findData(values.photoOutputFormat)));
  form->addRow(tr("Snapshot &format:"), format_);
  autoUpdates_ = new QCheckBox(tr("Check for &updates at start-up"), this);
  autoUpdates_->setChecked(values.autoUpdates);
  form->addRow(QString(), autoUpdates_);

  auto* buttons = new QDialogButtonBox(QDialogButtonBox::Ok | QDialogButtonBox::Cancel, this);
  connect(buttons, &QDialogButtonBox::accepted, this, &OptionsDialog::accept);
  connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
  auto* layout = new QVBoxLayout(this);
  layout->addLayout(form);
  layout->addStretch();
  layout->addWidget(buttons);
  resize(560, sizeHint().height());
}

QLineEdit* OptionsDialog::addFolderRow(QFormLayout* form, const QString& label, const QString& folder) {
  auto* field = new QLineEdit(QDir::toNativeSeparators(folder), this);
  auto* browse = new QPushButton(tr("Browse..."), this);
  connect(browse, &QPushButton::clicked, this, [this, field] {
    const QString chosen = QFileDialog::getExistingDirectory(this, QString(), QDir::fromNativeSeparators(field->text()));
    if (!chosen.isEmpty()) field->setText(QDir::toNativeSeparators(chosen));
  });
  auto* row = new QHBoxLayout;
  row->addWidget(field, 1);
  row->addWidget(browse);
  form->addRow(label, row);
  if (auto* title = qobject_cast<QLabel*>(form->labelForField(row))) title->setBuddy(field);
  return field;
}

void OptionsDialog::accept() {
  const OptionValues values{format_->currentData().toString(), QDir::fromNativeSeparators(photoFolder_->text()),
                            QDir::fromNativeSeparators(outputFolder_->text()), autoUpdates_->isChecked()};
  const OptionOutcome outcome = OptionFormAction::apply(values);
  if (!outcome.message.isEmpty()) QMessageBox::warning(this, windowTitle(), outcome.message);
  if (outcome.stored) QDialog::accept();
}
