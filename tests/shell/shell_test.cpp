#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <filesystem>

#include "shell/shell.h"
#include "store/store.h"
#include "tests/store/temp_dir.h"
#include "tests/support/recording_canvas.h"
#include "tests/support/scripted_prompter.h"

namespace parvenna::shell {
namespace {

namespace fs = std::filesystem;
using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::StartsWith;
using parvenna::testing::RecordingCanvas;
using parvenna::testing::ScriptedPrompter;
using parvenna::testing::TempDir;

class RecordingWindows : public ShellWindows {
 public:
  std::optional<std::string> openAnswer;
  std::vector<std::string> urls, reports;
  std::string editorCaption, mainCaption;
  bool topmost = false;
  bool urlsOpen = true;  // whether the desktop has a program for a link
  int mainShown = 0;
  int createShown = 0, settingShown = 0, mainMinimised = 0, closeRequests = 0, drawings = 0;

  std::optional<std::string> ShowOpen(const store::FileDialogRequest&) override { return openAnswer; }
  void SetCaptions(const std::string& e, const std::string& m) override {
    editorCaption = e;
    mainCaption = m;
  }
  void SetEditorTopmost(bool t) override { topmost = t; }
  void ShowMain() override { ++mainShown; }
  void ShowEditor() override {}
  void MinimizeEditor() override {}
  void MinimizeMain() override { ++mainMinimised; }
  void CloseMain() override { ++closeRequests; }
  void BringUpDrawing() override {}
  void RefreshDrawing() override { ++drawings; }
  double AreaWidth() const override { return 18000; }
  double AreaHeight() const override { return 12000; }
  void ShowRowMenu(int) override {}
  void ShowCreateDialog() override { ++createShown; }
  void ShowSettingDialog() override { ++settingShown; }
  void ShowAbout(const std::string&) override {}
  void ShowReport(const std::string& caption) override { reports.push_back(caption); }
  bool OpenUrl(const std::string& url) override {
    urls.push_back(url);
    return urlsOpen;
  }
};

// A program directory of its own, with the supplied store and samples.
class ShellTest : public ::testing::Test {
 protected:
  ShellTest() {
    parvenna::testing::CopySupplied(dir.path(), {"ParvennaPro.pvs", "sample_feet.pvd",
                                                 "sample_metres.pvd", "sample_feet.dxf"});
  }

  Shell& StartWith(const std::string& commandLine = "") {
    shell = std::make_unique<Shell>(dir.path().string(), prompter, canvas, windows);
    started = shell->Start(commandLine);
    return *shell;
  }

  void SetFirstRun(bool value) {
    store::Database db = store::Database::Open(dir / "ParvennaPro.pvs");
    db.Execute(std::string("UPDATE tblSetting SET FirstRun = ") + (value ? "1" : "0"));
  }

  TempDir dir;
  ScriptedPrompter prompter;
  RecordingCanvas canvas{4995, 4995};
  RecordingWindows windows;
  std::unique_ptr<Shell> shell;
  bool started = false;
};

TEST_F(ShellTest, WithoutAProjectOnlyFileWindowsAndHelpRespond) {
  SetFirstRun(false);
  Shell& s = StartWith();
  ASSERT_TRUE(started);
  const editor::EditorMenus& e = s.frmEditor.menus;
  EXPECT_FALSE(e.mnuEdit.Enabled);
  EXPECT_FALSE(e.mnuView.Enabled);
  EXPECT_FALSE(e.mnuOptions.Enabled);
  EXPECT_FALSE(e.mnuReport.Enabled);
  EXPECT_TRUE(s.menu.mnuFile.Enabled);
  EXPECT_TRUE(s.menu.mnuWindows.Enabled);
  EXPECT_TRUE(s.menu.mnuHelpMain.Enabled);
  s.MenuDropDown("mnuOptions");
  EXPECT_FALSE(s.menu.mnuSetting.Enabled);
  EXPECT_TRUE(prompter.shown.empty());
  EXPECT_TRUE(s.menu.mnuWhite.Checked);
  EXPECT_TRUE(s.menu.mnuFOriginal.Checked);
}

TEST_F(ShellTest, AtTheStartTheCaptionsNameTheMostRecentProjectIfThereIsOne) {
  SetFirstRun(false);
  Shell& s = StartWith();
  ASSERT_TRUE(started);
  EXPECT_EQ(windows.mainCaption, "Parvenna Main - " + s.menu.mnuHistory[0].Caption);
  EXPECT_EQ(windows.editorCaption, "Parvenna Editor - " + s.menu.mnuHistory[0].Caption);
  EXPECT_THAT(windows.mainCaption, HasSubstr("sample_feet.pvd"));

  // With no recent project the start says nothing and names nothing.
  shell.reset();
  store::Database::Open(dir / "ParvennaPro.pvs").Execute("DELETE FROM tblRecentProject");
  windows.mainCaption.clear();
  EXPECT_EQ(StartWith().menu.mnuHistory[0].Caption, "No recent projects");
  EXPECT_TRUE(windows.mainCaption.empty());
}

TEST_F(ShellTest, AProjectOnTheCommandLineOpensWithItsFirstParcel) {
  SetFirstRun(false);
  const std::string project = (dir / "sample_feet.pvd").string();
  Shell& s = StartWith("\"" + project + "\"");
  EXPECT_TRUE(prompter.shown.empty()) << prompter.Prompts()[0];
  EXPECT_EQ(s.state.ProjectFile, project);
  EXPECT_TRUE(s.frmEditor.menus.mnuEdit.Enabled);
  EXPECT_EQ(s.frmEditor.cbxParcel.ListIndex, 0);
  EXPECT_EQ(s.frmEditor.txtParcel.Text, "Lot 101");
  EXPECT_FALSE(s.frmEditor.results.lblClosure.Caption.empty());
  EXPECT_THAT(windows.mainCaption, HasSubstr("sample_feet.pvd"));
  EXPECT_EQ(windows.drawings, 1);
  EXPECT_EQ(windows.mainShown, 1);
  // The recent menu names the project just opened first.
  EXPECT_THAT(s.menu.mnuHistory[0].Caption, HasSubstr("sample_feet.pvd"));
  EXPECT_EQ(s.state.RecentProjects[0], project);

  s.MenuDropDown("mnuOptions");
  EXPECT_TRUE(s.menu.mnuSetting.Enabled);
}

TEST_F(ShellTest, CommandLinesThatNameNoProjectAreIgnoredWithoutAWord) {
  SetFirstRun(false);
  const std::vector<std::string> lines{".pvd", "a.txt", "\"\"", "  ",
                                       (dir / "missing.pvd").string()};
  for (const std::string& line : lines) {
    StartWith(line);
    EXPECT_TRUE(shell->frmEditor.cbxParcel.List.empty()) << line;
    EXPECT_FALSE(shell->frmEditor.menus.mnuEdit.Enabled) << line;
  }
  EXPECT_TRUE(prompter.shown.empty());
  // A trailing blank passes the test; the path keeps it, and names no file.
  StartWith((dir / "sample_feet.pvd").string() + " ");
  EXPECT_FALSE(shell->frmEditor.menus.mnuEdit.Enabled);
}

TEST_F(ShellTest, TheFirstRunAsksItsTwoQuestionsOnce) {
  SetFirstRun(true);
  prompter.Answer({MsgAnswer::No, MsgAnswer::No});
  StartWith();
  EXPECT_THAT(prompter.Prompts(),
              ElementsAre("What unit of angular measurement would you like to be the default? "
                          "Yes = Bearing, No = Azimuth.",
                          "What unit of linear measurement would you like to be the default?  "
                          "yes = Metric, No = Imperial."));
  EXPECT_EQ(prompter.shown[0].Title, "Initial configuration");
  {
    store::Database db = store::Database::Open(dir / "ParvennaPro.pvs");
    store::Recordset rs = db.OpenRecordset("SELECT * FROM tblSetting");
    EXPECT_FALSE(rs.Get("Bearing").AsBool()) << "No: azimuths";
    EXPECT_TRUE(rs.Get("unitfeet").AsBool()) << "No: imperial";
  }
  shell.reset();  // the store is let go, as at the end of a run
  prompter.shown.clear();
  StartWith();
  EXPECT_TRUE(prompter.shown.empty());
}

TEST_F(ShellTest, EditMenuEntriesFollowSavingAndTheCurrentRow) {
  SetFirstRun(false);
  Shell& s = StartWith(dir.WithSeparator() + "sample_feet.pvd");
  s.MenuDropDown("mnuEdit");
  EXPECT_FALSE(s.menu.mnuDeleteCourse.Enabled) << "viewing: cmdSave is off";
  EXPECT_FALSE(s.menu.mnuNorthing.Enabled);

  s.MenuClick("mnuEditMode");
  s.frmEditor.SetFocus({editor::FocusKind::Field, 1, CourseField::BearingLine});
  s.MenuDropDown("mnuEdit");
  EXPECT_TRUE(s.menu.mnuDeleteCourse.Enabled);
  EXPECT_TRUE(s.menu.mnuNorthing.Enabled);
  EXPECT_EQ(s.menu.mnuChangeLineCurve.Caption, "Change to curve");

  s.MenuClick("mnuFullReport");
  EXPECT_THAT(prompter.Prompts(),
              ElementsAre("Please save the current parcel before printing reports."));
  EXPECT_TRUE(windows.reports.empty());
  s.MenuClick("mnuCancelParcel");
  s.MenuClick("mnuSumReport");
  s.MenuClick("mnuMapcheckReport");
  EXPECT_THAT(windows.reports, ElementsAre("Parvenna summary report", "Parvenna mapcheck"));
  s.MenuClick("mnuEditMode");
  s.MenuClick("mnuMapcheckReport");
  EXPECT_EQ(prompter.Prompts().back(), "Please save the current parcel before printing reports.");
  EXPECT_EQ(windows.reports.size(), 2u);
  s.MenuClick("mnuNew");
  s.MenuClick("mnuOpen");
  EXPECT_EQ(prompter.Prompts().back(), "Please save the current parcel before opening a new project.");
  EXPECT_EQ(windows.createShown, 0);
}

TEST_F(ShellTest, ColourEntriesTickTheirRowAndAreStored) {
  SetFirstRun(false);
  Shell& s = StartWith(dir.WithSeparator() + "sample_feet.pvd");
  s.MenuClick("mnuYellow");
  EXPECT_TRUE(s.menu.mnuYellow.Checked);
  EXPECT_FALSE(s.menu.mnuWhite.Checked);
  s.MenuClick("mnuFBlue");
  EXPECT_TRUE(s.menu.mnuFBlue.Checked);
  EXPECT_FALSE(s.menu.mnuFOriginal.Checked);
  store::Database db = store::Database::Open(s.state.ProjectFile);
  store::Recordset rs = db.OpenRecordset("SELECT * FROM tblSetting");
  EXPECT_EQ(rs.Get("BackColor").AsInteger(), 2);
  EXPECT_EQ(rs.Get("ForeColor").AsInteger(), 5);
}

TEST_F(ShellTest, ExitIsConfirmedOnce) {
  SetFirstRun(false);
  Shell& s = StartWith();
  prompter.Answer({MsgAnswer::No, MsgAnswer::Yes});
  EXPECT_FALSE(s.QueryUnload());
  EXPECT_TRUE(s.QueryUnload());
  EXPECT_TRUE(s.QueryUnload());
  EXPECT_THAT(prompter.Prompts(), ElementsAre("Exit Parvenna?", "Exit Parvenna?"));
  s.MenuClick("mnuExit");
  EXPECT_EQ(windows.closeRequests, 1);
}

TEST_F(ShellTest, HelpEntriesLeadOutOfTheProgram) {
  SetFirstRun(false);
  Shell& s = StartWith();
  s.MenuClick("mnuHelp");
  EXPECT_EQ(windows.mainMinimised, 1) << "help leaves the main window minimised";
  ASSERT_THAT(windows.urls.back(), StartsWith("file://"));
  EXPECT_TRUE(fs::is_regular_file(windows.urls.back().substr(7)))
      << "the guide supplied with the program, wherever the program's directory is";
  s.MenuClick("mnuVideoQuick");
  EXPECT_THAT(prompter.Prompts().back(), HasSubstr("No training video is installed"));
  s.MenuClick("mnuSupport");
  EXPECT_THAT(windows.urls.back(), HasSubstr("mailto:"));

  // Nothing on the desktop opens a link: a box names it, and the main window
  // stays up for the help.
  windows.urlsOpen = false;
  prompter.shown.clear();
  s.MenuClick("mnuHelp");
  s.MenuClick("mnuFAQ");
  EXPECT_EQ(windows.mainMinimised, 1);
  EXPECT_THAT(prompter.Prompts(), ElementsAre(HasSubstr("help/index.html"), HasSubstr("/faq")));
}

TEST_F(ShellTest, AMissingSystemStoreEndsTheStart) {
  fs::remove(dir / "ParvennaPro.pvs");
  StartWith();
  EXPECT_FALSE(started);
  EXPECT_EQ(windows.mainShown, 0) << "the splash stands alone with the box";
  ASSERT_FALSE(prompter.shown.empty());
  EXPECT_THAT(prompter.shown.back().Prompt,
              HasSubstr("Parvenna could not find the database or it has become corrupted."));
  EXPECT_EQ(prompter.shown.back().Icon, MsgIcon::Critical);
}

}  // namespace
}  // namespace parvenna::shell
