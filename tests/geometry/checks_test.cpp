// The checks made before a parcel is saved: curve signs confirmed, each
// curve's arc against its radius and chord, and the tangency of joints.

#include <gtest/gtest.h>

#include "geometry/curve_check.h"
#include "geometry/tangency.h"
#include "tests/geometry/parcel_fixture.h"
#include "tests/support/scripted_prompter.h"

namespace parvenna {
namespace {

using testing::Deg;
using testing::ErrorNumberOf;
using testing::ScriptedPrompter;
using testing::SetCurve;
using testing::SetLine;

const std::string Min = "0'0\"";  // whole degrees, written out in full

// ---------------------------------------------------------------- signs

TEST(CheckSignsSet, EveryCurveNeedsATickedSign) {
  CourseList list;
  SetCurve(list, 0, "N10" + Deg + "E", "101", "500", "100", SignTicked, SignClear);
  SetCurve(list, 1, "N10" + Deg + "E", "101", "500", "100", SignClear, SignClear);
  SetCurve(list, 2, "N10" + Deg + "E", "101", "500", "100", SignGrey, SignGrey);  // grey is no tick
  SetCurve(list, 3, "N10" + Deg + "E", "101", "500", "100", SignClear, SignTicked);
  SetLine(list, 4, "N10" + Deg + "E", "100");
  SetCurve(list, 6, "N10" + Deg + "E", "101", "500", "100");  // behind the end: not counted
  EXPECT_FALSE(CheckSignsSet(list));
  ASSERT_EQ(list.marks.size(), 2u);
  EXPECT_EQ(list.marks[0].row, 1);
  EXPECT_EQ(list.marks[1].row, 2);
  for (const auto& mark : list.marks) {
    EXPECT_TRUE(mark.rowButton);
    EXPECT_EQ(mark.colour, (Rgb{255, 0, 128}));
  }
}

TEST(CheckSignsSet, NoCoursesOrNoCurvesPass) {
  CourseList list;
  EXPECT_TRUE(CheckSignsSet(list));
  SetLine(list, 0, "N10" + Deg + "E", "100");
  EXPECT_TRUE(CheckSignsSet(list));
  EXPECT_TRUE(list.marks.empty());
}

// ---------------------------------------------------------------- curves

struct CurveCheck {
  CourseList list;
  ScriptedPrompter prompter;
  bool result = true;
  void Run() { result = CheckCurves(list, prompter); }
};

CurveCheck OneCurve(std::string arc, std::string radius, std::string chord) {
  CurveCheck c;
  SetLine(c.list, 0, "N10" + Deg + "E", "100");
  SetCurve(c.list, 1, "N20" + Deg + "E", std::move(arc), std::move(radius), std::move(chord), 1, 0);
  return c;
}

std::string ArcWarning(int course, const std::string& shouldBe) {
  return "Warning: In course #" + std::to_string(course) +
         " the arc length does not agree with the radius and chord length. The arc length "
         "should be " +
         shouldBe + ". Would you like to save it?";
}

// The typed arc is compared at as many decimals as it shows after its point,
// or, with no point, at as many as it has characters.
struct DecimalsCase {
  const char* name;
  const char* arc;
  const char* chord;  // with radius 1000
  const char* shouldBe;  // empty: no warning
};

class ArcDecimals : public ::testing::TestWithParam<DecimalsCase> {};

TEST_P(ArcDecimals, ComparedAtTheTypedDecimals) {
  CurveCheck c = OneCurve(GetParam().arc, "1000", GetParam().chord);
  c.Run();
  const std::string shouldBe = GetParam().shouldBe;
  if (shouldBe.empty()) {
    EXPECT_TRUE(c.prompter.shown.empty());
    EXPECT_TRUE(c.result);
  } else {
    ASSERT_EQ(c.prompter.shown.size(), 1u);
    EXPECT_EQ(c.prompter.shown[0].Prompt, ArcWarning(2, shouldBe));
    EXPECT_EQ(c.prompter.shown[0].Buttons, MsgButtons::YesNo);
  }
  EXPECT_EQ(c.list.rows[1].Arc, GetParam().arc) << "nothing is ever written into the arc";
}

INSTANTIATE_TEST_SUITE_P(
    Cases, ArcDecimals,
    ::testing::Values(
        // implied 100.0417: "100" counts three decimals
        DecimalsCase{"WholeArcCountsItsDigits", "100", "100", "100.042"},
        // implied 100.4961
        DecimalsCase{"TwoDecimalsAgree", "100.50", "100.4538155", ""},
        DecimalsCase{"OneDecimalAgrees", "100.5", "100.4538155", ""},
        DecimalsCase{"ThreeDecimalsDisagree", "100.500", "100.4538155", "100.496"},
        // implied 100.0001 and 100.0006
        DecimalsCase{"WholeArcWithinItsDigits", "100", "99.9584384", ""},
        DecimalsCase{"WholeArcJustOutside", "100", "99.9589378", "100.001"}),
    [](const auto& p) { return std::string(p.param.name); });

TEST(CheckCurves, WarningMarksTheArcAndAsks) {
  CurveCheck c = OneCurve("100", "1000", "100");
  c.prompter.Answer({MsgAnswer::Yes});
  c.Run();
  EXPECT_TRUE(c.result) << "Yes lets the typed arc stand";
  EXPECT_EQ(c.list.focusRow, 1);
  EXPECT_EQ(c.list.focusField, CourseField::Arc);
  ASSERT_EQ(c.list.marks.size(), 1u);
  EXPECT_EQ(c.list.marks[0].field, CourseField::Arc);
  EXPECT_EQ(c.list.marks[0].colour, (Rgb{128, 255, 128}));

  CurveCheck no = OneCurve("100", "1000", "100");
  no.prompter.Answer({MsgAnswer::No});
  no.Run();
  EXPECT_FALSE(no.result);
}

TEST(CheckCurves, LongArcIsAlwaysWeighedAgainstTheShortOne) {
  // three quarters of a circle of radius 100: the short arc is 157.08
  CurveCheck c = OneCurve("471.24", "100", "141.421356");
  c.Run();
  ASSERT_EQ(c.prompter.Prompts(), std::vector<std::string>{ArcWarning(2, "157.08")});
  EXPECT_TRUE(c.result);
}

TEST(CheckCurves, HalfCircleIsWeighedAgainstHalfTheCircumference) {
  CurveCheck c = OneCurve("157.08", "50", "100");
  c.Run();
  EXPECT_TRUE(c.prompter.shown.empty());
  EXPECT_TRUE(c.result);
}

TEST(CheckCurves, ArcEqualToChordPassesTheFirstTest) {
  CurveCheck c = OneCurve("100", "1000000000", "100");
  c.Run();
  EXPECT_TRUE(c.prompter.shown.empty());
  EXPECT_TRUE(c.result);
}

TEST(CheckCurves, ShortArcAndLongChordAreErrors) {
  CurveCheck c;
  SetCurve(c.list, 0, "N20" + Deg + "E", "99", "1000", "100", 1, 0);
  SetLine(c.list, 1, "N10" + Deg + "E", "100");
  c.list.rows[1].Arc = "1";  // a line's curve fields are not looked at
  c.list.rows[1].Chord = "500";
  SetCurve(c.list, 2, "N20" + Deg + "E", "200", "50", "150", 1, 0);
  c.Run();
  EXPECT_FALSE(c.result);
  EXPECT_EQ(c.prompter.Prompts(),
            (std::vector<std::string>{
                "ERROR: The arc length must be greater than the chord length.",
                "ERROR: The chord length cannot be greater than 2 x radius."}));
  for (const Message& m : c.prompter.shown) EXPECT_EQ(m.Buttons, MsgButtons::OK);
  EXPECT_EQ(c.list.focusRow, 2);
  EXPECT_EQ(c.list.focusField, CourseField::Arc) << "the chord's fault marks the arc";
}

TEST(CheckCurves, NoToOneCurveIsNotUndoneByALaterGoodOne) {
  CurveCheck c = OneCurve("100", "1000", "100");
  SetCurve(c.list, 2, "N20" + Deg + "E", "100", "1000000000", "100", 1, 0);
  c.prompter.Answer({MsgAnswer::No});
  c.Run();
  EXPECT_EQ(c.prompter.shown.size(), 1u);
  EXPECT_FALSE(c.result);
}

// ---------------------------------------------------------------- tangency

TEST(TangentDifference, SenseOfTravelIgnored) {
  const Notation q = testing::Quadrant();
  EXPECT_DOUBLE_EQ(TangentDifference(q, "N10" + Deg + "E", "N20" + Deg + "E"), 10);
  EXPECT_DOUBLE_EQ(TangentDifference(q, "N20" + Deg + "E", "N20" + Deg + "E"), 0);
  EXPECT_DOUBLE_EQ(TangentDifference(q, "N10" + Deg + "E", "S10" + Deg + "W"), 0);
  // more than 180 apart: negative, and never reported
  EXPECT_DOUBLE_EQ(TangentDifference(q, "N10" + Deg + "E", "S30" + Deg + "E"), -40);
  EXPECT_DOUBLE_EQ(TangentDifference(testing::Azimuth(), "10" + Deg, "20" + Deg), 10);
  EXPECT_EQ(ErrorNumberOf([&] { TangentDifference(q, "", "N20" + Deg + "E"); }), 5);
}

struct Tangency {
  CourseList list;
  GeometrySettings settings;
  ParcelState state;
  ScriptedPrompter prompter;
  bool Run() { return CheckTangency(list, settings, state, prompter); }
};

// Tolerance 10 seconds, warning range 61 degrees.
Tangency WithLimits() {
  Tangency t;
  t.settings.TangentTolerance = DegreesOf(0, 0, 10);
  t.settings.WarningRange = 61;
  return t;
}

// East 100, then a curve north on a chord of 100 with radius 100 that adds
// area: its centre lies east, so it leaves heading N30°W and arrives N30°E.
Tangency LineThenCurve() {
  Tangency t = WithLimits();
  SetLine(t.list, 0, "N90" + Deg + Min + "E", "100");
  SetCurve(t.list, 1, "N0" + Deg + Min + "E", "104.72", "100", "100", SignTicked, SignClear);
  return t;
}

TEST(TangentBearingOfCurve, EndsOfACurveThatAddsArea) {
  Tangency t = LineThenCurve();
  CalCoord(t.list, t.settings.notation, 1, t.state);
  EXPECT_EQ(TangentBearingOfCurve(t.list, t.settings, t.state, 1, 0), "N30" + Deg + "0'3\"W");
  EXPECT_EQ(TangentBearingOfCurve(t.list, t.settings, t.state, 1, 1), "N30" + Deg + "0'3\"E");
  // with no sign the centre lies west, and the tangents point backwards
  t.list.rows[1].SignPlus = SignClear;
  EXPECT_EQ(TangentBearingOfCurve(t.list, t.settings, t.state, 1, 0), "S30" + Deg + "0'3\"W");
  EXPECT_EQ(TangentBearingOfCurve(t.list, t.settings, t.state, 1, 1), "S30" + Deg + "0'3\"E");
  t.list.rows[1].Chord = "201";
  EXPECT_EQ(TangentBearingOfCurve(t.list, t.settings, t.state, 1, 0), "");
}

TEST(CheckTangency, ClosingJointHasNoPointOfItsOwn) {
  Tangency t = LineThenCurve();
  t.prompter.Answer({MsgAnswer::Yes, MsgAnswer::Yes});
  EXPECT_TRUE(t.Run());
  EXPECT_EQ(t.prompter.Prompts(),
            (std::vector<std::string>{
                "Please check the bearing of first line and the tangential bearing (N30" + Deg +
                    "0'3\"E) of last arc. Would you like to save it?",
                "Please check the bearing of 1th line and the tangential bearing (N30" + Deg +
                    "0'3\"W) of 2th arc.. Would you like to save it?"}));
  EXPECT_EQ(t.prompter.shown[0].Buttons, MsgButtons::YesNo);
}

TEST(CheckTangency, InformOnlyWhenTheCheckSettingIsOff) {
  Tangency t = LineThenCurve();
  t.settings.TangentCheck = false;
  EXPECT_TRUE(t.Run());
  EXPECT_EQ(t.prompter.Prompts(),
            (std::vector<std::string>{
                "Please check the bearing of first line and the tangential bearing (N30" + Deg +
                    "0'3\"E) of last arc",
                "Please check the bearing of 1th line and the tangential bearing (N30" + Deg +
                    "0'3\"W) of 2th arc."}));
  for (const Message& m : t.prompter.shown) EXPECT_EQ(m.Buttons, MsgButtons::OK);
}

TEST(CheckTangency, CurveFirstAndAzimuthWording) {
  Tangency t = WithLimits();
  SetCurve(t.list, 0, "N0" + Deg + Min + "E", "104.72", "100", "100", SignTicked, SignClear);
  SetLine(t.list, 1, "N90" + Deg + Min + "E", "100");
  t.Run();
  EXPECT_EQ(t.prompter.Prompts(),
            (std::vector<std::string>{
                "Please check the tangential bearing (N30" + Deg +
                    "0'3\"W) of first arc and the bearing of last line. Would you like to save it?",
                "Please check the tangential bearing (N30" + Deg +
                    "0'3\"E) of 1th arc and the bearing of 2th line.. Would you like to save it?"}));

  Tangency a = WithLimits();
  a.settings.notation = testing::Azimuth();
  SetLine(a.list, 0, "90" + Deg + Min, "100");
  SetCurve(a.list, 1, "0" + Deg + Min, "104.72", "100", "100", SignTicked, SignClear);
  a.Run();
  // the start joint differs by more than 180 in azimuth angles, so only the closing joint speaks
  EXPECT_EQ(a.prompter.Prompts(),
            (std::vector<std::string>{"Please check the azimuth of first line and the tangential "
                                      "azimuth (30" + Deg + "0'2\") of last arc. Would you like to "
                                      "save it?"}));
}

TEST(CheckTangency, CurveBetweenLinesNamesBothJoints) {
  Tangency t = WithLimits();
  SetLine(t.list, 0, "N85" + Deg + Min + "E", "100");
  SetCurve(t.list, 1, "N60" + Deg + Min + "E", "104.72", "100", "100", SignClear, SignTicked);
  SetLine(t.list, 2, "N0" + Deg + Min + "E", "50");
  t.Run();
  EXPECT_EQ(t.prompter.Prompts(),
            (std::vector<std::string>{
                "Please check the bearing of 1th line and the tangential bearing (N89" + Deg +
                    "59'58\"W) of 2th arc.. Would you like to save it?",
                "Please check the tangential bearing (S30" + Deg +
                    "0'2\"W) of 2th arc and the bearing of 3th line.. Would you like to save it?"}));
}

TEST(CheckTangency, OnlyTheLastAnswerCounts) {
  Tangency noThenYes = LineThenCurve();
  noThenYes.prompter.Answer({MsgAnswer::No, MsgAnswer::Yes});
  EXPECT_TRUE(noThenYes.Run());
  Tangency yesThenNo = LineThenCurve();
  yesThenNo.prompter.Answer({MsgAnswer::Yes, MsgAnswer::No});
  EXPECT_FALSE(yesThenNo.Run());
}

// Both joints of LineThenCurve break by 59.99916666666667 degrees.
TEST(CheckTangency, BothLimitsAreStrict) {
  const double d = 59.99916666666667;
  Tangency atTolerance = LineThenCurve();
  atTolerance.settings.TangentTolerance = d;
  EXPECT_TRUE(atTolerance.Run());
  EXPECT_TRUE(atTolerance.prompter.shown.empty());

  Tangency aboveTolerance = LineThenCurve();
  aboveTolerance.settings.TangentTolerance = d - 1e-9;
  aboveTolerance.Run();
  EXPECT_EQ(aboveTolerance.prompter.shown.size(), 2u);

  Tangency atWarning = LineThenCurve();
  atWarning.settings.WarningRange = d;
  atWarning.Run();
  EXPECT_TRUE(atWarning.prompter.shown.empty());

  Tangency belowWarning = LineThenCurve();
  belowWarning.settings.WarningRange = d + 1e-9;
  belowWarning.Run();
  EXPECT_EQ(belowWarning.prompter.shown.size(), 2u);
}

TEST(CheckTangency, NothingToSayWithoutAJointOfACurve) {
  Tangency lines = WithLimits();
  SetLine(lines.list, 0, "N0" + Deg + "E", "100");
  SetLine(lines.list, 1, "N45" + Deg + "E", "100");  // a 45 degree corner between lines
  EXPECT_TRUE(lines.Run());
  EXPECT_TRUE(lines.prompter.shown.empty());

  Tangency alone = WithLimits();
  SetCurve(alone.list, 0, "N0" + Deg + Min + "E", "104.72", "100", "100", SignTicked, SignClear);
  EXPECT_TRUE(alone.Run());
  EXPECT_TRUE(alone.prompter.shown.empty());

  Tangency empty = WithLimits();
  EXPECT_TRUE(empty.Run());
}

TEST(CheckTangency, ChordOverTheDiameterFailsToTheCaller) {
  Tangency t = LineThenCurve();
  t.list.rows[1].Chord = "201";
  EXPECT_EQ(ErrorNumberOf([&] { t.Run(); }), 5);
}

}  // namespace
}  // namespace parvenna
