// The greedy turning of bearings so that a grabbed figure closes, and the
// north command that sets every course back to the northern half.

#include "geometry/auto_inverse.h"

#include <gtest/gtest.h>

#include "geometry/closure.h"
#include "tests/geometry/parcel_fixture.h"
#include "tests/support/recording_canvas.h"
#include "tests/support/scripted_prompter.h"

namespace parvenna {
namespace {

using testing::Deg;
using testing::SetCurve;
using testing::SetLine;

const std::string Z = Deg + "0'0\"";  // whole degrees with minutes and seconds

struct Pass {
  CourseList list;
  GeometrySettings settings;
  ParcelState state;
  testing::ScriptedPrompter prompter;
  std::vector<std::pair<int, CourseField>> writes;

  Pass() {
    list.onChange = [this](int row, CourseField field) { writes.emplace_back(row, field); };
  }
  bool Run() { return AutoInverse(list, settings, state, prompter); }
  std::vector<std::string> Bearings() const {
    std::vector<std::string> out;
    for (int row = 0; row <= FindLastLine(list); ++row) {
      out.push_back(list.rows[row].Kind == CourseKind::Line ? list.rows[row].BearingLine
                                                              : list.rows[row].BearingArc);
    }
    return out;
  }
};

void Key(Pass& p, std::initializer_list<std::pair<std::string, std::string>> rows) {
  int row = 0;
  for (const auto& [bearing, distance] : rows) SetLine(p.list, row++, bearing, distance);
}

using Strings = std::vector<std::string>;

// A rectangle 100 by 50 turned 30 degrees, every side keyed in the N half.
TEST(AutoInverse, RectangleKeyedNorthComesBackToTheBeginning) {
  Pass p;
  Key(p, {{"N30" + Z + "E", "100"}, {"N60" + Z + "W", "50"}, {"N30" + Z + "E", "100"},
          {"N60" + Z + "W", "50"}});
  EXPECT_TRUE(p.Run());
  EXPECT_EQ(p.Bearings(), (Strings{"N30" + Z + "E", "S60" + Z + "E", "S30" + Z + "W", "N60" + Z + "W"}));
  EXPECT_EQ(p.writes, (std::vector<std::pair<int, CourseField>>{{1, CourseField::BearingLine},
                                                                {2, CourseField::BearingLine}}));
  CalCoord(p.list, p.settings.notation, 3, p.state);
  EXPECT_TRUE(testing::PointNear(p.state.Coord[4], 0, 0, 1e-9));
  EXPECT_TRUE(p.prompter.shown.empty());
}

TEST(AutoInverse, FirstCourseStandsAsTyped) {
  Pass p;
  Key(p, {{"S30" + Z + "W", "100"}, {"N60" + Z + "W", "50"}, {"N30" + Z + "E", "100"},
          {"N60" + Z + "W", "50"}});
  p.Run();
  EXPECT_EQ(p.Bearings(), (Strings{"S30" + Z + "W", "S60" + Z + "E", "N30" + Z + "E", "N60" + Z + "W"}));
}

TEST(AutoInverse, SecondCourseIsTurnedEastByItsLetterInAnyCase) {
  Pass p;
  Key(p, {{"N30" + Z + "E", "100"}, {"s60" + Z + "e", "50"}, {"N10" + Z + "E", "1"}});
  p.Run();
  EXPECT_EQ(p.list.rows[1].BearingLine, "s60" + Z + "e");
}

TEST(AutoInverse, CourseThatWouldDoubleBackIsTurnedAgain) {
  Pass p;
  Key(p, {{"N45" + Z + "E", "100"}, {"N45" + Z + "E", "10"}, {"N45" + Z + "E", "50"}});
  p.Run();
  // turning the third course brings it nearer the beginning, but then it runs
  // straight back along the second, so it is turned once more
  EXPECT_EQ(p.list.rows[2].BearingLine, "N45" + Z + "E");
  EXPECT_EQ(p.writes.size(), 2u);
}

TEST(AutoInverse, SurvivesWritesThatRedrawTheSketch) {
  // In the editor each write recomputes and redraws, leaving picture
  // positions in Coord; the pass must not read those.
  Pass p;
  Key(p, {{"N30" + Z + "E", "100"}, {"N60" + Z + "W", "50"}, {"N30" + Z + "E", "100"},
          {"N60" + Z + "W", "50"}});
  ResultPanel panel;
  testing::RecordingCanvas canvas;
  p.list.onChange = [&](int, CourseField) {
    CalculateAndDraw(p.list, p.settings, p.state, panel, canvas);
  };
  p.Run();
  EXPECT_EQ(p.Bearings(), (Strings{"N30" + Z + "E", "S60" + Z + "E", "S30" + Z + "W", "N60" + Z + "W"}));
  EXPECT_EQ(panel.lblClosure.Caption, "0");
}

TEST(AutoInverse, AzimuthSeedsTheFirstTwoCourses) {
  Pass p;
  p.settings.notation = testing::Azimuth();
  Key(p, {{"120" + Z, "100"}, {"200" + Z, "50"}, {"30" + Z, "100"}, {"120" + Z, "50"}});
  p.Run();
  EXPECT_EQ(p.Bearings(), (Strings{"300" + Z, "20" + Z, "210" + Z, "120" + Z}));
}

TEST(AutoInverse, AzimuthCurveFirstTurnsTheSecondRowsChordBearing) {
  Pass p;
  p.settings.notation = testing::Azimuth();
  SetCurve(p.list, 0, "120" + Z, "105", "100", "100", SignTicked, SignClear);
  SetLine(p.list, 1, "30" + Z, "50");
  p.list.rows[1].BearingArc = "45" + Z;  // left over from its time as a curve
  SetLine(p.list, 2, "10" + Z, "1");
  p.Run();
  EXPECT_EQ(p.list.rows[0].BearingArc, "120" + Z) << "the first row is not the one turned";
  EXPECT_EQ(p.list.rows[1].BearingArc, "225" + Z);
  EXPECT_EQ(p.list.rows[1].BearingLine, "30" + Z);

  Pass empty;
  empty.settings.notation = testing::Azimuth();
  SetCurve(empty.list, 0, "120" + Z, "105", "100", "100", SignTicked, SignClear);
  SetLine(empty.list, 1, "30" + Z, "50");
  SetLine(empty.list, 2, "10" + Z, "1");
  empty.Run();
  EXPECT_EQ(empty.list.rows[1].BearingArc, "");
  EXPECT_EQ(empty.list.rows[0].BearingArc, "120" + Z);
}

TEST(AutoInverse, FewerThanThreeCoursesAreLeftAlone) {
  Pass p;
  Key(p, {{"N30" + Z + "E", "100"}, {"S60" + Z + "W", "50"}});
  EXPECT_TRUE(p.Run());
  EXPECT_TRUE(p.writes.empty());
}

TEST(AutoInverse, MoreThanTenCoursesBringAnAdviceAndThePassRuns) {
  Pass ten;
  for (int row = 0; row < 10; ++row) SetLine(ten.list, row, "N10" + Z + "E", "10");
  ten.Run();
  EXPECT_TRUE(ten.prompter.shown.empty());

  Pass eleven;
  for (int row = 0; row < 11; ++row) SetLine(eleven.list, row, "N10" + Z + "E", "10");
  eleven.list.rows[1].BearingLine = "N10" + Z + "W";
  eleven.Run();
  ASSERT_EQ(eleven.prompter.shown.size(), 1u);
  EXPECT_EQ(eleven.prompter.shown[0].Prompt, "We recommend that you manually close this figure.");
  EXPECT_EQ(eleven.prompter.shown[0].Icon, MsgIcon::Exclamation);
  EXPECT_EQ(eleven.list.rows[1].BearingLine, "S10" + Z + "E");
}

TEST(AutoInverse, HandsOffAfterTheSensesWereSetByHand) {
  Pass p;
  for (int row = 0; row < 11; ++row) SetLine(p.list, row, "N10" + Z + "W", "10");
  p.state.NorthRestored = true;
  p.Run();
  EXPECT_TRUE(p.prompter.shown.empty());
  EXPECT_TRUE(p.writes.empty());
}

TEST(AutoInverse, BearingWithoutSecondsStopsThePassBeforeAnyChange) {
  Pass p;
  Key(p, {{"N30" + Z + "E", "100"}, {"N60" + Z + "W", "50"}, {"N30" + Deg + "E", "100"},
          {"N60" + Z + "W", "50"}});
  EXPECT_FALSE(p.Run());
  EXPECT_TRUE(p.writes.empty());
  EXPECT_EQ(p.list.rows[1].BearingLine, "N60" + Z + "W");
  ASSERT_EQ(p.prompter.shown.size(), 1u);
  EXPECT_EQ(p.prompter.shown[0].Prompt,
            "Course #3 needs degrees, minutes and seconds (as N12" + Deg +
                "30'0\"E) before the bearings can be inverted automatically. Nothing was changed.");
  EXPECT_EQ(p.prompter.shown[0].Icon, MsgIcon::Exclamation);
  EXPECT_EQ(p.list.focusRow, 2);
  EXPECT_EQ(p.list.focusField, CourseField::BearingLine);
  ASSERT_EQ(p.list.marks.size(), 1u);
  EXPECT_EQ(p.list.marks[0].colour, (Rgb{128, 255, 128}));
}

TEST(AutoInverse, AzimuthsNeedNoSeconds) {
  Pass p;
  p.settings.notation = testing::Azimuth();
  Key(p, {{"120" + Deg, "100"}, {"200" + Deg, "50"}, {"30" + Deg, "100"}});
  EXPECT_TRUE(p.Run());
  EXPECT_EQ(p.list.rows[0].BearingLine, "300" + Deg + "'\"");
}

// ---------------------------------------------------------------- north

TEST(RestoreNorth, QuadrantBearingsPointNorthInUpperCase) {
  CourseList list;
  SetLine(list, 0, "S12" + Deg + "30'15\"W", "10");
  SetLine(list, 1, "n12" + Deg + "e", "10");
  SetCurve(list, 2, " s5" + Z + "e ", "11", "100", "10");
  SetLine(list, 3, "N1" + Deg + "E", "10");
  GeometrySettings settings;
  ParcelState state;
  RestoreNorth(list, settings, state);
  EXPECT_EQ(list.rows[0].BearingLine, "N12" + Deg + "30'15\"E");
  EXPECT_EQ(list.rows[1].BearingLine, "N12" + Deg + "E");
  EXPECT_EQ(list.rows[2].BearingArc, "N5" + Z + "W");
  EXPECT_EQ(list.rows[3].BearingLine, "N1" + Deg + "E");
  EXPECT_TRUE(state.NorthRestored);

  testing::ScriptedPrompter prompter;
  SetLine(list, 1, "S12" + Z + "W", "10");
  AutoInverse(list, settings, state, prompter);
  EXPECT_EQ(list.rows[1].BearingLine, "S12" + Z + "W") << "the automatic pass keeps off";
}

TEST(RestoreNorth, AzimuthsIntoTheNorthernHalf) {
  CourseList list;
  SetLine(list, 0, "120" + Z, "10");
  SetLine(list, 1, "12" + Deg, "10");
  SetLine(list, 2, "270" + Deg, "10");
  SetLine(list, 3, "90" + Deg, "10");
  GeometrySettings settings;
  settings.notation = testing::Azimuth();
  ParcelState state;
  RestoreNorth(list, settings, state);
  EXPECT_EQ(list.rows[0].BearingLine, "300" + Z);
  EXPECT_EQ(list.rows[1].BearingLine, "12" + Deg);
  EXPECT_EQ(list.rows[2].BearingLine, "270" + Deg);
  EXPECT_EQ(list.rows[3].BearingLine, "270" + Deg + "'\"");
}

TEST(RestoreNorth, NoCoursesOnlySetsTheFlag) {
  CourseList list;
  ParcelState state;
  RestoreNorth(list, {}, state);
  EXPECT_TRUE(state.NorthRestored);
}

}  // namespace
}  // namespace parvenna
