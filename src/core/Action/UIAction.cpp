#include "UIAction.h"

#include <QFile>
#include <QFileInfo>
#include <QDir>

#include "CommonClass/BookmarkAccess.h"
#include "CommonClass/CommonClass.h"
#include "CommonClass/GlobalSettings.h"
#include "CommonClass/KMVLog.h"
#include "CommonClass/StandardPaths.h"
#include "CommonClass/UserDefaults.h"
#include "ProjectVersion.h"

namespace {

constexpr int kIndent = 4;

std::optional<QDomDocument> parse(const QString& path) {
  QFile file(path);
  if (!file.open(QIODevice::ReadOnly)) return std::nullopt;
  QDomDocument document;
  if (!document.setContent(&file)) return std::nullopt;
  return document;
}

bool isWritableFolder(const QString& path) {
  const QFileInfo info(path);
  return !path.isEmpty() && info.isDir() && info.isWritable();
}

// Sets the text of `element` to `value`, keeping the element itself.
void setElementText(QDomElement element, const QString& value) {
  if (element.isNull()) return;
  while (element.hasChildNodes()) element.removeChild(element.firstChild());
  element.appendChild(element.ownerDocument().createTextNode(value));
}

void readProductPart(const QDomElement& product, UserDefaults& defaults) {
  if (product.isNull()) return;
  defaults.setObject(CommonClass::getNodeValue(product, QStringLiteral("name")), QStringLiteral("appName"));
  for (const char* key : {"buildver", "builddate", "link_code"}) {
    const QString name = QLatin1String(key);
    defaults.setObject(CommonClass::getNodeValue(product, name), name);
  }
}

void storeLinkID(UserDefaults& defaults) {
  const QVariant current = defaults.objectForKey(QStringLiteral("LinkID"));
  if (current.typeId() == QMetaType::QString && !current.toString().isEmpty()) return;
  const auto info = CommonClass::readProductInfo();
  const QString linkTemplate = info ? info->decryptedText(info->linkID) : QString();
  defaults.setObject(UIAction::linkIDFromTemplate(linkTemplate, QLatin1String(kBundleVersion)), QStringLiteral("LinkID"));
}

void readUserPart(const QDomElement& user, UserDefaults& defaults) {
  BookmarkAccess::startAccessPathWithData(defaults.dataForKey(QStringLiteral("OutputBookMark")));
  DefOutputPathBookMark = defaults.dataForKey(QStringLiteral("OutputBookMark"));
  const QString outputPath = CommonClass::getNodeValue(user, QStringLiteral("outputpath"));
  DefOutputPath = isWritableFolder(outputPath) ? outputPath : GlobalSettings::makerFolder();

  sysTmpPath = QStringLiteral("/tmp/VideoConverter");
  UIAction::creatOutputDirectory(sysTmpPath);
  videoImagePath = QDir(sysTmpPath).filePath(QStringLiteral("Images"));
  UIAction::creatOutputDirectory(videoImagePath);

  DefInputPath = defaults.stringForKey(QStringLiteral("DefInputPath"));
  if (DefInputPath.isEmpty()) DefInputPath = GlobalSettings::moviesFolder();

  BookmarkAccess::startAccessPathWithData(defaults.dataForKey(QStringLiteral("PhotoBookMark")));
  photoOutputPathBookMark = defaults.dataForKey(QStringLiteral("PhotoBookMark"));
  const QString photoPath = CommonClass::getNodeValue(user, QStringLiteral("photooutputpath"));
  photoOutputPath = isWritableFolder(photoPath) ? photoPath : GlobalSettings::makerFolder() + QStringLiteral("/photo");

  photoOutputFormat = CommonClass::getNodeValue(user, QStringLiteral("photooutputformat"));
  if (photoOutputFormat.isEmpty()) photoOutputFormat = QStringLiteral("jpg");

  isAutoUpdates = CommonClass::getNodeValue(user, QStringLiteral("autoCheckForUpdates")) == QLatin1String("Yes");

  kProfileName = CommonClass::getNodeValue(user, QStringLiteral("lastselectprofilename"));
  defaults.setObject(kProfileName, QStringLiteral("profileName"));
}

}  // namespace

QString UIAction::configXmlPath() { return StandardPaths::pathForPrivateFile(QStringLiteral("Config.xml")); }

std::optional<QDomDocument> UIAction::readConfigXml() {
  const QString path = configXmlPath();
  if (!QFileInfo::exists(path)) restoreConfigXml();
  if (auto document = parse(path)) return document;
  // Damaged: keep it beside for the user, then start from the shipped copy.
  const QString damaged = path + QStringLiteral(".damaged");
  QFile::remove(damaged);
  QFile::rename(path, damaged);
  restoreConfigXml();
  return parse(path);
}

bool UIAction::restoreConfigXml() {
  const QString path = configXmlPath();
  CommonClass::deleteFile(path);
  const bool copied = QFile::copy(StandardPaths::pathForResource(QStringLiteral("Config.xml")), path);
  if (copied) QFile::setPermissions(path, QFile::permissions(path) | QFileDevice::WriteOwner);
  return copied;
}

bool UIAction::saveConfigXml(const QDomDocument& document) {
  return CommonClass::writeAtomically(configXmlPath(), document.toByteArray(kIndent));
}

void UIAction::readInfoFromXml() {
  UserDefaults& defaults = UserDefaults::standardUserDefaults();
  const QDomDocument document = readConfigXml().value_or(QDomDocument());
  const QDomElement root = document.documentElement();

  storeLinkID(defaults);
  readProductPart(root.firstChildElement(QStringLiteral("product")), defaults);

  const QDomElement user = root.firstChildElement(QStringLiteral("user"));
  if (!user.isNull()) readUserPart(user, defaults);
  defaults.synchronize();
}

bool UIAction::saveInfoToXml() {
  auto document = readConfigXml();
  bool saved = false;
  if (document) {
    QDomElement user = document->documentElement().firstChildElement(QStringLiteral("user"));
    setElementText(user.firstChildElement(QStringLiteral("lastselectprofilename")), kProfileName);
    setElementText(user.firstChildElement(QStringLiteral("outputpath")), DefOutputPath);
    setElementText(user.firstChildElement(QStringLiteral("photooutputformat")), photoOutputFormat);
    setElementText(user.firstChildElement(QStringLiteral("photooutputpath")), photoOutputPath);
    setElementText(user.firstChildElement(QStringLiteral("autoCheckForUpdates")),
                   isAutoUpdates ? QStringLiteral("Yes") : QStringLiteral("No"));
    saved = saveConfigXml(*document);
  }
  UserDefaults& defaults = UserDefaults::standardUserDefaults();
  if (!DefOutputPathBookMark.isEmpty()) defaults.setObject(DefOutputPathBookMark, QStringLiteral("OutputBookMark"));
  if (!photoOutputPathBookMark.isEmpty()) defaults.setObject(photoOutputPathBookMark, QStringLiteral("PhotoBookMark"));
  defaults.synchronize();
  return saved;
}

QString UIAction::linkIDFromTemplate(const QString& linkTemplate, const QString& bundleVersion) {
  QString digits = bundleVersion;
  digits.remove(QLatin1Char('.'));
  QString result = linkTemplate;
  return result.replace(QStringLiteral("version"), digits);
}

void UIAction::creatOutputDirectory(const QString& path) {
  if (!CommonClass::creatOutputDirectory(path)) KMVLog::Log(QStringLiteral("Create Path :%1 fail").arg(path));
}
