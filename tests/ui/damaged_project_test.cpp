// Damaged projects handed to the program as its command line names them, and
// through the history menu: the program that main() starts takes each one
// and goes on running. A project that cannot be used is refused with words
// that name what is wrong, and stays off the recent list; one whose rows hold
// what no parcel should opens, and every parcel shows what can be shown.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <filesystem>

#include <QComboBox>

#include "store/store.h"
#include "tests/support/scripted_prompter.h"
#include "tests/ui/program_dir.h"
#include "tests/ui/ui_app.h"
#include "ui/course_row_view.h"
#include "ui/editor_window.h"
#include "ui/main_window.h"

namespace parvenna::ui {
namespace {

namespace fs = std::filesystem;
using ::testing::ElementsAre;
using ::testing::HasSubstr;
using parvenna::testing::ScriptedPrompter;

struct Damage {
  const char* name;
  const char* sql;  // run on a copy of the sample project
  bool opens;
  // The boxes shown while the program starts on it; "%s" stands for the path.
  std::vector<std::string> boxes;
  // The first parcel's first distance as the editor shows it once open.
  std::string firstDistance = "";
};

std::string WithPath(std::string text, const std::string& path) {
  const auto at = text.find("%s");
  return at == std::string::npos ? text : text.replace(at, 2, path);
}

class DamagedProject : public ::testing::TestWithParam<Damage> {
 protected:
  DamagedProject() {
    testing::TestApp();
    // The sample's entry as the first start leaves it, with this directory.
    store::Database::Open(dir / "ParvennaPro.pvs")
        .Execute("UPDATE tblRecentProject SET ProjectLocation = '" + dir.WithSeparator() + "'");
  }

  // The recent table as rows of text, oldest first.
  std::vector<std::string> Recent() {
    std::vector<std::string> rows;
    store::Database db = store::Database::Open(dir / "ParvennaPro.pvs");
    for (auto rs = db.OpenRecordset("SELECT * FROM tblRecentProject ORDER BY AccessID"); !rs.Eof();
         rs.MoveNext()) {
      rows.push_back(rs.Get("ProjectLocation").AsText() + rs.Get("ProjectName").AsText());
    }
    return rows;
  }

  std::string Damaged(const char* sql) {
    const fs::path path = dir / "damaged.pvd";
    fs::copy_file(dir / "sample_feet.pvd", path);
    store::Database::Open(path).ExecuteScript(sql);
    return path.string();
  }

  testing::ProgramDir dir;
  ScriptedPrompter prompter;
};

TEST_P(DamagedProject, FromTheCommandLineLeavesTheProgramRunning) {
  const std::string path = Damaged(GetParam().sql);
  const std::vector<std::string> recentBefore = Recent();
  MainWindow window(dir.path().string(), &prompter);
  window.show();
  // main() ends the program when its start says false.
  ASSERT_TRUE(window.Start("\"" + path + "\""));
  std::vector<std::string> boxes;
  for (const std::string& box : GetParam().boxes) boxes.push_back(WithPath(box, path));
  EXPECT_EQ(prompter.Prompts(), boxes);

  const editor::EditorForm& form = window.Shell().frmEditor;
  EXPECT_EQ(form.menus.mnuEdit.Enabled, GetParam().opens) << "the project's commands";
  if (!GetParam().opens) {
    EXPECT_EQ(Recent(), recentBefore) << "a project that did not open is not recent";
    EXPECT_TRUE(form.cbxParcel.List.empty());
  } else {
    EXPECT_EQ(Recent().back(), path);
    EXPECT_THAT(form.cbxParcel.List, ElementsAre("Lot 101", "Lot 102", "Lot 103"));
    EXPECT_EQ(form.txtDistanceLine[0].Text, GetParam().firstDistance);
    EXPECT_EQ(window.Editor().Row(0).Field(CourseField::DistanceLine)->text().toStdString(),
              GetParam().firstDistance);
    // Every parcel chosen in the list as the mouse chooses it.
    auto* list = window.Editor().findChild<QComboBox*>("cbxParcel");
    ASSERT_NE(list, nullptr);
    prompter.shown.clear();
    for (int i = 0; i < list->count(); ++i) Q_EMIT list->activated(i);
    for (const std::string& box : prompter.Prompts()) {
      EXPECT_THAT(box, ::testing::Not(HasSubstr("Unkown Error"))) << "nothing raises past the form";
    }
  }
  window.Shell().frmEditor.ExitConfirmed = true;
}

// The projects that cannot be used, from the history menu while another is open.
class RefusedProject : public DamagedProject {};

TEST_P(RefusedProject, FromTheHistoryLeavesThePreviousProjectOpen) {
  const std::string path = Damaged(GetParam().sql);
  const std::string sample = dir.Sample();
  {
    store::Database db = store::Database::Open(dir / "ParvennaPro.pvs");
    db.Execute("INSERT INTO tblRecentProject (ProjectName, ProjectLocation) VALUES ('damaged.pvd', '" +
               dir.WithSeparator() + "')");
  }
  MainWindow window(dir.path().string(), &prompter);
  window.show();
  ASSERT_TRUE(window.Start(sample));
  const std::vector<std::string> recentBefore = Recent();
  const std::string titleBefore = window.windowTitle().toStdString();
  ASSERT_EQ(window.Shell().state.RecentProjects[1], path);
  prompter.shown.clear();

  window.Trigger("mnuHistory", 1);
  std::vector<std::string> boxes;
  for (const std::string& box : GetParam().boxes) boxes.push_back(WithPath(box, path));
  EXPECT_EQ(prompter.Prompts(), boxes);
  EXPECT_EQ(window.Shell().state.ProjectFile, sample);
  EXPECT_EQ(window.Shell().frmEditor.txtParcel.Text, "Lot 101");
  EXPECT_EQ(window.windowTitle().toStdString(), titleBefore);
  EXPECT_EQ(Recent(), recentBefore);
  window.Shell().frmEditor.ExitConfirmed = true;
}

const std::string kCantOpen = "Can't open the project: %s\n";

const Damage kRefused[] = {
    Damage{"NoCourseTable", "DROP TABLE tblMeasurements", false,
           {kCantOpen + "The table tblMeasurements is missing."}},
    Damage{"NoParcelTable", "DROP TABLE tblParcel", false,
           {kCantOpen + "The table tblParcel is missing."}},
    Damage{"NoRowNumber", "ALTER TABLE tblMeasurements DROP COLUMN RowNo", false,
           {kCantOpen + "The column RowNo is missing from tblMeasurements."}},
    // The rows cannot be laid out with a curve field in a ninth place.
    Damage{"CurveFieldOutOfPlace", "UPDATE tblSetting SET txtRadius = 9", false,
           {kCantOpen + "The column txtRadius of tblSetting holds 9, which is no place from 1 to 4."}}};

INSTANTIATE_TEST_SUITE_P(Refused, DamagedProject, ::testing::ValuesIn(kRefused),
                         [](const auto& param) { return std::string(param.param.name); });
INSTANTIATE_TEST_SUITE_P(Refused, RefusedProject, ::testing::ValuesIn(kRefused),
                         [](const auto& param) { return std::string(param.param.name); });

INSTANTIATE_TEST_SUITE_P(
    Opened, DamagedProject,
    ::testing::Values(
        Damage{"NoRowType", "ALTER TABLE tblMeasurements DROP COLUMN RowType", true,
               {"The project %s lacks the column RowType of tblMeasurements. Parcels cannot be "
                "saved to it."},
               "169.94"},
        // A type that does not read: a row without arc and radius is a line.
        Damage{"NullRowType", "UPDATE tblMeasurements SET RowType = NULL", true, {}, "169.94"},
        Damage{"TextRowType", "UPDATE tblMeasurements SET RowType = 'line'", true, {}, "169.94"},
        // A distance that is no number shows as one not keyed.
        Damage{"TextsAndNullsInNumbers",
               "UPDATE tblMeasurements SET Length = 'ten' WHERE RowNo = 0;"
               "UPDATE tblMeasurements SET Plus = 'minus', Radius = NULL WHERE ParcelID = 3;"
               "UPDATE tblMeasurements SET Direction = 'north-ish' WHERE ParcelID = 2 AND RowNo = 1;"
               "UPDATE tblParcel SET Area = 'large', Closure = NULL",
               true, {}},
        Damage{"FirstParcelWithoutCourses", "DELETE FROM tblMeasurements WHERE ParcelID = 1", true,
               {"There are no matching entries in the database."}}),
    [](const auto& param) { return std::string(param.param.name); });

}  // namespace
}  // namespace parvenna::ui
