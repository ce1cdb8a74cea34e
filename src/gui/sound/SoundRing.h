// A bounded first-in first-out store of sound that any thread fills and a
// sound output pulls from as a sequential, read-only device. It moves whole
// sample frames only.
#pragma once

#include <QIODevice>

#include <mutex>
#include <vector>

class SoundRing : public QIODevice {
  Q_OBJECT

 public:
  SoundRing(qsizetype capacityFrames, int bytesPerFrame, QObject* parent = nullptr);

  // Takes as many of `frameCount` frames as there is room for and returns
  // how many it took. Any thread.
  int push(const char* frames, int frameCount);
  // Drops what was not pulled yet. Any thread.
  void clear();
  // While held, pulls get nothing (the output is being restarted). Any thread.
  void setHeld(bool held);
  // Bytes pulled since the count was last reset. Any thread.
  qint64 pulledBytes() const;
  void resetPulledBytes();

  bool isSequential() const override { return true; }
  // Sound may always come: an empty ring is a gap, never the end (an output
  // that sees the end drains and waits for no more).
  bool atEnd() const override { return false; }
  qint64 bytesAvailable() const override;

 signals:
  // After every pull that got something, on the puller's thread.
  void pulled();

 protected:
  qint64 readData(char* data, qint64 maxSize) override;
  qint64 writeData(const char* data, qint64 maxSize) override;

 private:
  const int bytesPerFrame_;
  mutable std::mutex mutex_;
  std::vector<char> store_;
  size_t head_ = 0;  // where the oldest byte is
  size_t used_ = 0;
  qint64 pulled_ = 0;
  bool held_ = false;
};
