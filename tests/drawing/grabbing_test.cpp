// Values of a pick find their fields: lines, curves by the chosen order, the
// parcel name, the course before, a new course, and the end of the grid.
#include <gtest/gtest.h>

#include <filesystem>

#include "drawing/grabbing.h"
#include "drawing/viewer.h"
#include "tests/drawing/dxf_writer.h"
#include "tests/drawing/fake_grab_editor.h"
#include "tests/store/temp_dir.h"

namespace parvenna::drawing {
namespace {

using testing::FakeGrabEditor;
using F = CourseField;

const Notation kQuadrant{true, "%%D"};

class PutGrabbedValueTest : public ::testing::Test {
 protected:
  int Put(const std::string& value) { return PutGrabbedValue(editor, kQuadrant, value); }
  void Focus(int row, int field) { editor.SetFocus(row, field); }
  FakeGrabEditor editor;
};

TEST_F(PutGrabbedValueTest, LineTakesBearingThenDistanceThenMovesToTheNextRow) {
  EXPECT_EQ(Put("n 12%%d30'15\" e"), 0);
  EXPECT_EQ(editor.Text(0, F::BearingLine), "N12\u00B030'15\"E");
  EXPECT_EQ(editor.focusField, 2);
  EXPECT_EQ(Put("125.43'"), 0);
  EXPECT_EQ(editor.Text(0, F::DistanceLine), "125.43");
  EXPECT_EQ(editor.focusRow, 2);
  EXPECT_EQ(editor.focusField, 1);
}

TEST_F(PutGrabbedValueTest, BearingOnADistanceOpensTheNextCourse) {
  Focus(3, 2);
  EXPECT_EQ(Put("S1\u00B02'3\"W"), 0);
  EXPECT_TRUE(editor.rows[3].open);
  EXPECT_EQ(editor.Text(3, F::BearingLine), "S1\u00B02'3\"W");
  EXPECT_TRUE(editor.Text(2, F::DistanceLine).empty());
  EXPECT_EQ(editor.focusRow, 4);
  EXPECT_EQ(editor.focusField, 2);
}

TEST_F(PutGrabbedValueTest, NewCourseOnACurveRowTakesTheCurveBearing) {
  Focus(1, 2);
  editor.rows[1].line = false;
  EXPECT_EQ(Put("N1\u00B02'3\"E"), 0);
  EXPECT_EQ(editor.Text(1, F::BearingArc), "N1\u00B02'3\"E");
  EXPECT_EQ(editor.focusRow, 2);
  EXPECT_EQ(editor.focusField, 2);
}

TEST_F(PutGrabbedValueTest, TheLastRowRefusesANewCourse) {
  Focus(CourseLimit, 2);
  EXPECT_EQ(Put("N1\u00B02'3\"E"), 1);
  EXPECT_TRUE(editor.writes.empty());
  editor.rows[CourseLimit - 1].line = false;
  Focus(CourseLimit, 3);
  EXPECT_EQ(Put("N1\u00B02'3\"E"), 1);
}

TEST_F(PutGrabbedValueTest, NumberOnABearingFieldBelongsToTheCourseBefore) {
  editor.name = "LOT 7";
  EXPECT_EQ(Put("125.43'"), 0);  // row 1: the name takes it, as it came
  EXPECT_EQ(editor.name, "LOT 7 125.43'");
  EXPECT_EQ(editor.focusRow, 1);

  editor.rows[1].fields[F::BearingLine] = "N1\u00B02'3\"E";
  editor.rows[1].fields[F::DistanceLine] = "10";
  Focus(3, 1);
  EXPECT_EQ(Put("R=50.00"), 0);
  EXPECT_EQ(editor.curvesMade, std::vector<int>{1});
  EXPECT_EQ(editor.Text(1, F::BearingArc), "N1\u00B02'3\"E");
  EXPECT_EQ(editor.Text(1, F::Radius), "50.00");  // place 3 of the order
}

TEST_F(PutGrabbedValueTest, CurveFieldsFollowTheChosenOrder) {
  editor.rows[0].line = false;
  editor.order = {"txtBearing", "txtRadius", "txtArc", "txtChord"};
  EXPECT_EQ(Put("N1\u00B02'3\"E"), 0);
  EXPECT_EQ(editor.Text(0, F::BearingArc), "N1\u00B02'3\"E");
  EXPECT_EQ(editor.focusField, 2);
  Put("R=100.0");
  Put("L=31.42");
  Put("C=31.29");
  EXPECT_EQ(editor.Text(0, F::Radius), "100.0");
  EXPECT_EQ(editor.Text(0, F::Arc), "31.42");
  EXPECT_EQ(editor.Text(0, F::Chord), "31.29");
  EXPECT_EQ(editor.focusRow, 2);
  EXPECT_EQ(editor.focusField, 1);
}

TEST_F(PutGrabbedValueTest, NameBoxTakesTextsAndHandsBearingsToTheFirstRow) {
  Focus(0, 1);
  EXPECT_EQ(Put("LOT"), 0);
  EXPECT_EQ(editor.name, "LOT");
  EXPECT_EQ(editor.focusRow, 1);

  Focus(0, 1);
  Put("s 5\u00B00'0\" w");
  EXPECT_EQ(editor.Text(0, F::BearingLine), "S5\u00B00'0\"W");
  EXPECT_EQ(editor.focusRow, 1);
  EXPECT_EQ(editor.focusField, 2);
  // A filled first bearing is not overwritten.
  Focus(0, 1);
  Put("N1\u00B01'1\"E");
  EXPECT_EQ(editor.Text(0, F::BearingLine), "S5\u00B00'0\"W");
}

// A pick on a drawing written for the test.
class PickTest : public ::testing::Test {
 protected:
  void SetUp() override {
    testing::DxfWriter dxf;
    dxf.Layer("BEARINGS");
    dxf.Line("BEARINGS", 0, 0, 100, 0);
    bearing = dxf.Text("BEARINGS", 10, 10, 2, "{\\A1;N 12%%d30'15\" E 125.43'}");
    dxf.Text("BEARINGS", 10, 30, 2, "LOT");
    dxf.Text("BEARINGS", 10, 50, 2, "S 5%%d0'0\" W");
    dxf.Text("BEARINGS", 10, 70, 2, "LOT 7");
    const auto path = dir / "pick.dxf";
    ASSERT_TRUE(dxf.Save(path.string()));
    ASSERT_TRUE(view.Load(path.string())) << view.LoadDetail();
  }
  void Pick(double x, double y) { PickInView(view, {x, y}, editor, state, kQuadrant, 1); }

  testing::TempDir dir;
  Viewer view;
  FakeGrabEditor editor;
  GrabState state;
  unsigned bearing = 0;
};

TEST_F(PickTest, ALabelFillsBearingAndDistanceAndIsMarkedOnce) {
  Pick(12, 11);
  EXPECT_EQ(editor.Text(0, F::BearingLine), "N12\u00B030'15\"E");
  EXPECT_EQ(editor.Text(0, F::DistanceLine), "125.43");
  EXPECT_EQ(editor.focusRow, 2);
  EXPECT_EQ(editor.scrolled, 1);
  ASSERT_EQ(state.usedEntities.size(), 1u);
  EXPECT_EQ(state.usedEntities[0], "101");
  ASSERT_TRUE(view.FindTextAt({12, 11}));
  EXPECT_TRUE(view.IsMarked(view.Found() - 1));
  Pick(12, 11);  // grabbed again: the values go in, the mark is not made twice
  EXPECT_EQ(state.usedEntities.size(), 1u);
  EXPECT_EQ(editor.Text(1, F::BearingLine), "N12\u00B030'15\"E");
}

TEST_F(PickTest, ALabelWithoutDigitsIsDroppedOnARowButNamesTheParcel) {
  Pick(12, 31);
  EXPECT_TRUE(editor.writes.empty());
  editor.SetFocus(0, 1);
  Pick(12, 31);
  EXPECT_EQ(editor.name, "LOT");
  editor.SetFocus(0, 1);
  editor.name.clear();
  Pick(12, 71);  // "LOT" names it, "7" lands on row 1's bearing: the name again
  EXPECT_EQ(editor.name, "LOT 7");
}

TEST_F(PickTest, NothingHappensBesideATextOrWithoutAParcelOrOnAFieldOutOfRange) {
  Pick(12, 20);
  editor.editing = false;
  Pick(12, 11);
  editor.editing = true;
  editor.SetFocus(1, 3);  // a line has two fields
  Pick(12, 11);
  EXPECT_TRUE(editor.writes.empty());
  EXPECT_TRUE(state.usedEntities.empty());
  Viewer empty;
  PickInView(empty, {12, 11}, editor, state, kQuadrant, 1);
  EXPECT_TRUE(editor.writes.empty());
}

TEST_F(PickTest, ACurveFieldBeyondTheLastPlaceIsAdvancedFirst) {
  editor.rows[0].line = false;
  editor.SetFocus(1, 5);
  Pick(12, 11);
  EXPECT_EQ(editor.advanced, 1);
}

TEST_F(PickTest, WhileGrabActiveValuesWaitAndDoneHandsThemOn) {
  state.GrabActive = true;
  Pick(12, 11);
  Pick(12, 51);
  EXPECT_TRUE(editor.writes.empty());
  EXPECT_EQ(state.GrabQueue,
            (std::deque<std::string>{"N12%%d30'15\"E", "125.43'", "S5%%d0'0\"W"}));
  FlushGrabQueue(editor, state, kQuadrant);
  EXPECT_FALSE(state.GrabActive);
  EXPECT_TRUE(state.GrabQueue.empty());
  EXPECT_EQ(editor.Text(0, F::DistanceLine), "125.43");
  EXPECT_EQ(editor.Text(1, F::BearingLine), "S5\u00B00'0\"W");
}

TEST_F(PickTest, AFullParcelShowsTheLimitOnceAndStops) {
  editor.SetFocus(CourseLimit, 2);
  Pick(12, 11);
  EXPECT_EQ(editor.limitBoxes, 1);
  state.GrabActive = true;
  Pick(12, 51);
  Pick(12, 51);
  FlushGrabQueue(editor, state, kQuadrant);
  EXPECT_EQ(editor.limitBoxes, 2);
  EXPECT_TRUE(state.GrabQueue.empty());
}

// A label in a font code: before, its digits made one number, which turned
// the course before into a curve.
TEST(PickLabel, AFontCodedBearingLandsAsTheBearingItShows) {
  testing::TempDir dir;
  testing::DxfWriter dxf;
  dxf.Layer("BEARINGS");
  dxf.MText("BEARINGS", 0, 0, 2, "{\\fArial|b0;S15%%d10'20\"W}", 7);
  dxf.MText("BEARINGS", 0, 10, 2, "{\\C1;\\H2.5x;98.76'}", 7);
  ASSERT_TRUE(dxf.Save((dir / "codes.dxf").string()));
  Viewer view;
  view.SetViewport(800, 600);
  ASSERT_TRUE(view.Load((dir / "codes.dxf").string())) << view.LoadDetail();
  FakeGrabEditor editor;
  editor.SetFocus(2, 1);
  GrabState state;
  PickInView(view, {3, 1}, editor, state, kQuadrant, 1);
  PickInView(view, {3, 11}, editor, state, kQuadrant, 1);
  EXPECT_EQ(editor.Text(1, F::BearingLine), "S15\u00B010'20\"W");
  EXPECT_EQ(editor.Text(1, F::DistanceLine), "98.76");
  EXPECT_TRUE(editor.curvesMade.empty());
}

}  // namespace
}  // namespace parvenna::drawing
