// The download settings sheet's logic: the quality rule and the download
// folder, taken over on OK and remembered for the next start.
#pragma once

#include <QObject>
#include <QString>

#include <cstdint>

class DownloadSettingFormController : public QObject {
  Q_OBJECT

 public:
  using QObject::QObject;

  // Fills the sheet from the current settings.
  void showSheet();

  // The quality column selected (0 highest, 1 middle, 2 lowest) and the
  // path field's text, as the sheet shows them.
  int32_t selectedQuality() const { return selectedQuality_; }
  void setSelectedQuality(int32_t column);
  const QString& pathField() const { return pathField_; }
  void setPathField(const QString& path);

  // Takes the sheet's values over, unchecked, and remembers the folder in
  // "DownloadSavePath".
  void okClick();
  // Lets the user choose a folder, starting at the path field's.
  void selectPathClick();
  // Shows the path field's folder in the file viewer.
  void openFolderClick();

 signals:
  void fieldsChanged();

 private:
  int32_t selectedQuality_ = 0;
  QString pathField_;
};
