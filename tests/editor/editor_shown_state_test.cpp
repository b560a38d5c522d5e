// What the editor shows of itself: a text that is no number as a shown
// state, the focus kept in sight, the wheel kept to the rows in use, and the
// tooltips and the notation's caption by the project's settings.
#include <gmock/gmock.h>

#include "editor/messages.h"
#include "tests/editor/editor_fixture.h"

namespace parvenna::editor::testing {
namespace {

using Op = RecordingCanvas::Op;

class EditorShownState : public EditorTest {
 protected:
  void SetUp() override {
    f().cmdInsert_Click();
    // A form of its ordinary size: twelve line rows in sight under the sketch.
    f().Form_Resize(f().picParcel.Height + 12 * 400);
  }

  std::size_t LinesDrawn() const { return canvas.Count(Op::Line); }
};

TEST_F(EditorShownState, TextThatIsNoNumberShowsNotAvailableAndTheSketchUpToIt) {
  TypeLine(0, "N0" + Deg + "0'0\"E", "100");
  TypeLine(1, "N90" + Deg + "0'0\"E", "100");
  TypeLine(2, "S0" + Deg + "0'0\"W", "100");
  ASSERT_EQ(f().results.lblClosure.Caption, "100");
  ASSERT_EQ(f().results.lblClosure.ForeColor, colours::Red);

  // A second point in the middle course's distance.
  canvas.Clear();
  Type(1, CourseField::DistanceLine, "100.5.");
  EXPECT_TRUE(prompter.shown.empty());
  EXPECT_EQ(f().results.lblClosure.Caption, "N/A");
  EXPECT_EQ(f().results.lblPrecision.Caption, "N/A");
  EXPECT_EQ(f().results.lblArea.Caption, "N/A");
  EXPECT_EQ(f().results.lblDirection.Caption, "");
  EXPECT_EQ(f().results.lblClosure.ForeColor, colours::Black) << "neither passed nor failed";
  // The sketch stops before the course that cannot be read: one line.
  const auto picture = canvas.Picture();
  EXPECT_EQ(std::count_if(picture.begin(), picture.end(),
                          [](const auto& c) { return c.op == Op::Line; }),
            1);
  EXPECT_TRUE(f().results.lblLineNo[0].Visible);
  EXPECT_FALSE(f().results.lblLineNo[1].Visible);

  // A bearing of one letter in the first course: nothing to draw.
  Type(1, CourseField::DistanceLine, "100");
  ASSERT_EQ(f().results.lblClosure.Caption, "100");
  f().SetFieldText(0, CourseField::BearingLine, "S");
  EXPECT_TRUE(prompter.shown.empty());
  EXPECT_EQ(f().results.lblClosure.Caption, "N/A");
  EXPECT_FALSE(f().results.lblLineNo[0].Visible);

  // The sketch zoomed with the text still there draws the same way, silently.
  f().ToggleSketchZoom();
  EXPECT_TRUE(prompter.shown.empty());
  f().SetFieldText(0, CourseField::BearingLine, "S0" + Deg + "0'0\"E");
  EXPECT_NE(f().results.lblClosure.Caption, "N/A");
}

TEST_F(EditorShownState, AFocusMovedOutOfSightScrollsItsRowIntoView) {
  for (int i = 0; i < 30; ++i) TypeLine(i, "N10" + Deg + "0'0\"E", "10");
  f().VScroll1_Change(0);
  ASSERT_FALSE(f().RowInView(25));

  // As a check moves it: the row comes into sight.
  f().MoveFocus(25, CourseField::DistanceLine);
  EXPECT_TRUE(f().RowInView(25));
  const int value = f().VScroll1.Value;
  // A field already in sight moves nothing.
  f().MoveFocus(24, CourseField::BearingLine);
  EXPECT_EQ(f().VScroll1.Value, value);
  // Back to the first row.
  f().MoveFocus(0, CourseField::BearingLine);
  EXPECT_EQ(f().VScroll1.Value, 0);
}

TEST_F(EditorShownState, TheWheelGoesNoFurtherThanTheRowsInUse) {
  TypeLine(0, "N10" + Deg + "0'0\"E", "10");
  TypeLine(1, "N10" + Deg + "0'0\"E", "10");  // rows 0 to 2 open
  for (int notch = 0; notch < 100; ++notch) f().VScroll1_Wheel(1);
  EXPECT_EQ(f().VScroll1.Value, (1200 - 800) * 40 / 50);
  EXPECT_TRUE(f().RowInView(2));
  f().VScroll1_Wheel(-3);
  EXPECT_EQ(f().VScroll1.Value, 0);

  // A view put further down by a focus is not pulled back by a turn down.
  for (int i = 2; i < 40; ++i) TypeLine(i, "N10" + Deg + "0'0\"E", "10");
  f().MoveFocus(39, CourseField::BearingLine);
  const int far = f().VScroll1.Value;
  f().VScroll1_Wheel(1);
  EXPECT_GE(f().VScroll1.Value, far);
}

TEST_F(EditorShownState, TooltipsOffStayOffAndTheCaptionNamesTheNotation) {
  EXPECT_EQ(f().lblBearing.Caption, "Bearing");
  project.BearingMode = false;
  f().ShowNotation();
  EXPECT_EQ(f().lblBearing.Caption, "Azimuth");

  ASSERT_FALSE(f().cmdNo[7].ToolTipText.empty());
  f().ClearToolTips();
  EXPECT_TRUE(f().cmdNo[7].ToolTipText.empty());
  EXPECT_TRUE(f().chksign[15].ToolTipText.empty());
  EXPECT_TRUE(f().cmdArcInvert[49].ToolTipText.empty());
  EXPECT_TRUE(f().cbxParcel.ToolTipText.empty());
  f().ToggleSketchZoom();
  EXPECT_TRUE(f().picParcel.ToolTipText.empty());
  f().ToggleSketchZoom();
  EXPECT_TRUE(f().picParcel.ToolTipText.empty());
}

}  // namespace
}  // namespace parvenna::editor::testing
