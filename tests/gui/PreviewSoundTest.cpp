// The preview's sound: the ring the output pulls from, filled from another
// thread, and the output itself, reached through a view's record from another
// thread as the renderer does: it answers -1 throughout where the machine has
// no sound device and counts the time heard where it has one.
#include <gtest/gtest.h>

#include <QSignalSpy>

#include <algorithm>
#include <thread>
#include <vector>

#include "EventLoopWait.h"
#include "sound/PreviewSound.h"
#include "videoconverter.h"
#include "widgets/PreviewView.h"

namespace {

TEST(SoundRingTest, TakesWhatFitsAndGivesWholeFramesInOrderAcrossThreads) {
  constexpr int kFrames = 200000;
  std::vector<int16_t> samples;
  for (int frame = 0; frame < kFrames; ++frame) samples.insert(samples.end(), {int16_t(frame), int16_t(-frame)});
  const auto* bytes = reinterpret_cast<const char*>(samples.data());
  SoundRing ring(4800, 4);
  QSignalSpy readyRead(&ring, &QIODevice::readyRead);
  ASSERT_EQ(ring.push(bytes, 5000), 4800) << "only what fits is taken";
  QCoreApplication::processEvents();
  EXPECT_EQ(readyRead.count(), 1) << "an output that found the ring empty is told";

  std::thread renderer([&] {
    for (int sent = 4800; sent < kFrames; std::this_thread::yield()) {
      sent += ring.push(bytes + 4 * sent, std::min(kFrames - sent, 1000));
    }
  });
  std::vector<int16_t> heard(samples.size());
  for (qint64 pulled = 0; pulled < qint64(heard.size() * 2);) {
    const qint64 read = ring.read(reinterpret_cast<char*>(heard.data()) + pulled, 3001);
    EXPECT_EQ(read % 4, 0) << "whole frames only";
    pulled += read;
  }
  renderer.join();
  EXPECT_EQ(heard, samples);
  EXPECT_EQ(ring.pulledBytes(), kFrames * 4);

  ring.push(bytes, 10);
  ring.setHeld(true);
  EXPECT_EQ(ring.read(reinterpret_cast<char*>(heard.data()), 40), 0) << "held";
  ring.clear();
  ring.setHeld(false);
  EXPECT_EQ(ring.read(reinterpret_cast<char*>(heard.data()), 40), 0) << "cleared";
}

constexpr int kQuarterSecond = VC_PREVIEW_SAMPLE_RATE / 4;

// The sound as the renderer meets it: through a view's record, from a thread of its own.
class PreviewSoundTest : public testing::Test {
 protected:
  void SetUp() override { view.setSound(&sound); }

  int play() { return record.playSound(record.context, samples.data(), kQuarterSecond); }
  int64_t played() { return record.soundPlayedUs(record.context); }
  void flush() { record.flushSound(record.context); }

  PreviewSound sound;
  PreviewView view;
  VideoConverter_RenderView& record = *static_cast<VideoConverter_RenderView*>(view.renderView());
  const std::vector<int16_t> samples = std::vector<int16_t>(2 * kQuarterSecond);
};

TEST_F(PreviewSoundTest, WithoutADeviceEveryAnswerIsMinusOne) {
  if (sound.isAvailable()) GTEST_SKIP() << "this machine has a sound device";
  std::thread renderer([&] {
    EXPECT_EQ(play(), -1);
    EXPECT_EQ(played(), -1);
    flush();
    EXPECT_EQ(played(), -1);
  });
  renderer.join();
  QCoreApplication::processEvents();
}

TEST_F(PreviewSoundTest, WithADeviceTheTimeHeardGrows) {
  if (!sound.isAvailable()) GTEST_SKIP() << "this machine has no sound device";
  std::thread renderer([&] {
    EXPECT_EQ(play(), kQuarterSecond);
    EXPECT_EQ(play(), kQuarterSecond) << "half a second fits";
    EXPECT_EQ(play(), 0) << "more does not";
  });
  renderer.join();
  ASSERT_TRUE(waitUntil([&] { return played() > 0; }));
  const int64_t heard = played();
  ASSERT_TRUE(waitUntil([&] { return played() > heard; }));
  EXPECT_LE(played(), 500000) << "never more than was handed over";

  flush();
  EXPECT_EQ(played(), 0);
  play();
  ASSERT_TRUE(waitUntil([&] { return played() > 0; }));
  EXPECT_LE(played(), 250000) << "counted again from the flush";
}

}  // namespace
