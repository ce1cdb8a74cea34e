// The preview's sound output: signed 16-bit stereo at the preview's rate on
// the default sound device. The renderer hands it sound and asks how much
// has been heard from its own threads; the output itself lives on the thread
// that made this object, and those calls never wait for that thread. Without
// a sound device, or once the device fails, every call answers -1 and the
// renderer keeps time on its own. The renderer must be stopped before this
// object goes.
#pragma once

#include <QAudio>
#include <QObject>

#include <atomic>
#include <chrono>
#include <cstdint>
#include <mutex>

#include "sound/SoundRing.h"

class QAudioSink;

class PreviewSound : public QObject {
  Q_OBJECT

 public:
  explicit PreviewSound(QObject* parent = nullptr);
  ~PreviewSound() override;

  bool isAvailable() const { return available_; }

  // Any thread. Takes as many of `frameCount` interleaved stereo frames as
  // fit in about half a second of buffer; returns how many it took.
  int play(const int16_t* samples, int frameCount);
  // Any thread. Microseconds heard since the last flush.
  int64_t playedUs();
  // Any thread. Drops what was not heard yet and counts from 0 again.
  void flush();

 private:
  void restartOutput();
  void sampleClock();
  void watchState(QAudio::State state);

  std::atomic<bool> available_{false};
  SoundRing ring_;
  QAudioSink* sink_ = nullptr;
  std::atomic<bool> restartAsked_{false};

  // What the output last said it had played, and when.
  struct Clock {
    bool restarting = false;
    bool sampled = false;
    bool advancing = false;  // the last sample was later than the one before
    int64_t sampledUs = 0;
    std::chrono::steady_clock::time_point sampledAt{};
    int64_t lastAnswerUs = 0;
  };
  std::mutex clockMutex_;
  Clock clock_;
};
