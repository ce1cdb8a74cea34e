// The download settings sheet ("winDownloadSet"), shown over the download
// window: the quality rule as three choices in a row and the download
// folder with its choose and open buttons. OK takes them over; Cancel
// leaves everything as it was.
#pragma once

#include <QDialog>

#include "Download/DownloadSettingFormController.h"

class QButtonGroup;
class QLineEdit;

class DownloadSettingsSheet : public QDialog {
  Q_OBJECT

 public:
  // Filled from the current settings.
  explicit DownloadSettingsSheet(QWidget* parent = nullptr);

  DownloadSettingFormController& controller() { return controller_; }

 private:
  void showFields();
  void takeFields();

  DownloadSettingFormController controller_;
  QButtonGroup* rgdSelect_ = nullptr;
  QLineEdit* txtfldPath_ = nullptr;
};
