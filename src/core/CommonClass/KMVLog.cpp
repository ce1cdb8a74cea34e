#include "KMVLog.h"

#include <QDateTime>

#include <cstdio>

namespace {
QString& logFolder() {
  static QString folder = QStringLiteral("/tmp/VideoConverter/");
  return folder;
}
}  // namespace

QString KMVLog::folder() { return logFolder(); }

void KMVLog::setFolder(const QString& folder) { logFolder() = folder; }

void KMVLog::Log(const QString& message) {
  const QDateTime now = QDateTime::currentDateTime();
  const QString fileName =
      QStringLiteral("%1/%2.txt").arg(logFolder(), now.toString(QStringLiteral("yyyyMMdd")));
  const QByteArray line =
      QStringLiteral("%1\t%2\r\n").arg(now.toString(QStringLiteral("yyyy-MM-dd HH:mm:ss")), message).toUtf8();

  FILE* file = std::fopen(fileName.toLocal8Bit().constData(), "a+");
  if (file == nullptr) {
    std::fputs("Cannot open file strike any key exit!\n", stdout);
    std::fflush(stdout);
    return;
  }
  std::fwrite(line.constData(), 1, static_cast<size_t>(line.size()), file);
  std::fclose(file);
}
