// The store against a second process: a second running copy of the program,
// and a writer killed in the middle of a parcel.
#include <signal.h>
#include <sys/wait.h>
#include <unistd.h>

#include <gtest/gtest.h>

#include <cstdio>
#include <string>

#include "store/messages.h"
#include "tests/store/store_fixture.h"

namespace parvenna::store {
namespace {

using parvenna::testing::StoreWorld;

const char* HelperPath() { return PARVENNA_APP_DIR "/../test-helpers/store_test_helper"; }

// A child process with its standard input and output on pipes.
class Child {
 public:
  explicit Child(std::vector<std::string> args) {
    int toChild[2], fromChild[2];
    if (pipe(toChild) != 0 || pipe(fromChild) != 0) throw std::runtime_error("pipe");
    pid_ = fork();
    if (pid_ == 0) {
      dup2(toChild[0], 0);
      dup2(fromChild[1], 1);
      close(toChild[1]);
      close(fromChild[0]);
      std::vector<char*> argv;
      std::string helper = HelperPath();
      argv.push_back(helper.data());
      for (std::string& a : args) argv.push_back(a.data());
      argv.push_back(nullptr);
      execv(helper.c_str(), argv.data());
      _exit(127);
    }
    close(toChild[0]);
    close(fromChild[1]);
    in_ = toChild[1];
    out_ = fdopen(fromChild[0], "r");
  }
  ~Child() {
    if (in_ >= 0) close(in_);
    if (out_) fclose(out_);
    if (pid_ > 0 && !waited_) {
      kill(pid_, SIGKILL);
      waitpid(pid_, nullptr, 0);
    }
  }

  // The next line the child printed; empty at its end.
  std::string ReadLine() {
    char buffer[512];
    if (!fgets(buffer, sizeof buffer, out_)) return "";
    std::string line(buffer);
    if (!line.empty() && line.back() == '\n') line.pop_back();
    return line;
  }
  void CloseInput() {
    close(in_);
    in_ = -1;
  }
  int Wait() {
    int status = 0;
    waitpid(pid_, &status, 0);
    waited_ = true;
    return WIFEXITED(status) ? WEXITSTATUS(status) : -WTERMSIG(status);
  }
  void Kill() {
    kill(pid_, SIGKILL);
    Wait();
  }

 private:
  pid_t pid_ = -1;
  int in_ = -1;
  FILE* out_ = nullptr;
  bool waited_ = false;
};

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
