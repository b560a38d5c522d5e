// The editor's own save, in a second process, killed inside its write: right
// after each write, sync or removal of a file that the save makes, the file
// must open whole and hold the parcel as it was or as it was saved, never a
// part of either.
#include <gmock/gmock.h>

#include <signal.h>

#include <filesystem>
#include <map>

#include "store/project_file.h"
#include "store/store.h"
#include "tests/store/child_process.h"
#include "tests/store/temp_dir.h"

namespace parvenna::editor::testing {
namespace {

namespace fs = std::filesystem;
using parvenna::testing::Child;
using parvenna::testing::TempDir;

// "name rows x length" for each parcel in key order, and the courses that
// belong to no parcel.
std::string Contents(const std::string& path) {
  store::Database db = store::Database::Open(path);
  std::string text;
  long owned = 0;
  for (store::Recordset p = db.OpenRecordset("SELECT * FROM tblParcel ORDER BY ParcelID"); !p.Eof();
       p.MoveNext()) {
    const std::string key = p.Get("ParcelID").AsText();
    store::Recordset rows = db.OpenRecordset("SELECT * FROM tblMeasurements WHERE ParcelID = " + key);
    std::map<std::string, int> lengths;
    for (; !rows.Eof(); rows.MoveNext()) ++lengths[rows.Get("Length").AsText()];
    const long count = rows.RecordCount();
    owned += count;
    text += "'" + p.Get("Parcel").AsText() + "' " + std::to_string(count) + "x" +
            (lengths.size() == 1 ? lengths.begin()->first : "mixed") + "; ";
  }
  const long all = db.OpenRecordset("SELECT * FROM tblMeasurements").RecordCount();
  if (all != owned) text += "orphans " + std::to_string(all - owned);
  return text;
}

// A project with one parcel of 20 courses of 10 feet.
void MakeProject(const std::string& path) {
  store::Database db = store::Database::Create(path);
  db.Append(store::ProjectSettingTable());
  db.Append(store::ParcelTable());
  db.Append(store::ParcelIndex());
  db.Append(store::MeasurementTable());
  db.Execute("INSERT INTO tblParcel (Parcel, Closure, Area) VALUES (' Lot 1', 0, 0)");
  for (int i = 0; i < 20; ++i) {
    db.Execute("INSERT INTO tblMeasurements (ParcelID, RowNo, RowType, Length, Direction) VALUES (1, " +
               std::to_string(i) + ", 1, 10, 'N" + std::to_string(i) + "°0''0\"E')");
  }
}

struct Scenario {
  const char* name;  // the helper's save: same, rename, insert
  const char* saved;  // the project once the save is done
};

class KilledSave : public ::testing::TestWithParam<Scenario> {};

TEST_P(KilledSave, LeavesTheParcelWholeAsItWasOrWholeAsSaved) {
  TempDir dir;
  const std::string base = (dir / "base.pvd").string();
  const std::string work = (dir / "work.pvd").string();
  MakeProject(base);
  const std::string before = Contents(base);
  ASSERT_EQ(before, "' Lot 1' 20x10; ");

  // The save once, untouched: what it makes and how many calls it takes.
  fs::copy_file(base, work);
  long calls = 0;
  {
    Child whole({"save", work, GetParam().name});
    std::string line;
    while (!(line = whole.ReadLine()).empty()) {
      if (line.rfind("writes ", 0) == 0) {
        calls = std::stol(line.substr(7));
      } else if (line.rfind("box: ", 0) != 0) {  // the tolerance is asked and answered
        EXPECT_EQ(line, "saved");
      }
    }
    EXPECT_EQ(whole.Wait(), 0);
  }
  ASSERT_EQ(Contents(work), GetParam().saved);
  ASSERT_GT(calls, 3);

  // Killed after each of them, at most 30 points spread over the save.
  std::vector<long> points;
  for (long k = 1; k < calls; k += calls > 30 ? calls / 30 + 1 : 1) points.push_back(k);
  points.push_back(calls);
  int asItWas = 0, asSaved = 0;
  for (long k : points) {
    fs::copy_file(base, work, fs::copy_options::overwrite_existing);
    Child killed({"save", work, GetParam().name}, {{"PARVENNA_KILL_AT", std::to_string(k)}});
    while (!killed.ReadLine().empty()) {
    }
    EXPECT_EQ(killed.Wait(), -SIGKILL) << "call " << k;
    // The next opening finds what the killed save left, a journal included.
    EXPECT_TRUE(store::Database::Open(work).IsIntact()) << "call " << k;
    const std::string after = Contents(work);
    EXPECT_THAT(after, ::testing::AnyOf(before, GetParam().saved)) << "killed after call " << k << " of " << calls;
    asItWas += after == before;
    asSaved += after == GetParam().saved;
    fs::remove(work + "-journal");
  }
  EXPECT_GT(asItWas, 0);
  EXPECT_GT(asSaved, 0) << "a kill after the last call leaves the parcel saved";
}

INSTANTIATE_TEST_SUITE_P(
    Saves, KilledSave,
    ::testing::Values(Scenario{"same", "' Lot 1' 30x20; "},
                      Scenario{"rename", "'Lot 1 renamed' 30x20; "},
                      Scenario{"insert", "' Lot 1' 20x10; ' Lot 2' 30x20; "}),
    [](const auto& param) { return std::string(param.param.name); });

}  // namespace
}  // namespace parvenna::editor::testing
