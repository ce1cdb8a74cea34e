// Reads one catalogue file:
//
//   <profiles group="General Video">
//     <profile id="1001" DisplayName="MPEG-4 AVC" Format="mp4" ExtName="mp4" type="0" Device="0"
//              minWidth="32" minHeight="32" maxWidth="4096" maxHeight="2304" image="profileMP4">
//       <sub key="vcodec" ListValue="libx264,mpeg4" DefaultValue="0"/>
//       ...
//     </profile>
//   </profiles>
//
// Device and the size bounds are 0 when absent (audio profiles have none).
// A profile with a missing or malformed attribute is left out and reported;
// the other profiles of the file are kept.
#pragma once

#include <QList>
#include <QString>
#include <QStringList>

#include "Profile/KMVProfileDataInfo.h"

struct ProfileCatalogFile {
  QList<KMVProfileDataInfo> profiles;
  QStringList errors;  // "<file>: <what is wrong>"
};

class ProfileCatalogReader {
 public:
  static ProfileCatalogFile readFile(const QString& path);
};
