// The preview view off screen: pictures handed over from another thread as
// the renderer does, drawn letterboxed on black, the newest winning; the crop
// and watermark rectangles dragged with the mouse over the real renderer's
// source picture; the keys that ask the player for steps.
#include <gtest/gtest.h>

#include <QApplication>
#include <QTest>

#include <cstring>
#include <thread>
#include <vector>

#include "EventLoopWait.h"
#include "GeneratedMedia.h"
#include "widgets/PreviewView.h"

namespace {

// A picture of one colour as the renderer hands it: blue, green, red, 255
// per pixel, rows `padding` bytes longer than the pixels, the padding white.
struct FakeFrame {
  FakeFrame(int width, int height, QRgb colour, int padding = 0) : pixels((width * 4 + padding) * height, 0xff) {
    const uint8_t pixel[4] = {uint8_t(qBlue(colour)), uint8_t(qGreen(colour)), uint8_t(qRed(colour)), 255};
    for (int row = 0; row < height; ++row) {
      for (int column = 0; column < width; ++column)
        std::memcpy(&pixels[row * (width * 4 + padding) + column * 4], pixel, 4);
    }
    record.pixels = pixels.data();
    record.width = width;
    record.height = height;
    record.bytesPerRow = width * 4 + padding;
  }
  std::vector<uint8_t> pixels;
  VideoConverter_Frame record{};
};

// Hands the frames over on a thread of its own, then lets the view take them.
void handOver(PreviewView& view, const std::vector<const FakeFrame*>& frames) {
  auto* record = static_cast<VideoConverter_RenderView*>(view.renderView());
  std::thread renderer([&] {
    for (const FakeFrame* frame : frames) record->showFrame(record->context, &frame->record);
  });
  renderer.join();
  QCoreApplication::processEvents();
}

QImage shown(PreviewView& view) { return view.grab().toImage(); }

int pixelsOtherThan(const QImage& image, const QRect& area, QRgb colour) {
  int count = 0;
  for (int y = area.top(); y <= area.bottom(); ++y) {
    for (int x = area.left(); x <= area.right(); ++x) count += image.pixel(x, y) != colour ? 1 : 0;
  }
  return count;
}

constexpr QRgb kBlack = qRgb(0, 0, 0);
bool dimmed(QRgb pixel) { return qGray(pixel) > 40 && qGray(pixel) < 160; }
bool bright(QRgb pixel) { return qGray(pixel) > 230; }

TEST(PreviewViewTest, DrawsTheNewestPictureLetterboxedOnBlack) {
  PreviewView view;
  view.resize(400, 300);
  QImage still(40, 30, QImage::Format_RGB32);
  still.fill(qRgb(200, 10, 10));
  view.setStill(still);
  EXPECT_EQ(shown(view).pixel(200, 150), qRgb(200, 10, 10));

  // A wide picture with padded rows: bars above and below.
  const FakeFrame wide(160, 90, qRgb(0x33, 0x66, 0xcc), 12);
  handOver(view, {&wide});
  QImage image = shown(view);
  EXPECT_EQ(pixelsOtherThan(image, QRect(0, 39, 400, 222), qRgb(0x33, 0x66, 0xcc)), 0);
  EXPECT_EQ(pixelsOtherThan(image, QRect(0, 0, 400, 37), kBlack), 0);
  EXPECT_EQ(pixelsOtherThan(image, QRect(0, 263, 400, 37), kBlack), 0);

  // Two pictures before the view could draw one: the later, narrower one shows.
  const FakeFrame first(160, 90, qRgb(0, 0, 255));
  FakeFrame second(100, 150, qRgb(0, 200, 0));
  handOver(view, {&first, &second});
  image = shown(view);
  EXPECT_EQ(pixelsOtherThan(image, QRect(101, 0, 198, 300), qRgb(0, 200, 0)), 0);
  EXPECT_EQ(pixelsOtherThan(image, QRect(0, 0, 100, 300), kBlack), 0);
  EXPECT_EQ(pixelsOtherThan(image, QRect(300, 0, 100, 300), kBlack), 0);

  // A result picture gets no crop drawn over it, whatever its record says.
  view.setCropEditing(true);
  second.record.sourceWidth = 100;
  second.record.sourceHeight = 150;
  second.record.picture = {0, 0, 100, 150};
  second.record.crop = {25, 25, 50, 100};
  handOver(view, {&second});
  EXPECT_EQ(pixelsOtherThan(shown(view), QRect(101, 0, 198, 300), qRgb(0, 200, 0)), 0);

  view.clearPicture();
  EXPECT_EQ(shown(view).pixel(200, 150), qRgb(200, 10, 10));
}

TEST(PreviewViewTest, DraggingTheRectanglesWritesTheRenderedRecord) {
  static std::vector<int> cropReads;
  static std::vector<int> watermarkReads;
  cropReads.clear();
  watermarkReads.clear();
  VideoConverter_SetReadCropDataFunction([](int index) { cropReads.push_back(index); });
  VideoConverter_SetReadWatermarkDataFunction([](int index) { watermarkReads.push_back(index); });
  const QByteArray path = testmedia::made(QStringLiteral("view-white.mp4"),
                                          testmedia::source(QStringLiteral("color=c=white:s=320x240:d=1")))
                              .toUtf8();
  MediaItem record{};
  record.m_cbsize = VC_MEDIA_ITEM_SIZE;
  std::strncpy(record.m_FileName, path.constData(), sizeof(record.m_FileName) - 1);
  DECODER_INFO* info = nullptr;
  ASSERT_EQ(VideoConverter_GetMediaInfo(path.constData(), nullptr, &info, 0), 0);
  record.m_Info = *info;
  record.m_AudioDisable = 1;
  // The 320x240 source shows at 1.25 times its size: the crop
  // (40, 30, 240, 180) at (50, 37.5, 300, 225) in the view.
  record.m_cropX = 40;
  record.m_cropY = 30;
  record.m_cropW = 240;
  record.m_cropH = 180;
  // A text watermark at (60, 50, 80, 40): (75, 62.5, 100, 50) in the view.
  record.m_watermarkInfo.m_watermarkType = 2;
  std::strcpy(record.m_watermarkInfo.m_text, "W");
  record.m_watermarkInfo.m_transparency = 255;
  record.m_watermarkInfo.m_x = 60;
  record.m_watermarkInfo.m_y = 50;
  record.m_watermarkInfo.m_w = 80;
  record.m_watermarkInfo.m_h = 40;

  PreviewView source;
  PreviewView result;
  for (PreviewView* view : {&source, &result}) {
    view->resize(400, 300);
    view->show();
    ASSERT_TRUE(QTest::qWaitForWindowExposed(view));
  }
  // The renderer stops before the views and the record go, however the test ends.
  struct StopRenderer {
    ~StopRenderer() {
      VideoConverter_Destory();
      VideoConverter_SetReadCropDataFunction(nullptr);
      VideoConverter_SetReadWatermarkDataFunction(nullptr);
    }
  } stopRenderer;
  source.setCropEditing(true);
  ASSERT_EQ(VideoConverter_Render(&record, source.renderView(), 400, 300, 1, result.renderView(), 400, 300), 0);
  VideoConverter_Pause();
  const QPoint outside(20, 150);
  const QPoint cutByTheDrag(300, 220);
  ASSERT_TRUE(waitUntil([&] {
    const QImage image = shown(source);
    return dimmed(image.pixel(outside)) && bright(image.pixel(cutByTheDrag));
  }));

  QTest::mouseMove(&source, QPoint(352, 148));
  EXPECT_EQ(source.cursor().shape(), Qt::SizeHorCursor);
  QTest::mouseMove(&source, QPoint(200, 150));
  EXPECT_EQ(source.cursor().shape(), Qt::SizeAllCursor);
  QTest::mouseMove(&source, outside);
  EXPECT_EQ(source.cursor().shape(), Qt::ArrowCursor);

  // The bottom-right handle, 100 and 75 view pixels up and left: 80 and 60 source pixels.
  QTest::mousePress(&source, Qt::LeftButton, {}, QPoint(350, 262));
  QTest::mouseMove(&source, QPoint(250, 187));
  QTest::mouseRelease(&source, Qt::LeftButton, {}, QPoint(250, 187));
  EXPECT_EQ(+record.m_cropX, 40);
  EXPECT_EQ(+record.m_cropY, 30);
  EXPECT_EQ(+record.m_cropW, 160);
  EXPECT_EQ(+record.m_cropH, 120);
  EXPECT_EQ(cropReads, std::vector<int>{0});
  EXPECT_TRUE(dimmed(shown(source).pixel(cutByTheDrag)));

  // The watermark, moved by its inside 25 view pixels down and right: 20 source pixels.
  source.setWatermarkEditing(true);
  QTest::mousePress(&source, Qt::LeftButton, {}, QPoint(125, 87));
  QTest::mouseMove(&source, QPoint(150, 112));
  QTest::mouseRelease(&source, Qt::LeftButton, {}, QPoint(150, 112));
  EXPECT_EQ(+record.m_watermarkInfo.m_x, 80);
  EXPECT_EQ(+record.m_watermarkInfo.m_y, 70);
  EXPECT_EQ(+record.m_watermarkInfo.m_w, 80);
  EXPECT_EQ(+record.m_watermarkInfo.m_h, 40);
  EXPECT_EQ(watermarkReads, std::vector<int>{0});
  EXPECT_EQ(cropReads, std::vector<int>{0});
}

TEST(PreviewViewTest, KeysAskThePlayerForPlayPauseAndSteps) {
  PreviewView view;
  EXPECT_EQ(view.focusPolicy(), Qt::StrongFocus);
  QStringList asked;
  QObject::connect(&view, &PreviewView::playPauseRequested, [&] { asked << "play/pause"; });
  QObject::connect(&view, &PreviewView::frameStepRequested,
                   [&](int way) { asked << QStringLiteral("frame %1").arg(way); });
  QObject::connect(&view, &PreviewView::secondStepRequested,
                   [&](int way) { asked << QStringLiteral("second %1").arg(way); });
  QObject::connect(&view, &PreviewView::startRequested, [&] { asked << "start"; });
  QObject::connect(&view, &PreviewView::endRequested, [&] { asked << "end"; });

  for (const Qt::Key key : {Qt::Key_Space, Qt::Key_Right, Qt::Key_Left, Qt::Key_Home, Qt::Key_End, Qt::Key_A}) {
    QTest::keyClick(&view, key);
  }
  QTest::keyClick(&view, Qt::Key_Right, Qt::ShiftModifier);
  QTest::keyClick(&view, Qt::Key_Left, Qt::ShiftModifier);
  EXPECT_EQ(asked, QStringList({"play/pause", "frame 1", "frame -1", "start", "end", "second 1", "second -1"}));
}

}  // namespace
