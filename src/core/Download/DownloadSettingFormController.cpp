#include "DownloadSettingFormController.h"

#include "CommonClass/CommonClass.h"
#include "CommonClass/PlatformServices.h"
#include "CommonClass/UserDefaults.h"
#include "Download/DownloadSettings.h"

void DownloadSettingFormController::showSheet() {
  selectedQuality_ = qualityParam;
  pathField_ = savePath;
  emit fieldsChanged();
}

void DownloadSettingFormController::setSelectedQuality(int32_t column) {
  selectedQuality_ = column;
  emit fieldsChanged();
}

void DownloadSettingFormController::setPathField(const QString& path) {
  pathField_ = path;
  emit fieldsChanged();
}

void DownloadSettingFormController::okClick() {
  qualityParam = selectedQuality_;
  savePath = pathField_;
  UserDefaults& defaults = UserDefaults::standardUserDefaults();
  defaults.setObject(savePath, QLatin1String(DownloadSettings::kSavePathDefault));
  defaults.synchronize();
}

void DownloadSettingFormController::selectPathClick() {
  const QString chosen = CommonClass::openFolder(pathField_);
  if (!chosen.isEmpty()) setPathField(chosen);
}

void DownloadSettingFormController::openFolderClick() {
  if (Workspace* workspace = PlatformServices::workspace()) workspace->revealInFileViewer(pathField_);
}
