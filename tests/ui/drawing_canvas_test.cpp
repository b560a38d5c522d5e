// The views' canvas paints lines, dots and small arcs straight into the
// frame's pixels. Lines, dots, boxes and polylines come out pixel for pixel
// as the painter paints them, inside the picture, across its edges and far
// outside; small arcs stay within a hair of the painter's; and a strip
// painted alone equals that strip of the whole picture.
#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <functional>
#include <numbers>
#include <random>
#include <vector>

#include <QImage>
#include <QPainter>

#include "tests/ui/image_difference.h"
#include "tests/ui/ui_app.h"
#include "ui/drawing_canvas.h"

namespace parvenna::ui {
namespace {

using testing::Compare;
using testing::Difference;

constexpr int kSize = 240;
const Rgb kBack{40, 60, 80};

using Strokes = std::function<void(Canvas&)>;

// The whole picture, or only the pixels of `strip`, painted as a frame paints
// a strip: through an image that holds those pixels of the picture.
QImage Paint(const Strokes& strokes, DrawingCanvas::Lines lines, QRect strip = {}, int size = kSize) {
  QImage image(size, size, QImage::Format_RGB32);
  image.fill(Qt::white);
  if (strip.isEmpty()) strip = image.rect();
  QImage pixels(image.bits() + strip.top() * image.bytesPerLine() + strip.left() * 4, strip.width(),
                strip.height(), image.bytesPerLine(), image.format());
  QPainter painter(&pixels);
  painter.translate(-strip.left(), -strip.top());
  DrawingCanvas canvas(painter, size, size, lines);
  canvas.Clear(kBack);
  strokes(canvas);
  return image;
}

// Strokes of every kind and length in many colours: within the picture, or
// also across its edges and far outside.
class RandomStrokes {
 public:
  enum Spread { Within, Across, Far };
  // Points moved by `offset` on both axes.
  explicit RandomStrokes(unsigned seed, Spread spread = Far, double offset = 0)
      : random_(seed), spread_(spread), offset_(offset) {}

  void Lines(Canvas& c, int n) {
    for (int i = 0; i < n; ++i) {
      CanvasPoint a, b;
      do {
        a = Place();
        const double length = i % 17 == 0 ? 0 : Length(), angle = Angle();
        b = {a.x + length * std::cos(angle), a.y + length * std::sin(angle)};
      } while (!Fits(b));
      c.Line(a.x + offset_, a.y + offset_, b.x + offset_, b.y + offset_, Colour());
    }
  }
  void Polylines(Canvas& c, int n) {
    for (int i = 0; i < n; ++i) {
      std::vector<CanvasPoint> points{Place()};
      const int count = 2 + static_cast<int>(random_() % 6);
      while (static_cast<int>(points.size()) < count) {
        const double length = Length(), angle = Angle();
        const CanvasPoint next{points.back().x + length * std::cos(angle),
                               points.back().y + length * std::sin(angle)};
        if (Fits(next)) points.push_back(next);
      }
      if (i % 2) points.push_back(points.front());  // closed
      for (CanvasPoint& p : points) p = {p.x + offset_, p.y + offset_};
      c.Polyline(points, Colour());
    }
  }
  void Boxes(Canvas& c, int n) {
    for (int i = 0; i < n; ++i) {
      const CanvasPoint a = Place(), b = Place();
      c.Box(a.x + offset_, a.y + offset_, b.x + offset_, b.y + offset_, Colour());
    }
  }
  void Arcs(Canvas& c, int n, double largest) {
    for (int i = 0; i < n; ++i) {
      const CanvasPoint centre = Place();
      const double radius = 0.3 + Unit() * largest, start = Angle();
      const double end = i % 3 == 0 ? start : start + Angle();  // a third are whole circles
      c.Circle(centre.x + offset_, centre.y + offset_, radius, Colour(), start, end);
    }
  }

 private:
  double Unit() { return std::uniform_real_distribution<double>(0, 1)(random_); }
  double Angle() { return Unit() * 2 * std::numbers::pi; }
  // Within the picture; or mostly so and some across its edges; and with
  // a few far away, beyond what fixed point holds.
  CanvasPoint Place() {
    if (spread_ == Within) return {Unit() * (kSize - 1), Unit() * (kSize - 1)};
    if (spread_ == Far && random_() % 20 == 0) return {(Unit() - 0.5) * 1e9, (Unit() - 0.5) * 1e9};
    return {-20 + Unit() * (kSize + 40), -20 + Unit() * (kSize + 40)};
  }
  bool Fits(CanvasPoint p) const {
    switch (spread_) {
      case Within: return p.x >= 0 && p.y >= 0 && p.x <= kSize - 1 && p.y <= kSize - 1;
      case Across: return p.x >= -150 && p.y >= -150 && p.x <= kSize + 150 && p.y <= kSize + 150;
      case Far: return true;
    }
    return true;
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
  Spread spread_;
  double offset_;
};

class DrawingCanvasTest : public ::testing::Test {
 protected:
  DrawingCanvasTest() { testing::TestApp(); }
  const QRect whole{0, 0, kSize, kSize};
};

TEST_F(DrawingCanvasTest, LinesDotsBoxesAndPolylinesAreThePaintersOwnPixels) {
  for (unsigned seed = 1; seed <= 6; ++seed) {
    const Strokes strokes = [seed](Canvas& c) {
      RandomStrokes r(seed, RandomStrokes::Within);
      r.Lines(c, 400);
      r.Polylines(c, 150);
    };
    const QImage direct = Paint(strokes, DrawingCanvas::Lines::Direct);
    const Difference d = Compare(direct, Paint(strokes, DrawingCanvas::Lines::Painter), whole);
    EXPECT_EQ(d.pixels, 0) << "seed " << seed << ", largest difference " << d.largest;
    // Something was painted at all.
    EXPECT_GT(Compare(direct, Paint([](Canvas&) {}, DrawingCanvas::Lines::Direct), whole).pixels, 5000);
  }
}

// The painter follows a line from where the picture's edge cuts it, which
// moves its shading by up to half a pixel with the place of the cut; the
// canvas follows it from its true ends, whatever the cut. Across the edges
// its lines are the painter's own in a picture large enough to hold them.
TEST_F(DrawingCanvasTest, AcrossThePicturesEdgesTheyAreThePaintersLinesUncut) {
  constexpr int kMargin = 200, kLarge = kSize + 2 * kMargin;
  const QRect inner(kMargin, kMargin, kSize, kSize);
  for (unsigned seed = 1; seed <= 6; ++seed) {
    const auto strokes = [seed](double offset) {
      return [seed, offset](Canvas& c) {
        RandomStrokes r(seed, RandomStrokes::Across, offset);
        r.Lines(c, 400);
        r.Polylines(c, 150);
        r.Boxes(c, 20);
      };
    };
    const QImage direct = Paint(strokes(0), DrawingCanvas::Lines::Direct);
    const QImage uncut = Paint(strokes(kMargin), DrawingCanvas::Lines::Painter, {}, kLarge).copy(inner);
    const Difference d = Compare(direct, uncut, whole);
    EXPECT_EQ(d.pixels, 0) << "seed " << seed << ", largest difference " << d.largest;
  }
}

// Ends beyond what fixed point holds are cut to the picture first: such
// lines ink the pixels next to those the painter inks, none elsewhere.
TEST_F(DrawingCanvasTest, LinesToFarAwayPointsAreCutToThePicture) {
  const Strokes far = [](Canvas& c) {
    std::mt19937 random(3);
    std::uniform_real_distribution<double> in(0, kSize), out(-1e9, 1e9);
    for (int i = 0; i < 30; ++i) c.Line(in(random), in(random), out(random), out(random), colours::White);
  };
  const QImage direct = Paint(far, DrawingCanvas::Lines::Direct);
  const QImage painter = Paint(far, DrawingCanvas::Lines::Painter);
  const auto inked = [](const QImage& image, int x, int y) {
    return x >= 0 && y >= 0 && x < kSize && y < kSize && qRed(image.pixel(x, y)) > 140;
  };
  const auto near = [&](const QImage& image, int x, int y) {
    for (int dy = -1; dy <= 1; ++dy) {
      for (int dx = -1; dx <= 1; ++dx) {
        if (inked(image, x + dx, y + dy)) return true;
      }
    }
    return false;
  };
  int ink = 0, astray = 0;
  for (int y = 0; y < kSize; ++y) {
    for (int x = 0; x < kSize; ++x) {
      ink += inked(direct, x, y);
      astray += (inked(direct, x, y) && !near(painter, x, y)) || (inked(painter, x, y) && !near(direct, x, y));
    }
  }
  EXPECT_GT(ink, 30 * kSize / 4);
  EXPECT_EQ(astray, 0);
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
