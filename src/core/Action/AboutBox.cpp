#include "AboutBox.h"

#include <QCoreApplication>

#include "CommonClass/CommonClass.h"
#include "CommonClass/GlobalSettings.h"
#include "ProjectVersion.h"

AboutBox AboutBox::read() {
  AboutBox box;
  if (const auto info = CommonClass::readProductInfo()) {
    box.title = info->decryptedText(info->aboutTitle);
    box.productName = info->decryptedText(info->mainWindowName);
    box.version = info->decryptedText(info->productVersion);
    box.buildDate = info->decryptedText(info->productBuildDate);
    box.copyright = info->decryptedText(info->copyright);
    box.homeAddress = info->decryptedText(info->homeURL);
  }
  if (box.productName.isEmpty()) box.productName = kProductName;
  if (box.version.isEmpty()) box.version = QLatin1String(kBundleVersion);
  if (box.title.isEmpty()) box.title = QCoreApplication::translate("AboutBox", "About %1").arg(box.productName);
  return box;
}
