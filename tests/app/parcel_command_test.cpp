// parvenna-cli parcel: a project's parcels listed, shown, added and deleted
// through the editor's own routines, and the store's refusals as exit status
// 1 with the editor's words: a read-only project, a full disk, a taken name.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <filesystem>
#include <sstream>

#include "app/cli/parcel_command.h"
#include "store/store.h"
#include "tests/store/child_process.h"
#include "tests/store/fill.h"
#include "tests/store/temp_dir.h"

namespace parvenna::cli {
namespace {

namespace fs = std::filesystem;
using ::testing::HasSubstr;
using parvenna::testing::RunInChild;
using parvenna::testing::TempDir;

struct Outcome {
  int status;
  std::string out;
  std::string err;
};

class ParcelCommand : public ::testing::Test {
 protected:
  ParcelCommand() {
    parvenna::testing::CopySupplied(dir.path(), {"sample_feet.pvd", "sample_feet.dxf"});
  }

  Outcome Parcel(std::vector<std::string> args, const std::string& input = "") {
    std::istringstream in(input);
    std::ostringstream out, err;
    const int status = RunParcel(args, in, out, err, dir.WithSeparator());
    return {status, out.str(), err.str()};
  }

  std::string Project() const { return (dir / "sample_feet.pvd").string(); }
  std::string List() { return Parcel({"list", Project()}).out; }

  TempDir dir;
};

constexpr const char* kListed =
    "name\tcourses\tclosure\tprecision\tarea\n"
    "Lot 101\t5\t0\tPerfect\t34591.89\n"
    "Lot 102\t4\t0.37\t1:1491\t18921.34\n"
    "Lot 103\t7\t0\tPerfect\t46655.51\n";

constexpr const char* kLot103 =
    "kind,bearing,distance,arc,radius,chord,plus,minus\n"
    "line,N12°30'15\"E,150,,,,0,0\n"
    "curve,N57°30'15\"E,,157.08,100,141.42,1,0\n"
    "line,S77°29'45\"E,100,,,,0,0\n"
    "line,S12°30'15\"W,100,,,,0,0\n"
    "curve,S12°30'15\"W,,108.02,80,100,0,1\n"
    "line,S12°30'15\"W,50,,,,0,0\n"
    "line,N77°29'44\"W,200,,,,0,0\n";

TEST_F(ParcelCommand, ListsShowsAddsAndDeletesAsTheEditorDoes) {
  EXPECT_EQ(List(), kListed);
  const Outcome shown = Parcel({"show", Project(), "Lot 103"});
  EXPECT_EQ(shown.status, 0) << shown.err;
  EXPECT_EQ(shown.out, kLot103);

  // What show writes, add reads back: the same parcel under a new name.
  const Outcome added = Parcel({"add", Project(), "Lot 104", "-"}, shown.out);
  EXPECT_EQ(added.status, 0) << added.err;
  EXPECT_EQ(added.err, "");
  EXPECT_EQ(Parcel({"show", Project(), "Lot 104"}).out, kLot103);
  EXPECT_THAT(List(), HasSubstr("Lot 104\t7\t0\tPerfect\t46655.51\n"));

  const Outcome deleted = Parcel({"delete", Project(), "Lot 104"});
  EXPECT_EQ(deleted.status, 0) << deleted.err;
  EXPECT_EQ(deleted.err, "parvenna-cli: Are you sure you want to delete the current parcel? -> Yes\n");
  EXPECT_EQ(List(), kListed);
}

TEST_F(ParcelCommand, TheEditorsChecksAndQuestionsDecideWhatIsStored) {
  const std::string open = "kind,bearing,distance,arc,radius,chord,plus,minus\n"
                           "line,N0°0'0\"E,100,,,,0,0\n"
                           "line,N90°0'0\"E,100,,,,0,0\n";
  // It fails the closure tolerance: --no answers the question No.
  Outcome run = Parcel({"add", Project(), "Open lot", "-", "--no"}, open);
  EXPECT_EQ(run.status, 1);
  EXPECT_EQ(run.err, "parvenna-cli: This parcel has failed the closure tolerance. Would you like to "
                     "save? -> No\n");
  EXPECT_EQ(List(), kListed);
  run = Parcel({"add", Project(), "Open lot", "-"}, open);
  EXPECT_EQ(run.status, 0) << run.err;

  run = Parcel({"add", Project(), "Lot 101", "-"}, kLot103);
  EXPECT_EQ(run.status, 1);
  EXPECT_THAT(run.err, HasSubstr("The lot Lot 101 already exists. Please rename the parcel before saving again."));

  run = Parcel({"add", Project(), std::string(51, 'x'), "-"}, kLot103);
  EXPECT_EQ(run.status, 1);
  EXPECT_THAT(run.err, HasSubstr("The parcel name can be at most 50 characters long."));

  run = Parcel({"add", Project(), "Bad", "-"}, "kind,bearing,distance,arc,radius,chord,plus,minus\n"
                                              "line,N0°0'0\"E,100,,,,0,0\nline,N90°0'0\"E\n");
  EXPECT_EQ(run.status, 2);
  EXPECT_EQ(run.err, "standard input: line 3: expected 8 fields, found 2\n");
  EXPECT_THAT(List(), ::testing::Not(HasSubstr("Bad")));
}

TEST_F(ParcelCommand, BadArgumentsAndMissingParcels) {
  for (const std::vector<std::string>& args :
       {std::vector<std::string>{}, {"list"}, {"frob", Project()}, {"show", Project()},
        {"add", Project(), "X"}, {"list", Project(), "--no"}, {"list", Project(), "--fast"},
        {"list", (dir / "none.pvd").string()}}) {
    const Outcome run = Parcel(args);
    EXPECT_EQ(run.status, 2) << ::testing::PrintToString(args);
  }
  Outcome run = Parcel({"show", Project(), "Lot 9"});
  EXPECT_EQ(run.status, 1);
  EXPECT_THAT(run.err, HasSubstr("no parcel named \"Lot 9\""));
  run = Parcel({"delete", Project(), "Lot 9"});
  EXPECT_EQ(run.status, 1);
}

TEST_F(ParcelCommand, DamagedProjectsAreListedAsFarAsTheyCanBeOrRefused) {
  {
    store::Database db = store::Database::Open(Project());
    db.ExecuteScript("UPDATE tblMeasurements SET RowType = NULL WHERE ParcelID = 2;"
                     "DELETE FROM tblMeasurements WHERE ParcelID = 1;");
  }
  Outcome run = Parcel({"list", Project()});
  EXPECT_EQ(run.status, 0) << run.err;
  EXPECT_EQ(run.out, "name\tcourses\tclosure\tprecision\tarea\n"
                     "Lot 101\t0\t\t\t\n"
                     "Lot 102\t4\t0.37\t1:1491\t18921.34\n"
                     "Lot 103\t7\t0\tPerfect\t46655.51\n");
  EXPECT_EQ(run.err, "parvenna-cli: There are no matching entries in the database.\n");
  // A parcel that cannot be shown can still be deleted.
  EXPECT_EQ(Parcel({"delete", Project(), "Lot 101"}).status, 0);
  EXPECT_THAT(List(), ::testing::Not(HasSubstr("Lot 101")));

  store::Database::Open(Project()).Execute("DROP TABLE tblMeasurements");
  run = Parcel({"list", Project()});
  EXPECT_EQ(run.status, 1);
  EXPECT_EQ(run.err, "parvenna-cli: Can't open the project: " + Project() +
                         "\nThe table tblMeasurements is missing.\n");
}

TEST_F(ParcelCommand, AReadOnlyProjectRefusesAddAndDelete) {
  // Readable by the user who is not root; its folder open to them.
  fs::permissions(dir.path(), fs::perms::owner_all | fs::perms::group_read | fs::perms::group_exec |
                                  fs::perms::others_read | fs::perms::others_exec);
  fs::permissions(Project(), fs::perms::owner_read | fs::perms::group_read | fs::perms::others_read);
  const auto outcome = RunInChild({.unprivileged = true, .fileSizeLimit = {}}, [&] {
    const Outcome added = Parcel({"add", Project(), "Lot 104", "-"}, kLot103);
    const Outcome deleted = Parcel({"delete", Project(), "Lot 101"});
    const Outcome listed = Parcel({"list", Project()});
    return std::to_string(added.status) + " " + added.err + std::to_string(deleted.status) + " " +
           deleted.err + std::to_string(listed.status) + " " + listed.out;
  });
  fs::permissions(Project(), fs::perms::owner_read | fs::perms::owner_write);
  const std::string refusal =
      "parvenna-cli: The project " + Project() + " is read-only. Parcels cannot be saved to it.\n";
  EXPECT_EQ(outcome.said, "1 " + refusal + "1 " + refusal + "0 " + kListed);
}

TEST_F(ParcelCommand, AFullDiskRefusesTheParcelWithItsReasonAndStoresNothing) {
  {
    store::Database db = store::Database::Open(Project());
    parvenna::testing::AddParcelRow(db, "Filler", "");
  }
  parvenna::testing::FillTable(
      Project(),
      [](store::Database& db, const std::string& text) { parvenna::testing::AddCourseRow(db, 4, text); },
      [](store::Database& db) {
        for (int i = 0; i < 3; ++i) parvenna::testing::AddCourseRow(db, 9, "N12°30''15\"E");
      });
  const std::string before = List();
  const auto outcome = RunInChild(
      {.unprivileged = false,
       .fileSizeLimit = static_cast<off_t>(parvenna::testing::SizeOf(Project()))},
      [&] {
        const Outcome added = Parcel({"add", Project(), "Lot 104", "-"}, kLot103);
        return std::to_string(added.status) + " " + added.err;
      });
  EXPECT_EQ(outcome.said, "1 parvenna-cli: The parcel Lot 104 could not be saved to the project " +
                              Project() +
                              ": the disk is full.\nNothing was changed in the project, and the "
                              "parcel stays on screen.\n");
  EXPECT_EQ(List(), before);
  EXPECT_TRUE(store::Database::Open(Project()).IsIntact());
}

}  // namespace
}  // namespace parvenna::cli
