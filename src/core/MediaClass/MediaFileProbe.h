// Probing one file through the converter library, with the texts that say
// why a file cannot be used. The player and the conversion job share it.
#pragma once

#include <QString>
#include <QVector>

#include <cstdint>

#include "videoconverter.h"

struct MediaFileProbe {
  // 0, the library's failure code, or -1 for a file with neither video nor audio.
  int32_t result = -1;
  // Why the probe failed; empty after a success.
  QString message;
  // A copy of the library's record after a success.
  DECODER_INFO info{};
};

// Probes `path` (not empty), writing a thumbnail to `imageName` when one is
// given; `audioOnly` skips all video work.
MediaFileProbe probeMediaFile(const QString& path, const QString& imageName, bool audioOnly);

// The keyframe times of a probed file, in seconds from its start; empty when
// it has no keyframe index (no video, or no scratch folder when probed).
QVector<double> keyframeSeconds(const DECODER_INFO& info);
