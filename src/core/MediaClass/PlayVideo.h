// The preview player's probe: reads a file's properties through the
// converter library and answers them from its own copy of the record. The
// texts of a failed probe are composed but not shown, so that adding files
// can report failures together.
#pragma once

#include <QString>

#include <cstdint>

#include "videoconverter.h"

class PlayVideo {
 public:
  // Probes `path`, writing a thumbnail to `imageName` when one is given.
  // Returns 0, the library's failure code, or -1 for an empty path or a file
  // with neither video nor audio.
  int32_t getMediaInfo(const QString& path, const QString& imageName);
  // Why the last probe failed ("This file is not in a recognizable format.
  // (<name>)", "Invalid video file! (<name>)"); empty after a success or for
  // an empty path.
  const QString& message() const { return message_; }
  // The file last probed.
  const QString& videoPath() const { return videoPath_; }

  // Only ".mp3", ".wma", ".MP3" and ".WMA" are taken as audio-only by name.
  static bool isAudioOnlyByExtension(const QString& path);

  // Answers of the last successful probe (zeros before one).
  int32_t getWidth() const { return info_.m_Width; }
  int32_t getHeight() const { return info_.m_Height; }
  // Microseconds.
  double getLength() const { return static_cast<double>(info_.m_Duration); }
  // 0 for a file audio-only by name, else whether the record has video.
  int32_t videoStream() const;
  int32_t audioStream() const { return info_.m_AudioSteamCnt > 0 ? 1 : 0; }
  int32_t getDefaultAudioStream() const { return info_.m_defaultAudioStream; }
  int32_t getAudioSteamCnt() const { return info_.m_AudioSteamCnt; }
  const AudioStremInfo* getAudioStreamInfo() const { return info_.m_AudioStreamInfo; }
  // nullptr until a probe succeeded.
  const DECODER_INFO* decoderInfo() const { return hasInfo_ ? &info_ : nullptr; }

 private:
  QString videoPath_;
  QString message_;
  DECODER_INFO info_{};
  bool hasInfo_ = false;
};
