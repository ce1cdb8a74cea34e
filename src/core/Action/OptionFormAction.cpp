#include "Action/OptionFormAction.h"

#include <QDir>
#include <QFileInfo>

#include "Action/UIAction.h"
#include "CommonClass/GlobalSettings.h"

namespace {

bool usableFolder(const QString& folder) {
  if (folder.isEmpty()) return false;
  UIAction::creatOutputDirectory(folder);
  const QFileInfo info(folder);
  return info.isDir() && info.isWritable();
}

}  // namespace

QStringList OptionFormAction::pictureFormats() {
  return {QStringLiteral("jpg"), QStringLiteral("png"), QStringLiteral("bmp")};
}

OptionValues OptionFormAction::current() {
  return {photoOutputFormat.isEmpty() ? QStringLiteral("jpg") : photoOutputFormat, photoOutputPath, DefOutputPath,
          isAutoUpdates};
}

OptionOutcome OptionFormAction::apply(const OptionValues& values) {
  for (const QString& folder : {values.photoOutputPath, values.outputPath}) {
    if (!usableFolder(folder)) {
      return {false, QStringLiteral("The folder \"%1\" cannot be created or written. Choose another one.")
                         .arg(QDir::toNativeSeparators(folder))};
    }
  }
  if (!pictureFormats().contains(values.photoOutputFormat)) {
    return {false, QStringLiteral("Snapshots are saved as %1.").arg(pictureFormats().join(QStringLiteral(", ")))};
  }
  photoOutputFormat = values.photoOutputFormat;
  photoOutputPath = QDir::cleanPath(values.photoOutputPath);
  DefOutputPath = QDir::cleanPath(values.outputPath);
  isAutoUpdates = values.autoUpdates;
  if (!UIAction::saveInfoToXml()) {
    return {true, QStringLiteral("The options apply until the program quits, but they could not be saved (%1).")
                      .arg(QDir::toNativeSeparators(UIAction::configXmlPath()))};
  }
  return {true, {}};
}
