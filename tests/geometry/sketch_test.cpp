// The sketch of the parcel: fitted to the picture, curves by sign, numbers
// pushed outwards, the frame, and every place where the drawing gives up.

#include "geometry/sketch.h"

#include <gtest/gtest.h>

#include "tests/geometry/parcel_fixture.h"
#include "tests/support/recording_canvas.h"

namespace parvenna {
namespace {

using testing::Deg;
using testing::Lines;
using testing::SetCurve;
using testing::SetLine;
using Canvas = testing::RecordingCanvas;
using Op = Canvas::Op;

struct Sketch {
  ParcelState state;
  std::array<Label, CourseLimit> labels{};
  Canvas canvas;

  explicit Sketch(double w = 4000, double h = 4000) : canvas(w, h) {
    for (Label& l : labels) l.Visible = true;  // left over from an earlier parcel
  }
  void Draw(const CourseList& list, GeometrySettings settings = {}) {
    canvas.calls.push_back({Op::Line, 1, 1, 2, 2, colours::Black});  // an old picture
    Drawing(list, settings, state, labels, canvas);
  }
  int VisibleLabels() const {
    int n = 0;
    for (const Label& l : labels) n += l.Visible;
    return n;
  }
};

void ExpectLine(const Canvas::Call& c, double x1, double y1, double x2, double y2, Rgb colour) {
  EXPECT_EQ(c.op, Op::Line);
  EXPECT_DOUBLE_EQ(c.a, x1);
  EXPECT_DOUBLE_EQ(c.b, y1);
  EXPECT_DOUBLE_EQ(c.c, x2);
  EXPECT_DOUBLE_EQ(c.d, y2);
  EXPECT_EQ(c.colour, colour);
}

void ExpectFrame(const Canvas::Call& c, double w, double h) {
  EXPECT_EQ(c.op, Op::Box);
  EXPECT_DOUBLE_EQ(c.a, 0);
  EXPECT_DOUBLE_EQ(c.b, 0);
  EXPECT_DOUBLE_EQ(c.c, w - 80);
  EXPECT_DOUBLE_EQ(c.d, h - 80);
  EXPECT_EQ(c.colour, colours::Black);
}

// ---------------------------------------------------------------- stops

TEST(Drawing, NoCoursesClearsThePicture) {
  Sketch s;
  s.Draw(CourseList{});
  EXPECT_EQ(s.canvas.calls.back().op, Op::Cls);
  EXPECT_TRUE(s.canvas.Picture().empty());
  EXPECT_EQ(s.VisibleLabels(), 0);
}

TEST(Drawing, FigureWithoutExtentOneWayIsNotDrawn) {
  for (const char* length : {"100", "0"}) {
    Sketch s;
    s.Draw(Lines({{"N90" + Deg + "E", length}}));  // due east: no northing at all
    EXPECT_EQ(s.canvas.calls.back().op, Op::Cls) << length;
    EXPECT_TRUE(s.canvas.Picture().empty());
    EXPECT_EQ(s.VisibleLabels(), 0);
  }
}

TEST(Drawing, ChordOverTheDiameterStopsAtThatCourse) {
  CourseList list;
  SetLine(list, 0, "N90" + Deg + "E", "100");
  SetCurve(list, 1, "N0" + Deg + "E", "300", "100", "250", SignTicked, SignClear);
  SetLine(list, 2, "S90" + Deg + "W", "100");
  Sketch s;
  s.Draw(list);
  auto picture = s.canvas.Picture();
  ASSERT_EQ(picture.size(), 1u) << "later courses and the frame stay undrawn";
  EXPECT_EQ(picture[0].colour, colours::Black);
  EXPECT_EQ(s.VisibleLabels(), 0);
}

TEST(Drawing, HalfCircleAlongTheVerticalStopsTheDrawing) {
  // the centre falls on the chord, straight below the end point
  CourseList list;
  SetLine(list, 0, "N90" + Deg + "E", "100");
  SetCurve(list, 1, "N0" + Deg + "E", "157.08", "50", "100", SignTicked, SignClear);
  SetLine(list, 2, "S90" + Deg + "W", "100");
  Sketch s;
  s.Draw(list);
  EXPECT_EQ(s.canvas.Picture().size(), 1u);
  EXPECT_EQ(s.VisibleLabels(), 0);
}

// ---------------------------------------------------------------- fitting

TEST(Drawing, SingleCourseNorthFillsTheHeight) {
  Sketch s;
  s.Draw(Lines({{"N0" + Deg + "E", "100"}}));
  auto picture = s.canvas.Picture();
  ASSERT_EQ(picture.size(), 2u);
  ExpectLine(picture[0], 2000, 3800, 2000, 200, colours::Black);
  ExpectFrame(picture[1], 4000, 4000);
  EXPECT_TRUE(s.labels[0].Visible);
  EXPECT_DOUBLE_EQ(s.labels[0].Left, 2100);
  EXPECT_DOUBLE_EQ(s.labels[0].Top, 2100);
  // Coord is left in picture positions
  EXPECT_DOUBLE_EQ(s.state.Coord[1].x, 2000);
  EXPECT_DOUBLE_EQ(s.state.Coord[1].y, 200);
}

TEST(Drawing, OutAndBackIsOneLineTwice) {
  Sketch s;
  s.Draw(Lines({{"N0" + Deg + "E", "100"}, {"S0" + Deg + "W", "100"}}));
  auto picture = s.canvas.Picture();
  ASSERT_EQ(picture.size(), 3u);
  ExpectLine(picture[0], 2000, 3800, 2000, 200, colours::Black);
  ExpectLine(picture[1], 2000, 200, 2000, 3800, colours::Black);
}

TEST(Drawing, SquareNumbersArePushedOutwards) {
  Sketch s;
  s.Draw(Lines({{"N90" + Deg + "E", "100"}, {"N0" + Deg + "E", "100"}, {"S90" + Deg + "W", "100"},
                {"S0" + Deg + "E", "100"}}));
  auto picture = s.canvas.Picture();
  ASSERT_EQ(picture.size(), 5u) << "four sides and the frame; no closing line is added";
  ExpectLine(picture[0], 200, 3800, 3800, 3800, colours::Black);
  ExpectLine(picture[1], 3800, 3800, 3800, 200, colours::Black);
  ExpectLine(picture[2], 3800, 200, 200, 200, colours::Black);
  ExpectLine(picture[3], 200, 200, 200, 3800, colours::Black);
  const double expected[4][2] = {{2100, 3900}, {3900, 2100}, {2100, 100}, {100, 2100}};
  for (int i = 0; i < 4; ++i) {
    EXPECT_TRUE(s.labels[i].Visible);
    EXPECT_DOUBLE_EQ(s.labels[i].Left, expected[i][0]) << i;
    EXPECT_DOUBLE_EQ(s.labels[i].Top, expected[i][1]) << i;
  }
  EXPECT_EQ(s.VisibleLabels(), 4);
}

TEST(Drawing, FrameFollowsThePictureSize) {
  Sketch s(5000, 3000);
  s.Draw(Lines({{"N0" + Deg + "E", "100"}}));
  ExpectFrame(s.canvas.Picture().back(), 5000, 3000);
}

// ---------------------------------------------------------------- curves

// East 100, a curve north on a chord of 100 with radius 100, west 100. The
// chord runs up the right side of the picture, from (3800, 3800) to (3800, 200).
CourseList WithCurve(const std::string& arc, int plus, int minus, const std::string& radius = "100") {
  CourseList list;
  SetLine(list, 0, "N90" + Deg + "E", "100");
  SetCurve(list, 1, "N0" + Deg + "E", arc, radius, "100", plus, minus);
  SetLine(list, 2, "S90" + Deg + "W", "100");
  return list;
}

TEST(Drawing, CurveWithoutSignIsItsChordInCyan) {
  for (int grey : {SignClear, SignGrey}) {
    Sketch s;
    s.Draw(WithCurve("104.72", grey, grey));
    auto picture = s.canvas.Picture();
    ASSERT_EQ(picture.size(), 4u);
    ExpectLine(picture[1], 3800, 3800, 3800, 200, colours::Cyan);
  }
}

struct ArcCase {
  const char* name;
  const char* arc;
  int plus;
  int minus;
  Rgb colour;
  double cx;
  double start;
  double end;
};

class CurveArcs : public ::testing::TestWithParam<ArcCase> {};

// Short arc 104.72 (a sixth of the circle) or long arc 523.6; the centre lies
// 86.6 units (3117.69 in the picture) beside the middle of the chord.
TEST_P(CurveArcs, SideColourAndAngleOrder) {
  const ArcCase& c = GetParam();
  Sketch s;
  s.Draw(WithCurve(c.arc, c.plus, c.minus));
  auto picture = s.canvas.Picture();
  ASSERT_EQ(picture.size(), 4u);
  const auto& arc = picture[1];
  ASSERT_EQ(arc.op, Op::Circle);
  EXPECT_EQ(arc.colour, c.colour);
  EXPECT_NEAR(arc.a, c.cx, 1e-6);
  EXPECT_NEAR(arc.b, 2000, 1e-6);
  EXPECT_NEAR(arc.c, 3600, 1e-6);
  EXPECT_NEAR(arc.start, c.start, 1e-9);
  EXPECT_NEAR(arc.end, c.end, 1e-9);
  ExpectFrame(picture[3], 4000, 4000);
}

INSTANTIATE_TEST_SUITE_P(
    Cases, CurveArcs,
    ::testing::Values(
        // plus: centre on the walker's right (east), bulging west
        ArcCase{"PlusShort", "104.72", 1, 0, colours::Green, 6917.69, 2.6179936760992013,
                3.6651916310803787},
        // minus: centre west, bulging east, so the arc runs across angle 0
        ArcCase{"MinusShort", "104.72", 0, 1, colours::Red, 682.31, 5.759586329688991,
                0.5235989774905888},
        ArcCase{"BothTickedIsPlus", "104.72", 1, 1, colours::Green, 6917.69, 2.6179936760992013,
                3.6651916310803787},
        ArcCase{"PlusLong", "523.6", 1, 0, colours::Green, 682.31, 0.5235989774905888,
                5.759586329688991},
        ArcCase{"MinusLong", "523.6", 0, 1, colours::Red, 6917.69, 3.6651916310803787,
                2.6179936760992013}),
    [](const auto& p) { return std::string(p.param.name); });

TEST(Drawing, FlatCurveIsAStraightLineInItsColour) {
  Sketch plus;
  plus.Draw(WithCurve("100.005", SignTicked, SignClear, "3000"));
  ExpectLine(plus.canvas.Picture()[1], 3800, 3800, 3800, 200, colours::Green);
  Sketch minus;
  minus.Draw(WithCurve("100.005", SignClear, SignTicked, "3000"));
  ExpectLine(minus.canvas.Picture()[1], 3800, 3800, 3800, 200, colours::Red);
  // a radius of 1000 bends the chord by 2.5 percent: drawn as an arc
  Sketch bent;
  bent.Draw(WithCurve("100.05", SignTicked, SignClear, "1000"));
  EXPECT_EQ(bent.canvas.Picture()[1].op, Op::Circle);
}

// ---------------------------------------------------------------- zoom

TEST(ToggleSketchZoom, BetweenTheNormalBoxAndTheWholeForm) {
  SketchBox box{3870, 0, 5000, 4000, "Double click to zoom in"};
  ToggleSketchZoom(box, 12000, 8000, 5000, 4000);
  EXPECT_DOUBLE_EQ(box.Left, 0);
  EXPECT_DOUBLE_EQ(box.Top, 0);
  EXPECT_DOUBLE_EQ(box.Width, 12000);
  EXPECT_DOUBLE_EQ(box.Height, 8000);
  EXPECT_EQ(box.ToolTipText, "Double Click to restore normal view");

  ToggleSketchZoom(box, 12000, 8000, 5000, 4000);
  EXPECT_DOUBLE_EQ(box.Left, 3870);
  EXPECT_DOUBLE_EQ(box.Top, 0);
  EXPECT_DOUBLE_EQ(box.Width, 5000);
  EXPECT_DOUBLE_EQ(box.Height, 4000);
  EXPECT_EQ(box.ToolTipText, "Double click to zoom in");
}

TEST(ToggleSketchZoom, RedrawnSketchFitsTheNewSize) {
  SketchBox box{3870, 0, 4000, 4000, "Double click to zoom in"};
  ToggleSketchZoom(box, 12000, 8000, 4000, 4000);
  Sketch s;
  s.canvas.SetSize(box.Width, box.Height);
  s.Draw(Lines({{"N0" + Deg + "E", "100"}}));
  auto picture = s.canvas.Picture();
  ASSERT_EQ(picture.size(), 2u);
  ExpectLine(picture[0], 6000, 7800, 6000, 200, colours::Black);
  ExpectFrame(picture[1], 12000, 8000);
}

}  // namespace
}  // namespace parvenna
