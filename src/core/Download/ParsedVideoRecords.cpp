#include "ParsedVideoRecords.h"

#include <cstdlib>

namespace {

QString withEncodedSpaces(const char* address) {
  return QString::fromUtf8(address).replace(QLatin1Char(' '), QLatin1String("%20"));
}

}  // namespace

QString decodedVideoTitle(const char* title) {
  if (title == nullptr) return QStringLiteral("");
  QString text = QString::fromUtf8(title);
  text.replace(QLatin1String("&amp;"), QLatin1String("&"));
  text.replace(QLatin1String("&gt;"), QLatin1String(">"));
  text.replace(QLatin1String("&lt;"), QLatin1String("<"));
  text.replace(QLatin1String("&quot;"), QLatin1String("\""));
  text.replace(QLatin1String("&apos;"), QLatin1String("'"));
  text.replace(QLatin1String("&iquest;"), QLatin1String("`"));
  text.replace(QLatin1Char('/'), QLatin1Char(' '));
  return text;
}

QList<DownloadVideoInfo> downloadVideoInfosOf(const ParsedVideoEntry* head) {
  QList<DownloadVideoInfo> files;
  for (const ParsedVideoEntry* entry = head; entry != nullptr; entry = entry->next) {
    if (entry->url == nullptr) continue;
    DownloadVideoInfo file;
    file.setDownloadUrl(withEncodedSpaces(entry->url));
    file.setVideoTitle(decodedVideoTitle(entry->title));
    file.setExtention(entry->extension != nullptr ? QString::fromUtf8(entry->extension) : QStringLiteral(""));
    file.setVideoSize(entry->size);
    file.setLength(entry->length);
    file.setImgURL(entry->imageUrl != nullptr ? withEncodedSpaces(entry->imageUrl) : QStringLiteral(""));
    file.setDimension(QSizeF(entry->width, entry->height));
    files.append(file);
  }
  return files;
}

void freeParsedVideoEntries(ParsedVideoEntry* head) {
  while (head != nullptr) {
    ParsedVideoEntry* next = head->next;
    std::free(head);
    head = next;
  }
}
