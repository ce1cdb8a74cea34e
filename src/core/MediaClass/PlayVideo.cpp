#include "PlayVideo.h"

#include <QFileInfo>

int32_t PlayVideo::getMediaInfo(const QString& path, const QString& imageName) {
  message_.clear();
  hasInfo_ = false;
  info_ = DECODER_INFO{};
  if (path.isEmpty()) return -1;

  videoPath_ = path;
  const QString name = QFileInfo(path).fileName();
  const QByteArray utf8Path = path.toUtf8();
  const QByteArray utf8Image = imageName.toUtf8();
  DECODER_INFO* record = nullptr;
  const int result =
      VideoConverter_GetMediaInfo(utf8Path.constData(), imageName.isEmpty() ? nullptr : utf8Image.constData(), &record,
                                  isAudioOnlyByExtension(path) ? 1 : 0);
  if (result != 0 || record == nullptr) {
    message_ = QStringLiteral("This file is not in a recognizable format. (%1)").arg(name);
    return result != 0 ? result : -1;
  }
  if (record->m_bVideoStream == 0 && record->m_AudioSteamCnt == 0) {
    message_ = QStringLiteral("Invalid video file! (%1)").arg(name);
    return -1;
  }
  // The library's record is only valid until its next call on this thread.
  info_ = *record;
  hasInfo_ = true;
  return 0;
}

bool PlayVideo::isAudioOnlyByExtension(const QString& path) {
  const QString extension = QFileInfo(path).suffix();
  for (const char* audio : {"mp3", "wma", "MP3", "WMA"}) {
    if (extension == QLatin1String(audio)) return true;
  }
  return false;
}

int32_t PlayVideo::videoStream() const {
  if (isAudioOnlyByExtension(videoPath_)) return 0;
  return info_.m_bVideoStream > 0 ? 1 : 0;
}
