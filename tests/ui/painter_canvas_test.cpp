// The picture of the sketch: twips to pixels, and the sense of arcs.
#include <gtest/gtest.h>

#include <cmath>
#include <numbers>

#include "tests/ui/ui_app.h"
#include "ui/painter_canvas.h"

namespace parvenna::ui {
namespace {

constexpr double Pi = std::numbers::pi;

class PainterCanvasTest : public ::testing::Test {
 protected:
  PainterCanvasTest() { testing::TestApp(); }

  // 300 x 300 pixels; a circle of radius 100 pixels about the middle.
  PainterCanvas canvas{4500, 4500};
  static constexpr double kCentre = 150 * 15;
  static constexpr double kRadius = 100 * 15;

  bool InkAt(double angle) const {
    const int x = static_cast<int>(std::lround(150 + 100 * std::cos(angle)));
    // Angles turn anticlockwise on the screen, where y grows downwards.
    const int y = static_cast<int>(std::lround(150 - 100 * std::sin(angle)));
    for (int dx = -1; dx <= 1; ++dx) {
      for (int dy = -1; dy <= 1; ++dy) {
        if (canvas.Image().pixelColor(x + dx, y + dy) != Qt::white) return true;
      }
    }
    return false;
  }
};

TEST_F(PainterCanvasTest, SizeIsInTwipsAtFifteenToAPixel) {
  EXPECT_EQ(canvas.Image().size(), QSize(300, 300));
  canvas.SetSize(9015, 5750);
  EXPECT_EQ(canvas.Image().size(), QSize(601, 383));
  EXPECT_DOUBLE_EQ(canvas.Width(), 9015);
}

TEST_F(PainterCanvasTest, LinesAndClearing) {
  const unsigned before = canvas.Generation();
  canvas.Line(0, 1500, 4500, 1500, colours::Red);
  EXPECT_EQ(canvas.Image().pixelColor(50, 100), QColor(255, 0, 0));
  EXPECT_GT(canvas.Generation(), before);
  canvas.Cls();
  EXPECT_EQ(canvas.Image().pixelColor(50, 100), QColor(Qt::white));
}

TEST_F(PainterCanvasTest, ArcRunsAnticlockwiseFromStartToEnd) {
  canvas.Circle(kCentre, kCentre, kRadius, colours::Green, 0, Pi / 2);
  EXPECT_TRUE(InkAt(Pi / 4));       // up and to the right
  EXPECT_FALSE(InkAt(-Pi / 4));     // down and to the right
  EXPECT_FALSE(InkAt(3 * Pi / 4));
}

TEST_F(PainterCanvasTest, ArcWithEndBeforeStartPassesThroughZero) {
  canvas.Circle(kCentre, kCentre, kRadius, colours::Red, 3 * Pi / 2, Pi / 2);
  EXPECT_TRUE(InkAt(0));
  EXPECT_TRUE(InkAt(Pi / 4));
  EXPECT_TRUE(InkAt(-Pi / 4));
  EXPECT_FALSE(InkAt(Pi));
}

TEST_F(PainterCanvasTest, DegenerateCirclesDrawNothing) {
  for (double radius : {0.0, -5.0, std::nan(""), 1e12}) {
    canvas.Circle(kCentre, kCentre, radius, colours::Red, 0, Pi);
  }
  EXPECT_FALSE(InkAt(Pi / 2));
}

}  // namespace
}  // namespace parvenna::ui
