// Saving against real disks: a project its user may not write, and a disk
// that fills in the middle of a save. Each scenario runs in a child process,
// as a user who is not root or with its files held to their size, so that
// the kernel itself refuses the write.
#include <gmock/gmock.h>

#include <filesystem>
#include <functional>
#include <sstream>

#include "tests/editor/editor_fixture.h"
#include "tests/store/child_process.h"
#include "tests/store/fill.h"
#include "tests/store/store_fixture.h"

namespace parvenna::editor::testing {
namespace {

namespace fs = std::filesystem;
using parvenna::testing::ChildLimits;
using parvenna::testing::ReadFile;
using parvenna::testing::RunInChild;
using parvenna::testing::AddCourseRow;
using parvenna::testing::AddParcelRow;
using parvenna::testing::FillTable;
using parvenna::testing::SizeOf;
using parvenna::testing::StoreWorld;

std::string Lines(const std::vector<std::string>& lines) {
  std::string text;
  for (const std::string& line : lines) text += line + "\n";
  return text;
}

// ---- A project that cannot be written --------------------------------------

struct Permissions {
  const char* name;
  fs::perms file;
  fs::perms folder;
};

class ReadOnlyProject : public ::testing::TestWithParam<Permissions> {};

TEST_P(ReadOnlyProject, SaysSoAtOpeningAndEverySaveKeepsTheParcelOnScreen) {
  StoreWorld world;
  // The program's own folder stays writable for the child: only the project is not.
  fs::permissions(world.dir.path(), fs::perms::all);
  fs::permissions(world.dir / "ParvennaPro.pvs", fs::perms::all & ~fs::perms::owner_exec &
                                                     ~fs::perms::group_exec & ~fs::perms::others_exec);
  const fs::path folder = world.dir / "jobs";
  fs::create_directory(folder);
  const std::string path = (folder / "lots.pvd").string();
  fs::copy_file(world.Path("sample_feet.pvd"), path);
  fs::permissions(path, GetParam().file);
  fs::permissions(folder, GetParam().folder);
  const std::string bytes = ReadFile(path);

  const auto outcome = RunInChild({.unprivileged = true, .fileSizeLimit = {}}, [&] {
    std::vector<std::string> said;
    world.Open(path);
    for (const std::string& p : world.prompter.Prompts()) said.push_back("open: " + p);

    RecordingCanvas canvas{4995, 4995};
    RecordingHost host;
    EditorForm form(world.state, world.prompter, canvas, host);
    form.EnableEditorFrames(true);
    form.Show_Parcels();
    world.prompter.shown.clear();
    form.cmdEdit_Click();
    form.SetFieldText(0, CourseField::DistanceLine, "170.5");
    form.cmdSave_Click();
    for (const std::string& p : world.prompter.Prompts()) said.push_back("save: " + p);
    said.push_back(std::string("editing: ") + (form.cmdSave.Enabled ? "yes" : "no") + ", " +
                   form.txtParcel.Text + ", " + form.txtDistanceLine[0].Text);

    world.prompter.shown.clear();
    form.cmdCancel_Click();
    form.cmdInsert_Click();
    form.txtParcel.Text = "Lot 9";
    form.SetFieldText(0, CourseField::BearingLine, "N1" + Deg + "0'0\"E");
    form.SetFieldText(0, CourseField::DistanceLine, "12");
    form.cmdSave_Click();
    for (const std::string& p : world.prompter.Prompts()) said.push_back("new: " + p);
    said.push_back(std::string("editing: ") + (form.cmdSave.Enabled ? "yes" : "no") + ", " +
                   form.txtParcel.Text + ", " + form.txtDistanceLine[0].Text);

    world.prompter.shown.clear();
    form.cmdCancel_Click();
    form.Show_Parcels();
    form.Delete_Parcel();
    for (const std::string& p : world.prompter.Prompts()) said.push_back("delete: " + p);
    return Lines(said);
  });
  fs::permissions(folder, fs::perms::owner_all);
  fs::permissions(path, fs::perms::owner_read | fs::perms::owner_write);

  const std::string refusal = "The project " + path + " is read-only. Parcels cannot be saved to it.";
  EXPECT_EQ(outcome.status, 0);
  EXPECT_EQ(outcome.said, Lines({"open: " + refusal, "save: " + refusal,
                                 "editing: yes, Lot 101, 170.5", "new: " + refusal,
                                 "editing: yes, Lot 9, 12", "delete: " + refusal}));
  EXPECT_EQ(ReadFile(path), bytes) << "not a byte of the project changed";
}

INSTANTIATE_TEST_SUITE_P(
    Modes, ReadOnlyProject,
    ::testing::Values(Permissions{"ReadOnlyFile", fs::perms::owner_read | fs::perms::group_read |
                                                      fs::perms::others_read,
                                  fs::perms::all},
                      Permissions{"ReadOnlyFolder", fs::perms::all & ~fs::perms::owner_exec &
                                                        ~fs::perms::group_exec & ~fs::perms::others_exec,
                                  fs::perms::owner_read | fs::perms::owner_exec |
                                      fs::perms::group_read | fs::perms::group_exec |
                                      fs::perms::others_read | fs::perms::others_exec}),
    [](const auto& param) { return std::string(param.param.name); });

// ---- A disk that fills inside the save -----------------------------------------

struct DiskCase {
  const char* name;
  int courses;  // of the parcel that is saved when the disk is full
  // Fills the project so that the first write to fail is the one named.
  std::function<void(const std::string& path)> fill;
};

class FullDisk : public EditorTest, public ::testing::WithParamInterface<DiskCase> {
 protected:
  long Count(const std::string& sql) {
    store::Database db = store::Database::Open(project.ProjectFile);
    return db.OpenRecordset(sql).RecordCount();
  }
};

TEST_P(FullDisk, RefusesTheWholeParcelNamesTheReasonAndKeepsItOnScreen) {
  StoreSquare("Lot 1", "100");
  ASSERT_TRUE(prompter.shown.empty());
  GetParam().fill(project.ProjectFile);
  const long lot1Rows = Count("SELECT * FROM tblMeasurements WHERE ParcelID = 1");
  const long allRows = Count("SELECT * FROM tblMeasurements");
  const long parcels = Count("SELECT * FROM tblParcel");
  ASSERT_EQ(lot1Rows, 4);

  // The next parcel, keyed in full, as the form goes on to it after Lot 1.
  f().txtParcel.Text = "Lot 2";
  for (int i = 0; i < GetParam().courses; ++i) {
    TypeLine(i, "N" + std::to_string(i % 80) + Deg + "0'0\"E", "7" + std::to_string(i));
  }
  const std::string lastDistance = f().txtDistanceLine[GetParam().courses - 1].Text;

  const auto outcome = RunInChild(
      {.unprivileged = false, .fileSizeLimit = static_cast<off_t>(SizeOf(project.ProjectFile))}, [&] {
        std::vector<std::string> said;
        prompter.shown.clear();
        prompter.fallback = MsgAnswer::Yes;  // save it even though it does not close
        f().cmdSave_Click();
        for (const Message& m : prompter.shown) {
          if (m.Buttons == MsgButtons::OK) said.push_back("box: " + m.Prompt);
        }
        said.push_back(std::string("editing: ") + (f().cmdSave.Enabled ? "yes" : "no") + ", " +
                       (f().InsertingParcel ? "new" : "stored") + ", " + f().txtParcel.Text + ", " +
                       f().txtDistanceLine[GetParam().courses - 1].Text);
        return Lines(said);
      });

  EXPECT_EQ(outcome.status, 0);
  EXPECT_EQ(outcome.said,
            Lines({"box: The parcel Lot 2 could not be saved to the project " + project.ProjectFile +
                       ": the disk is full.\nNothing was changed in the project, and the parcel "
                       "stays on screen.",
                   "editing: yes, new, Lot 2, " + lastDistance}));
  store::Database db = store::Database::Open(project.ProjectFile);
  EXPECT_TRUE(db.IsIntact());
  db.Close();
  EXPECT_EQ(Count("SELECT * FROM tblMeasurements WHERE ParcelID = 1"), 4)
      << "the courses of the refused parcel went to the one stored before it";
  EXPECT_EQ(Count("SELECT * FROM tblMeasurements"), allRows) << "part of the parcel was stored";
  EXPECT_EQ(Count("SELECT * FROM tblParcel"), parcels);
  EXPECT_EQ(Count("SELECT * FROM tblParcel WHERE Parcel = ' Lot 2'"), 0);
}

INSTANTIATE_TEST_SUITE_P(
    Writes, FullDisk,
    ::testing::Values(
        // The parcel's own row needs a page: its courses would still fit.
        DiskCase{"AtTheParcelRow", 4,
                 [](const std::string& path) {
                   int n = 0;
                   FillTable(
                       path,
                       [&](store::Database& db, const std::string& text) {
                         // Names are unique and at most 50 long; the bearing takes the rest.
                         AddParcelRow(db, "Filler " + std::to_string(++n), text);
                       },
                       [](store::Database& db) { AddParcelRow(db, " Lot 2", "N1°0''0\"E"); });
                 }},
        // The parcel's row fits; a page runs out among its courses.
        DiskCase{"AmongTheCourses", 20,
                 [](const std::string& path) {
                   {
                     store::Database db = store::Database::Open(path);
                     AddParcelRow(db, "Filler", "");  // key 2: the rows below are its own
                   }
                   FillTable(
                       path, [](store::Database& db, const std::string& text) { AddCourseRow(db, 2, text); },
                       [](store::Database& db) {
                         for (int i = 0; i < 8; ++i) AddCourseRow(db, 9, "N12°30''15\"E");
                       });
                 }}),
    [](const auto& param) { return std::string(param.param.name); });

}  // namespace
}  // namespace parvenna::editor::testing
