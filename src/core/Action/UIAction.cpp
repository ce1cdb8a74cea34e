#include "UIAction.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>

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

QString shippedConfigPath() { return StandardPaths::pathForResource(QStringLiteral("Config.xml")); }

// The first element of each group ("product", "user") under the root,
// whatever the root is called.
QDomElement groupOf(const QDomDocument& document, const QString& group) {
  return document.documentElement().firstChildElement(group);
}

// Whether `document` has the shipped root and every element the shipped copy has.
bool hasEveryElementOf(const QDomDocument& document, const QDomDocument& shipped) {
  if (document.documentElement().tagName() != shipped.documentElement().tagName()) return false;
  for (QDomElement group = shipped.documentElement().firstChildElement(); !group.isNull();
       group = group.nextSiblingElement()) {
    const QDomElement own = groupOf(document, group.tagName());
    if (own.isNull()) return false;
    for (QDomElement child = group.firstChildElement(); !child.isNull(); child = child.nextSiblingElement()) {
      if (own.firstChildElement(child.tagName()).isNull()) return false;
    }
  }
  return true;
}

// Sets the text of `element` to `value`, keeping the element itself.
void setElementText(QDomElement element, const QString& value) {
  if (element.isNull()) return;
  while (element.hasChildNodes()) element.removeChild(element.firstChild());
  element.appendChild(element.ownerDocument().createTextNode(value));
}

// The shipped copy with every value that `damaged` still holds for the same element.
QDomDocument repaired(const QDomDocument& damaged, const QDomDocument& shippedCopy) {
  QDomDocument shipped = shippedCopy.cloneNode(true).toDocument();
  for (QDomElement group = shipped.documentElement().firstChildElement(); !group.isNull();
       group = group.nextSiblingElement()) {
    const QDomElement own = groupOf(damaged, group.tagName());
    for (QDomElement child = group.firstChildElement(); !child.isNull(); child = child.nextSiblingElement()) {
      const QDomElement value = own.firstChildElement(child.tagName());
      if (!value.isNull()) setElementText(child, value.text());
    }
  }
  return shipped;
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
  defaults.setObject(UIAction::linkIDFromTemplate(linkTemplate, QLatin1String(kBundleVersion)),
                     QStringLiteral("LinkID"));
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
  std::optional<QDomDocument> document = parse(path);
  if (!document) {
    // Damaged: keep it beside for the user, then start from the shipped copy.
    const QString damaged = path + QStringLiteral(".damaged");
    QFile::remove(damaged);
    QFile::rename(path, damaged);
    restoreConfigXml();
    return parse(path);
  }
  // Well-formed but lacking what the program reads: the shipped layout with
  // every value that could be read.
  const std::optional<QDomDocument> shipped = parse(shippedConfigPath());
  if (shipped && !hasEveryElementOf(*document, *shipped)) {
    KMVLog::Log(QStringLiteral("Config.xml lacked elements; repaired from the shipped copy"));
    document = repaired(*document, *shipped);
    saveConfigXml(*document);
  }
  return document;
}

bool UIAction::restoreConfigXml() {
  const QString path = configXmlPath();
  CommonClass::deleteFile(path);
  const bool copied = QFile::copy(shippedConfigPath(), path);
  if (copied) QFile::setPermissions(path, QFile::permissions(path) | QFileDevice::WriteOwner);
  return copied;
}

bool UIAction::saveConfigXml(const QDomDocument& document) {
  const QByteArray bytes = document.toByteArray(kIndent);
  // An unchanged file is left alone: nothing to lose when the disk is full.
  if (CommonClass::readFile(configXmlPath()) == bytes) return true;
  return CommonClass::writeAtomically(configXmlPath(), bytes);
}

void UIAction::readInfoFromXml() {
  UserDefaults& defaults = UserDefaults::standardUserDefaults();
  const QDomDocument document = readConfigXml().value_or(QDomDocument());
  const QDomElement root = document.documentElement();

  storeLinkID(defaults);
  readProductPart(root.firstChildElement(QStringLiteral("product")), defaults);

  // Without a user part (when not even the shipped copy could be read) every
  // user setting takes its built-in value.
  readUserPart(root.firstChildElement(QStringLiteral("user")), defaults);
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

QString UIAction::serviceAddress(const QString& name) {
  const std::optional<QDomDocument> document = readConfigXml();
  if (!document) return {};
  return CommonClass::getNodeValue(document->documentElement().firstChildElement(QStringLiteral("service")), name);
}

QString UIAction::pageWithLinkID(const QString& page) {
  const QString tag = UserDefaults::standardUserDefaults().stringForKey(QStringLiteral("LinkID"));
  return tag.isEmpty() ? page : QStringLiteral("%1#from=%2").arg(page, tag);
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
