// The store against a second process: a second running copy of the program,
// and a writer killed in the middle of a parcel.
#include <gtest/gtest.h>

#include <string>

#include "store/messages.h"
#include "tests/store/child_process.h"
#include "tests/store/store_fixture.h"

namespace parvenna::store {
namespace {

using parvenna::testing::StoreWorld;

using parvenna::testing::Child;

TEST(SingleInstance, ASecondProcessIsRefusedWhileTheFirstKeepsWorking) {
  StoreWorld world;
  ASSERT_TRUE(world.system.Open(world.prompter));

  Child second({"open", world.state.AppDirectory});
  std::string said = second.ReadLine();
  std::string more = second.ReadLine();
  EXPECT_EQ(second.Wait(), 3);
  EXPECT_EQ(said + "\n" + more, std::string("box: ") + messages::AlreadyRunning);

  // The first process's own short openings read and write, and leave its
  // hold in place when they close.
  world.system.RecordRecentProject("/plans/after.pvd", world.prompter);
  EXPECT_TRUE(world.system.LoadRecentProjects(world.state, world.menu));
  EXPECT_EQ(world.state.RecentProjects[0], "/plans/after.pvd");
  Child third({"open", world.state.AppDirectory});
  EXPECT_EQ(third.Wait(), 3);
  EXPECT_TRUE(world.prompter.shown.empty());
}

TEST(SingleInstance, TheHoldEndsWithTheProcessThatHadIt) {
  StoreWorld world;
  Child first({"hold", world.state.AppDirectory});
  ASSERT_EQ(first.ReadLine(), "held");
  EXPECT_FALSE(world.system.Open(world.prompter));
  EXPECT_EQ(world.prompter.Prompts(), std::vector<std::string>{messages::AlreadyRunning});
  first.Kill();
  EXPECT_TRUE(world.system.Open(world.prompter));
}

TEST(KilledWriter, LeavesAFileThatOpensWithTheRowsItHadWritten) {
  StoreWorld world;
  std::string project = world.MakeProject("killed.pvd");
  Child writer({"write", project, "40"});
  ASSERT_EQ(writer.ReadLine().rfind("parcel ", 0), 0u);
  int seen = 0;
  while (seen < 5 && writer.ReadLine().rfind("row ", 0) == 0) ++seen;
  writer.Kill();

  world.state.ProjectFile = project;
  EXPECT_TRUE(CheckProjectFile(world.state, world.prompter));
  Database db = Database::Open(project);
  EXPECT_TRUE(db.IsIntact());
  EXPECT_EQ(db.OpenRecordset("tblParcel").RecordCount(), 1);
  long rows = db.OpenRecordset("tblMeasurements").RecordCount();
  EXPECT_GE(rows, seen);  // every row it reported is there
  EXPECT_LT(rows, 40);
  // Rows stand in order with no hole: each was its own committed change.
  Recordset rs = db.OpenRecordset("SELECT * FROM tblMeasurements ORDER BY RowNo");
  for (long i = 0; i < rows; ++i, rs.MoveNext()) EXPECT_EQ(rs.Get("RowNo").AsInteger(), i);
  // And the file takes new writes.
  db.Execute("DELETE * FROM tblMeasurements WHERE ParcelID = 1");
  EXPECT_TRUE(world.prompter.shown.empty());
}

}  // namespace
}  // namespace parvenna::store
