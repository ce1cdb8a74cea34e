// Every site's icon is a picture installed with the skin.

#include <gtest/gtest.h>

#include <QFileInfo>

#include "Download/DownloadSiteIcon.h"
#include "parseurl.h"

namespace {

TEST(DownloadSiteIcon, EachKnownSiteHasItsPictureAndOtherSitesTheFormatPicture) {
  EXPECT_TRUE(DownloadSiteIcon::diffSiteIconImage("http://www.youtube.com/watch?v=1").endsWith("/youTube.png"));
  EXPECT_TRUE(DownloadSiteIcon::diffSiteIconImage("https://vimeo.com/1").endsWith("/vimeo.png"));
  EXPECT_TRUE(DownloadSiteIcon::diffSiteIconImage("http://example.test/page").endsWith("/videoFormat.png"));
  const QString folder = QFileInfo(DownloadSiteIcon::diffSiteIconImage("http://example.test/")).path();
  QStringList names;
  for (int site = PARSE_SITE_FIRST_KNOWN - 1; site <= PARSE_SITE_LAST_KNOWN + 1; ++site) {
    names << DownloadSiteIcon::iconFileName(site);
    EXPECT_TRUE(QFileInfo(folder + '/' + names.last()).isFile()) << names.last().toStdString();
  }
  EXPECT_EQ(names.at(1), "youTube.png");
  EXPECT_EQ(names.at(13), "funny-or-dte.png");
  EXPECT_EQ(names.first(), "videoFormat.png");
  EXPECT_EQ(names.last(), "videoFormat.png");
}

}  // namespace
