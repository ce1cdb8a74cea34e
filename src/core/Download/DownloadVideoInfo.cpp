#include "DownloadVideoInfo.h"

QString DownloadVideoInfo::videoSizeText() const {
  if (videoSize_ <= 2000) return QStringLiteral("??? MB");
  return QString::asprintf("%.2f MB", static_cast<double>(videoSize_) / 1000000.0);
}
