#include <gmock/gmock.h>

#include "editor/messages.h"
#include "tests/editor/editor_fixture.h"

namespace parvenna::editor::testing {
namespace {

using ::testing::ElementsAre;

class EditorEntry : public EditorTest {
 protected:
  void SetUp() override { f().cmdInsert_Click(); }
};

TEST_F(EditorEntry, TypingAParcelOpensRowsAndFollowsEachKeystroke) {
  EXPECT_TRUE(f().IsOpen(0));
  EXPECT_FALSE(f().IsOpen(1));

  Type(0, CourseField::BearingLine, "N0" + Deg + "0'0\"E");
  EXPECT_FALSE(f().IsOpen(1)) << "a bearing never opens the next row";
  EXPECT_EQ(f().results.lblClosure.Caption, "0");

  Type(0, CourseField::DistanceLine, "1");
  EXPECT_TRUE(f().IsOpen(1));
  EXPECT_EQ(f().results.lblClosure.Caption, "1");
  Type(0, CourseField::DistanceLine, "100");
  EXPECT_EQ(f().results.lblClosure.Caption, "100");
  EXPECT_EQ(f().results.lblPrecision.Caption, "1:1");

  TypeLine(1, "N90" + Deg + "0'0\"E", "100");
  TypeLine(2, "S0" + Deg + "0'0\"W", "100");
  EXPECT_EQ(f().results.lblClosure.Caption, "100");
  TypeLine(3, "N90" + Deg + "0'0\"W", "100");
  EXPECT_EQ(f().results.lblClosure.Caption, "0");
  EXPECT_EQ(f().results.lblArea.Caption, "10000");
  EXPECT_EQ(f().results.lblPrecision.Caption, "Perfect");
  EXPECT_EQ(f().results.lblClosure.ForeColor, colours::Green);
  EXPECT_TRUE(f().IsOpen(4));
  EXPECT_FALSE(f().IsOpen(5));

  // Emptying a distance cuts the figure there but closes no row.
  f().SetFieldText(1, CourseField::DistanceLine, "");
  EXPECT_EQ(f().results.lblClosure.Caption, "100");
  EXPECT_TRUE(f().IsOpen(4));
}

TEST_F(EditorEntry, KeyFiltersFollowTheNotation) {
  auto keys = [&](CourseField field, std::u32string typed) {
    std::u32string passed;
    for (char32_t k : typed) passed += f().Field_KeyPress(0, field, k) ? f().Field_KeyPress(0, field, k) : U'_';
    return passed;
  };
  EXPECT_EQ(keys(CourseField::BearingLine, U"n12d30'15\"e.x-"), U"N12\u00B030'15\"E___");
  EXPECT_EQ(keys(CourseField::DistanceLine, U"12.5e-,\r"), U"12.5____");
  EXPECT_EQ(keys(CourseField::Arc, U"1.2.3"), U"1.2.3");
  project.BearingMode = false;
  EXPECT_EQ(keys(CourseField::BearingArc, U"N192D30'"), U"_192\u00B030'");
}

TEST_F(EditorEntry, ABadBearingBouncesTheFocusBackToItself) {
  Type(0, CourseField::BearingLine, "N12E");
  f().SetFocus({FocusKind::Field, 0, CourseField::DistanceLine});
  EXPECT_THAT(prompter.Prompts(), ElementsAre("The bearing is not formatted correctly."));
  EXPECT_EQ(prompter.shown[0].Title, "Parvenna");
  // The row button took the focus and sent it back to the marked bearing.
  EXPECT_EQ(f().focus, (FocusTarget{FocusKind::Field, 0, CourseField::BearingLine}));
  EXPECT_EQ(f().txtBearingLine[0].BackColor, colours::MarkColour);
  EXPECT_EQ(f().CurrentRow, 0);
  EXPECT_EQ(f().txtBearingLine[0].Text, "N12E") << "nothing is corrected";

  // An empty bearing, and a good one, leave without a word.
  f().SetFieldText(0, CourseField::BearingLine, "");
  f().SetFocus({FocusKind::Field, 0, CourseField::DistanceLine});
  f().SetFieldText(1, CourseField::BearingLine, "N 12" + Deg + " E");
  f().SetFocus({FocusKind::Field, 1, CourseField::BearingLine});
  f().SetFocus({FocusKind::Parcel});
  EXPECT_EQ(prompter.shown.size(), 1u);
}

TEST_F(EditorEntry, TheMarkStaysOnTheLastFieldEntered) {
  f().SetFocus({FocusKind::Field, 0, CourseField::DistanceLine});
  EXPECT_EQ(f().FocusRow, 1);
  EXPECT_EQ(f().FocusField, 2);
  f().SetFocus({FocusKind::RowButton, 0});
  EXPECT_EQ(f().txtDistanceLine[0].BackColor, colours::MarkColour);
  EXPECT_EQ(f().cmdNo[0].BackColor, colours::Yellow);
  f().SetFocus({FocusKind::Parcel});
  EXPECT_EQ(f().txtDistanceLine[0].BackColor, colours::Window);
  EXPECT_EQ(f().FocusRow, 0);
  EXPECT_EQ(f().CurrentRow, CourseLimit);
  EXPECT_EQ(f().cmdNo[0].BackColor, colours::ButtonFace);
}

TEST_F(EditorEntry, ASignClickAlwaysTicksTheBoxClickedAndKeysToggle) {
  TypeCurve(0, "N90" + Deg + "0'0\"E", "104.72", "100", "100", SignBox::Plus);
  EXPECT_EQ(f().chksign[0].Value, SignTicked);
  EXPECT_EQ(f().chksign[1].Value, SignClear);
  const std::string added = f().results.lblArea.Caption;

  // Clicking the ticked box leaves it ticked.
  f().chksign_Toggle(0);
  f().chksign_MouseUp(0);
  EXPECT_EQ(f().chksign[0].Value, SignTicked);

  // The other box by mouse takes the choice over, and the area changes side.
  f().chksign_Toggle(1);
  f().chksign_MouseUp(1);
  EXPECT_EQ(f().chksign[0].Value, SignClear);
  EXPECT_EQ(f().chksign[1].Value, SignTicked);
  EXPECT_NE(f().results.lblArea.Caption, added);

  // Space on the add box ticks it too: both stay ticked, the minus decides the area.
  f().chksign_Toggle(0);
  EXPECT_EQ(f().chksign[0].Value, SignTicked);
  EXPECT_EQ(f().chksign[1].Value, SignTicked);

  // A grey minus leaves the area unknown.
  f().SetSign(1, SignGrey);
  EXPECT_EQ(f().results.lblArea.Caption, "N/A");
}

TEST_F(EditorEntry, InvertButtonsAndFlipTurnTheBearingAndSetNorthRestored) {
  TypeLine(0, "N12" + Deg + "30'15\"E", "100");
  f().cmdLineInvert_Click(0);
  EXPECT_EQ(f().txtBearingLine[0].Text, "S12" + Deg + "30'15\"W");
  EXPECT_TRUE(f().parcel.NorthRestored);

  f().CurrentRow = 0;
  f().FlipCurrentBearing();
  EXPECT_EQ(f().txtBearingLine[0].Text, "N12" + Deg + "30'15\"E");

  f().CurrentRow = CourseLimit;
  f().FlipCurrentBearing();  // no row current: nothing
  EXPECT_EQ(f().txtBearingLine[0].Text, "N12" + Deg + "30'15\"E");
}

TEST_F(EditorEntry, AutoInverseIsKeptOffByAHandFlip) {
  TypeLine(0, "N0" + Deg + "0'0\"E", "100");
  TypeLine(1, "N90" + Deg + "0'0\"E", "100");
  TypeLine(2, "N0" + Deg + "0'0\"E", "100");
  TypeLine(3, "N90" + Deg + "0'0\"W", "100");
  f().cmdAutoInverse_Click();
  EXPECT_EQ(f().txtBearingLine[2].Text, "S0" + Deg + "0'0\"W");
  EXPECT_EQ(f().results.lblClosure.Caption, "0");

  f().cmdLineInvert_Click(2);
  f().cmdAutoInverse_Click();
  EXPECT_EQ(f().txtBearingLine[2].Text, "N0" + Deg + "0'0\"E") << "the hand decision stands";
}

TEST_F(EditorEntry, ADoubleClickStartsAGrab) {
  project.MinimizeDuringGrab = true;
  f().grab.GrabQueue.push_back("stale");
  f().Field_DblClick(0, CourseField::BearingLine);
  EXPECT_TRUE(f().grab.GrabActive);
  EXPECT_TRUE(f().grab.GrabQueue.empty());
  EXPECT_EQ(host.minimised, 1);
  EXPECT_TRUE(f().cmdSave.Enabled);
}

TEST_F(EditorEntry, CurveFieldsOpenTheNextRowOnlyFromTheLastPlace) {
  TypeCurve(0, "N90" + Deg + "0'0\"E", "104.72", "100", "", SignBox::Plus);
  EXPECT_FALSE(f().IsOpen(1)) << "arc and radius are not in the last place";
  Type(0, CourseField::Chord, "100");
  EXPECT_TRUE(f().IsOpen(1)) << "the chord stands in place 4 by default";
}

}  // namespace
}  // namespace parvenna::editor::testing
