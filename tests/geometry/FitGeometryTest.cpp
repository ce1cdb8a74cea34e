// The picture geometry on its own: turns, fit shapes with the output-size
// rounding, crop clamping, and rectangles carried between the source frame
// and the canvas in both directions.
#include <gtest/gtest.h>

#include <ostream>

#include "FitGeometry.h"

namespace geometry {

std::ostream& operator<<(std::ostream& out, const Size& size) { return out << size.width << "x" << size.height; }
std::ostream& operator<<(std::ostream& out, const Rect& rect) {
  return out << rect.width << "x" << rect.height << "+" << rect.x << "+" << rect.y;
}

namespace {

TEST(FitGeometry, QuarterTurnsOfAnyAngle) {
  const struct {
    int degrees;
    int turn;
  } cases[] = {{0, 0}, {90, 90}, {-90, 270}, {450, 90}, {44, 0}, {46, 90}, {359, 0}, {-180, 180}, {315, 0}};
  for (const auto& c : cases) {
    EXPECT_EQ(quarterTurn(c.degrees), c.turn) << c.degrees;
    EXPECT_EQ(turnedSize({320, 240}, c.degrees), (c.turn % 180 ? Size{240, 320} : Size{320, 240})) << c.degrees;
  }
}

TEST(FitGeometry, FitShapesKeepTheLargestCentredPartRoundedDown) {
  const struct {
    Size picture;
    FitMode mode;
    Rect kept;
  } cases[] = {
      {{1920, 1080}, FitMode::kWide, {0, 0, 1920, 1080}},
      {{1918, 1078}, FitMode::kWide, {1, 0, 1916, 1078}},  // 1078 * 16 / 9 = 1916.4
      {{320, 240}, FitMode::kWide, {0, 30, 320, 180}},
      {{240, 320}, FitMode::kWide, {0, 92, 240, 135}},
      {{100, 100}, FitMode::kWide, {0, 22, 100, 56}},  // 56.25 rounded down, the odd pixel below
      {{320, 180}, FitMode::kStandard, {40, 0, 240, 180}},
      {{641, 480}, FitMode::kStandard, {0, 0, 640, 480}},
      {{500, 375}, FitMode::kStandard, {0, 0, 500, 375}},
      {{321, 241}, FitMode::kOriginal, {0, 0, 321, 241}},
      {{321, 241}, FitMode::kFull, {0, 0, 321, 241}},
  };
  for (const auto& c : cases) {
    EXPECT_EQ(centredFitShape(c.picture, c.mode), c.kept) << c.picture << " mode " << static_cast<int>(c.mode);
  }
  EXPECT_EQ(fitModeOf(2), FitMode::kStandard);
  EXPECT_EQ(fitModeOf(7), FitMode::kOriginal);
}

TEST(FitGeometry, CropsStayInsideTheFrameWithTheLeastSide) {
  const Size frame{640, 480};
  const struct {
    Rect requested;
    Rect kept;
  } cases[] = {
      {{0, 0, 0, 0}, {0, 0, 640, 480}},          // never cropped: the whole frame
      {{30, 10, 570, 450}, {30, 10, 570, 450}},  // inside as it is
      {{600, 10, 100, 100}, {600, 10, 40, 100}},  {{-20, -5, 100, 100}, {0, 0, 100, 100}},
      {{630, 470, 100, 100}, {608, 448, 32, 32}}, {{100, 100, 5, 3}, {100, 100, 32, 32}},
      {{0, 0, 9000, 9000}, {0, 0, 640, 480}},
  };
  for (const auto& c : cases) EXPECT_EQ(clampedCrop(c.requested, frame, kMinimumCropSide), c.kept) << c.requested;
  EXPECT_EQ(clampedCrop({5, 5, 10, 10}, {20, 16}, kMinimumCropSide), (Rect{0, 0, 20, 16}));
}

TEST(FitGeometry, RectanglesTravelToTheCanvasAndBack) {
  const Rect frame{0, 0, 320, 240};
  const Rect upright{0, 0, 240, 320};
  const Rect block{10, 20, 30, 40};
  const struct {
    const char* name;
    Placement placement;
    Rect source;
    Rect canvas;
  } cases[] = {
      {"as it is", {frame, 0, false, false, frame, frame}, block, block},
      {"quarter turn left", {frame, 90, false, false, upright, upright}, block, {20, 280, 40, 30}},
      {"half turn", {frame, 180, false, false, frame, frame}, block, {280, 180, 30, 40}},
      {"quarter turn right", {frame, 270, false, false, upright, upright}, block, {180, 10, 40, 30}},
      {"mirrored", {frame, 0, true, false, frame, frame}, block, {280, 20, 30, 40}},
      {"turned and mirrored", {frame, 90, true, true, upright, upright}, block, {180, 10, 40, 30}},
      {"cropped and doubled",
       {{80, 60, 160, 120}, 0, false, false, {0, 0, 160, 120}, frame},
       {120, 90, 40, 30},
       {80, 60, 80, 60}},
      {"between bars", {frame, 0, false, false, frame, {60, 0, 480, 360}}, frame, {60, 0, 480, 360}},
  };
  for (const auto& c : cases) {
    const auto canvas = toCanvas(c.placement, c.source);
    ASSERT_TRUE(canvas.has_value()) << c.name;
    EXPECT_EQ(*canvas, c.canvas) << c.name;
    const auto source = toSource(c.placement, *canvas);
    ASSERT_TRUE(source.has_value()) << c.name;
    EXPECT_EQ(*source, c.source) << c.name;
  }
}

TEST(FitGeometry, WhatLiesOutsideThePictureIsCutOff) {
  // A 16:9 part of a 4:3 frame fills a 640 x 360 canvas: the bands above and below are cut away.
  const Placement wide{{0, 0, 320, 240}, 0, false, false, {0, 30, 320, 180}, {0, 0, 640, 360}};
  EXPECT_EQ(toCanvas(wide, {0, 0, 320, 240}), (Rect{0, 0, 640, 360}));
  EXPECT_FALSE(toCanvas(wide, {0, 0, 50, 20}).has_value());
  EXPECT_EQ(toSource(wide, {0, 0, 640, 360}), (Rect{0, 30, 320, 180}));
  // A rectangle dragged partly over the bars beside a picture keeps the part over the picture.
  const Placement barred{{0, 0, 320, 240}, 0, false, false, {0, 0, 320, 240}, {60, 0, 480, 360}};
  EXPECT_EQ(toSource(barred, {0, 0, 100, 100}), (Rect{0, 0, 27, 67}));
  EXPECT_FALSE(toSource(barred, {0, 0, 50, 50}).has_value());
}

}  // namespace
}  // namespace geometry
