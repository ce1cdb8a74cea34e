// The icon of the site a page address belongs to.
#pragma once

#include <QString>

class DownloadSiteIcon {
 public:
  // The skin picture of the page's site, by the page-analysis library's site
  // number: the file of one of the thirteen known sites, else the skin's
  // "videoFormat" picture. A path in the skin's picture folder.
  static QString diffSiteIconImage(const QString& pageAddress);
  // The picture file name of a site number; "videoFormat.png" for unknown ones.
  static QString iconFileName(int siteID);
};
