// The settings panel of one item's output profile, drawn over
// SettingFormAction: eight lists, the custom size, the quality row.
#pragma once

#include <QDialog>

#include <array>

#include "Action/SettingFormAction.h"

class QButtonGroup;
class QComboBox;
class QLabel;
class QLineEdit;

class SettingsDialog : public QDialog {
  Q_OBJECT

 public:
  // Shows `item`'s profile against the choices of its catalogue `entry`.
  SettingsDialog(const KMVProfileDataInfo& entry, NodeInfo::Ptr item, QWidget* parent = nullptr);

  void accept() override;

 private:
  QComboBox* addList(SettingFormAction::List which);
  // Draws the logic's state.
  void refresh();

  SettingFormAction action_;
  NodeInfo::Ptr item_;
  std::array<QComboBox*, SettingFormAction::kListCount> lists_{};
  QLineEdit* width_ = nullptr;
  QLineEdit* height_ = nullptr;
  QLabel* times_ = nullptr;
  QButtonGroup* quality_ = nullptr;
  bool refreshing_ = false;
};
