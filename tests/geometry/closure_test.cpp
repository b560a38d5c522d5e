// Which courses count, the running coordinates, and the four results that the
// editor shows: closure, its direction, the precision ratio and the area.

#include "geometry/closure.h"

#include <gtest/gtest.h>

#include "tests/geometry/parcel_fixture.h"
#include "tests/support/recording_canvas.h"

namespace parvenna {
namespace {

using testing::Deg;
using testing::ErrorNumberOf;
using testing::Lines;
using testing::PointNear;
using testing::SetCurve;
using testing::SetLine;

// ---------------------------------------------------------------- counted rows

TEST(FindLastLine, EmptyParcelHasNone) {
  CourseList list;
  EXPECT_EQ(FindLastLine(list), -1);
}

TEST(FindLastLine, FirstIncompleteRowEndsTheParcel) {
  CourseList list = Lines({{"N10" + Deg + "E", "100"}, {"N20" + Deg + "E", ""}, {"N30" + Deg + "E", "5"}});
  EXPECT_EQ(FindLastLine(list), 0);
  // validity plays no part, only presence
  list = Lines({{"rubbish", "abc"}});
  EXPECT_EQ(FindLastLine(list), 0);
}

TEST(FindLastLine, CurveNeedsAllFourFields) {
  CourseList list;
  SetLine(list, 0, "N10" + Deg + "E", "100");
  SetCurve(list, 1, "N10" + Deg + "E", "", "100", "50");  // no arc, though the chord would do
  SetLine(list, 2, "N10" + Deg + "E", "100");
  EXPECT_EQ(FindLastLine(list), 0);
  list.rows[1].Arc = "51";
  EXPECT_EQ(FindLastLine(list), 2);
}

TEST(FindLastLine, AllFiftyRowsCount) {
  CourseList list;
  for (int row = 0; row < CourseLimit; ++row) SetLine(list, row, "N90" + Deg + "E", "1");
  EXPECT_EQ(FindLastLine(list), 49);
  ParcelState state;
  CalCoord(list, testing::Quadrant(), 49, state);
  EXPECT_TRUE(PointNear(state.Coord[50], 50, 0));
  EXPECT_DOUBLE_EQ(state.Perimeter, 50);
}

// ---------------------------------------------------------------- coordinates

TEST(CalCoord, DueNorthKeepsTheEastingOfTheRoundedPi) {
  CourseList list = Lines({{"N0" + Deg + "E", "100"}});
  ParcelState state;
  CalCoord(list, testing::Quadrant(), 0, state);
  EXPECT_NE(state.Coord[1].x, 0.0);  // no snapping to zero
  EXPECT_TRUE(PointNear(state.Coord[1], 0, 100, 1e-12));
}

TEST(CalCoord, CurveEntersAsItsChordAndLineIgnoresCurveFields) {
  CourseList list;
  SetCurve(list, 0, "N90" + Deg + "E", "60", "40", "50");
  list.rows[0].BearingLine = "N0" + Deg + "E";
  list.rows[0].DistanceLine = "999";
  SetLine(list, 1, "N0" + Deg + "E", "30");
  list.rows[1].BearingArc = "S90" + Deg + "W";
  list.rows[1].Chord = "777";
  ParcelState state;
  state.Coord[5] = {7, 7};
  CalCoord(list, testing::Quadrant(), 1, state);
  EXPECT_TRUE(PointNear(state.Coord[1], 50, 0));
  EXPECT_TRUE(PointNear(state.Coord[2], 50, 30));
  EXPECT_DOUBLE_EQ(state.Perimeter, 80);
  EXPECT_TRUE(PointNear(state.Coord[5], 7, 7)) << "points behind r + 1 keep what they held";
}

TEST(CalCoord, DistanceThatIsNoNumberReachesTheCaller) {
  CourseList list = Lines({{"N0" + Deg + "E", "1.2.3"}});
  ParcelState state;
  EXPECT_EQ(ErrorNumberOf([&] { CalCoord(list, testing::Quadrant(), 0, state); }), 13);
}

// ---------------------------------------------------------------- results

struct Results {
  ParcelState state;
  ResultPanel panel;
  testing::RecordingCanvas canvas;
};

Results Calculate(const CourseList& list, GeometrySettings settings = {}) {
  Results r;
  CalculateAndDraw(list, settings, r.state, r.panel, r.canvas);
  return r;
}

TEST(CalculateAndDraw, NothingAtAllWhileCalculationIsDisabled) {
  CourseList list = Lines({{"N0" + Deg + "E", "100"}});
  Results r;
  r.state.CalcEnabled = false;
  r.panel.lblArea.Caption = "old";
  CalculateAndDraw(list, {}, r.state, r.panel, r.canvas);
  EXPECT_EQ(r.panel.lblArea.Caption, "old");
  EXPECT_FALSE(r.panel.cmdZoomEnabled);
  EXPECT_TRUE(r.canvas.calls.empty());
}

TEST(CalculateAndDraw, NoCompleteCourse) {
  Results r;
  r.panel.lblClosure.ForeColor = colours::Red;
  r.panel.lblDirection.Caption = "old";
  r.state.ClosureBearing = "old";
  CalculateAndDraw(CourseList{}, {}, r.state, r.panel, r.canvas);
  EXPECT_EQ(r.panel.lblArea.Caption, "0");
  EXPECT_EQ(r.panel.lblClosure.Caption, "0");
  EXPECT_EQ(r.panel.lblDirection.Caption, "");
  EXPECT_EQ(r.panel.lblPrecision.Caption, "");
  EXPECT_EQ(r.state.ClosureBearing, "");
  EXPECT_EQ(r.panel.lblClosure.ForeColor, colours::Red) << "the colour stays as it was";
  EXPECT_TRUE(r.panel.cmdZoomEnabled);
}

TEST(CalculateAndDraw, SingleLineNorth) {
  Results r = Calculate(Lines({{"N0" + Deg + "E", "100"}}));
  EXPECT_EQ(r.panel.lblClosure.Caption, "100");
  EXPECT_DOUBLE_EQ(r.state.Perimeter, 100);
  EXPECT_DOUBLE_EQ(r.state.Precision, 1);
  EXPECT_EQ(r.panel.lblPrecision.Caption, "1:1");
  EXPECT_EQ(r.panel.lblArea.Caption, "0");
  EXPECT_EQ(r.panel.lblDirection.Caption, "S0" + Deg + "0'0\"W");
  EXPECT_EQ(r.panel.lblClosure.ForeColor, colours::Red);
  // the sketch was drawn, and the survey values were walked again after it
  EXPECT_EQ(r.canvas.Count(testing::RecordingCanvas::Op::Line), 1u);
  EXPECT_TRUE(PointNear(r.state.Coord[1], 0, 100, 1e-12));
}

TEST(CalculateAndDraw, UnreadableDistanceReachesTheCaller) {
  Results r;
  EXPECT_EQ(ErrorNumberOf([&] {
              CalculateAndDraw(Lines({{"N0" + Deg + "E", "1.2.3"}}), {}, r.state, r.panel, r.canvas);
            }),
            13);
}

TEST(CalculateAndDraw, ZeroPerimeterGivesPrecisionOneNotPerfect) {
  Results r = Calculate(Lines({{"N10" + Deg + "E", "0"}}));
  EXPECT_DOUBLE_EQ(r.state.Precision, 1.0);
  EXPECT_EQ(r.panel.lblPrecision.Caption, "1:1");
  EXPECT_EQ(r.panel.lblClosure.Caption, "0");
  EXPECT_EQ(r.panel.lblDirection.Caption, "N90" + Deg + " 0'0\"E");
  EXPECT_EQ(r.panel.lblClosure.ForeColor, colours::Green);
}

// East 100, north 100, west 60: the figure stops 40 short of closing. The area
// takes the end point (40, 100) as the last point's neighbour, giving 10000;
// taking the beginning instead would give 5000, and a closed polygon 8000.
TEST(CalculateAndDraw, AreaUsesTheComputedEndAsNeighbourOfTheLastPoint) {
  Results r = Calculate(Lines({{"N90" + Deg + "E", "100"}, {"N0" + Deg + "E", "100"},
                               {"S90" + Deg + "W", "60"}}));
  EXPECT_NEAR(r.state.Area, 10000, 1e-6);
  EXPECT_EQ(r.panel.lblArea.Caption, "10000");
  EXPECT_DOUBLE_EQ(r.state.Closure, 107.7);
  EXPECT_EQ(r.panel.lblClosure.Caption, "107.7");
  EXPECT_EQ(r.panel.lblDirection.Caption, "S21" + Deg + "48'5\"W");
  EXPECT_EQ(r.panel.lblPrecision.Caption, "1:2");
}

TEST(CalculateAndDraw, AzimuthClosureBearing) {
  GeometrySettings azimuth;
  azimuth.notation = testing::Azimuth();
  Results r = Calculate(Lines({{"90" + Deg, "100"}, {"0" + Deg, "100"}, {"270" + Deg, "60"}}), azimuth);
  EXPECT_EQ(r.panel.lblDirection.Caption, "201" + Deg + "48'5\"");
  EXPECT_EQ(r.panel.lblArea.Caption, "10000");
}

TEST(CalculateAndDraw, ClosedSquareIsPerfect) {
  Results r = Calculate(Lines({{"N0" + Deg + "E", "100"}, {"N90" + Deg + "E", "100"},
                               {"S0" + Deg + "E", "100"}, {"S90" + Deg + "W", "100"}}));
  EXPECT_EQ(r.panel.lblArea.Caption, "10000");
  EXPECT_EQ(r.panel.lblClosure.Caption, "0");
  EXPECT_EQ(r.panel.lblPrecision.Caption, "Perfect");
  EXPECT_EQ(r.panel.lblClosure.ForeColor, colours::Green);
}

// East 100, a curve north on a chord of 100 (arc 104.72, radius 100), back
// south-west 141.42. The polygon gives 5000.048; the segment is 905.876.
CourseList CurveParcel(int plus, int minus, std::string radius = "100", std::string arc = "104.72") {
  CourseList list;
  SetLine(list, 0, "N90" + Deg + "E", "100");
  SetCurve(list, 1, "N0" + Deg + "E", arc, radius, "100", plus, minus);
  SetLine(list, 2, "S45" + Deg + "W", "141.42");
  return list;
}

struct SegmentCase {
  const char* name;
  int plus;
  int minus;
  const char* area;
};

class CurveSegments : public ::testing::TestWithParam<SegmentCase> {};

TEST_P(CurveSegments, OnlyTheMinusBoxDecides) {
  Results r = Calculate(CurveParcel(GetParam().plus, GetParam().minus));
  EXPECT_EQ(r.panel.lblArea.Caption, GetParam().area);
  // the rest of the results show whatever the area says
  EXPECT_EQ(r.panel.lblClosure.Caption, "0");
  EXPECT_EQ(r.panel.lblPrecision.Caption, "Perfect");
  EXPECT_EQ(r.panel.lblDirection.Caption, "S44" + Deg + "59'59\"W");
}

INSTANTIATE_TEST_SUITE_P(
    Signs, CurveSegments,
    ::testing::Values(SegmentCase{"NoSignAdds", 0, 0, "5905.92"},
                      SegmentCase{"PlusAdds", 1, 0, "5905.92"},
                      SegmentCase{"MinusSubtracts", 0, 1, "4094.17"},
                      SegmentCase{"BothSubtract", 1, 1, "4094.17"},
                      SegmentCase{"GreyMinusIsNotAvailable", 1, 2, "N/A"},
                      SegmentCase{"GreyPlusIsIgnored", 2, 0, "5905.92"}),
    [](const auto& p) { return std::string(p.param.name); });

TEST(CalculateAndDraw, ZeroRadiusLosesTheAreaButNotTheTraverse) {
  Results r = Calculate(CurveParcel(0, 0, "0"));
  EXPECT_EQ(r.panel.lblArea.Caption, "N/A");
  EXPECT_FALSE(r.state.AreaGood);
  EXPECT_EQ(r.panel.lblClosure.Caption, "0");
}

TEST(CalculateAndDraw, UnreadableArcLosesTheAreaOnly) {
  Results r = Calculate(CurveParcel(0, 1, "100", "1.2.3"));
  EXPECT_EQ(r.panel.lblArea.Caption, "N/A");
  EXPECT_EQ(r.panel.lblClosure.Caption, "0");
  EXPECT_EQ(r.panel.lblPrecision.Caption, "Perfect");
}

TEST(CalculateAndDraw, LargeSubtractionShowsANegativeArea) {
  Results r = Calculate(CurveParcel(0, 1, "100", "300"));
  EXPECT_EQ(r.panel.lblArea.Caption, "-9646.27");
}

TEST(CalculateAndDraw, GreyedCurveStopsGatheringLaterSegments) {
  CourseList list = CurveParcel(0, 2);
  SetCurve(list, 2, "S45" + Deg + "W", "150", "100", "141.42", 0, 0);
  Results r = Calculate(list);
  EXPECT_EQ(r.panel.lblArea.Caption, "N/A");
  EXPECT_NEAR(r.state.Area, 5000.048, 1e-3) << "only the polygon had been gathered";
}

// ---------------------------------------------------------------- precision

struct OutAndBack {
  const char* name;
  const char* out;
  const char* back;
  int decimals;
  const char* closure;
  const char* precision;
};

class PrecisionCases : public ::testing::TestWithParam<OutAndBack> {};

TEST_P(PrecisionCases, RatioFromTheRoundedClosure) {
  const OutAndBack& c = GetParam();
  GeometrySettings settings;
  settings.ErrDecimal = c.decimals;
  Results r = Calculate(Lines({{"N90" + Deg + "E", c.out}, {"S90" + Deg + "W", c.back}}), settings);
  EXPECT_EQ(r.panel.lblClosure.Caption, c.closure);
  EXPECT_EQ(r.panel.lblPrecision.Caption, c.precision);
}

INSTANTIATE_TEST_SUITE_P(
    Cases, PrecisionCases,
    ::testing::Values(OutAndBack{"RatioTieToEven", "70", "30", 2, "40", "1:2"},
                      OutAndBack{"JustBelowOneMillion", "500000", "499999", 2, "1", "1:999999"},
                      OutAndBack{"ExactlyOneMillion", "500000.5", "499999.5", 2, "1", "Perfect"},
                      OutAndBack{"ClosureRoundsToZero", "100", "99.996", 2, "0", "Perfect"},
                      OutAndBack{"SameClosureMoreDecimals", "100", "99.996", 3, "0.004", "1:49999"}),
    [](const auto& p) { return std::string(p.param.name); });

TEST(PrecisionRatio, NothingToShowAtZeroOrOneInAMillion) {
  EXPECT_EQ(PrecisionRatio(0), -1);
  EXPECT_EQ(PrecisionRatio(1.0 / 1000000), -1);
  EXPECT_DOUBLE_EQ(PrecisionRatio(0.5), 2);
  EXPECT_DOUBLE_EQ(PrecisionRatio(1.0 / 999999), 999999.0000000001);
}

// ---------------------------------------------------------------- colour

struct ToleranceCase {
  const char* name;
  const char* back;
  int decimals;
  const char* closure;
  bool red;
};

class ClosureColour : public ::testing::TestWithParam<ToleranceCase> {};

TEST_P(ClosureColour, JudgedAsShown) {
  const ToleranceCase& c = GetParam();
  GeometrySettings settings;
  settings.ErrDecimal = c.decimals;
  settings.ClosureTolerance = 0.01;
  Results r = Calculate(Lines({{"N90" + Deg + "E", "100"}, {"S90" + Deg + "W", c.back}}), settings);
  EXPECT_EQ(r.panel.lblClosure.Caption, c.closure);
  EXPECT_EQ(r.panel.lblClosure.ForeColor, c.red ? colours::Red : colours::Green);
}

INSTANTIATE_TEST_SUITE_P(
    Cases, ClosureColour,
    ::testing::Values(ToleranceCase{"EqualToTolerancePasses", "99.99", 2, "0.01", false},
                      ToleranceCase{"HairLostInRoundingPasses", "99.9896", 3, "0.01", false},
                      ToleranceCase{"HairThatSurvivesFails", "99.9894", 3, "0.011", true}),
    [](const auto& p) { return std::string(p.param.name); });

// ---------------------------------------------------------------- units

TEST(AreaInUnits, AcreAndHectareLines) {
  auto feet = AreaInUnits(43560, true, 2);
  EXPECT_DOUBLE_EQ(feet[0].value, 43560);
  EXPECT_STREQ(feet[0].unit, " sq.f.");
  EXPECT_DOUBLE_EQ(feet[1].value, 1);
  EXPECT_STREQ(feet[1].unit, " Acres");
  EXPECT_DOUBLE_EQ(feet[2].value, 4046.856422);
  EXPECT_STREQ(feet[2].unit, " sq.m.");
  auto metres = AreaInUnits(10000, false, 3);
  EXPECT_EQ(metres[0].decimals, 3);
  EXPECT_STREQ(metres[0].unit, " sq.m.");
  EXPECT_DOUBLE_EQ(metres[1].value, 1);
  EXPECT_STREQ(metres[1].unit, " Hectares");
  EXPECT_DOUBLE_EQ(metres[2].value, 2.471054);
  EXPECT_EQ(metres[2].decimals, 6);
}

}  // namespace
}  // namespace parvenna
