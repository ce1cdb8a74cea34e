// The rectangles dragged over the preview: view and source coordinates
// through a letterboxed frame, the parts a pointer grabs, and the rectangles
// that drags make, kept inside the source and never under the least side.
#include <gtest/gtest.h>

#include "widgets/RectangleDrag.h"

namespace {

TEST(RectangleDragTest, MapsThroughTheBarsOfFrameAndPicture) {
  // A 16:9 frame in a square view has bars above and below; the 4:3 source
  // lies in the middle of the frame with bars left and right.
  const SourceMapping mapping(QSize(400, 400), QSize(320, 180), QRect(40, 0, 240, 180), QSize(640, 480));
  ASSERT_TRUE(mapping.isValid());
  EXPECT_EQ(mapping.toView(QRect(0, 0, 640, 480)), QRectF(50, 87.5, 300, 225));
  EXPECT_EQ(mapping.toView(QRect(320, 240, 320, 240)), QRectF(200, 200, 150, 112.5));
  EXPECT_EQ(mapping.toSource(QPointF(50, 87.5)), QPointF(0, 0));
  EXPECT_EQ(mapping.toSource(QPointF(200, 200)), QPointF(320, 240));
  EXPECT_EQ(mapping.toSource(QPointF(35, 72.5)), QPointF(-32, -32)) << "points in the bars lie outside the source";

  EXPECT_FALSE(SourceMapping(QSize(400, 400), QSize(320, 180), QRect(), QSize(640, 480)).isValid());
  EXPECT_FALSE(SourceMapping(QSize(0, 400), QSize(320, 180), QRect(0, 0, 320, 180), QSize(640, 480)).isValid());
}

TEST(RectangleDragTest, GrabsHandlesCornersFirstThenTheInside) {
  const QRectF shown(100, 100, 200, 100);
  const std::pair<QPointF, RectanglePart> cases[] = {
      {{100, 100}, RectanglePart::kTopLeft},     {{200, 100}, RectanglePart::kTop},
      {{300, 100}, RectanglePart::kTopRight},    {{300, 150}, RectanglePart::kRight},
      {{300, 200}, RectanglePart::kBottomRight}, {{200, 200}, RectanglePart::kBottom},
      {{100, 200}, RectanglePart::kBottomLeft},  {{100, 150}, RectanglePart::kLeft},
      {{95, 205}, RectanglePart::kBottomLeft},   {{150, 130}, RectanglePart::kInside},
      {{93, 150}, RectanglePart::kNone},         {{150, 100}, RectanglePart::kInside},
  };
  for (const auto& [point, part] : cases) {
    EXPECT_EQ(rectanglePartAt(shown, point, 6), part) << point.x() << "," << point.y();
  }
  // Handles of a tiny rectangle overlap: the corner wins.
  EXPECT_EQ(rectanglePartAt(QRectF(100, 100, 4, 4), QPointF(102, 101), 6), RectanglePart::kTopLeft);
}

TEST(RectangleDragTest, EachHandleMovesItsOwnEdges) {
  const QRect start(100, 100, 200, 100);
  const std::pair<RectanglePart, QRect> cases[] = {
      {RectanglePart::kTopLeft, {110, 120, 190, 80}},      {RectanglePart::kTop, {100, 120, 200, 80}},
      {RectanglePart::kTopRight, {100, 120, 210, 80}},     {RectanglePart::kRight, {100, 100, 210, 100}},
      {RectanglePart::kBottomRight, {100, 100, 210, 120}}, {RectanglePart::kBottom, {100, 100, 200, 120}},
      {RectanglePart::kBottomLeft, {110, 100, 190, 120}},  {RectanglePart::kLeft, {110, 100, 190, 100}},
      {RectanglePart::kInside, {110, 120, 200, 100}},
  };
  for (const auto& [part, expected] : cases) {
    // The pointer went down off the handle's centre: only its way counts.
    const RectangleDrag drag(part, start, QPointF(103.4, 97.6), QSize(640, 480), 32);
    EXPECT_EQ(drag.rectangleAt(QPointF(113.4, 117.6)), expected) << static_cast<int>(part);
  }
}

TEST(RectangleDragTest, StopsAtTheSourceAndAtTheLeastSide) {
  const QRect start(100, 100, 200, 100);
  const QSize source(640, 480);
  const auto dragged = [&](RectanglePart part, QPointF by) {
    return RectangleDrag(part, start, QPointF(0, 0), source, 32).rectangleAt(by);
  };
  EXPECT_EQ(dragged(RectanglePart::kTopLeft, {-500, -500}), QRect(0, 0, 300, 200));
  EXPECT_EQ(dragged(RectanglePart::kBottomRight, {1000, 1000}), QRect(100, 100, 540, 380));
  EXPECT_EQ(dragged(RectanglePart::kRight, {-1000, 0}), QRect(100, 100, 32, 100));
  EXPECT_EQ(dragged(RectanglePart::kTop, {0, 1000}), QRect(100, 168, 200, 32));
  EXPECT_EQ(dragged(RectanglePart::kTopLeft, {1000, 1000}), QRect(268, 168, 32, 32));
  // A move that would leave the source stops at its edge, size kept.
  EXPECT_EQ(dragged(RectanglePart::kInside, {1000, -1000}), QRect(440, 0, 200, 100));
  EXPECT_EQ(dragged(RectanglePart::kInside, {-1000, 1000}), QRect(0, 380, 200, 100));

  // A rectangle partly outside is brought in first; a source under the
  // least side is kept whole that way.
  EXPECT_EQ(RectangleDrag(RectanglePart::kRight, QRect(600, 0, 100, 20), {}, source, 32).rectangleAt({0, 0}),
            QRect(600, 0, 40, 32));
  EXPECT_EQ(RectangleDrag(RectanglePart::kLeft, QRect(0, 0, 20, 20), {}, QSize(20, 640), 32).rectangleAt({15, 0}),
            QRect(0, 0, 20, 32));
  // A watermark may be thinner than a crop.
  EXPECT_EQ(RectangleDrag(RectanglePart::kBottom, start, {}, source, 1).rectangleAt({0, -1000}),
            QRect(100, 100, 200, 1));
}

}  // namespace
