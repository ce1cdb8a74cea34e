// The tag window over MetaEditFormController: the strip of the list's items,
// the fields on two tabs, the cover picture (dropped or chosen), and
// "Reset", "OK" and "Cancel".
#pragma once

#include <QDialog>

#include <array>

#include "Action/MetaEditFormController.h"

class QLabel;
class QLineEdit;
class QListWidget;
class QTabWidget;
class QComboBox;
class QPlainTextEdit;

class TagEditorDialog : public QDialog {
  Q_OBJECT

 public:
  // Edits the tags of `items`, starting on `selected`.
  TagEditorDialog(MetaEditFormController& controller, const NodeInfo::List& items, const NodeInfo::Ptr& selected,
                  QWidget* parent = nullptr);

 protected:
  void dragEnterEvent(QDragEnterEvent* event) override;
  void dropEvent(QDropEvent* event) override;
  void reject() override;

 private:
  using Field = MetaEditFormController::Field;
  QWidget* fieldEditor(Field field);
  void showFields();
  void showCover(const QString& path);
  void chooseCover();

  MetaEditFormController& controller_;
  QListWidget* strip_ = nullptr;
  QTabWidget* tabs_ = nullptr;
  QLabel* cover_ = nullptr;
  QComboBox* genre_ = nullptr;
  QPlainTextEdit* description_ = nullptr;
  std::array<QLineEdit*, MetaEditFormController::kFieldCount> lines_{};
  bool showing_ = false;
};
