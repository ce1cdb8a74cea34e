// The options window, drawn over OptionFormAction.
#pragma once

#include <QDialog>

class QCheckBox;
class QComboBox;
class QLineEdit;

class OptionsDialog : public QDialog {
  Q_OBJECT

 public:
  explicit OptionsDialog(QWidget* parent = nullptr);

  void accept() override;

 private:
  QLineEdit* addFolderRow(class QFormLayout* form, const QString& label, const QString& folder);

  QComboBox* format_ = nullptr;
  QLineEdit* photoFolder_ = nullptr;
  QLineEdit* outputFolder_ = nullptr;
  QCheckBox* autoUpdates_ = nullptr;
};
