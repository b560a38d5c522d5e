// The views' canvas paints lines, dots and small arcs straight into the
// frame's pixels. Lines, dots, boxes and polylines come out pixel for pixel
// as the painter paints them, inside the picture, across its edges and far
// outside; small arcs stay within a hair of the painter's; and a strip
// painted alone equals that strip of the whole picture.
#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <cstdlib>
#include <functional>
#include <numbers>
#include <random>
#include <vector>

#include <QImage>
#include <QPainter>

#include "tests/ui/ui_app.h"
#include "ui/drawing_canvas.h"

namespace parvenna::ui {
namespace {

constexpr int kSize = 240;
const Rgb kBack{40, 60, 80};

struct Difference {
  int pixels = 0;   // that differ at all
  int largest = 0;  // the largest difference of a channel
  int marked = 0;   // pixels that differ by more than 32 in a channel
};

Difference Compare(const QImage& a, const QImage& b, const QRect& area) {
  Difference d;
  for (int y = area.top(); y <= area.bottom(); ++y) {
    for (int x = area.left(); x <= area.right(); ++x) {
      const QRgb p = a.pixel(x, y), q = b.pixel(x, y);
      if (p == q) continue;
      ++d.pixels;
      const int most = std::max({std::abs(qRed(p) - qRed(q)), std::abs(qGreen(p) - qGreen(q)),
                                 std::abs(qBlue(p) - qBlue(q))});
      d.largest = std::max(d.largest, most);
      d.marked += most > 32;
    }
  }
  return d;
}

using Strokes = std::function<void(Canvas&)>;

QImage Paint(const Strokes& strokes, DrawingCanvas::Lines lines, QRect clip = {}) {
  QImage image(kSize, kSize, QImage::Format_RGB32);
  image.fill(Qt::white);
  QPainter painter(&image);
  DrawingCanvas canvas(painter, kSize, kSize, lines);
  if (!clip.isEmpty()) canvas.SetClip(clip);
  canvas.Clear(kBack);
  strokes(canvas);
  return image;
}

// Strokes of every kind and length in many colours, some far outside.
class RandomStrokes {
 public:
  explicit RandomStrokes(unsigned seed) : random_(seed) {}

  void Lines(Canvas& c, int n) {
    for (int i = 0; i < n; ++i) {
      const CanvasPoint a = Place();
      const double length = Length(), angle = Angle();
      const double bx = a.x + length * std::cos(angle), by = a.y + length * std::sin(angle);
      c.Line(a.x, a.y, i % 17 == 0 ? a.x : bx, i % 17 == 0 ? a.y : by, Colour());
    }
  }
  void Polylines(Canvas& c, int n) {
    for (int i = 0; i < n; ++i) {
      std::vector<CanvasPoint> points{Place()};
      const int count = 2 + static_cast<int>(random_() % 6);
      for (int k = 1; k < count; ++k) {
        const double length = Length(), angle = Angle();
        points.push_back({points.back().x + length * std::cos(angle),
                          points.back().y + length * std::sin(angle)});
      }
      if (i % 2) points.push_back(points.front());  // closed
      c.Polyline(points, Colour());
    }
  }
  void Boxes(Canvas& c, int n) {
    for (int i = 0; i < n; ++i) {
      const CanvasPoint a = Place(), b = Place();
      c.Box(a.x, a.y, b.x, b.y, Colour());
    }
  }
  void Arcs(Canvas& c, int n, double largest) {
    for (int i = 0; i < n; ++i) {
      const CanvasPoint centre = Place();
      const double radius = 0.3 + Unit() * largest, start = Angle();
      const double end = i % 3 == 0 ? start : start + Angle();  // a third are whole circles
      c.Circle(centre.x, centre.y, radius, Colour(), start, end);
    }
  }

 private:
  double Unit() { return std::uniform_real_distribution<double>(0, 1)(random_); }
  double Angle() { return Unit() * 2 * std::numbers::pi; }
  // Mostly within the picture, some across its edges, a few far away.
  CanvasPoint Place() {
    if (random_() % 20 == 0) return {(Unit() - 0.5) * 1e7, (Unit() - 0.5) * 1e7};
    return {-20 + Unit() * (kSize + 40), -20 + Unit() * (kSize + 40)};
  }
  // Shorter than a pixel, a few pixels, or across the picture.
  double Length() {
    switch (random_() % 3) {
      case 0: return Unit() * 1.5;
      case 1: return Unit() * 12;
      default: return Unit() * 400;
    }
  }
  Rgb Colour() {
    const unsigned v = random_();
    return Rgb{static_cast<std::uint8_t>(v), static_cast<std::uint8_t>(v >> 8),
               static_cast<std::uint8_t>(v >> 16)};
  }
  std::mt19937 random_;
};

class DrawingCanvasTest : public ::testing::Test {
 protected:
  DrawingCanvasTest() { testing::TestApp(); }
  const QRect whole{0, 0, kSize, kSize};
};

TEST_F(DrawingCanvasTest, LinesDotsBoxesAndPolylinesAreThePaintersOwnPixels) {
  for (unsigned seed = 1; seed <= 6; ++seed) {
    const Strokes strokes = [seed](Canvas& c) {
      RandomStrokes r(seed);
      r.Lines(c, 400);
      r.Polylines(c, 150);
      r.Boxes(c, 20);
    };
    const QImage direct = Paint(strokes, DrawingCanvas::Lines::Direct);
    const QImage painter = Paint(strokes, DrawingCanvas::Lines::Painter);
    const Difference d = Compare(direct, painter, whole);
    EXPECT_EQ(d.pixels, 0) << "seed " << seed << ", largest difference " << d.largest;
    // Something was painted at all.
    EXPECT_GT(Compare(direct, Paint([](Canvas&) {}, DrawingCanvas::Lines::Direct), whole).pixels, 5000);
  }
}

TEST_F(DrawingCanvasTest, SmallArcsAndCirclesFollowThePaintersWithinAHair) {
  for (unsigned seed = 1; seed <= 4; ++seed) {
    const Strokes strokes = [seed](Canvas& c) { RandomStrokes(seed).Arcs(c, 60, 64); };
    const Difference d = Compare(Paint(strokes, DrawingCanvas::Lines::Direct),
                                 Paint(strokes, DrawingCanvas::Lines::Painter), whole);
    // The chords and the painter's curves share their pixels but for the
    // last shade of a few: out of 57,600 pixels and 60 arcs, well under a
    // hundredth differs by more than an eighth of the scale.
    EXPECT_LT(d.marked, kSize * kSize / 100) << "seed " << seed;
    EXPECT_LE(d.largest, 128) << "seed " << seed;
  }
}

TEST_F(DrawingCanvasTest, AStripPaintedAloneEqualsThatStripOfTheWholePicture) {
  const Strokes strokes = [](Canvas& c) {
    RandomStrokes r(11);
    r.Lines(c, 300);
    r.Polylines(c, 100);
    r.Arcs(c, 40, 40);
  };
  const QImage full = Paint(strokes, DrawingCanvas::Lines::Direct);
  for (const QRect strip : {QRect(0, 0, 37, kSize), QRect(200, 0, 40, kSize), QRect(0, 190, kSize, 50),
                            QRect(60, 70, 50, 40)}) {
    const QImage part = Paint(strokes, DrawingCanvas::Lines::Direct, strip);
    EXPECT_EQ(Compare(part, full, strip).pixels, 0) << strip.x() << "," << strip.y();
    // Outside the strip nothing was touched: the picture is still white.
    QImage untouched(kSize, kSize, QImage::Format_RGB32);
    untouched.fill(Qt::white);
    if (strip.left() > 0) {
      EXPECT_EQ(Compare(part, untouched, QRect(0, 0, strip.left(), kSize)).pixels, 0);
    }
  }
}

}  // namespace
}  // namespace parvenna::ui
