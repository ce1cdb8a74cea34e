#include "PreviewSound.h"

#include <QAudioDevice>
#include <QAudioFormat>
#include <QAudioSink>
#include <QMediaDevices>

#include <algorithm>

#include "videoconverter.h"

namespace {

constexpr int kBytesPerFrame = 2 * sizeof(int16_t);
// About half a second waits here for the output to pull it; the output
// itself holds a tenth of a second more, which keeps pause and seek quick.
constexpr qsizetype kRingFrames = VC_PREVIEW_SAMPLE_RATE / 2;
constexpr qsizetype kOutputBufferBytes = qsizetype{VC_PREVIEW_SAMPLE_RATE / 10} * kBytesPerFrame;

int64_t bytesToUs(qint64 bytes) { return bytes / kBytesPerFrame * 1000000 / VC_PREVIEW_SAMPLE_RATE; }

}  // namespace

PreviewSound::PreviewSound(QObject* parent) : QObject(parent), ring_(kRingFrames, kBytesPerFrame) {
  const QAudioDevice device = QMediaDevices::defaultAudioOutput();
  if (device.isNull()) return;
  QAudioFormat format;
  format.setSampleRate(VC_PREVIEW_SAMPLE_RATE);
  format.setChannelCount(2);
  format.setSampleFormat(QAudioFormat::Int16);
  if (!device.isFormatSupported(format)) return;

  sink_ = new QAudioSink(device, format, this);
  sink_->setBufferSize(kOutputBufferBytes);
  connect(sink_, &QAudioSink::stateChanged, this, &PreviewSound::watchState);
  connect(&ring_, &SoundRing::pulled, this, &PreviewSound::sampleClock);
  sink_->start(&ring_);
  available_ = sink_->error() != QAudio::OpenError && sink_->error() != QAudio::FatalError;
}

PreviewSound::~PreviewSound() {
  // The output pulls from the ring: it goes first. Stopped before it is
  // deleted, it ignores a pull it had queued for itself, which it would
  // otherwise make on its closed stream while it goes.
  if (sink_ != nullptr) sink_->stop();
  delete sink_;
}

int PreviewSound::play(const int16_t* samples, int frameCount) {
  if (!available_) return -1;
  return ring_.push(reinterpret_cast<const char*>(samples), frameCount);
}

// Qt 6.4's output on PulseAudio already reports as processed time the
// position heard: the server's read position less the device's latency,
// advanced by the clock since the server's last timing report and never past
// what was written. Subtracting what the output still buffers
// (bufferSize() - bytesFree()) would count that sound twice, and counting
// what was pulled alone would run a buffer ahead. The output may only be
// asked on its own thread, so it is asked at every pull (every period while
// it plays); between two pulls the answer moves on with the clock while the
// output is playing, never beyond the sound pulled since the flush. While a
// new stream fills its first buffer nothing is heard and nothing moves.
int64_t PreviewSound::playedUs() {
  if (!available_) return -1;
  std::lock_guard lock(clockMutex_);
  if (clock_.restarting || !clock_.sampled) return clock_.lastAnswerUs;
  int64_t estimate = clock_.sampledUs;
  if (clock_.advancing) {
    const auto sinceSample = std::chrono::steady_clock::now() - clock_.sampledAt;
    estimate += std::chrono::duration_cast<std::chrono::microseconds>(sinceSample).count();
  }
  clock_.lastAnswerUs = std::max(clock_.lastAnswerUs, std::min(estimate, bytesToUs(ring_.pulledBytes())));
  return clock_.lastAnswerUs;
}

void PreviewSound::flush() {
  if (!available_) return;
  {
    std::lock_guard lock(clockMutex_);
    clock_ = Clock{};
    clock_.restarting = true;
    ring_.setHeld(true);
    ring_.clear();
  }
  // The output has no flush of its own: what it holds goes with a restart.
  if (!restartAsked_.exchange(true))
    QMetaObject::invokeMethod(this, &PreviewSound::restartOutput, Qt::QueuedConnection);
}

void PreviewSound::restartOutput() {
  restartAsked_ = false;
  sink_->stop();
  {
    std::lock_guard lock(clockMutex_);
    ring_.resetPulledBytes();
    ring_.setHeld(false);
    clock_ = Clock{};
  }
  sink_->start(&ring_);
}

void PreviewSound::sampleClock() {
  const int64_t processedUs = sink_->processedUSecs();
  std::lock_guard lock(clockMutex_);
  // A pull that crossed a flush tells the time of the sound dropped.
  if (clock_.restarting) return;
  clock_.advancing = clock_.sampled && processedUs > clock_.sampledUs;
  clock_.sampled = true;
  clock_.sampledUs = processedUs;
  clock_.sampledAt = std::chrono::steady_clock::now();
}

void PreviewSound::watchState(QAudio::State state) {
  const QAudio::Error error = sink_->error();
  if (state == QAudio::StoppedState && (error == QAudio::OpenError || error == QAudio::FatalError)) available_ = false;
}
