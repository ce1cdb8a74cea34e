// The per-user configuration file Config.xml and the shared commands built on
// it. The file lives in the private data folder; a missing or unreadable one
// is restored from the copy shipped in the resources.
#pragma once

#include <QDomDocument>
#include <QString>

#include <optional>

class UIAction {
 public:
  static QString configXmlPath();
  // Parses Config.xml, restoring it first when it is missing or unreadable.
  static std::optional<QDomDocument> readConfigXml();
  // Replaces the private copy with the shipped one.
  static bool restoreConfigXml();
  // Writes `document` pretty-printed and atomically to the private copy.
  static bool saveConfigXml(const QDomDocument& document);

  // Fills the process-wide settings and user defaults from Config.xml and
  // the ProductInfo archive.
  static void readInfoFromXml();
  // Writes the settings back into the existing elements of Config.xml.
  static bool saveInfoToXml();

  // The address of a service named in Config.xml's "service" part
  // ("appcast", "codecdownload"); empty when none is set.
  static QString serviceAddress(const QString& name);
  // A help or support page with the referral tag of user default "LinkID"
  // appended as "<page>#from=<tag>" when there is one.
  static QString pageWithLinkID(const QString& page);

  // Every "version" in `linkTemplate` replaced by the digits of `bundleVersion`
  // ("2.1.5" gives "215").
  static QString linkIDFromTemplate(const QString& linkTemplate, const QString& bundleVersion);

  // Creates the folder; a failure is logged as "Create Path :<path> fail".
  static void creatOutputDirectory(const QString& path);
};
