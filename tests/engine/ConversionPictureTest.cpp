// The picture edits of a conversion: fit modes, turns and mirrors, levels,
// effects, watermarks and fades, judged on the decoded output of lossless
// conversions.
#include <gtest/gtest.h>

#include <cstdlib>

#include "ConversionFixtures.h"

namespace enginetest {
namespace {

// Colourful moving pictures, 320 x 240.
std::string colourBars() {
  return generatedMedia("bars.mkv", {"-f", "lavfi", "-i", "testsrc2=s=320x240:r=25:d=1", "-c:v", "ffv1"});
}

// Black, with a white block in the top left corner.
std::string whiteCorner() {
  return generatedMedia(
      "corner.mkv", {"-f", "lavfi", "-i", "color=black:s=320x240:r=25:d=1,drawbox=x=0:y=0:w=80:h=60:color=white:t=fill",
                     "-c:v", "ffv1"});
}

std::string plain(const std::string& colour) {
  return generatedMedia(colour + ".mkv",
                        {"-f", "lavfi", "-i", "color=" + colour + ":s=320x240:r=25:d=1", "-c:v", "ffv1"});
}

// A 40 x 20 picture: opaque red on the left half, fully transparent on the right.
std::string halfRedPicture() {
  return generatedMedia("half-red.png",
                        {"-f", "lavfi", "-i", "color=red:s=40x20,format=rgba,geq=r=255:g=0:b=0:a='if(lt(X,20),255,0)'",
                         "-frames:v", "1"});
}

std::string whitePicture() {
  return generatedMedia("white.png", {"-f", "lavfi", "-i", "color=white:s=16x16", "-frames:v", "1"});
}

double brightness(const RgbPicture& picture, int x, int y, int w, int h) {
  const auto colour = picture.meanColour(x, y, w, h);
  return (colour[0] + colour[1] + colour[2]) / 3;
}

RgbPicture firstPicture(const MediaItem& item, const std::string& name, int width = 0, int height = 0) {
  OutputParam output = losslessOutput(name);
  output.m_Width = width;
  output.m_Height = height;
  const auto result = convert({item}, output);
  EXPECT_EQ(result.outcome, engine::ConversionResult::Outcome::kFinished) << result.reason;
  std::vector<RgbPicture> pictures = decodePictures(output.m_FileName);
  return pictures.empty() ? RgbPicture{} : pictures.front();
}

void setWatermarkPicture(MediaItem& item, const std::string& path, int x, int y, int w, int h, int transparency) {
  _WatermarkInfo& watermark = item.m_watermarkInfo;
  watermark.m_watermarkType = 1;
  setText(watermark.m_imagePath, path);
  watermark.m_x = x;
  watermark.m_y = y;
  watermark.m_w = w;
  watermark.m_h = h;
  watermark.m_transparency = transparency;
  watermark.m_changed_flag = 8;
}

struct FitCase {
  int viewType;
  int turn;
  int cropW;
  int cropH;
  int expectedWidth;
  int expectedHeight;
};

TEST(ConversionPicture, OwnSizeFollowsCropFitModeAndTurn) {
  const FitCase cases[] = {
      {0, 0, 320, 240, 320, 240}, {0, 90, 320, 240, 240, 320}, {0, 270, 200, 100, 100, 200}, {1, 0, 320, 240, 320, 180},
      {2, 0, 320, 180, 240, 180}, {3, 0, 320, 240, 320, 240},  {1, 90, 320, 240, 240, 134},
  };
  for (const FitCase& fit : cases) {
    MediaItem item = recordFor(colourBars());
    item.m_ViewType = fit.viewType;
    item.m_RotateAngle = fit.turn;
    item.m_cropW = fit.cropW;
    item.m_cropH = fit.cropH;
    const RgbPicture picture = firstPicture(item, "fit.mkv");
    EXPECT_EQ(picture.width, fit.expectedWidth) << "mode " << fit.viewType << " turn " << fit.turn;
    EXPECT_EQ(picture.height, fit.expectedHeight) << "mode " << fit.viewType << " turn " << fit.turn;
  }
}

TEST(ConversionPicture, OriginalShapeGetsBarsWhereFullStretches) {
  MediaItem item = recordFor(plain("white"));
  const RgbPicture original = firstPicture(item, "original.mkv", 640, 360);
  ASSERT_EQ(original.width, 640);
  ASSERT_EQ(original.height, 360);
  EXPECT_LT(brightness(original, 0, 0, 70, 360), 5);  // 4:3 in 16:9: bars left and right
  EXPECT_LT(brightness(original, 570, 0, 70, 360), 5);
  EXPECT_GT(brightness(original, 90, 0, 460, 360), 250);
  item.m_ViewType = 3;
  const RgbPicture full = firstPicture(item, "full.mkv", 640, 360);
  EXPECT_GT(brightness(full, 0, 0, 640, 360), 250);
  item.m_ViewType = 1;  // 16:9 cuts the picture to the canvas's shape: no bars either
  EXPECT_GT(brightness(firstPicture(item, "wide.mkv", 640, 360), 0, 0, 640, 360), 250);
}

TEST(ConversionPicture, TurnsAndMirrorsMoveTheCornerBlock) {
  struct Move {
    int turn;
    int mirrorX;
    int mirrorY;
    bool right;
    bool bottom;
  };
  // Turns are counter-clockwise, as "Rotate left" adds 90 degrees.
  const Move moves[] = {{90, 0, 0, false, true}, {180, 0, 0, true, true}, {270, 0, 0, true, false},
                        {0, 1, 0, true, false},  {0, 0, 1, false, true},  {90, 1, 0, true, true}};
  for (const Move& move : moves) {
    MediaItem item = recordFor(whiteCorner());
    item.m_RotateAngle = move.turn;
    item.m_RotateFlip_X = move.mirrorX;
    item.m_RotateFlip_Y = move.mirrorY;
    const RgbPicture picture = firstPicture(item, "turned.mkv");
    const int w = picture.width / 4;
    const int h = picture.height / 4;
    const int x = move.right ? picture.width - w : 0;
    const int y = move.bottom ? picture.height - h : 0;
    EXPECT_GT(brightness(picture, x, y, w, h), 200) << move.turn << " " << move.mirrorX << move.mirrorY;
    EXPECT_LT(brightness(picture, 0, 0, picture.width, picture.height), 80);
  }
}

TEST(ConversionPicture, GrayLeavesNoColourAndLevelsMoveMonotonically) {
  MediaItem item = recordFor(colourBars());
  item.m_EffectID[0] = 1036;
  const auto result = convert({item}, losslessOutput("gray.mkv"));
  ASSERT_EQ(result.outcome, engine::ConversionResult::Outcome::kFinished) << result.reason;
  const std::vector<RgbPicture> pictures = decodePictures(outputPath("gray.mkv"));
  ASSERT_EQ(pictures.size(), 25u);
  for (const RgbPicture& picture : pictures) {
    for (std::size_t pixel = 0; pixel < picture.rgb.size(); pixel += 3) {
      ASSERT_LE(std::abs(picture.rgb[pixel] - picture.rgb[pixel + 1]), 2);
      ASSERT_LE(std::abs(picture.rgb[pixel + 1] - picture.rgb[pixel + 2]), 2);
    }
  }

  MediaItem levels = recordFor(plain("gray"));
  double previous = -1000;
  for (int value : {-80, -40, 0, 40, 80}) {
    levels.m_brightness = value;
    const double mean = brightness(firstPicture(levels, "levels.mkv"), 0, 0, 320, 240);
    EXPECT_GT(mean, previous + 10) << "brightness " << value;
    previous = mean;
  }
}

TEST(ConversionPicture, PictureWatermarkChangesOnlyItsRectangleAndKeepsItsAlpha) {
  const MediaItem plainItem = recordFor(colourBars());
  const RgbPicture before = firstPicture(plainItem, "no-watermark.mkv");
  MediaItem item = plainItem;
  setWatermarkPicture(item, halfRedPicture(), 100, 60, 80, 40, 255);
  const RgbPicture after = firstPicture(item, "watermark.mkv");
  ASSERT_EQ(after.width, before.width);
  // Outside the rectangle (with a pixel for shared colour samples) nothing changes.
  for (int y = 0; y < after.height; ++y) {
    for (int x = 0; x < after.width; ++x) {
      if (x >= 99 && x < 181 && y >= 59 && y < 101) continue;
      const std::size_t pixel = (static_cast<std::size_t>(y) * after.width + x) * 3;
      ASSERT_LE(std::abs(after.rgb[pixel] - before.rgb[pixel]), 3) << x << "," << y;
    }
  }
  const auto opaque = after.meanColour(104, 64, 32, 32);
  EXPECT_GT(opaque[0], 200);
  EXPECT_LT(opaque[1], 60);
  const auto clear = after.meanColour(144, 64, 32, 32);
  const auto underneath = before.meanColour(144, 64, 32, 32);
  for (int channel = 0; channel < 3; ++channel) EXPECT_NEAR(clear[channel], underneath[channel], 3);
}

TEST(ConversionPicture, OpacityBlendsTheWatermarkWithThePicture) {
  MediaItem item = recordFor(plain("black"));
  setWatermarkPicture(item, whitePicture(), 40, 40, 100, 100, 127);
  EXPECT_NEAR(brightness(firstPicture(item, "half.mkv"), 50, 50, 80, 80), 127, 8);
  item.m_watermarkInfo.m_transparency = 254;
  EXPECT_GT(brightness(firstPicture(item, "opaque.mkv"), 50, 50, 80, 80), 245);
}

TEST(ConversionPicture, WatermarkRectangleFollowsCropAndScale) {
  MediaItem item = recordFor(plain("black"));
  item.m_cropX = 80;
  item.m_cropY = 60;
  item.m_cropW = 160;
  item.m_cropH = 120;
  setWatermarkPicture(item, whitePicture(), 120, 90, 40, 30, 254);
  // The kept 160 x 120 part fills a 320 x 240 canvas: the block lands at (80, 60) and doubles in size.
  const RgbPicture picture = firstPicture(item, "cropped-watermark.mkv", 320, 240);
  EXPECT_GT(brightness(picture, 84, 64, 72, 52), 245);
  EXPECT_LT(brightness(picture, 0, 0, 76, 240), 2);
  EXPECT_LT(brightness(picture, 164, 0, 156, 240), 2);
}

TEST(ConversionPicture, TextWatermarkIsDrawnInsideItsRectangleWithAFallbackFont) {
  MediaItem item = recordFor(plain("black"));
  _WatermarkInfo& watermark = item.m_watermarkInfo;
  watermark.m_watermarkType = 2;
  setText(watermark.m_text, "Hi, 10:30 [ok] 100%");
  setText(watermark.m_fontinfo.m_fontname, "No Such Font At All");
  watermark.m_fontinfo.m_fontsize = 24;
  watermark.m_fontinfo.m_fontstyle = 1 | 4;  // bold, underlined
  watermark.m_fontinfo.m_fontcolor = 0xFFFFFFFF;
  watermark.m_x = 20;
  watermark.m_y = 100;
  watermark.m_w = 280;
  watermark.m_h = 40;
  watermark.m_transparency = 254;
  const RgbPicture picture = firstPicture(item, "text.mkv");
  EXPECT_GT(brightness(picture, 20, 100, 280, 40), 20);  // ink in the rectangle
  EXPECT_LT(brightness(picture, 0, 0, 320, 98), 1);      // none above it
  EXPECT_LT(brightness(picture, 0, 142, 320, 98), 1);    // or below
}

TEST(ConversionPicture, FadesStartFromBlackAndEndInBlack) {
  MediaItem item = recordFor(plain("white"));
  item.m_fadeVideoInfo.m_fadeIn_len = 400'000;
  item.m_fadeVideoInfo.m_fadeOut_len = 400'000;
  const auto result = convert({item}, losslessOutput("faded.mkv"));
  ASSERT_EQ(result.outcome, engine::ConversionResult::Outcome::kFinished) << result.reason;
  const std::vector<RgbPicture> pictures = decodePictures(outputPath("faded.mkv"));
  ASSERT_EQ(pictures.size(), 25u);
  EXPECT_LT(brightness(pictures.front(), 0, 0, 320, 240), 5);
  EXPECT_NEAR(brightness(pictures[5], 0, 0, 320, 240), 128, 30);  // halfway into the fade
  EXPECT_GT(brightness(pictures[12], 0, 0, 320, 240), 250);
  EXPECT_LT(brightness(pictures.back(), 0, 0, 320, 240), 20);
}

// Where the block of the corner picture ends on row 30, in one colour channel.
int blockEdge(const RgbPicture& picture, int channel) {
  bool inBlock = false;
  for (int x = 0; x < picture.width; ++x) {
    const bool bright = picture.rgb[(30 * static_cast<std::size_t>(picture.width) + x) * 3 + channel] >= 64;
    if (inBlock && !bright) return x;
    inBlock = inBlock || bright;
  }
  return picture.width;
}

double meanDifference(const RgbPicture& a, const RgbPicture& b) {
  double sum = 0;
  for (std::size_t i = 0; i < a.rgb.size() && i < b.rgb.size(); ++i) sum += std::abs(a.rgb[i] - b.rgb[i]);
  return sum / static_cast<double>(a.rgb.size());
}

TEST(ConversionPicture, AnaglyphsSplitTheViewsByTheDepth) {
  MediaItem item = recordFor(whiteCorner());
  item.m_EffectID[1] = 1071;  // red/blue
  item.m_pEffectArgs[1].arg6 = 1071;
  item.m_pEffectArgs[1].arg1 = 0;
  const RgbPicture flat = firstPicture(item, "flat-3d.mkv");
  EXPECT_EQ(blockEdge(flat, 0), blockEdge(flat, 2));
  EXPECT_LT(flat.meanColour(0, 0, 320, 240)[1], 2);  // no green through red and blue lenses

  item.m_pEffectArgs[1].arg1 = 20;  // the deepest setting: views 320 / 20 = 16 pixels apart
  const RgbPicture deep = firstPicture(item, "deep-3d.mkv");
  EXPECT_NEAR(blockEdge(deep, 0) - blockEdge(deep, 2), 16, 1);
  item.m_pEffectArgs[1].arg1 = -20;
  const RgbPicture reversed = firstPicture(item, "reversed-3d.mkv");
  EXPECT_NEAR(blockEdge(reversed, 0) - blockEdge(reversed, 2), -16, 1);

  item.m_EffectID[1] = 1072;  // red/green: nothing blue
  EXPECT_LT(firstPicture(item, "red-green.mkv").meanColour(0, 0, 320, 240)[2], 2);
  item.m_EffectID[1] = 1073;  // yellow/blue: the left view feeds red and green alike
  const RgbPicture yellowBlue = firstPicture(item, "yellow-blue.mkv");
  EXPECT_NEAR(yellowBlue.meanColour(0, 0, 320, 240)[0], yellowBlue.meanColour(0, 0, 320, 240)[1], 2);
}

TEST(ConversionPicture, EmbossAndOldFilmChangeTheLook) {
  MediaItem item = recordFor(colourBars());
  const RgbPicture source = firstPicture(item, "unchanged.mkv");
  item.m_EffectID[0] = 1035;
  const auto oldFilm = firstPicture(item, "old-film.mkv").meanColour(0, 0, 320, 240);
  EXPECT_GT(oldFilm[0], oldFilm[1]);  // sepia: red over green over blue
  EXPECT_GT(oldFilm[1], oldFilm[2]);
  item.m_EffectID[0] = 1034;
  const RgbPicture emboss = firstPicture(item, "emboss.mkv");
  const auto relief = emboss.meanColour(0, 0, 320, 240);
  EXPECT_NEAR(relief[0], relief[2], 2);  // a grey relief
  EXPECT_GT(meanDifference(emboss, source), 20);
}

}  // namespace
}  // namespace enginetest
