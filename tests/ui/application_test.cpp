// The whole program in one process: started on a project, a course keyed and
// stored, the project opened again; and a second running copy refused.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <sys/stat.h>

#include <filesystem>
#include <fstream>
#include <sstream>

#include <QLineEdit>
#include <QProcess>
#include <QTest>

#include "shell/shell.h"
#include "store/store.h"
#include "tests/store/temp_dir.h"
#include "tests/support/recording_canvas.h"
#include "tests/support/scripted_prompter.h"
#include "tests/ui/program_dir.h"
#include "tests/ui/ui_app.h"
#include "ui/course_row_view.h"
#include "ui/editor_window.h"
#include "ui/main_window.h"

namespace parvenna::ui {
namespace {

namespace fs = std::filesystem;
using ::testing::HasSubstr;
using parvenna::testing::RecordingCanvas;
using parvenna::testing::ScriptedPrompter;

// True when the process holds a lock on the file, by /proc/locks: lines such
// as "1: FLOCK  ADVISORY  WRITE 4711 08:01:123456 0 EOF".
bool HoldsLock(qint64 pid, const fs::path& file) {
  struct stat st {};
  if (stat(file.c_str(), &st) != 0) return false;
  std::ifstream locks("/proc/locks");
  std::string line;
  const std::string inode = ":" + std::to_string(st.st_ino) + " ";
  while (std::getline(locks, line)) {
    std::istringstream fields(line);
    std::string id, kind, mode, access, owner, device;
    fields >> id >> kind >> mode >> access >> owner >> device;
    if (owner == std::to_string(pid) && (device + " ").find(inode) != std::string::npos) return true;
  }
  return false;
}

class ApplicationTest : public ::testing::Test {
 protected:
  ApplicationTest() { testing::TestApp(); }

  std::string Sample() const { return dir.Sample(); }

  testing::ProgramDir dir;
  ScriptedPrompter prompter;
};

TEST_F(ApplicationTest, ACourseKeyedAndSavedIsThereWhenTheProjectOpensAgain) {
  {
    MainWindow window(dir.path().string(), &prompter);
    window.show();
    ASSERT_TRUE(window.Start("\"" + Sample() + "\""));
    editor::EditorForm& form = window.Shell().frmEditor;
    EXPECT_EQ(form.txtParcel.Text, "Lot 101");
    EXPECT_EQ(window.Editor().lblClosure()->text(), "0");

    // A new parcel from the menu: one course keyed through the widgets.
    window.Trigger("mnuInsertParcel");
    QTest::keyClicks(window.Editor().txtParcel(), "Lot 9");
    CourseRowView& row = window.Editor().Row(0);
    QTest::keyClicks(row.Field(CourseField::BearingLine), "n12d30'15\"e");
    QTest::keyClicks(row.Field(CourseField::DistanceLine), "125.5");
    EXPECT_EQ(form.txtBearingLine[0].Text, "N12\u00B030'15\"E");
    EXPECT_EQ(window.Editor().lblClosure()->text(), "125.5");

    prompter.Answer({MsgAnswer::Yes});  // it fails the tolerance: save all the same
    window.Trigger("mnuSaveParcel");
    EXPECT_THAT(prompter.Prompts(), ::testing::ElementsAre(HasSubstr("failed the closure tolerance")));
    window.Shell().frmEditor.ExitConfirmed = true;
  }
  MainWindow again(dir.path().string(), &prompter);
  ASSERT_TRUE(again.Start(Sample()));
  editor::EditorForm& form = again.Shell().frmEditor;
  const auto& list = form.cbxParcel.List;
  const auto found = std::find(list.begin(), list.end(), " Lot 9");
  ASSERT_NE(found, list.end());
  form.SetListIndex(static_cast<int>(found - list.begin()));
  again.RefreshAll();
  EXPECT_EQ(form.txtDistanceLine[0].Text, "125.5");
  EXPECT_EQ(again.Editor().Row(0).Field(CourseField::BearingLine)->text(), "N12\u00B030'15\"E");
  form.ExitConfirmed = true;
}

TEST_F(ApplicationTest, ANewProjectFromTheMenuIsOpenAndReadyForItsFirstParcel) {
  MainWindow window(dir.path().string(), &prompter);
  window.show();
  ASSERT_TRUE(window.Start(""));
  EXPECT_FALSE(window.Shell().frmEditor.menus.mnuEdit.Enabled);

  window.Trigger("mnuNew");
  store::CreateForm& create = window.Shell().frmCreate;
  create.SetProjectName("Smith subdivision");
  create.SetProjectLocation((dir / "jobs").string() + "/");
  prompter.Answer({MsgAnswer::Yes, MsgAnswer::Yes});  // make the directory; no drawing yet
  create.cmdCreate_Click();
  window.RefreshAll();

  EXPECT_THAT(prompter.Prompts(), ::testing::ElementsAre(HasSubstr("directory does not exist"),
                                                         HasSubstr("No drawing file selected")));
  EXPECT_TRUE(fs::exists(dir / "jobs" / "Smith subdivision.pvd"));
  EXPECT_EQ(window.Shell().state.ProjectFile, (dir / "jobs" / "Smith subdivision.pvd").string());
  const editor::EditorForm& form = window.Shell().frmEditor;
  EXPECT_TRUE(form.menus.mnuEdit.Enabled);
  EXPECT_TRUE(form.menus.mnuReport.Enabled);
  EXPECT_TRUE(form.InsertingParcel) << "ready for the first parcel";
  EXPECT_TRUE(form.txtParcel.Enabled);
  EXPECT_TRUE(window.Editor().isVisible());
  window.Shell().frmEditor.ExitConfirmed = true;
}

TEST_F(ApplicationTest, ASecondRunningCopyIsRefusedWithTheStoreWords) {
  const QString program = QString::fromStdString((fs::path(PARVENNA_APP_DIR) / "parvenna").string());
  // The program runs from this directory: copy it there, so that it holds
  // this directory's store.
  fs::copy_file(program.toStdString(), dir / "parvenna");
  QProcess first;
  QProcessEnvironment env = QProcessEnvironment::systemEnvironment();
  env.insert("QT_QPA_PLATFORM", "offscreen");
  first.setProcessEnvironment(env);
  first.start(QString::fromStdString((dir / "parvenna").string()), {});
  ASSERT_TRUE(first.waitForStarted(10000));

  // Wait until the first copy holds the store: the kernel's table of file
  // locks shows it, and looking there takes nothing from it.
  bool held = false;
  for (int attempt = 0; attempt < 200 && !held; ++attempt) {
    QTest::qWait(50);
    held = HoldsLock(first.processId(), dir / "ParvennaPro.pvs");
  }
  ASSERT_TRUE(held) << "the first copy never took the store";

  // This process is the second copy.
  bool refused = false;
  {
    ScriptedPrompter second;
    RecordingCanvas canvas;
    struct : shell::ShellWindows {
      std::optional<std::string> ShowOpen(const store::FileDialogRequest&) override { return {}; }
      void SetCaptions(const std::string&, const std::string&) override {}
      void SetEditorTopmost(bool) override {}
      void ShowMain() override {}
      void ShowEditor() override {}
      void MinimizeEditor() override {}
      void MinimizeMain() override {}
      void CloseMain() override {}
      void BringUpDrawing() override {}
      void RefreshDrawing() override {}
      double AreaWidth() const override { return 18000; }
      double AreaHeight() const override { return 12000; }
      void ShowRowMenu(int) override {}
      void ShowCreateDialog() override {}
      void ShowSettingDialog() override {}
      void ShowAbout(const std::string&) override {}
      void ShowReport(const std::string&) override {}
      bool OpenUrl(const std::string&) override { return true; }
    } windows;
    shell::Shell shell(dir.path().string(), second, canvas, windows);
    refused = !shell.Start("");
    ASSERT_EQ(second.shown.size(), 1u);
    EXPECT_EQ(second.shown[0].Prompt,
              "The database is already opened by another instance of Parvenna.\n"
              "The single-user version can only be used by one instance at a time.");
    EXPECT_EQ(second.shown[0].Icon, MsgIcon::Critical);
  }
  first.kill();
  first.waitForFinished(5000);
  EXPECT_TRUE(refused);
}

}  // namespace
}  // namespace parvenna::ui
