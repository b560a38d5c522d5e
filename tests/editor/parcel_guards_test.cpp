// The ways in which following the parcel's life step by step lost what was
// keyed, each closed: a save into a parcel that is not there, a row menu that
// edited the parcel shown last, rows that would not be written, a name the
// store cannot hold.
#include <gmock/gmock.h>

#include "tests/editor/editor_fixture.h"

namespace parvenna::editor::testing {
namespace {

using ::testing::ElementsAre;

class ParcelGuards : public EditorTest {
 protected:
  // The stored courses of a parcel, "bearing distance" each, in row order.
  std::vector<std::string> StoredCourses(const std::string& name) {
    std::vector<std::string> courses;
    store::Database db = store::Database::Open(project.ProjectFile);
    store::Recordset p = db.OpenRecordset("SELECT * FROM tblParcel WHERE Parcel = '" + name + "'");
    if (p.Eof()) return courses;
    store::Recordset rows = db.OpenRecordset("SELECT * FROM tblMeasurements WHERE ParcelID = " +
                                             p.Get("ParcelID").AsText() + " ORDER BY RowNo");
    for (; !rows.Eof(); rows.MoveNext()) {
      courses.push_back(rows.Get("Direction").AsText() + " " + rows.Get("Length").AsText());
    }
    return courses;
  }

  void ShowStored() {
    f().cmdCancel_Click();
    f().Show_Parcels();
    prompter.shown.clear();
  }

  const std::string north = "N0" + Deg + "0'0\"E";
  const std::string east = "N90" + Deg + "0'0\"E";
};

TEST_F(ParcelGuards, EditIsOffWhenNoParcelIsOnShow) {
  StoreSquare("A", "100");
  ShowStored();
  EXPECT_TRUE(f().cmdEdit.Enabled);

  // The last parcel deleted: nothing is shown, so there is nothing to edit.
  f().Delete_Parcel();
  EXPECT_TRUE(StoredNames().empty());
  EXPECT_FALSE(f().cmdEdit.Enabled);
  EXPECT_FALSE(f().menus.mnuEditMode.Enabled);
  EXPECT_FALSE(f().menus.mnuPopEdit.Enabled);

  // A parcel without courses takes the selection away and leaves Edit off too.
  {
    store::Database db = store::Database::Open(project.ProjectFile);
    db.Execute("INSERT INTO tblParcel (Parcel) VALUES ('     B')");
  }
  prompter.shown.clear();
  f().Show_Parcels();
  EXPECT_THAT(prompter.Prompts(), ElementsAre("There are no matching entries in the database."));
  EXPECT_EQ(f().cbxParcel.ListIndex, -1);
  EXPECT_FALSE(f().cmdEdit.Enabled);
}

TEST_F(ParcelGuards, ARowMenuCommandWithNoParcelOnShowStartsANewOne) {
  StoreSquare("C", "100");
  ShowStored();
  const std::vector<std::string> storedC = StoredCourses("     C");
  ASSERT_EQ(storedC.size(), 4u);

  struct Command {
    const char* name;
    void (EditorForm::*click)();
  };
  const Command commands[] = {{"D", &EditorForm::mnuPopInsertBefore_Click},
                              {"E", &EditorForm::mnuPopInsertAfter_Click},
                              {"F", &EditorForm::mnuPopDelete_Click},
                              {"G", &EditorForm::mnuPopChangeLineCurve_Click}};
  for (const Command& c : commands) {
    SCOPED_TRACE(c.name);
    f().cmdCancel_Click();  // C was shown last; now nothing is
    f().CurrentRow = 0;
    (f().*c.click)();
    EXPECT_TRUE(f().cmdSave.Enabled);
    EXPECT_FALSE(f().cmdDelete.Enabled) << "a new parcel has nothing to delete";
    if (f().Kind(0) == CourseKind::Curve) f().ChangeLineCurve(0);
    f().txtParcel.Text = c.name;
    TypeLine(0, north, "10");
    TypeLine(1, east, "10");
    prompter.fallback = MsgAnswer::Yes;
    EXPECT_TRUE(f().cmdSave_Click());
    EXPECT_THAT(StoredCourses(std::string("     ") + c.name), ElementsAre(north + " 10", east + " 10"));
    EXPECT_EQ(StoredCourses("     C"), storedC) << "the parcel shown last is as it was";
  }
  EXPECT_THAT(StoredNames(), ElementsAre("     C", "     D", "     E", "     F", "     G"));
}

TEST_F(ParcelGuards, ABlankOrUnfinishedCourseOfAStoredParcelIsRefusedByNumber) {
  StoreSquare("H", "100");
  ShowStored();
  const std::vector<std::string> storedH = StoredCourses("     H");

  // A blank row inserted at course 2: the rows behind it used to vanish.
  prompter.fallback = MsgAnswer::Yes;  // it no longer closes: save all the same
  f().cmdEdit_Click();
  f().CurrentRow = 1;
  f().mnuInsertBefore_Click();
  EXPECT_FALSE(f().cmdSave_Click());
  ASSERT_FALSE(prompter.shown.empty());
  EXPECT_EQ(prompter.shown.back().Prompt,
            "Course 2 is blank. Key it, or delete the course, and save again.");
  EXPECT_TRUE(f().cmdSave.Enabled) << "still editing";
  EXPECT_EQ(f().txtDistanceLine[4].Text, "100") << "the courses behind it are on screen";
  EXPECT_EQ(StoredCourses("     H"), storedH);

  // Half keyed: a bearing and no distance.
  Type(1, CourseField::BearingLine, east);
  EXPECT_FALSE(f().cmdSave_Click());
  EXPECT_EQ(prompter.shown.back().Prompt,
            "Course 2 cannot be saved: its distance is empty. Key it, or delete the course, and "
            "save again.");
  EXPECT_EQ(StoredCourses("     H"), storedH);

  // Keyed in full it is stored with the rest.
  Type(1, CourseField::DistanceLine, "5");
  EXPECT_TRUE(f().cmdSave_Click());
  EXPECT_EQ(StoredCourses("     H").size(), 5u);
}

TEST_F(ParcelGuards, ANumberThatDoesNotReadIsRefusedBeforeAnythingIsStored) {
  prompter.fallback = MsgAnswer::Yes;
  f().cmdInsert_Click();
  f().txtParcel.Text = "J";
  TypeLine(0, north, "100");
  // Behind a gap, where neither the closure nor the checks look, a new
  // parcel's course is stored all the same; two points pass the keys' filter.
  TypeLine(2, north, "1.2");
  f().txtDistanceLine[2].Text = "1.2.3";
  EXPECT_FALSE(f().cmdSave_Click());
  ASSERT_FALSE(prompter.shown.empty());
  EXPECT_EQ(prompter.shown.back().Prompt, "Course 3 cannot be saved: its distance \"1.2.3\" is not a number.");
  EXPECT_TRUE(StoredNames().empty()) << "the course used to be stored without its distance";
  EXPECT_EQ(f().txtDistanceLine[2].Text, "1.2.3");
}

TEST_F(ParcelGuards, ANameOverFiftyCharactersIsRefusedNotStoredEmpty) {
  const std::string fifty(50, 'x');
  StoreSquare(fifty, "10");
  EXPECT_TRUE(prompter.shown.empty());
  EXPECT_THAT(StoredNames(), ElementsAre(fifty));

  StoreSquare(fifty + "y", "10");
  EXPECT_THAT(prompter.Prompts(),
              ElementsAre("The parcel name can be at most 50 characters long. Shorten it and save again."));
  EXPECT_EQ(f().txtParcel.Text, fifty + "y");
  EXPECT_THAT(StoredNames(), ElementsAre(fifty)) << "no parcel without a name";
}

TEST_F(ParcelGuards, AParcelGoneFromTheFileIsNotWrittenIntoNowhere) {
  StoreSquare("K", "100");
  ShowStored();
  f().cmdEdit_Click();
  Type(0, CourseField::DistanceLine, "101");
  // Another program removes it while it is being edited.
  {
    store::Database db = store::Database::Open(project.ProjectFile);
    db.Execute("DELETE FROM tblParcel");
  }
  prompter.fallback = MsgAnswer::Yes;
  EXPECT_FALSE(f().cmdSave_Click());
  ASSERT_FALSE(prompter.shown.empty());
  EXPECT_EQ(prompter.shown.back().Prompt,
            "The parcel      K could not be saved to the project " + project.ProjectFile +
                ": the parcel is no longer in the project.\nNothing was changed in the project, "
                "and the parcel stays on screen.");
  EXPECT_EQ(StoredRows(), 4) << "the old courses stand as they were, and no new ones beside them";
  EXPECT_EQ(f().txtDistanceLine[0].Text, "101");
}

}  // namespace
}  // namespace parvenna::editor::testing
