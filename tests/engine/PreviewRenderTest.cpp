// The preview through the library's C interface: exact seeks and steps on a
// clip whose every picture has its own brightness, records read in place,
// two views and dragged rectangles, merged records, the sound clock, and the
// pictures written to files.
#include <gtest/gtest.h>

#include <chrono>
#include <condition_variable>
#include <filesystem>
#include <functional>
#include <mutex>
#include <vector>

#include "ConversionFixtures.h"

namespace enginetest {
namespace {

constexpr auto kPatience = std::chrono::seconds(20);

// Two seconds at 25 pictures a second, a keyframe each second, losslessly
// coded: picture N has the luma 4 N, so a brightness names its picture.
std::string numberedPictures() {
  return generatedMedia("numbered.mp4", {"-f", "lavfi", "-i",
                                         "color=c=black:s=160x120:r=25:d=2,format=yuv420p,geq=lum='4*N':cb=128:cr=128",
                                         "-f", "lavfi", "-i", "sine=f=440:d=2", "-c:v", "libx264", "-qp", "0", "-g",
                                         "25", "-c:a", "aac", "-shortest"});
}

std::string redSecond() {
  return generatedMedia("red-second.mkv",
                        {"-f", "lavfi", "-i", "color=red:s=160x120:r=25:d=1", "-c:v", "ffv1"});
}

// The grey the limited-range luma of picture N becomes.
double greyOf(int picture) { return std::clamp((4.0 * picture - 16) * 255 / 219, 0.0, 255.0); }

// A view that keeps the last picture it was handed, and a sound device that
// hears whatever it takes at once, so that the sound clock runs as fast as
// the library hands sound on.
class RecordingView {
 public:
  explicit RecordingView(bool withSound = false) {
    record_.context = this;
    record_.showFrame = [](void* context, const VideoConverter_Frame* frame) {
      static_cast<RecordingView*>(context)->take(*frame);
    };
    if (!withSound) return;
    record_.playSound = [](void* context, const int16_t* samples, int count) {
      auto* self = static_cast<RecordingView*>(context);
      std::lock_guard lock(self->mutex_);
      for (int i = 0; i < count * 2; ++i) self->loudest_ = std::max(self->loudest_, std::abs(samples[i]));
      self->soundFrames_ += count;
      self->heardUs_ += static_cast<int64_t>(count) * 1000000 / VC_PREVIEW_SAMPLE_RATE;
      return count;
    };
    record_.soundPlayedUs = [](void* context) {
      auto* self = static_cast<RecordingView*>(context);
      std::lock_guard lock(self->mutex_);
      return self->heardUs_;
    };
    record_.flushSound = [](void* context) {
      auto* self = static_cast<RecordingView*>(context);
      std::lock_guard lock(self->mutex_);
      self->heardUs_ = 0;
    };
  }

  void* view() { return &record_; }

  // Waits until the last picture handed over satisfies `test`.
  bool waitFor(const std::function<bool(const VideoConverter_Frame&, double grey)>& test) {
    std::unique_lock lock(mutex_);
    return changed_.wait_for(lock, kPatience, [&] { return pictures_ > 0 && test(last_, grey_); });
  }

  // Waits until `done` holds, looking again after each picture and every few milliseconds.
  bool waitUntil(const std::function<bool()>& done) {
    const auto deadline = std::chrono::steady_clock::now() + kPatience;
    std::unique_lock lock(mutex_);
    while (!done()) {
      if (std::chrono::steady_clock::now() > deadline) return false;
      changed_.wait_for(lock, std::chrono::milliseconds(10));
    }
    return true;
  }

  VideoConverter_Frame last() {
    std::lock_guard lock(mutex_);
    return last_;
  }
  int64_t soundFrames() {
    std::lock_guard lock(mutex_);
    return soundFrames_;
  }
  int loudest() {
    std::lock_guard lock(mutex_);
    return loudest_;
  }

 private:
  void take(const VideoConverter_Frame& frame) {
    std::lock_guard lock(mutex_);
    last_ = frame;
    last_.pixels = nullptr;
    // The picture's centre pixel: blue, green, red, 255.
    const uint8_t* centre = frame.pixels + (frame.height / 2) * frame.bytesPerRow + (frame.width / 2) * 4;
    grey_ = (centre[0] + centre[1] + centre[2]) / 3.0;
    EXPECT_EQ(centre[3], 255);
    ++pictures_;
    changed_.notify_all();
  }

  VideoConverter_RenderView record_{};
  std::mutex mutex_;
  std::condition_variable changed_;
  VideoConverter_Frame last_{};
  double grey_ = 0;
  int pictures_ = 0;
  int64_t soundFrames_ = 0;
  int64_t heardUs_ = 0;
  int loudest_ = 0;
};

class PreviewRenderTest : public ::testing::Test {
 protected:
  void TearDown() override { VideoConverter_Destory(); }

  // The grey of the current picture drawn again at its own size.
  static double currentGrey() {
    uint8_t* pixels = nullptr;
    int width = 0;
    int height = 0;
    int bytesPerRow = 0;
    int bits = 0;
    if (VideoConverter_GetCurrentBitmap(&pixels, &width, &height, &bytesPerRow, &bits) != 0) return -1;
    const uint8_t* centre = pixels + (height / 2) * bytesPerRow + (width / 2) * 4;
    return (centre[0] + centre[1] + centre[2]) / 3.0;
  }
};

TEST_F(PreviewRenderTest, SeeksExactlyAndStepsOnePictureEitherWay) {
  MediaItem record = recordFor(numberedPictures());
  RecordingView view;
  ASSERT_EQ(VideoConverter_Render(&record, view.view(), 80, 60, 1, nullptr, 0, 0), 0);
  EXPECT_EQ(VideoConverter_GetDuration(), 2'000'000);
  VideoConverter_Pause();

  // Picture 37 lies 12 pictures after the keyframe of second 1; 1.49 s still shows it.
  VideoConverter_RenderSeek(1'490'000);
  EXPECT_NEAR(currentGrey(), greyOf(37), 2.0);
  EXPECT_TRUE(view.waitFor([](const VideoConverter_Frame& frame, double grey) {
    return frame.timeUs == 1'480'000 && std::abs(grey - greyOf(37)) < 2.5;
  }));
  EXPECT_EQ(view.last().width, 80);
  EXPECT_EQ(view.last().height, 60);
  EXPECT_EQ(view.last().isSource, 0);

  VideoConverter_RenderStep(1);
  EXPECT_NEAR(currentGrey(), greyOf(38), 2.0);
  VideoConverter_RenderStep(-2);
  EXPECT_NEAR(currentGrey(), greyOf(36), 2.0);
  EXPECT_EQ(VideoConverter_GetCurrentTime(), 1'440'000);
  // Back across a keyframe.
  VideoConverter_RenderSeek(520'000);
  EXPECT_NEAR(currentGrey(), greyOf(13), 2.0);
  EXPECT_EQ(VideoConverter_IsEnd(), 1);
}

TEST_F(PreviewRenderTest, APausedPreviewRedrawsAsSoonAsItsRecordChanges) {
  MediaItem record = recordFor(numberedPictures());
  RecordingView view;
  ASSERT_EQ(VideoConverter_Render(&record, view.view(), 80, 60, 1, nullptr, 0, 0), 0);
  VideoConverter_Pause();
  VideoConverter_RenderSeek(1'000'000);
  ASSERT_NEAR(currentGrey(), greyOf(25), 2.0);

  // A ten-second fade-in darkens second 1 to a tenth; nothing but the record changes.
  record.m_fadeVideoInfo.m_fadeIn_len = 10'000'000;
  EXPECT_TRUE(view.waitFor([](const VideoConverter_Frame&, double grey) { return grey < greyOf(25) * 0.2; }));
  EXPECT_LT(currentGrey(), greyOf(25) * 0.2);
}

TEST_F(PreviewRenderTest, TwoViewsShowSourceAndResultAndDraggedRectanglesReachTheRecord) {
  static std::vector<int> cropCalls;
  static std::vector<int> watermarkCalls;
  cropCalls.clear();
  watermarkCalls.clear();
  VideoConverter_SetReadCropDataFunction([](int index) { cropCalls.push_back(index); });
  VideoConverter_SetReadWatermarkDataFunction([](int index) { watermarkCalls.push_back(index); });

  MediaItem record = recordFor(numberedPictures());
  record.m_cropX = 40;
  record.m_cropW = 80;
  record.m_RotateAngle = 90;
  RecordingView source;
  RecordingView result;
  ASSERT_EQ(VideoConverter_Render(&record, source.view(), 200, 100, 1, result.view(), 100, 100), 0);
  VideoConverter_Pause();
  ASSERT_TRUE(source.waitFor([](const VideoConverter_Frame& frame, double) { return frame.isSource == 1; }));
  ASSERT_TRUE(result.waitFor([](const VideoConverter_Frame& frame, double) { return frame.isSource == 0; }));

  // The source keeps its 4:3 shape inside the wide view; the rectangles are in its pixels.
  const VideoConverter_Frame shown = source.last();
  EXPECT_EQ(shown.sourceWidth, 160);
  EXPECT_EQ(shown.sourceHeight, 120);
  EXPECT_NEAR(shown.picture.w, shown.picture.h * 4 / 3, 2);
  EXPECT_EQ(shown.picture.h, 100);
  EXPECT_EQ(shown.crop.x, 40);
  EXPECT_EQ(shown.crop.w, 80);
  // The result: the cropped part, stood on its side, fills the square view's height.
  EXPECT_EQ(result.last().width, 100);

  ASSERT_EQ(VideoConverter_Render_DragCrop(10, 20, 64, 48), 0);
  EXPECT_EQ(+record.m_cropX, 10);
  EXPECT_EQ(+record.m_cropY, 20);
  EXPECT_EQ(+record.m_cropW, 64);
  EXPECT_EQ(+record.m_cropH, 48);
  EXPECT_EQ(cropCalls, std::vector<int>{0});
  ASSERT_EQ(VideoConverter_Render_DragWatermark(5, 6, 30, 20), 0);
  EXPECT_EQ(+record.m_watermarkInfo.m_x, 5);
  EXPECT_EQ(+record.m_watermarkInfo.m_h, 20);
  EXPECT_EQ(watermarkCalls, std::vector<int>{0});
  EXPECT_TRUE(source.waitFor([](const VideoConverter_Frame& frame, double) { return frame.crop.w == 64; }));
}

TEST_F(PreviewRenderTest, RecordsPlayOneAfterAnotherAsOneTimeline) {
  MediaItem records[2] = {recordFor(numberedPictures()), recordFor(redSecond())};
  records[0].m_MediaStartPos = 1'000'000;  // the second half of the first
  RecordingView view;
  ASSERT_EQ(VideoConverter_Render(records, view.view(), 80, 60, 2, nullptr, 0, 0), 0);
  EXPECT_EQ(VideoConverter_GetDuration(), 2'000'000);
  VideoConverter_Pause();
  VideoConverter_RenderSeek(400'000);
  EXPECT_NEAR(currentGrey(), greyOf(35), 2.0);
  VideoConverter_RenderSeek(1'500'000);
  EXPECT_TRUE(view.waitFor([](const VideoConverter_Frame& frame, double) { return frame.recordIndex == 1; }));
  uint8_t* pixels = nullptr;
  int width = 0;
  int height = 0;
  ASSERT_EQ(VideoConverter_GetCurrentBitmap(&pixels, &width, &height, nullptr, nullptr), 0);
  EXPECT_EQ(width, 160);
  EXPECT_GT(pixels[0], 200);  // red, green, blue, unused
  EXPECT_LT(pixels[1], 40);
}

TEST_F(PreviewRenderTest, PicturesFollowTheSoundHeardToTheEnd) {
  MediaItem record = recordFor(numberedPictures());
  record.m_fadeOut_len = 1'000'000;
  RecordingView view(true);
  ASSERT_EQ(VideoConverter_Render(&record, view.view(), 80, 60, 1, nullptr, 0, 0), 0);
  // The device hears everything at once, so playing outruns the wall clock to the end.
  ASSERT_TRUE(view.waitUntil([] { return VideoConverter_IsEnd() == 0; }));
  EXPECT_EQ(VideoConverter_GetCurrentTime(), 2'000'000);
  EXPECT_EQ(view.soundFrames(), 2 * VC_PREVIEW_SAMPLE_RATE);
  EXPECT_GT(view.loudest(), 1000);
  EXPECT_GE(view.last().timeUs, 1'880'000);
}

TEST_F(PreviewRenderTest, WritesPictureFilesAndRefusesWhatItCannotDo) {
  EXPECT_EQ(VideoConverter_GetCurrentBitmap2(outputPath("none.png").c_str()), VC_ERROR_NO_PREVIEW);
  std::vector<MediaItem> many(VC_MAX_MEDIA_ITEMS + 1, recordFor(redSecond()));
  EXPECT_EQ(VideoConverter_Render(many.data(), nullptr, 80, 60, static_cast<int>(many.size()), nullptr, 0, 0),
            VC_ERROR_TOO_MANY_RECORDS);

  MediaItem record = recordFor(numberedPictures());
  ASSERT_EQ(VideoConverter_Render(&record, nullptr, 120, 90, 1, nullptr, 0, 0), 0);
  VideoConverter_Pause();
  VideoConverter_RenderSeek(1'000'000);
  for (const std::string name : {"frame.png", "frame.jpg", "frame.bmp"}) {
    const std::string path = outputPath(name);
    ASSERT_EQ(VideoConverter_GetCurrentBitmap2(path.c_str()), 0) << name;
    const RgbPicture picture = decodePicture(path);
    EXPECT_EQ(picture.width, 120) << name;
    EXPECT_NEAR(picture.meanBrightness(), greyOf(25), 3.0) << name;
  }
  EXPECT_EQ(VideoConverter_GetCurrentBitmap2(outputPath("frame.gif").c_str()), VC_ERROR_CANNOT_WRITE);
  EXPECT_EQ(VideoConverter_GetCurrentBitmap2("/no/such/folder/frame.png"), VC_ERROR_CANNOT_WRITE);
}

}  // namespace
}  // namespace enginetest
