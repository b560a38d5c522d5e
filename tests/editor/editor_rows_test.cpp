#include <gmock/gmock.h>

#include "tests/editor/editor_fixture.h"

namespace parvenna::editor::testing {
namespace {

class EditorRows : public EditorTest {
 protected:
  void SetUp() override { f().cmdInsert_Click(); }

  std::vector<double> Tops() {
    std::vector<double> tops;
    for (int i = 0; i < 6; ++i) tops.push_back(f().frameLine[i].Top);
    return tops;
  }
};

TEST_F(EditorRows, AFreshGridHasRowZeroOpenAndABarCutToIt) {
  EXPECT_TRUE(f().IsOpen(0));
  for (int i = 1; i < CourseLimit; ++i) ASSERT_FALSE(f().IsOpen(i)) << i;
  EXPECT_EQ(f().chksign[0].Value, SignClear);
  EXPECT_EQ(f().chksign[1].Value, SignGrey);
  f().SetFocus({FocusKind::ScrollBar});
  EXPECT_EQ(f().VScroll1.Max, 50);
  f().SetFocus({FocusKind::Parcel});
  EXPECT_EQ(f().VScroll1.Max, 32000);
}

TEST_F(EditorRows, ScrollingMovesRowsByTheirCumulatedHeights) {
  TypeLine(0, "N1" + Deg + "0'0\"E", "1");
  TypeCurve(1, "N1" + Deg + "0'0\"E", "1", "9", "1", SignBox::Plus);
  f().VScroll1_Change(640);
  // 640 units of the bar are 800 twips.
  EXPECT_EQ(f().frameLine[0].Top, -800);
  EXPECT_EQ(f().frameArc[1].Top, -400);
  EXPECT_EQ(f().frameLine[2].Top, 400);
  EXPECT_EQ(f().cmdNo[2].Top, 500);

  // The bar's range on focus covers rows 0 to 2: 400 + 800 + 400 twips.
  f().SetFocus({FocusKind::ScrollBar});
  EXPECT_EQ(f().VScroll1.Max, (1600 - 800) * 40 / 50);
}

TEST_F(EditorRows, GotoFocusLineScrollsTheFocusedRowIntoView) {
  for (int i = 0; i < 8; ++i) TypeLine(i, "N1" + Deg + "0'0\"E", "1");
  f().FocusRow = 1;
  f().GotoFocusLine();
  EXPECT_EQ(f().VScroll1.Value, 0);
  f().FocusRow = 8;
  f().GotoFocusLine();
  // Rows 0 to 7 are 3200 twips; the view keeps 1600 above.
  EXPECT_EQ(f().VScroll1.Value, (3200 - 1600) * 40 / 50);
  EXPECT_EQ(f().frameLine[4].Top, 0) << "row 5 stands at the top of the view";
}

TEST_F(EditorRows, ALineTurnedIntoACurveAndBackRestoresItsTextsAndTheRowsBelow) {
  TypeLine(0, "N12" + Deg + "0'0\"E", "150.25");
  TypeLine(1, "S1" + Deg + "0'0\"E", "2");
  const auto before = Tops();
  f().CurrentRow = 0;
  f().mnuChangeLineCurve_Click();
  EXPECT_EQ(f().Kind(0), CourseKind::Curve);
  EXPECT_EQ(f().txtBearingArc[0].Text, "N12" + Deg + "0'0\"E");
  EXPECT_EQ(f().txtArc[0].Text, "150.25") << "the field in place 2 takes the distance";
  EXPECT_EQ(f().frameLine[1].Top, before[1] + 400);
  f().mnuChangeLineCurve_Click();
  EXPECT_EQ(f().Kind(0), CourseKind::Line);
  EXPECT_EQ(f().txtDistanceLine[0].Text, "150.25");
  EXPECT_EQ(Tops(), before);
}

TEST_F(EditorRows, InsertingAboveACurveOpensALineRowAndMovesTheRestDown) {
  TypeLine(0, "N0" + Deg + "0'0\"E", "100");
  TypeCurve(1, "N90" + Deg + "0'0\"E", "104.72", "100", "100", SignBox::Minus);
  TypeLine(2, "S0" + Deg + "0'0\"W", "100");
  const std::string closure = f().results.lblClosure.Caption;
  f().CurrentRow = 1;
  f().mnuInsertBefore_Click();

  EXPECT_EQ(f().Kind(1), CourseKind::Line);
  EXPECT_EQ(f().txtBearingLine[1].Text, "");
  EXPECT_EQ(f().chksign[2].Value, SignGrey);
  EXPECT_EQ(f().chksign[3].Value, SignGrey);
  EXPECT_EQ(f().Kind(2), CourseKind::Curve);
  EXPECT_EQ(f().chksign[5].Value, SignTicked) << "the moved curve keeps its sign";
  EXPECT_EQ(f().txtBearingLine[3].Text, "S0" + Deg + "0'0\"W");
  // Row 1 is a line of 400 now, and the curve below it sits at 800.
  EXPECT_EQ(f().frameArc[2].Top, 800);
  EXPECT_EQ(f().frameLine[3].Top, 1600);
  EXPECT_EQ(f().cmdNo[3].Top, 1700);
  // The blank row cuts the figure after row 0.
  EXPECT_EQ(f().results.lblClosure.Caption, "100");
  EXPECT_TRUE(f().cmdSave.Enabled);
  (void)closure;
}

TEST_F(EditorRows, DeletingACurveLiftsTheRowsBelowByItsHeight) {
  TypeLine(0, "N0" + Deg + "0'0\"E", "100");
  TypeCurve(1, "N90" + Deg + "0'0\"E", "104.72", "100", "100", SignBox::Plus);
  TypeLine(2, "S0" + Deg + "0'0\"W", "100");
  TypeLine(3, "N90" + Deg + "0'0\"W", "100");
  // The mark on row 4's bearing moves up with its text.
  f().SetFocus({FocusKind::Field, 3, CourseField::DistanceLine});
  f().CurrentRow = 1;
  f().mnuDeleteCourse_Click();

  EXPECT_EQ(f().Kind(1), CourseKind::Line);
  EXPECT_EQ(f().txtBearingLine[1].Text, "S0" + Deg + "0'0\"W");
  EXPECT_EQ(f().frameLine[1].Top, 400);
  EXPECT_EQ(f().frameLine[2].Top, 800);
  EXPECT_EQ(f().FocusRow, 3);
  EXPECT_EQ(f().focus, (FocusTarget{FocusKind::Field, 2, CourseField::DistanceLine}));
  EXPECT_EQ(f().txtDistanceLine[2].BackColor, colours::MarkColour);
  EXPECT_TRUE(f().IsOpen(3));
  EXPECT_FALSE(f().IsOpen(4)) << "openness moves up with the rows";
  EXPECT_EQ(f().results.lblArea.Caption, "0");
}

TEST_F(EditorRows, InsertionIntoAFullGridAsksBeforeCourseFiftyFallsOff) {
  for (int i = 0; i < CourseLimit; ++i) TypeLine(i, "N1" + Deg + "0'0\"E", std::to_string(i + 1));
  EXPECT_EQ(f().parcel.LastCourse, 49);
  f().CurrentRow = 49;
  f().mnuInsertAfter_Click();
  EXPECT_THAT(prompter.Prompts(), ::testing::ElementsAre("The maximum number of courses is 50."));

  // Every way of inserting meets the question; No, the default, moves nothing.
  prompter.shown.clear();
  prompter.Answer({MsgAnswer::No, MsgAnswer::No, MsgAnswer::No, MsgAnswer::No});
  f().CurrentRow = 48;
  f().mnuInsertAfter_Click();
  f().mnuPopInsertAfter_Click();
  f().CurrentRow = 10;
  f().mnuInsertBefore_Click();
  f().mnuPopInsertBefore_Click();
  ASSERT_EQ(prompter.shown.size(), 4u);
  EXPECT_THAT(prompter.shown[0].Prompt, ::testing::HasSubstr("lose course 50"));
  EXPECT_EQ(prompter.shown[0].DefaultButton, 2);
  for (int i = 0; i < CourseLimit; ++i) EXPECT_EQ(f().txtDistanceLine[i].Text, std::to_string(i + 1));

  prompter.Answer({MsgAnswer::Yes});
  f().CurrentRow = 48;
  f().mnuInsertAfter_Click();
  EXPECT_EQ(f().txtDistanceLine[49].Text, "") << "course 50 went, as the surveyor chose";
  EXPECT_EQ(f().txtDistanceLine[48].Text, "49");

  // With row 50 empty again the insertion asks nothing.
  prompter.shown.clear();
  f().CurrentRow = 3;
  f().mnuInsertBefore_Click();
  EXPECT_TRUE(prompter.shown.empty());
  EXPECT_EQ(f().txtDistanceLine[49].Text, "49");

  f().CurrentRow = CourseLimit;
  f().mnuInsertBefore_Click();
  f().mnuDeleteCourse_Click();
  EXPECT_EQ(f().txtDistanceLine[0].Text, "1") << "no row current: the menu does nothing";
}

TEST_F(EditorRows, DeletingTheOnlyCourseLeavesRowZeroEmptyAndOpen) {
  TypeLine(0, "N1" + Deg + "0'0\"E", "5");
  f().CurrentRow = 0;
  f().mnuDeleteCourse_Click();
  EXPECT_EQ(f().txtBearingLine[0].Text, "");
  EXPECT_TRUE(f().IsOpen(0)) << "row 1 was open and moved into row 0";
  EXPECT_FALSE(f().IsOpen(1));
  EXPECT_EQ(f().results.lblClosure.Caption, "0");
}

TEST_F(EditorRows, RowMenuEntriesFollowSavingAndTheCurrentRow) {
  EXPECT_FALSE(f().RowCommandsEnabled());
  f().SetFocus({FocusKind::Field, 0, CourseField::BearingLine});
  EXPECT_TRUE(f().RowCommandsEnabled());
  f().cmdNo_MouseUp(0);
  EXPECT_EQ(f().menus.mnuPopChangeLineCurve.Caption, "Change to curve");
  EXPECT_EQ(host.rowMenus, std::vector<int>{0});
  f().cmdCancel_Click();
  EXPECT_FALSE(f().RowCommandsEnabled());
}

TEST_F(EditorRows, TabOrderHasButtonsFirstThenFieldBlocksFromTheLastRow) {
  EXPECT_LT(f().cmdNo[49].TabIndex, f().txtBearingLine[49].TabIndex);
  EXPECT_LT(f().txtBearingLine[49].TabIndex, f().txtBearingLine[0].TabIndex);
  // Within a block: bearing, distance, invert, chord bearing, then places 2 to 4.
  EXPECT_LT(f().txtBearingArc[3].TabIndex, f().txtArc[3].TabIndex);
  EXPECT_LT(f().txtArc[3].TabIndex, f().txtRadius[3].TabIndex);
  EXPECT_LT(f().txtRadius[3].TabIndex, f().txtChord[3].TabIndex);
  EXPECT_LT(f().txtChord[3].TabIndex, f().chksign[6].TabIndex);
}

}  // namespace
}  // namespace parvenna::editor::testing
