// The preview's sound: the ring the output pulls from, filled from another
// thread, and the output itself, called from another thread as the renderer
// does: it answers -1 throughout where the machine has no sound device and
// counts the time heard where it has one.
#include <gtest/gtest.h>

#include <QSignalSpy>

#include <algorithm>
#include <thread>
#include <vector>

#include "EventLoopWait.h"
#include "sound/PreviewSound.h"
#include "videoconverter.h"

namespace {

// Frames of two 16-bit samples, each frame holding its own number.
std::vector<int16_t> numberedFrames(int first, int count) {
  std::vector<int16_t> samples;
  for (int frame = first; frame < first + count; ++frame)
    samples.insert(samples.end(), {int16_t(frame), int16_t(-frame)});
  return samples;
}

TEST(SoundRingTest, KeepsOrderAndBoundsAndMovesWholeFrames) {
  SoundRing ring(10, 4);
  QSignalSpy readyRead(&ring, &QIODevice::readyRead);
  const std::vector<int16_t> samples = numberedFrames(0, 16);
  const auto push = [&](int first, int count) {
    return ring.push(reinterpret_cast<const char*>(samples.data() + 2 * first), count);
  };
  std::vector<int16_t> pulled(32);
  const auto pull = [&](qint64 bytes) { return ring.read(reinterpret_cast<char*>(pulled.data()), bytes); };

  EXPECT_EQ(push(0, 7), 7);
  EXPECT_EQ(pull(27), 24) << "whole frames only";
  EXPECT_EQ(pulled[10], 5);
  EXPECT_EQ(push(7, 9), 9) << "across the ring's end";
  EXPECT_EQ(push(0, 16), 0) << "only what fits is taken";
  QCoreApplication::processEvents();
  EXPECT_EQ(readyRead.count(), 1) << "an output waiting on an empty ring is told once";
  EXPECT_EQ(pull(64), 40);
  EXPECT_EQ(std::vector<int16_t>(pulled.begin(), pulled.begin() + 20),
            std::vector<int16_t>(samples.begin() + 12, samples.end()));
  EXPECT_EQ(ring.pulledBytes(), 64);

  push(0, 4);
  ring.setHeld(true);
  EXPECT_EQ(pull(64), 0) << "held";
  ring.clear();
  ring.setHeld(false);
  EXPECT_EQ(pull(64), 0) << "cleared";
}

TEST(SoundRingTest, AThreadFillsWhileTheOutputPulls) {
  constexpr int kFrames = 200000;
  SoundRing ring(4800, 4);
  const std::vector<int16_t> samples = numberedFrames(0, kFrames);
  std::thread renderer([&] {
    for (int sent = 0; sent < kFrames;) {
      sent += ring.push(reinterpret_cast<const char*>(samples.data() + 2 * sent), std::min(kFrames - sent, 1000));
      std::this_thread::yield();
    }
  });
  std::vector<int16_t> heard(samples.size());
  qint64 bytes = 0;
  while (bytes < qint64(heard.size() * 2)) bytes += ring.read(reinterpret_cast<char*>(heard.data()) + bytes, 3000);
  renderer.join();
  EXPECT_EQ(heard, samples);
}

constexpr int kQuarterSecond = VC_PREVIEW_SAMPLE_RATE / 4;

TEST(PreviewSoundTest, WithoutADeviceEveryAnswerIsMinusOne) {
  PreviewSound sound;
  if (sound.isAvailable()) GTEST_SKIP() << "this machine has a sound device";
  const std::vector<int16_t> samples(2 * kQuarterSecond);
  std::thread renderer([&] {
    EXPECT_EQ(sound.play(samples.data(), kQuarterSecond), -1);
    EXPECT_EQ(sound.playedUs(), -1);
    sound.flush();
    EXPECT_EQ(sound.playedUs(), -1);
  });
  renderer.join();
  QCoreApplication::processEvents();
}

TEST(PreviewSoundTest, WithADeviceTheTimeHeardGrows) {
  PreviewSound sound;
  if (!sound.isAvailable()) GTEST_SKIP() << "this machine has no sound device";
  const std::vector<int16_t> samples(2 * kQuarterSecond);
  std::thread renderer([&] {
    EXPECT_EQ(sound.play(samples.data(), kQuarterSecond), kQuarterSecond);
    EXPECT_EQ(sound.play(samples.data(), kQuarterSecond), kQuarterSecond) << "half a second fits";
    EXPECT_EQ(sound.play(samples.data(), kQuarterSecond), 0) << "more does not";
  });
  renderer.join();
  ASSERT_TRUE(waitUntil([&] { return sound.playedUs() > 0; }));
  const int64_t heard = sound.playedUs();
  ASSERT_TRUE(waitUntil([&] { return sound.playedUs() > heard; }));
  EXPECT_LE(sound.playedUs(), 500000) << "never more than was handed over";

  sound.flush();
  EXPECT_EQ(sound.playedUs(), 0);
  sound.play(samples.data(), kQuarterSecond);
  ASSERT_TRUE(waitUntil([&] { return sound.playedUs() > 0; }));
  EXPECT_LE(sound.playedUs(), 250000) << "counted again from the flush";
}

}  // namespace
