// The mapcheck's figures held against answers worked out apart from the
// program: a square, closed parcels with curves whose area and curve data
// follow from the circle, and traverses whose closure and precision are
// printed in published texts.
#include <gtest/gtest.h>

#include <cmath>
#include <numbers>

#include "geometry/bearing_text.h"
#include "reports/mapcheck.h"
#include "reports/mapcheck_sketch.h"
#include "reports/mapcheck_text.h"

namespace parvenna::reports {
namespace {

const std::string B = "\u00B0";
constexpr double kPi = std::numbers::pi;

MeasurementRow LineRow(const std::string& direction, double length) {
  MeasurementRow r;
  r.RowType = 1;
  r.Length = length;
  r.Direction = direction;
  return r;
}

// plus: 0 the segment is added (a curve to the right), 1 subtracted (to the
// left), 2 no sign set.
MeasurementRow CurveRow(const std::string& chordDirection, double chord, double arc, double radius,
                        int plus) {
  MeasurementRow r;
  r.RowType = 0;
  r.Length = chord;
  r.Direction = chordDirection;
  r.Arc = arc;
  r.Radius = radius;
  r.Plus = static_cast<std::int16_t>(plus);
  return r;
}

GeometrySettings Settings(bool bearing, bool feet = true, int decimals = 2, double tolerance = 0.01) {
  GeometrySettings s;
  s.notation.BearingMode = bearing;
  s.unitfeet = feet;
  s.ErrDecimal = decimals;
  s.ClosureTolerance = tolerance;
  s.WarningRange = 5;
  s.TangentTolerance = 30.0 / 3600;
  return s;
}

MapcheckParcel Check(const std::vector<MeasurementRow>& rows, const GeometrySettings& settings,
                     MapcheckOptions options = {}) {
  std::vector<const MeasurementRow*> pointers;
  for (const MeasurementRow& r : rows) pointers.push_back(&r);
  return CheckParcel("Lot", pointers, settings, options);
}

// ---- A square ----------------------------------------------------------------

TEST(MapcheckFigures, ASquareInBearingsAndFeetClosesWithItsAreaInAcres) {
  const MapcheckParcel p = Check({LineRow("N0" + B + "0'0\"E", 100), LineRow("N90" + B + "0'0\"E", 100),
                                  LineRow("S0" + B + "0'0\"E", 100), LineRow("S90" + B + "0'0\"W", 100)},
                                 Settings(true));
  ASSERT_TRUE(p.failure.empty()) << p.failure;
  ASSERT_EQ(p.courses.size(), 4u);
  const double corners[4][2] = {{100, 0}, {100, 100}, {0, 100}, {0, 0}};
  for (int i = 0; i < 4; ++i) {
    EXPECT_NEAR(p.courses[i].north, corners[i][0], 1e-9) << i;
    EXPECT_NEAR(p.courses[i].east, corners[i][1], 1e-9) << i;
  }
  EXPECT_NEAR(p.closure, 0, 1e-9);
  EXPECT_FALSE(p.precision) << "a closure of nil is perfect";
  EXPECT_EQ(PrecisionText(p), "Perfect");
  EXPECT_FALSE(p.closureAzimuth) << "nor a direction";
  EXPECT_NEAR(p.perimeter, 400, 1e-12);
  EXPECT_NEAR(p.area, 10000, 1e-6);
  EXPECT_TRUE(p.passTolerance && p.passRatio && p.Pass());
  EXPECT_TRUE(p.findings.empty()) << p.findings.front();

  MapcheckHeader h;
  const ParcelSection s = SectionOf(h, p);
  const std::string closure = [&] {
    std::string all;
    for (const std::string& line : s.closure) all += line + "\n";
    return all;
  }();
  // 10000 / 43560 acres, and 10000 x 0.3048^2 square metres.
  EXPECT_NE(closure.find("10,000.00 sq.f. = 0.229568 Acres = 929.030400 sq.m."), std::string::npos)
      << closure;
}

TEST(MapcheckFigures, ASquareInAzimuthsAndMetresFromAPointOfBeginning) {
  MapcheckOptions options;
  options.pobNorth = 5000;
  options.pobEast = 2000;
  const MapcheckParcel p = Check({LineRow("0" + B + "0'0\"", 100), LineRow("90" + B + "0'0\"", 100),
                                  LineRow("180" + B + "0'0\"", 100), LineRow("270" + B + "0'0\"", 100)},
                                 Settings(false, false, 3, 0.001), options);
  ASSERT_TRUE(p.failure.empty()) << p.failure;
  EXPECT_NEAR(p.courses[0].north, 5100, 1e-9);
  EXPECT_NEAR(p.courses[1].east, 2100, 1e-9);
  EXPECT_NEAR(p.courses[3].north, 5000, 1e-9);
  EXPECT_NEAR(p.courses[3].east, 2000, 1e-9);
  EXPECT_NEAR(p.area, 10000, 1e-6);
  MapcheckHeader h;
  h.unitFeet = false;
  h.notation.BearingMode = false;
  h.decimals = 3;
  h.options = options;
  const ParcelSection s = SectionOf(h, p);
  bool hectare = false;
  for (const std::string& line : s.closure) {
    hectare |= line.find("10,000.000 sq.m. = 1.000000 Hectares = 2.471054 Acres") != std::string::npos;
  }
  EXPECT_TRUE(hectare);
  EXPECT_EQ(s.head.back(), "Point of beginning : N 5,000.00000  E 2,000.00000");
}

// ---- Parcels with curves -------------------------------------------------------

// A quarter of a circle of radius 100 walked clockwise from its centre: north
// along a radius, round the arc to the east, west back to the centre. Its
// area is a quarter of the circle's. Chord and arc are given to six places,
// the arc as the chord implies it, so that the curve check finds nothing.
std::vector<MeasurementRow> QuarterCircle(bool bearing) {
  const double chord = 141.421356, arc = 157.079632;
  if (bearing) {
    return {LineRow("N0" + B + "0'0\"E", 100), CurveRow("S45" + B + "0'0\"E", chord, arc, 100, 0),
            LineRow("S90" + B + "0'0\"W", 100)};
  }
  return {LineRow("0" + B + "0'0\"", 100), CurveRow("135" + B + "0'0\"", chord, arc, 100, 0),
          LineRow("270" + B + "0'0\"", 100)};
}

TEST(MapcheckFigures, AQuarterCircleHasTheCirclesAreaAndItsCurveData) {
  for (bool bearing : {true, false}) {
    SCOPED_TRACE(bearing ? "bearings, feet" : "azimuths, metres");
    const MapcheckParcel p = Check(QuarterCircle(bearing), Settings(bearing, bearing));
    ASSERT_TRUE(p.failure.empty()) << p.failure;
    EXPECT_NEAR(p.area, kPi * 100 * 100 / 4, 1e-3);
    EXPECT_NEAR(p.perimeter, 200 + 50 * kPi, 1e-5) << "along the arc, not the chord";
    EXPECT_NEAR(p.closure, 0, 1e-5);
    const CurveFigures& k = p.courses[1].curveData;
    EXPECT_EQ(k.turn, Turn::Right);
    ASSERT_TRUE(k.delta && k.tangent && k.tangentIn && k.tangentOut);
    EXPECT_NEAR(*k.delta, 90, 1e-6);
    EXPECT_NEAR(*k.tangent, 100, 1e-4);
    // The arc leaves the north radius heading east and meets the east
    // radius heading south.
    EXPECT_NEAR(*k.tangentIn, 90, 1e-6);
    EXPECT_NEAR(*k.tangentOut, 180, 1e-6);
    EXPECT_NEAR(p.courses[1].north, 0, 1e-5);
    EXPECT_NEAR(p.courses[1].east, 100, 1e-5);
    EXPECT_TRUE(p.findings.empty()) << p.findings.front();
    // The tangents meet the two radii at right angles: no joint breaks.
    EXPECT_EQ(DirectionText(Settings(bearing).notation, *k.tangentIn),
              bearing ? "N90" + B + "0'0\"E" : "90" + B + "0'0\"");
  }
}

// The curve's figures from the circle: for radius R and central angle D, the
// arc R D, the chord 2 R sin(D/2), the tangent R tan(D/2); the tangents turn
// by D/2 either side of the chord, the way the curve turns.
struct CurveCase {
  double radius, delta, chordAzimuth;
  int plus;
  double tangentIn, tangentOut;
};

class CurveData : public ::testing::TestWithParam<CurveCase> {};

TEST_P(CurveData, FollowsFromRadiusAndCentralAngle) {
  const CurveCase c = GetParam();
  const double d = c.delta * kPi / 180;
  const double arc = c.radius * d, chord = 2 * c.radius * std::sin(d / 2);
  const Notation azimuths{false, "%%D"};
  const std::string direction = DirectionText(azimuths, c.chordAzimuth);
  const MapcheckParcel p = Check({CurveRow(direction, chord, arc, c.radius, c.plus)}, Settings(false));
  ASSERT_EQ(p.courses.size(), 1u) << p.failure;
  const CurveFigures& k = p.courses[0].curveData;
  ASSERT_TRUE(k.delta && k.tangentIn && k.tangentOut);
  EXPECT_NEAR(*k.delta, c.delta, 1e-9);
  if (c.delta < 180) {
    ASSERT_TRUE(k.tangent);
    EXPECT_NEAR(*k.tangent, c.radius * std::tan(d / 2), 1e-6);
  } else {
    EXPECT_FALSE(k.tangent) << "the tangents of a curve of a half circle or more do not meet ahead";
  }
  EXPECT_NEAR(*k.tangentIn, c.tangentIn, 1e-9);
  EXPECT_NEAR(*k.tangentOut, c.tangentOut, 1e-9);
  // The course ends a chord away along its chord direction.
  EXPECT_NEAR(std::hypot(p.courses[0].north, p.courses[0].east), chord, 1e-9);
}

INSTANTIATE_TEST_SUITE_P(
    Curves, CurveData,
    ::testing::Values(
        // R 500, D 30: arc 261.80, chord 258.82, tangent 133.97.
        CurveCase{500, 30, 75, 0, 60, 90}, CurveCase{500, 30, 75, 1, 90, 60},
        // Across north: the tangents wrap round 360.
        CurveCase{200, 40, 10, 1, 30, 350}, CurveCase{200, 40, 350, 0, 330, 10},
        // Three quarters of a circle to the right.
        CurveCase{100, 270, 90, 0, 315, 225}));

TEST(MapcheckFigures, ACurveWithoutASignHasNoSideNoTangentsAndNoArea) {
  const MapcheckParcel p = Check(
      {LineRow("N0" + B + "0'0\"E", 100), CurveRow("S45" + B + "0'0\"E", 141.42, 157.08, 100, 2),
       LineRow("S90" + B + "0'0\"W", 100)},
      Settings(true));
  const CurveFigures& k = p.courses[1].curveData;
  EXPECT_EQ(k.turn, Turn::Unknown);
  EXPECT_FALSE(k.tangentIn);
  EXPECT_TRUE(k.delta) << "the delta needs no side";
  EXPECT_FALSE(p.areaGood) << "a grey sign leaves the area unknown, as in the editor";
  ASSERT_FALSE(p.findings.empty());
  EXPECT_EQ(p.findings.front(),
            "Course #2: the curve's segment area is not confirmed (+/-), so its side is unknown.");
  // Drawn as its chord: two points.
  EXPECT_EQ(CoursePath({0, 100}, p.courses[1]).size(), 2u);
}

TEST(MapcheckFigures, TheSketchFollowsTheArcThroughItsMiddle) {
  const MapcheckParcel p = Check(QuarterCircle(true), Settings(true));
  const std::vector<SurveyPoint> path = CoursePath({0, 100}, p.courses[1]);
  ASSERT_GT(path.size(), 8u);
  for (const SurveyPoint& q : path) EXPECT_NEAR(std::hypot(q.east, q.north), 100, 1e-4);
  const SurveyPoint& middle = path[path.size() / 2];
  EXPECT_NEAR(middle.east, 100 / std::sqrt(2.0), 1);
  EXPECT_NEAR(middle.north, 100 / std::sqrt(2.0), 1) << "bulging out, away from the centre";
  EXPECT_NEAR(path.back().east, p.courses[1].east, 1e-12);
  EXPECT_NEAR(path.back().north, p.courses[1].north, 1e-12);
}

// ---- Published traverses -------------------------------------------------------
//
// The books add latitudes and departures rounded to the figures they print,
// so their sums differ from the unrounded walk in the last place; each check
// allows that rounding and no more.

// Purdue University, ASM 215 course notes, "Traverse calculations"
// (engineering.purdue.edu/~asm215/topics/travcalc.html): the loop A-B-C-D-E,
// printed with bearings and again with azimuths. Book: misclosure in latitude
// -0.71, in departure +0.53, linear 0.89 over 2466.05 ft, precision 1/2771.
// Ours: -0.7043, +0.5332, 0.8833, 1:2791 (the book's 0.89 comes from its
// rounded sums).
TEST(MapcheckPublished, PurdueLoopInBearingsAndInAzimuths) {
  const std::vector<MeasurementRow> bearings = {
      LineRow("N26" + B + "10'E", 285.10), LineRow("S75" + B + "25'E", 610.45),
      LineRow("S15" + B + "30'W", 720.48), LineRow("N1" + B + "42'W", 203.00),
      LineRow("N53" + B + "06'W", 647.02)};
  const std::vector<MeasurementRow> azimuths = {
      LineRow("26" + B + "10'", 285.10), LineRow("104" + B + "35'", 610.45),
      LineRow("195" + B + "30'", 720.48), LineRow("358" + B + "18'", 203.00),
      LineRow("306" + B + "54'", 647.02)};
  for (bool bearing : {true, false}) {
    SCOPED_TRACE(bearing ? "bearings" : "azimuths");
    const MapcheckParcel p = Check(bearing ? bearings : azimuths, Settings(bearing));
    ASSERT_TRUE(p.failure.empty()) << p.failure;
    EXPECT_NEAR(p.errorNorth, -0.71, 0.01);
    EXPECT_NEAR(p.errorEast, +0.53, 0.01);
    EXPECT_NEAR(p.closure, 0.89, 0.01);
    EXPECT_NEAR(p.perimeter, 2466.05, 1e-9);
    ASSERT_TRUE(p.precision);
    EXPECT_NEAR(*p.precision, 2771, 2771 * 0.01);
    EXPECT_EQ(PrecisionText(p), "1:2,791");
    EXPECT_FALSE(p.passTolerance);
    EXPECT_FALSE(p.passRatio) << "1:2,791 falls short of 1:10,000";
  }
}

// J. Mahun, Open Access surveying library, "Traverse Computations", solution
// of the traverse adjustment problem (2) (jerrymahun.com): A-B-C-D in
// azimuths. Book: latitude -0.115, departure +0.107, LC 0.157 over 2388.31
// ft, precision 1/15,200. Ours: -0.1158, +0.1070, 0.1577, 1:15,146.
TEST(MapcheckPublished, MahunLoopInAzimuths) {
  const MapcheckParcel p =
      Check({LineRow("226" + B + "54'23\"", 639.15), LineRow("0" + B + "0'0\"", 523.69),
             LineRow("235" + B + "02'29\"", 409.54), LineRow("79" + B + "35'02\"", 815.93)},
            Settings(false));
  ASSERT_TRUE(p.failure.empty()) << p.failure;
  EXPECT_NEAR(p.errorNorth, -0.115, 0.001);
  EXPECT_NEAR(p.errorEast, +0.107, 0.001);
  EXPECT_NEAR(p.closure, 0.157, 0.001);
  ASSERT_TRUE(p.precision);
  EXPECT_NEAR(*p.precision, 15200, 15200 * 0.005);
  MapcheckOptions asked;
  asked.ratio = 15000;
  EXPECT_TRUE(Check({LineRow("226" + B + "54'23\"", 639.15), LineRow("0" + B + "0'0\"", 523.69),
                     LineRow("235" + B + "02'29\"", 409.54), LineRow("79" + B + "35'02\"", 815.93)},
                    Settings(false), asked)
                  .passRatio);
}

// ---- The verdicts and the texts ------------------------------------------------

TEST(MapcheckFigures, AClosureAtTheToleranceAndARatioAtTheAskedFigurePass) {
  // Out 100 north and back 99.99: a closure of exactly 0.01 over 199.99.
  const MapcheckParcel p =
      Check({LineRow("N0" + B + "0'0\"E", 100), LineRow("S0" + B + "0'0\"E", 99.99)}, Settings(true));
  EXPECT_DOUBLE_EQ(p.closureRounded, 0.01);
  EXPECT_TRUE(p.passTolerance);
  MapcheckOptions asked;
  asked.ratio = 19999;
  EXPECT_TRUE(Check({LineRow("N0" + B + "0'0\"E", 100), LineRow("S0" + B + "0'0\"E", 99.99)},
                    Settings(true), asked)
                  .passRatio);
  asked.ratio = 20000;
  const MapcheckParcel short_ =
      Check({LineRow("N0" + B + "0'0\"E", 100), LineRow("S0" + B + "0'0\"E", 99.99)}, Settings(true), asked);
  EXPECT_FALSE(short_.passRatio);
  EXPECT_EQ(PrecisionText(short_), "1:19,999") << "cut, not rounded up to the figure it missed";
  EXPECT_FALSE(short_.Pass());
}

TEST(MapcheckText, DirectionsAndAnglesAreRoundedToTheSecondAndCarried) {
  const Notation quadrant{true, "%%D"}, azimuth{false, "%%D"};
  EXPECT_EQ(AngleText(12.5 + 59.6 / 3600), "12" + B + "31'0\"");
  EXPECT_EQ(AngleText(90.0002), "90" + B + "0'1\"");
  EXPECT_EQ(DirectionText(azimuth, 359.99999), "0" + B + "0'0\"");
  EXPECT_EQ(DirectionText(azimuth, 192.50416667), "192" + B + "30'15\"");
  EXPECT_EQ(DirectionText(quadrant, 0), "N0" + B + "0'0\"E");
  EXPECT_EQ(DirectionText(quadrant, 90), "N90" + B + "0'0\"E");
  EXPECT_EQ(DirectionText(quadrant, 135.25), "S44" + B + "45'0\"E");
  EXPECT_EQ(DirectionText(quadrant, 180), "S0" + B + "0'0\"E");
  EXPECT_EQ(DirectionText(quadrant, 192.5), "S12" + B + "30'0\"W");
  EXPECT_EQ(DirectionText(quadrant, 270), "N90" + B + "0'0\"W");
  EXPECT_EQ(DirectionText(quadrant, 347.5), "N12" + B + "30'0\"W");
  // What the mapcheck writes, the editor reads back as the same direction.
  for (double az : {12.5, 100.25, 200.75, 300.125}) {
    for (const Notation& n : {quadrant, azimuth}) {
      const double angle = BearingToAngle(n, DirectionText(n, az));
      EXPECT_NEAR(std::fmod(450 - angle, 360.0), az, 1.0 / 3600) << az;
    }
  }
}

TEST(MapcheckText, TheRatioAskedForIsAWholeNumber) {
  EXPECT_EQ(RatioOfText("10000"), 10000);
  EXPECT_EQ(RatioOfText("10,000"), 10000);
  EXPECT_EQ(RatioOfText("1000000000"), 1e9);
  for (const char* bad : {"", "0", "-5", "1e4", "10000.5", "abc", "1:10000", "1000000001",
                          "99999999999999999999999"}) {
    EXPECT_FALSE(RatioOfText(bad)) << bad;
  }
}

}  // namespace
}  // namespace parvenna::reports
