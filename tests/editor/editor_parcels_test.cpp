#include <gmock/gmock.h>

#include "tests/editor/editor_fixture.h"

namespace parvenna::editor::testing {
namespace {

using ::testing::ElementsAre;
using ::testing::HasSubstr;

class EditorParcels : public EditorTest {};

TEST_F(EditorParcels, ANewParcelIsStoredAndTheFormGoesOnToTheNext) {
  StoreSquare("7", "100");
  EXPECT_TRUE(prompter.shown.empty()) << prompter.Prompts()[0];
  EXPECT_THAT(StoredNames(), ElementsAre("     7"));
  EXPECT_EQ(StoredRows(), 4);
  EXPECT_TRUE(f().InsertingParcel);
  EXPECT_EQ(f().txtParcel.Text, "");
  EXPECT_EQ(f().focus.kind, FocusKind::Parcel);
  EXPECT_EQ(f().cbxParcel.List, std::vector<std::string>{"     7"});

  store::Database db = store::Database::Open(project.ProjectFile);
  store::Recordset rs = db.OpenRecordset("SELECT * FROM tblParcel");
  EXPECT_EQ(rs.Get("Area").AsDouble(), 10000);
  EXPECT_EQ(rs.Get("Closure").AsDouble(), 0);
  EXPECT_EQ(rs.Get("PrecisionRatio").AsDouble(), 0);
}

TEST_F(EditorParcels, NamesArePaddedToSixOnlyWhenShort) {
  EXPECT_EQ(EditorForm::PaddedName("7"), "     7");
  EXPECT_EQ(EditorForm::PaddedName("  Lot 7"), " Lot 7");
  EXPECT_EQ(EditorForm::PaddedName("Lot 12"), "Lot 12");
  EXPECT_EQ(EditorForm::PaddedName(" Lot 12"), " Lot 12") << "seven characters keep their blank";
}

TEST_F(EditorParcels, ADuplicateNewParcelIsRefusedAndNothingIsStored) {
  StoreSquare("A1", "100");
  StoreSquare("A1", "50");
  EXPECT_THAT(prompter.Prompts(),
              ElementsAre("The lot A1 already exists. Please rename the parcel before saving again."));
  EXPECT_EQ(StoredRows(), 4);
  EXPECT_EQ(f().txtParcel.Text, "A1") << "the surveyor stays on the form to rename";
}

TEST_F(EditorParcels, ClosureOverToleranceAsksAndEqualPassesSilently) {
  project.ClosureToleranceValue = 0.03;
  f().cmdInsert_Click();
  f().txtParcel.Text = "B";
  TypeLine(0, "N0" + Deg + "0'0\"E", "100");
  TypeLine(1, "N90" + Deg + "0'0\"E", "50");
  TypeLine(2, "S0" + Deg + "0'0\"W", "100.03");
  TypeLine(3, "N90" + Deg + "0'0\"W", "50");
  f().cmdSave_Click();
  EXPECT_TRUE(prompter.shown.empty()) << "a closure equal to the tolerance passes";

  project.ClosureToleranceValue = 0.02;
  f().txtParcel.Text = "C";
  TypeLine(0, "N0" + Deg + "0'0\"E", "100");
  TypeLine(1, "N90" + Deg + "0'0\"E", "50");
  TypeLine(2, "S0" + Deg + "0'0\"W", "100.03");
  TypeLine(3, "N90" + Deg + "0'0\"W", "50");
  prompter.Answer({MsgAnswer::No});
  f().cmdSave_Click();
  EXPECT_THAT(prompter.Prompts(),
              ElementsAre("This parcel has failed the closure tolerance. Would you like to save?"));
  EXPECT_THAT(StoredNames(), ElementsAre("     B"));
}

TEST_F(EditorParcels, ValidationShowsEveryBoxInARow) {
  project.ClosureToleranceValue = 1000;
  f().cmdInsert_Click();
  TypeLine(0, "N0" + Deg + "0'0\"E", "100");
  TypeCurve(1, "N90" + Deg + "0'0\"E", "90", "100", "100", SignBox::Plus);
  f().SetSign(2, SignClear);  // the sign is unconfirmed again
  TypeLine(2, "S0" + Deg + "0'0\"W", "100");
  prompter.fallback = MsgAnswer::No;
  f().cmdSave_Click();
  EXPECT_THAT(prompter.Prompts(),
              ElementsAre("You cannot save without parcel name.",
                          "You must confirm segment area (+/-) before saving.",
                          "ERROR: The arc length must be greater than the chord length."));
  EXPECT_EQ(f().cmdNo[1].BackColor, colours::UnconfirmedColour);
  EXPECT_EQ(f().txtArc[1].BackColor, colours::MarkColour);
  EXPECT_EQ(StoredRows(), 0);
}

TEST_F(EditorParcels, SavingAChangedParcelUnderItsNameRewritesItsRows) {
  StoreSquare("D", "100");
  f().cmdCancel_Click();
  f().Show_Parcels();
  EXPECT_EQ(f().txtParcel.Text, "     D");
  EXPECT_EQ(f().txtDistanceLine[3].Text, "100");
  EXPECT_TRUE(f().IsOpen(4)) << "one empty open row after the last course";
  EXPECT_FALSE(f().txtBearingLine[0].Enabled);

  f().cmdEdit_Click();
  f().SetFieldText(2, CourseField::DistanceLine, "100.01");
  f().cmdSave_Click();
  EXPECT_FALSE(f().cmdSave.Enabled) << "back to viewing the same parcel";
  EXPECT_EQ(StoredRows(), 4);
  store::Database db = store::Database::Open(project.ProjectFile);
  store::Recordset rs = db.OpenRecordset("SELECT * FROM tblMeasurements ORDER BY RowNo");
  rs.MoveNext();
  rs.MoveNext();
  EXPECT_EQ(rs.Get("Length").AsDouble(), 100.01);
  store::Recordset p = db.OpenRecordset("SELECT * FROM tblParcel");
  EXPECT_EQ(p.Get("Closure").AsDouble(), 0.01);
  EXPECT_DOUBLE_EQ(p.Get("PrecisionRatio").AsDouble(), 0.01 / 400.01) << "unrounded";
}

TEST_F(EditorParcels, RenamingKeepsTheKeyAndRefusesATakenName) {
  StoreSquare("E", "100");
  StoreSquare("F", "50");
  f().cmdCancel_Click();
  f().Show_Parcels();  // E first
  const long keyOfE = f().ParcelID;
  f().cmdEdit_Click();
  f().txtParcel.Text = "F";
  f().cmdSave_Click();
  EXPECT_THAT(prompter.Prompts(),
              ElementsAre("The lot F already exists. Please rename the parcel then try to save again."));
  EXPECT_THAT(StoredNames(), ElementsAre("     E", "     F"));

  f().txtParcel.Text = "G";
  f().cmdSave_Click();
  EXPECT_THAT(StoredNames(), ElementsAre("     F", "     G"));
  EXPECT_EQ(f().ParcelID, keyOfE);
  EXPECT_EQ(f().cbxParcel.ListIndex, 1);
  EXPECT_EQ(f().txtParcel.Text, "     G");
  EXPECT_EQ(StoredRows(" WHERE ParcelID = " + std::to_string(keyOfE)), 4);
}

TEST_F(EditorParcels, RowsStoredWithGapsLoadClosedUp) {
  f().cmdInsert_Click();
  f().txtParcel.Text = "H";
  TypeLine(0, "N0" + Deg + "0'0\"E", "100");
  Type(1, CourseField::DistanceLine, "");
  TypeLine(2, "S0" + Deg + "0'0\"W", "100");
  f().cmdSave_Click();
  EXPECT_EQ(StoredRows(" WHERE RowNo = 2"), 1);
  EXPECT_EQ(StoredRows(" WHERE RowNo = 1"), 0);
  f().cmdCancel_Click();
  f().Show_Parcels();
  EXPECT_EQ(f().txtBearingLine[1].Text, "S0" + Deg + "0'0\"W");
  EXPECT_EQ(f().results.lblClosure.Caption, "0");
}

TEST_F(EditorParcels, AFiftyCourseParcelRoundTripsAndALongerOneIsNotShown) {
  f().cmdInsert_Click();
  f().txtParcel.Text = "Long";
  for (int i = 0; i < CourseLimit; ++i) TypeLine(i, "N1" + Deg + "0'0\"E", "1");
  prompter.fallback = MsgAnswer::Yes;
  f().cmdSave_Click();
  EXPECT_EQ(StoredRows(), 50);
  f().cmdCancel_Click();
  f().Show_Parcels();
  EXPECT_EQ(f().txtDistanceLine[49].Text, "1");
  EXPECT_EQ(f().parcel.LastCourse, 49);

  // A stored parcel of 51 rows, as another program might leave it.
  {
    store::Database db = store::Database::Open(project.ProjectFile);
    db.Execute("INSERT INTO tblMeasurements (ParcelID, RowNo, RowType, Length, Direction) "
               "SELECT ParcelID, 50, 1, 1, 'N1" + Deg + "0''0\"E' FROM tblParcel");
  }
  prompter.shown.clear();
  f().Show_Parcels();
  // The list's selection and the load that follows it each meet the parcel.
  EXPECT_THAT(prompter.Prompts(), ::testing::Each(HasSubstr("51 courses")));
  EXPECT_FALSE(prompter.shown.empty());
  EXPECT_EQ(f().txtDistanceLine[0].Text, "") << "nothing of it is loaded";
}

TEST_F(EditorParcels, DeletingSelectsTheNeighbourAndTheLastLeavesAnEmptyGrid) {
  StoreSquare("J", "10");
  StoreSquare("K", "20");
  f().cmdCancel_Click();
  f().Show_Parcels();
  f().SetListIndex(1);  // K, the last
  f().Delete_Parcel();
  EXPECT_THAT(StoredNames(), ElementsAre("     J"));
  EXPECT_EQ(f().cbxParcel.ListIndex, 0);
  EXPECT_EQ(f().txtParcel.Text, "     J");

  prompter.Answer({MsgAnswer::No});
  f().Delete_Parcel();
  EXPECT_THAT(StoredNames(), ElementsAre("     J"));

  f().Delete_Parcel();
  EXPECT_TRUE(StoredNames().empty());
  EXPECT_EQ(StoredRows(), 0);
  EXPECT_EQ(f().cbxParcel.ListIndex, -1);
  EXPECT_EQ(f().txtBearingLine[0].Text, "");
  EXPECT_TRUE(f().IsOpen(0));
}

TEST_F(EditorParcels, NextAndPreviousStopAtTheEnds) {
  StoreSquare("L", "10");
  StoreSquare("M", "20");
  f().cmdCancel_Click();
  f().Show_Parcels();
  f().cmdPrevious_Click();
  EXPECT_EQ(f().cbxParcel.ListIndex, 0);
  f().cmdNext_Click();
  EXPECT_EQ(f().txtDistanceLine[0].Text, "20");
  f().cmdNext_Click();
  EXPECT_EQ(f().cbxParcel.ListIndex, 1);
}

TEST_F(EditorParcels, NothingToSaveWithoutAComputedClosure) {
  f().cmdInsert_Click();
  f().results.lblClosure.Caption.clear();
  f().cmdSave_Click();
  ASSERT_EQ(prompter.shown.size(), 1u);
  EXPECT_EQ(prompter.shown[0].Prompt, "There is no valid parcel to save.");
  EXPECT_EQ(prompter.shown[0].Icon, MsgIcon::Exclamation);
}

TEST_F(EditorParcels, ExitIsAskedOnce) {
  prompter.Answer({MsgAnswer::No, MsgAnswer::Yes});
  EXPECT_FALSE(f().Form_QueryUnload());
  EXPECT_TRUE(f().Form_QueryUnload());
  EXPECT_TRUE(f().Form_QueryUnload());
  EXPECT_EQ(prompter.shown.size(), 2u);
  EXPECT_EQ(prompter.shown[0].Prompt, "Exit Parvenna?");
}

}  // namespace
}  // namespace parvenna::editor::testing
