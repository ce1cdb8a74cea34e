// The split window over SplitController: the strip of the list's items, the
// choice between clips of some minutes and a number of clips, the item's
// length, and "Reset", "Done" and "Cancel".
#pragma once

#include <QDialog>

#include "Action/MainFormController.h"
#include "Action/SplitController.h"

class ItemStrip;
class QLabel;
class QLineEdit;
class QRadioButton;

class SplitDialog : public QDialog {
  Q_OBJECT

 public:
  // Splits the items of `main`'s list, starting on `node`; `main` hears when the window closes.
  SplitDialog(MainFormController& main, const NodeInfo::Ptr& node, QWidget* parent = nullptr);

  SplitController& controller() { return controller_; }

 protected:
  void reject() override;

 private:
  void showForm();

  SplitController controller_;
  ItemStrip* strip_ = nullptr;
  QRadioButton* byMinutes_ = nullptr;
  QRadioButton* byClips_ = nullptr;
  QLineEdit* minutes_ = nullptr;
  QLineEdit* clips_ = nullptr;
  QLabel* length_ = nullptr;
  bool showing_ = false;
};
