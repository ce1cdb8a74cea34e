#include "MediaFileProbe.h"

#include <QFileInfo>

MediaFileProbe probeMediaFile(const QString& path, const QString& imageName, bool audioOnly) {
  MediaFileProbe probe;
  const QString name = QFileInfo(path).fileName();
  const QByteArray utf8Path = path.toUtf8();
  const QByteArray utf8Image = imageName.toUtf8();
  DECODER_INFO* record = nullptr;
  const int result = VideoConverter_GetMediaInfo(
      utf8Path.constData(), imageName.isEmpty() ? nullptr : utf8Image.constData(), &record, audioOnly ? 1 : 0);
  if (result != 0 || record == nullptr) {
    probe.result = result != 0 ? result : -1;
    probe.message = QStringLiteral("This file is not in a recognizable format. (%1)").arg(name);
    return probe;
  }
  if (record->m_bVideoStream == 0 && record->m_AudioSteamCnt == 0) {
    probe.message = QStringLiteral("Invalid video file! (%1)").arg(name);
    return probe;
  }
  // The library's record is only valid until its next call on this thread.
  probe.info = *record;
  probe.result = 0;
  return probe;
}
