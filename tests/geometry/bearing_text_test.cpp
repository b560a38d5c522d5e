// Direction text: the grammar of angles, its checks, conversions and turns,
// and the number helpers that read and write the values behind it.

#include "geometry/bearing_text.h"

#include <gtest/gtest.h>

#include <cmath>

#include "geometry/numbers.h"
#include "tests/geometry/parcel_fixture.h"

namespace parvenna {
namespace {

using testing::Azimuth;
using testing::Deg;
using testing::ErrorNumberOf;
using testing::Quadrant;

// ---------------------------------------------------------------- grammar

struct SplitCase {
  std::string text;
  bool wellFormed;
  DmsTriple dms;
};

class SplitDmsShapes : public ::testing::TestWithParam<SplitCase> {};

TEST_P(SplitDmsShapes, ReadsFromTheRightEnd) {
  const SplitCase& c = GetParam();
  DmsTriple dms{"junk", "junk", "junk"};
  EXPECT_EQ(SplitDms(Quadrant(), c.text, dms), c.wellFormed) << c.text;
  EXPECT_EQ(dms, c.dms) << c.text;
}

INSTANTIATE_TEST_SUITE_P(
    Accepted, SplitDmsShapes,
    ::testing::Values(SplitCase{"12" + Deg + "30'15\"", true, {"12", "30", "15"}},
                      SplitCase{"12" + Deg + "30'", true, {"12", "30", ""}},
                      SplitCase{"12" + Deg + "15\"", true, {"12", "", "15"}},
                      SplitCase{"12" + Deg, true, {"12", "", ""}},
                      SplitCase{"30'15\"", true, {"", "30", "15"}},
                      SplitCase{"30'", true, {"", "30", ""}},
                      SplitCase{"15\"", true, {"", "", "15"}},
                      SplitCase{Deg + "'\"", true, {"", "", ""}},
                      SplitCase{"", true, {"", "", ""}},
                      SplitCase{"12%%D30'", true, {"12", "30", ""}},
                      SplitCase{"12%%d30'", true, {"12", "30", ""}},
                      SplitCase{"12\u00F830'", true, {"12", "30", ""}}));

INSTANTIATE_TEST_SUITE_P(
    Refused, SplitDmsShapes,
    ::testing::Values(SplitCase{"12" + Deg + "30'15", false, {"", "", ""}},
                      SplitCase{"12", false, {"", "", ""}},
                      SplitCase{"30'12" + Deg, false, {"12", "", ""}},
                      SplitCase{"12" + Deg + Deg, false, {"", "", ""}},
                      SplitCase{"12''", false, {"", "", ""}},
                      SplitCase{"12\"30'", false, {"", "30", ""}},
                      SplitCase{"12" + Deg + "30.5'", false, {"", "5", ""}},
                      SplitCase{"-12" + Deg, false, {"12", "", ""}},
                      SplitCase{"12 " + Deg, false, {"", "", ""}},
                      // a refusal keeps the fragments gathered so far
                      SplitCase{"1x2" + Deg + "30'", false, {"2", "30", ""}}));

TEST(SplitDms, DegreeSymbolTextOfTheProjectIsADegreeMarkInEitherCase) {
  Notation n{true, "deg"};
  DmsTriple dms;
  EXPECT_TRUE(SplitDms(n, "12DEG30'", dms));
  EXPECT_EQ(dms, (DmsTriple{"12", "30", ""}));
  EXPECT_TRUE(SplitDms(n, "12deg30'", dms));
  EXPECT_FALSE(SplitDms(n, "12%%D30'", dms));
}

// ---------------------------------------------------------------- full check

struct ValidCase {
  std::string text;
  bool valid;
};

class QuadrantBearings : public ::testing::TestWithParam<ValidCase> {};

TEST_P(QuadrantBearings, Judged) {
  std::string text = GetParam().text;
  EXPECT_EQ(IsValidBearing(Quadrant(), text), GetParam().valid) << GetParam().text;
}

INSTANTIATE_TEST_SUITE_P(
    Cases, QuadrantBearings,
    ::testing::Values(ValidCase{"N12" + Deg + "30'15\"E", true},
                      ValidCase{"S0" + Deg + "0'0\"W", true},
                      ValidCase{"N90" + Deg + "59'59\"E", true},  // the degree bound is 91
                      ValidCase{"N" + Deg + "E", true}, ValidCase{"n12" + Deg + "e", true},
                      ValidCase{"N12%%D30'E", true}, ValidCase{"N12%%d30'E", true},
                      ValidCase{"N12\u00F830'E", true}, ValidCase{"N91" + Deg + "E", false},
                      ValidCase{"N12" + Deg + "60'E", false},
                      ValidCase{"N12" + Deg + "30'60\"E", false},
                      ValidCase{"N12" + Deg + "30.5'E", false}, ValidCase{"N12E", false},
                      ValidCase{"E12" + Deg + "N", false}, ValidCase{"N12" + Deg, false},
                      ValidCase{"X12" + Deg + "E", false}, ValidCase{"NE", false},
                      ValidCase{"", false}));

class AzimuthBearings : public ::testing::TestWithParam<ValidCase> {};

TEST_P(AzimuthBearings, Judged) {
  std::string text = GetParam().text;
  EXPECT_EQ(IsValidBearing(Azimuth(), text), GetParam().valid) << GetParam().text;
  EXPECT_EQ(text, GetParam().text) << "an azimuth is left as typed";
}

INSTANTIATE_TEST_SUITE_P(
    Cases, AzimuthBearings,
    ::testing::Values(ValidCase{"192" + Deg + "30'15\"", true},
                      ValidCase{"359" + Deg + "59'59\"", true}, ValidCase{"12" + Deg, true},
                      ValidCase{"30'", true},
                      ValidCase{"7 " + Deg, true},  // blanks count towards the length
                      ValidCase{"7" + Deg, false}, ValidCase{"360" + Deg, false},
                      ValidCase{"12" + Deg + "60'", false},
                      ValidCase{"N12" + Deg + "E", false}));

TEST(IsValidBearing, QuadrantTextLosesItsBlanksForTheCaller) {
  std::string typed = "N 12" + Deg + " 30' 15\" E";
  EXPECT_TRUE(IsValidBearing(Quadrant(), typed));
  EXPECT_EQ(typed, "N12" + Deg + "30'15\"E");
  std::string refused = "N 91" + Deg + " E";
  EXPECT_FALSE(IsValidBearing(Quadrant(), refused));
  EXPECT_EQ(refused, "N91" + Deg + "E");
}

TEST(IsValidBearing, GrabbedDegreeTextIsKeptInTheCallersString) {
  std::string grabbed = "N12%%D30'E";
  EXPECT_TRUE(IsValidBearing(Quadrant(), grabbed));
  EXPECT_EQ(grabbed, "N12%%D30'E");
}

TEST(IsValidBearing, DigitRunTooLongForAnIntegerIsAnOverflow) {
  std::string text = "N99999999999" + Deg + "E";
  EXPECT_EQ(ErrorNumberOf([&] { IsValidBearing(Quadrant(), text); }), 6);
}

// ---------------------------------------------------------------- to numbers

TEST(DmsToDegrees, MinutesAndSecondsAreFractions) {
  EXPECT_DOUBLE_EQ(DmsToDegrees(Quadrant(), "12" + Deg + "30'15\""), 12.504166666666666);
  EXPECT_DOUBLE_EQ(DmsToDegrees(Quadrant(), "30'"), 0.5);
  EXPECT_DOUBLE_EQ(DmsToDegrees(Quadrant(), "12 " + Deg + " 30'"), 12.5);
  EXPECT_DOUBLE_EQ(DmsToDegrees(Quadrant(), "1x2" + Deg + "30'"), 2.5);  // fragments count
  EXPECT_DOUBLE_EQ(DmsToDegrees(Quadrant(), ""), 0);
}

struct AngleCase {
  bool quadrant;
  std::string text;
  double angle;
};

class BearingAngles : public ::testing::TestWithParam<AngleCase> {};

TEST_P(BearingAngles, AnticlockwiseFromEast) {
  const AngleCase& c = GetParam();
  EXPECT_DOUBLE_EQ(BearingToAngle(c.quadrant ? Quadrant() : Azimuth(), c.text), c.angle) << c.text;
}

INSTANTIATE_TEST_SUITE_P(
    Cases, BearingAngles,
    ::testing::Values(AngleCase{true, "N30" + Deg + "E", 60}, AngleCase{true, "N30" + Deg + "W", 120},
                      AngleCase{true, "S30" + Deg + "E", 300}, AngleCase{true, "S30" + Deg + "W", 240},
                      AngleCase{true, "N 30" + Deg + " E", 60},
                      AngleCase{true, "N12" + Deg + "30'15\"E", 77.49583333333334},
                      // the pair is compared exactly: lower case is no quadrant
                      AngleCase{true, "n12" + Deg + "e", 0}, AngleCase{true, "N12" + Deg + "e", 0},
                      AngleCase{true, "E30" + Deg + "N", 0},
                      // azimuths are not brought below 360
                      AngleCase{false, "30" + Deg, 420}, AngleCase{false, "0" + Deg, 450},
                      AngleCase{false, "359" + Deg, 91}, AngleCase{false, "90" + Deg, 360}));

TEST(BearingToAngle, QuadrantTextOfFewerThanTwoCharactersIsAnInvalidCall) {
  EXPECT_EQ(ErrorNumberOf([] { BearingToAngle(Quadrant(), "N"); }), 5);
  EXPECT_EQ(ErrorNumberOf([] { BearingToAngle(Quadrant(), ""); }), 5);
  EXPECT_EQ(ErrorNumberOf([] { BearingToAngle(Quadrant(), Deg); }), 5);
}

// ---------------------------------------------------------------- to text

TEST(WholeOf, FloorExceptAtOddWholeNumbers) {
  EXPECT_EQ(WholeOf(45.0), 44);
  EXPECT_EQ(WholeOf(46.0), 46);
  EXPECT_EQ(WholeOf(1.0), 0);
  EXPECT_EQ(WholeOf(0.0), 0);
  EXPECT_EQ(WholeOf(44.9), 44);
  EXPECT_EQ(WholeOf(45.5), 45);
  EXPECT_EQ(WholeOf(-0.5), -1);
}

struct PointsCase {
  double x1, y1, x2, y2;
  std::string quadrant;
  std::string azimuth;
};

class BearingFromPointsCases : public ::testing::TestWithParam<PointsCase> {};

TEST_P(BearingFromPointsCases, InBothNotations) {
  const PointsCase& c = GetParam();
  EXPECT_EQ(BearingFromPoints(Quadrant(), c.x1, c.y1, c.x2, c.y2), c.quadrant);
  EXPECT_EQ(BearingFromPoints(Azimuth(), c.x1, c.y1, c.x2, c.y2), c.azimuth);
}

const std::string FixedQ = "N90" + Deg + " 0'0\"E";
const std::string FixedA = "90" + Deg + " 0'0\"";

INSTANTIATE_TEST_SUITE_P(
    Cases, BearingFromPointsCases,
    ::testing::Values(
        // seconds are cut off: 11.63" reads 11"
        PointsCase{0, 0, 3, 4, "N36" + Deg + "52'11\"E", "36" + Deg + "52'11\""},
        PointsCase{0, 0, 3, -4, "S36" + Deg + "52'11\"E", "143" + Deg + "7'48\""},
        PointsCase{0, 0, -3, -4, "S36" + Deg + "52'11\"W", "216" + Deg + "52'11\""},
        PointsCase{10, 10, 7, 14, "N36" + Deg + "52'11\"W", "323" + Deg + "7'48\""},
        // due north or south carries the letter W; due north is azimuth 360
        PointsCase{0, 0, 0, 10, "N0" + Deg + "0'0\"W", "360" + Deg + "0'0\""},
        PointsCase{0, 0, 0, -10, "S0" + Deg + "0'0\"W", "180" + Deg + "0'0\""},
        // no northing difference: the fixed text, whichever way, even for no move
        PointsCase{0, 0, 10, 0, FixedQ, FixedA}, PointsCase{0, 0, -10, 0, FixedQ, FixedA},
        PointsCase{5, 5, 5, 5, FixedQ, FixedA}));

TEST(FormatDms, SecondsRoundedWithoutCarry) {
  EXPECT_EQ(FormatDms(45), "44" + Deg + "60'0\"");  // an exact odd degree
  EXPECT_EQ(FormatDms(46), "46" + Deg + "0'0\"");
  EXPECT_EQ(FormatDms(12.999999), "12" + Deg + "59'60\"");
  EXPECT_EQ(FormatDms(12.504166666666666), "12" + Deg + "30'15\"");
  EXPECT_EQ(FormatDms(370.5), "10" + Deg + "30'0\"");
  EXPECT_EQ(FormatDms(-0.5), "-1" + Deg + "30'0\"");  // the modulo keeps the sign
}

TEST(PerpendicularBearing, TurnsARightAngleAnticlockwise) {
  EXPECT_EQ(PerpendicularBearing(Quadrant(), "N12" + Deg + "30'15\"E"), "N77" + Deg + "29'45\"W");
  EXPECT_EQ(PerpendicularBearing(Quadrant(), "N12" + Deg + "30'15\"W"), "S77" + Deg + "29'45\"W");
  EXPECT_EQ(PerpendicularBearing(Quadrant(), "S12" + Deg + "30'15\"W"), "S77" + Deg + "29'45\"E");
  EXPECT_EQ(PerpendicularBearing(Quadrant(), "S12" + Deg + "30'15\"E"), "N77" + Deg + "29'45\"E");
  EXPECT_EQ(PerpendicularBearing(Quadrant(), "N0" + Deg + "E"), "N90" + Deg + "0'0\"W");
  // past 90 the angle goes negative, and stands
  EXPECT_EQ(PerpendicularBearing(Quadrant(), "N90" + Deg + "30'E"), "N-1" + Deg + "30'0\"W");
  EXPECT_EQ(PerpendicularBearing(Quadrant(), "n12" + Deg + "e"), "");
  EXPECT_EQ(PerpendicularBearing(Azimuth(), "12" + Deg), "282" + Deg + "0'0\"");
  EXPECT_EQ(PerpendicularBearing(Azimuth(), "100" + Deg + "30'"), "10" + Deg + "30'0\"");
}

TEST(ReverseBearing, QuadrantTurnsOnlyTheLetters) {
  EXPECT_EQ(ReverseBearing(Quadrant(), "N12" + Deg + "30'15\"E"), "S12" + Deg + "30'15\"W");
  EXPECT_EQ(ReverseBearing(Quadrant(), "n12" + Deg + "e"), "S12" + Deg + "W");
  EXPECT_EQ(ReverseBearing(Quadrant(), "N12" + Deg + "30'X"), "S12" + Deg + "30'");
  EXPECT_EQ(ReverseBearing(Quadrant(), ""), "");
  EXPECT_EQ(ReverseBearing(Quadrant(), "N"), "S");
  // a first character that is no letter drops whole, not byte by byte
  EXPECT_EQ(ReverseBearing(Quadrant(), Deg + "12'E"), "12'W");
}

TEST(ReverseBearing, AzimuthKeepsEmptyFields) {
  const std::string once = ReverseBearing(Azimuth(), "12" + Deg);
  EXPECT_EQ(once, "192" + Deg + "'\"");
  EXPECT_EQ(ReverseBearing(Azimuth(), once), "12" + Deg + "'\"");
  EXPECT_EQ(ReverseBearing(Azimuth(), "192" + Deg + "30'15\""), "12" + Deg + "30'15\"");
  EXPECT_EQ(ReverseBearing(Azimuth(), "0" + Deg + "0'0\""), "180" + Deg + "0'0\"");
  EXPECT_EQ(ReverseBearing(Azimuth(), ""), "");
  std::string again = once;
  EXPECT_TRUE(IsValidBearing(Azimuth(), again));
}

TEST(OppositeLetter, ExchangesTheFourLettersOnly) {
  EXPECT_EQ(OppositeLetter("n"), "S");
  EXPECT_EQ(OppositeLetter("S"), "N");
  EXPECT_EQ(OppositeLetter("e"), "W");
  EXPECT_EQ(OppositeLetter("W"), "E");
  EXPECT_EQ(OppositeLetter("X"), "");
  EXPECT_EQ(OppositeLetter(""), "");
}

// ---------------------------------------------------------------- older pair

TEST(CalDegree, NeedsAllThreeFields) {
  std::string spaced = "N 12" + Deg + " 30' 15\" E";
  EXPECT_DOUBLE_EQ(CalDegree(spaced), 12.504166666666666);
  EXPECT_EQ(spaced, "N12" + Deg + "30'15\"E");
  std::string noSeconds = "N12" + Deg + "30'E";
  EXPECT_EQ(ErrorNumberOf([&] { CalDegree(noSeconds); }), 13);
  std::string bare = "N12" + Deg + "E";
  EXPECT_EQ(ErrorNumberOf([&] { CalDegree(bare); }), 13);
}

TEST(AngleFromEast, QuadrantLettersInAnyCase) {
  EXPECT_DOUBLE_EQ(AngleFromEast("N12" + Deg + "30'15\"E"), 77.49583333333334);
  EXPECT_DOUBLE_EQ(AngleFromEast("n12" + Deg + "30'15\"w"), 102.50416666666666);
  EXPECT_DOUBLE_EQ(AngleFromEast("S12" + Deg + "30'15\"E"), 282.50416666666666);
  EXPECT_DOUBLE_EQ(AngleFromEast("S12" + Deg + "30'15\"W"), 257.49583333333334);
  EXPECT_DOUBLE_EQ(AngleFromEast("192" + Deg + "30'15\""), 0);  // every azimuth
  EXPECT_EQ(ErrorNumberOf([&] { AngleFromEast("N12" + Deg + "E"); }), 13);
}

// ---------------------------------------------------------------- grabbed text

TEST(NumberFromText, DigitsAndPointsOnly) {
  EXPECT_EQ(NumberFromText("12.5ft"), "12.5");
  EXPECT_EQ(NumberFromText("-5"), "5");
  EXPECT_EQ(NumberFromText("1.2.3"), "1.2.3");
  EXPECT_EQ(NumberFromText("abc"), "0");
  EXPECT_EQ(NumberFromText("."), "0");
  EXPECT_EQ(NumberFromText(""), "0");
}

TEST(SplitGrabbedText, TokensAtBlanksReversedInModeTwo) {
  std::deque<std::string> queue{"earlier"};
  std::string label = " N12%%D30'E   125.50 ";
  SplitGrabbedText(Quadrant(), label, queue, 0);
  EXPECT_EQ(queue, (std::deque<std::string>{"earlier", "N12%%D30'E", "125.50"}));
  EXPECT_EQ(label, "");

  queue.clear();
  label = "N12%%D30'E 125.50 S5" + Deg + "W";
  SplitGrabbedText(Quadrant(), label, queue, GrabReversed);
  EXPECT_EQ(queue, (std::deque<std::string>{"S12%%D30'W", "125.50", "N5" + Deg + "E"}));

  queue.clear();
  label = "12" + Deg + "30' 100";
  SplitGrabbedText(Azimuth(), label, queue, GrabReversed);
  EXPECT_EQ(queue, (std::deque<std::string>{"192" + Deg + "30'\"", "100"}));
}

// ---------------------------------------------------------------- numbers

TEST(RoundHalfEven, DecimalTiesGoToTheEvenDigit) {
  EXPECT_DOUBLE_EQ(RoundHalfEven(2.675, 2), 2.68);  // the double lies below, the text is a tie
  EXPECT_DOUBLE_EQ(RoundHalfEven(2.665, 2), 2.66);
  EXPECT_DOUBLE_EQ(RoundHalfEven(2.5, 0), 2);
  EXPECT_DOUBLE_EQ(RoundHalfEven(3.5, 0), 4);
  EXPECT_DOUBLE_EQ(RoundHalfEven(-2.5, 0), -2);
  EXPECT_DOUBLE_EQ(RoundHalfEven(0.125, 2), 0.12);
  EXPECT_DOUBLE_EQ(RoundHalfEven(1.005, 2), 1.0);
  EXPECT_DOUBLE_EQ(RoundHalfEven(0.015, 2), 0.02);
  EXPECT_DOUBLE_EQ(RoundHalfEven(100.04170, 3), 100.042);
  EXPECT_DOUBLE_EQ(RoundHalfEven(9.9996, 3), 10.0);
  EXPECT_DOUBLE_EQ(RoundHalfEven(0.0049, 2), 0);
  EXPECT_DOUBLE_EQ(RoundHalfEven(123.456, 20), 123.456);
  EXPECT_EQ(ErrorNumberOf([] { RoundHalfEven(1.5, -1); }), 5);
}

TEST(PlainNumber, FifteenDigitsNoTrailingZeros) {
  EXPECT_EQ(PlainNumber(0), "0");
  EXPECT_EQ(PlainNumber(100), "100");
  EXPECT_EQ(PlainNumber(-2.5), "-2.5");
  EXPECT_EQ(PlainNumber(0.1), "0.1");
  EXPECT_EQ(PlainNumber(1.0 / 3), "0.333333333333333");
  EXPECT_EQ(PlainNumber(10000.00000000001), "10000");
  EXPECT_EQ(PlainNumber(999999999999999), "999999999999999");
  EXPECT_EQ(PlainNumber(1e15), "1E+15");
  EXPECT_EQ(PlainNumber(0.00001), "0.00001");
  EXPECT_EQ(PlainNumber(0.000001), "1E-06");
}

TEST(FormatFixed, PictureWithoutLeadingZero) {
  EXPECT_EQ(FormatFixed(100.0417, 3), "100.042");
  EXPECT_EQ(FormatFixed(100, 3), "100.000");
  EXPECT_EQ(FormatFixed(0.5, 2), ".50");
  EXPECT_EQ(FormatFixed(100, 0), "100.");
  EXPECT_EQ(FormatFixed(100.5, 0), "100.");
  EXPECT_EQ(FormatFixed(2.675, 2), "2.68");
  EXPECT_EQ(FormatFixed(12345678901.5, 1), "12345678901.5");  // more than ten digits show
  // a long typed arc asks for many decimals of a large number: all of them show
  const std::string wide = FormatFixed(1e300, 120);
  EXPECT_EQ(wide.size(), 301u + 1 + 120);
  EXPECT_EQ(wide.front(), '1');
  EXPECT_EQ(wide.substr(302), std::string(120, '0'));
}

TEST(FormatFixed, SameDigitsForShortAndLongFigures) {
  // Figures of up to 13 digits are written from a whole number of the last
  // decimal's units, longer ones from the double itself: both ways meet here.
  const struct {
    double x;
    int decimals;
    const char* text;
  } cases[] = {
      {0, 0, "."},
      {0, 2, ".00"},
      {-0.004, 2, ".00"},  // rounds to nothing, and no sign is left
      {-0.5, 2, "-.50"},
      {9999999999998.5, 0, "9999999999998."},
      {9999999999999.5, 0, "10000000000000."},
      {99999999999.995, 2, "100000000000.00"},
      {-9999999999.9999, 3, "-10000000000.000"},
      {999999999999.99, 2, "999999999999.99"},
      {1234567890123.45, 2, "1234567890123.45"},
      {0.1 + 0.2, 13, ".3000000000000"},
      {0.1 + 0.2, 15, ".300000000000000"},
      {123456.7890123456, 13, "123456.7890123456018"},  // past 15 digits: the double's own
      {5e-324, 2, ".00"},
  };
  for (const auto& c : cases) EXPECT_EQ(FormatFixed(c.x, c.decimals), c.text) << c.x;

  std::string out = "12.5 ";
  AppendFixed(out, 3.14159, 3);
  EXPECT_EQ(out, "12.5 3.142");
  EXPECT_EQ(ErrorNumberOf([&] { AppendFixed(out, HUGE_VAL, 2); }), 6);
  EXPECT_EQ(out, "12.5 3.142");
}

TEST(TextToNumber, FailuresCarryTheirNumbers) {
  EXPECT_DOUBLE_EQ(TextToDouble(" 12.5 "), 12.5);
  EXPECT_EQ(ErrorNumberOf([] { TextToDouble(""); }), 13);
  EXPECT_EQ(ErrorNumberOf([] { TextToDouble("1.2.3"); }), 13);
  EXPECT_EQ(ErrorNumberOf([] { TextToDouble("abc"); }), 13);
  EXPECT_EQ(ErrorNumberOf([] { TextToDouble("1e400"); }), 6);
  EXPECT_DOUBLE_EQ(ReadNumber(""), 0);
  EXPECT_DOUBLE_EQ(ReadNumber(".5"), 0.5);
  EXPECT_DOUBLE_EQ(ReadNumber("007"), 7);
  EXPECT_DOUBLE_EQ(ReadNumber("999999999999999"), 999999999999999);
  EXPECT_DOUBLE_EQ(ReadNumber("12345678901234567890"), 12345678901234567890.0);
  EXPECT_DOUBLE_EQ(ReadNumber("5 "), 5);
  EXPECT_EQ(ErrorNumberOf([] { ReadNumber(" 5"); }), 13);
  EXPECT_EQ(ErrorNumberOf([] { ReadNumber("-5"); }), 13);
  EXPECT_DOUBLE_EQ(Val("12abc"), 12);
  EXPECT_DOUBLE_EQ(Val("abc"), 0);
}

}  // namespace
}  // namespace parvenna
