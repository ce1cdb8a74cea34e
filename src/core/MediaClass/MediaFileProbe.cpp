#include "MediaFileProbe.h"

#include <QFileInfo>

#include <algorithm>
#include <vector>

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

QVector<double> keyframeSeconds(const DECODER_INFO& info) {
  const int count = VideoConverter_GetKeyframeTimes(info.m_framesPosFileName, nullptr, 0);
  if (count <= 0) return {};
  std::vector<int64_t> times(static_cast<size_t>(count));
  const int read = VideoConverter_GetKeyframeTimes(info.m_framesPosFileName, times.data(), count);
  QVector<double> seconds;
  seconds.reserve(count);
  for (int i = 0; i < std::min(read, count); ++i) seconds.append(static_cast<double>(times[static_cast<size_t>(i)]) / 1e6);
  return seconds;
}
