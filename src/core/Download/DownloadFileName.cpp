#include "DownloadFileName.h"

#include <QFileInfo>

QString freeDownloadPath(const QString& folder, const QString& title, const QString& format) {
  QString candidate = QStringLiteral("%1/%2.%3").arg(folder, title, format);
  for (int counter = 0; QFileInfo::exists(candidate); ++counter) {
    candidate = QStringLiteral("%1/%2(%3).%4").arg(folder, title, QString::number(counter), format);
  }
  return candidate;
}
