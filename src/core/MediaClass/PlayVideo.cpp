#include "PlayVideo.h"

#include <QFileInfo>

#include "MediaClass/MediaFileProbe.h"

int32_t PlayVideo::getMediaInfo(const QString& path, const QString& imageName) {
  message_.clear();
  hasInfo_ = false;
  info_ = DECODER_INFO{};
  if (path.isEmpty()) return -1;

  videoPath_ = path;
  const MediaFileProbe probe = probeMediaFile(path, imageName, isAudioOnlyByExtension(path));
  message_ = probe.message;
  if (probe.result != 0) return probe.result;
  info_ = probe.info;
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
