// One audio stream of an imported file. Probing fills the name and the
// usable flag; the other numbers stay 0.
#pragma once

#include <QString>

#include <cstdint>

class AudioStream {
 public:
  const QString& audioStreamName() const { return audioStreamName_; }
  void setAudioStreamName(const QString& name) { audioStreamName_ = name; }
  int32_t audioSteamId() const { return audioSteamId_; }
  void setAudioSteamId(int32_t id) { audioSteamId_ = id; }
  // The property AudioStream: nonzero when the stream is usable. Its getter
  // cannot carry the class's own name in C++.
  int32_t getAudioStream() const { return AudioStream_; }
  void setAudioStream(int32_t usable) { AudioStream_ = usable; }
  int32_t audioRate() const { return audioRate_; }
  void setAudioRate(int32_t rate) { audioRate_ = rate; }
  int32_t audioChannels() const { return audioChannels_; }
  void setAudioChannels(int32_t channels) { audioChannels_ = channels; }
  int32_t audioBitrate() const { return audioBitrate_; }
  void setAudioBitrate(int32_t bitrate) { audioBitrate_ = bitrate; }

  bool operator==(const AudioStream&) const = default;

 private:
  QString audioStreamName_;
  int32_t audioSteamId_ = 0;
  int32_t AudioStream_ = 0;
  int32_t audioRate_ = 0;
  int32_t audioChannels_ = 0;
  int32_t audioBitrate_ = 0;
};
