// The process the DWG reader runs in: its output gathered whole, its end
// told, and a process that runs too long or writes too much stopped.
#include <gtest/gtest.h>

#include <chrono>

#include "drawing/process_runner.h"

namespace parvenna::drawing {
namespace {

using std::chrono::milliseconds;

ProcessResult Shell(const std::string& script, milliseconds limit = milliseconds(10000),
                    std::size_t outputLimit = 1 << 20) {
  return RunProcess({"sh", "-c", script}, limit, outputLimit);
}

TEST(RunProcess, GathersBothOutputsAndTheExitStatus) {
  const ProcessResult r = Shell("printf 'a\\tb\\n'; echo oops >&2; head -c 300000 /dev/zero; exit 3");
  ASSERT_TRUE(r.started) << r.startError;
  EXPECT_EQ(r.exitStatus, 3);
  EXPECT_EQ(r.out.size(), 4u + 300000u);
  EXPECT_EQ(r.out.substr(0, 4), "a\tb\n");
  EXPECT_EQ(r.err, "oops\n");
  EXPECT_FALSE(r.timedOut);
  EXPECT_GT(r.peakKilobytes, 0);
  // Its input is empty: a reader of it ends at once.
  EXPECT_EQ(Shell("cat; echo done").out, "done\n");
}

TEST(RunProcess, AProgramThatIsNotThereIsNotStarted) {
  const ProcessResult r = RunProcess({"/nonexistent/node", "x"}, milliseconds(1000), 1024);
  EXPECT_FALSE(r.started);
  EXPECT_FALSE(r.startError.empty());
  EXPECT_FALSE(RunProcess({}, milliseconds(1000), 1024).started);
}

TEST(RunProcess, TooLongOrTooMuchIsStoppedWithItsChildren) {
  const auto began = std::chrono::steady_clock::now();
  // The child of the shell holds the output open: the whole group goes.
  const ProcessResult slow = Shell("sleep 30 & echo started; wait", milliseconds(300));
  EXPECT_TRUE(slow.timedOut);
  EXPECT_EQ(slow.out, "started\n");
  EXPECT_EQ(slow.signal, 9);
  // One that closes its output and goes on is stopped at the limit as well.
  const ProcessResult quiet = Shell("exec >&- 2>&-; sleep 30", milliseconds(300));
  EXPECT_TRUE(quiet.timedOut);
  EXPECT_LT(std::chrono::steady_clock::now() - began, std::chrono::seconds(5));

  const ProcessResult chatty = Shell("yes", milliseconds(10000), 100000);
  EXPECT_TRUE(chatty.tooMuchOutput);
  EXPECT_FALSE(chatty.timedOut);
  EXPECT_GE(chatty.out.size(), 100000u);
}

TEST(RunProcess, ASignalIsTold) {
  const ProcessResult r = Shell("kill -SEGV $$");
  EXPECT_EQ(r.signal, 11);
  EXPECT_EQ(r.exitStatus, -1);
}

}  // namespace
}  // namespace parvenna::drawing
