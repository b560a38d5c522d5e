#include "store/project_opening.h"

#include <gtest/gtest.h>

#include "store/messages.h"
#include "store/paths.h"
#include "store/places.h"
#include "tests/store/store_fixture.h"

namespace parvenna::store {
namespace {

using parvenna::testing::StoreWorld;

TEST(Paths, StoredPathsFromEitherSystemResolve) {
  struct Case {
    const char* stored;
    const char* app;
    const char* resolved;
  } cases[] = {
      {".\\plans\\a.dwg", "/app", "/app/plans/a.dwg"},
      {"./plans/a.dwg", "/app/", "/app/plans/a.dwg"},
      {".\\a.dwg", "/app\\", "/app/a.dwg"},
      {"", "/app", ""},
      {"C:\\plans\\.\\a.dwg", "/app", "C:\\plans\\.\\a.dwg"},  // not relative: as stored
      {"..\\a.dwg", "/app", "..\\a.dwg"},
  };
  for (const Case& c : cases) EXPECT_EQ(ResolveDrawingPath(c.stored, c.app), c.resolved) << c.stored;
  EXPECT_EQ(FileNameOfPath("C:\\plans\\lot.pvd"), "lot.pvd");
  EXPECT_EQ(FileNameOfPath("/plans/lot.pvd"), "lot.pvd");
  EXPECT_EQ(FileNameOfPath("lot.pvd"), "lot.pvd");
  EXPECT_EQ(DirectoryOfPath("C:\\plans\\lot.pvd"), "C:\\plans\\");
}

TEST(CommandLine, NamesAProjectOnlyByItsExtension) {
  struct Case {
    const char* line;
    const char* path;
  } cases[] = {
      {"\"/x/a.pvd\"", "/x/a.pvd"}, {"/x/a.PVD ", "/x/a.PVD "},  // the test trims, the path does not
      {"a.pv", ""},                 {".pvd", ""},
      {"/x/a.txt", ""},             {"", ""},
  };
  for (const Case& c : cases) EXPECT_EQ(ProjectOfCommandLine(c.line), c.path) << c.line;
}

TEST(Opening, EachEntranceRunsTheCommonSequenceWithItsOwnParcelStep) {
  StoreWorld history;
  history.state.RecentProjects[0] = history.Path("sample_feet.pvd");
  history.opener.mnuHistory_Click(0);
  EXPECT_EQ(history.windows.calls,
            (std::vector<std::string>{"ShowBackColourMenu", "SettingsLoaded", "ShowForeColourMenu 256",
                                      "ShowBackColourMenu", "EnableEditorFrames", "ShowParcels",
                                      "OpenDrawing", "CurrentCadDisabled", "ShowDrawingPath",
                                      "ClearEditingFlag", "SetCaptions"}));
  EXPECT_EQ(history.state.RecentProjects[0], history.Path("sample_feet.pvd"));

  StoreWorld open;
  open.windows.openAnswer = open.Path("sample_metres.pvd");
  open.windows.drawingOpens = false;
  open.opener.mnuOpen_Click();
  EXPECT_EQ(open.state.ProjectFile, open.Path("sample_metres.pvd"));
  EXPECT_FALSE(open.windows.Called("ShowParcels"));
  EXPECT_TRUE(open.windows.Called("CurrentCadEnabled"));  // a retry of the failed drawing
  EXPECT_EQ(open.windows.calls.back(), "ShowOpenedProject");
  EXPECT_EQ(open.windows.calls.front(), "NotTopmost");

  StoreWorld line;
  line.opener.OpenFromCommandLine("\"" + line.Path("sample_feet.pvd") + "\"");
  EXPECT_TRUE(line.windows.Called("ShowParcels"));
  EXPECT_EQ(line.state.ProjectFile, line.Path("sample_feet.pvd"));
  for (StoreWorld* w : {&history, &open, &line}) EXPECT_TRUE(w->prompter.shown.empty());
}

TEST(Opening, AnOpenFailsWithTheEntrancesOwnWordsWhenTheRecentListCannotBeRead) {
  struct Case {
    const char* entrance;
    const char* words;
  } cases[] = {{"open", messages::OpenRecentFailed}, {"history", messages::HistoryRecentFailed}};
  for (const Case& c : cases) {
    StoreWorld world;
    std::string project = world.Path("sample_feet.pvd");
    // The store refuses the new row, and its table is empty: the list fails.
    world.system.OpenBriefly().ExecuteScript(
        "DELETE FROM tblRecentProject;"
        "CREATE TRIGGER refuse BEFORE INSERT ON tblRecentProject BEGIN SELECT RAISE(ABORT, 'no'); END;");
    if (std::string(c.entrance) == "open") {
      world.windows.openAnswer = project;
      world.opener.mnuOpen_Click();
    } else {
      world.state.RecentProjects[0] = project;
      world.opener.mnuHistory_Click(0);
    }
    EXPECT_EQ(world.prompter.Prompts(),
              (std::vector<std::string>{messages::RecentUpdateError, c.words}));
    EXPECT_EQ(world.state.ProjectFile, project);  // it stays current all the same
  }
}

TEST(Opening, ASavePendingOrACancelledDialogChangesNothing) {
  StoreWorld world;
  world.state.ProjectFile = "before.pvd";
  world.windows.saveEnabled = true;
  world.opener.mnuOpen_Click();
  world.opener.mnuHistory_Click(0);
  EXPECT_EQ(world.prompter.Prompts(),
            (std::vector<std::string>{messages::SaveBeforeNew, messages::SaveBeforeAnother}));
  world.windows.saveEnabled = false;
  world.opener.mnuOpen_Click();  // no answer: cancelled
  EXPECT_EQ(world.windows.calls, (std::vector<std::string>{"NotTopmost", "ShowOpen Parvenna", "Topmost"}));
  world.windows.openAnswer = world.Path("absent.pvd");
  world.opener.mnuOpen_Click();
  EXPECT_EQ(world.state.ProjectFile, "before.pvd");
  EXPECT_EQ(world.prompter.shown.size(), 2u);
}

TEST(Opening, AMissingDrawingFallsBackToTheDefaultAndTheFileKeepsItsPath) {
  StoreWorld world;
  std::string project = world.MakeProject("lost.pvd", ".\\lost.dwg");
  ASSERT_TRUE(world.Open(project));
  std::string lost = world.state.AppDirectory + "/lost.dwg";
  EXPECT_EQ(world.prompter.Prompts(),
            std::vector<std::string>{messages::CantOpenDrawingStart + lost + messages::CantOpenDrawingEnd});
  EXPECT_EQ(world.state.DrawingFile, SuppliedFile("default.dxf"));
  EXPECT_TRUE(std::filesystem::is_regular_file(world.state.DrawingFile));
  EXPECT_EQ(Database::Open(project).OpenRecordset("tblSetting").Get("AutoCADFile").AsText(), ".\\lost.dwg");

  // A default.dwg that a user put in the program's directory wins over the one supplied.
  parvenna::testing::WriteFile(world.Path("default.dwg"), "");
  world.prompter.shown.clear();
  ASSERT_TRUE(world.Open(project));
  EXPECT_EQ(world.state.DrawingFile, world.state.AppDirectory + "/default.dwg");
}

TEST(Opening, RelocatingWritesTheNewDrawingAndForgetsTheOldViews) {
  StoreWorld world;
  std::string project = world.MakeProject("moved.pvd", ".\\sample_feet.dxf");
  ASSERT_TRUE(world.Open(project));
  world.state.ViewZoom[0] = 3;
  world.windows.calls.clear();
  world.windows.openAnswer = world.Path("sample_metres.dxf");
  world.opener.mnuRelocateCAD_Click();
  // The dialog offers every drawing that can be read at once, DXF included.
  EXPECT_EQ(world.windows.lastOpen.Filter.substr(0, 47), "Drawings (*.dwg *.dxf *.dgn)|*.dwg;*.dxf;*.dgn|");
  EXPECT_EQ(world.windows.lastOpen.FilterIndex, 1);
  EXPECT_EQ(world.state.DrawingFile, world.Path("sample_metres.dxf"));
  EXPECT_EQ(world.state.ViewZoom[0], 0);
  EXPECT_EQ(Database::Open(project).OpenRecordset("tblSetting").Get("AutoCADFile").AsText(),
            world.Path("sample_metres.dxf"));
  EXPECT_EQ(world.windows.calls.back(), "Topmost");
  EXPECT_TRUE(world.windows.Called("OpenDrawing"));

  // A path too long for the file is refused, and the old drawing stays.
  std::string longName = world.Path(std::string(250, 'x') + ".dxf");
  parvenna::testing::WriteFile(longName, "");
  world.windows.openAnswer = longName;
  world.opener.mnuRelocateCAD_Click();
  EXPECT_EQ(world.prompter.Prompts(),
            (std::vector<std::string>{messages::GeneralError, messages::RelocateFailed}));
  EXPECT_EQ(world.state.DrawingFile, world.Path("sample_metres.dxf"));
}

TEST(Opening, TheCurrentProjectCanBeOpenedAgainAndMovesToTheTop) {
  StoreWorld world;
  world.system.RecordRecentProject(world.Path("sample_metres.pvd"), world.prompter);
  ASSERT_TRUE(world.Open(world.Path("sample_feet.pvd")));
  world.system.RecordRecentProject(world.Path("sample_metres.pvd"), world.prompter);
  ASSERT_TRUE(world.Open(world.Path("sample_feet.pvd")));
  EXPECT_EQ(world.state.RecentProjects[0], world.Path("sample_feet.pvd"));
  EXPECT_EQ(world.state.RecentProjects[1], world.Path("sample_metres.pvd"));
  EXPECT_EQ(world.menu.mnuHistory.size(), 3u);  // the two, and the supplied sample's entry
}

}  // namespace
}  // namespace parvenna::store
