#include "DownloadSiteIcon.h"

#include <array>

#include "CommonClass/StandardPaths.h"
#include "parseurl.h"

namespace {

// By site number, from PARSE_SITE_FIRST_KNOWN on.
constexpr std::array<const char*, 13> kSiteIcons{
    "youTube.png",   "liveleak.png", "break.png", "metacafe.png", "vimeo.png", "veoh.png",         "collegehumor.png",
    "sevenload.png", "tu.png",       "ina.png",   "wimp.png",     "keek.png",  "funny-or-dte.png",
};
static_assert(kSiteIcons.size() == PARSE_SITE_LAST_KNOWN - PARSE_SITE_FIRST_KNOWN + 1, "one icon per known site");

constexpr const char* kSkinPictureFolder = "skin/classical/form/Images/";

}  // namespace

QString DownloadSiteIcon::iconFileName(int siteID) {
  if (siteID < PARSE_SITE_FIRST_KNOWN || siteID > PARSE_SITE_LAST_KNOWN) return QStringLiteral("videoFormat.png");
  return QString::fromLatin1(kSiteIcons[static_cast<size_t>(siteID - PARSE_SITE_FIRST_KNOWN)]);
}

QString DownloadSiteIcon::diffSiteIconImage(const QString& pageAddress) {
  const int siteID = GetWebSiteID(pageAddress.toUtf8().constData());
  return StandardPaths::pathForResource(QLatin1String(kSkinPictureFolder) + iconFileName(siteID));
}
