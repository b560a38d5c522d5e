#include "store/create_form.h"

#include <gtest/gtest.h>

#include "store/messages.h"
#include "store/paths.h"
#include "tests/store/store_fixture.h"

namespace parvenna::store {
namespace {

using parvenna::testing::StoreWorld;

struct CreateWorld : StoreWorld {
  CreateForm form{state, prompter, system, opener, windows};
  CreateWorld() {
    form.Form_Load();
    form.Form_Activate();
  }
};

struct AutoNameCase {
  const char* drawing;
  const char* typedLocation;
  const char* typedName;
  int autoName;
  const char* location;  // expected; "@" stands for the drawing's directory
  const char* name;
};

TEST(CreateForm, NamesTheProjectAfterItsDrawingOnlyWhenNothingWasTyped) {
  const AutoNameCase cases[] = {
      {"lot.12.dwg", "", "", 1, "@", "lot"},     // the first full stop counts
      {"lot12", "", "", 1, "@", ""},             // no full stop: no name
      {"lot.dwg", "/typed/", "", 1, "/typed/", ""},  // a typed location stops it all
      {"lot.dwg", "", "mine", 1, "", "mine"},
      {"lot.dwg", "", "", 0, "", ""},
  };
  for (const AutoNameCase& c : cases) {
    CreateWorld world;
    std::string drawing = world.Path(c.drawing);
    parvenna::testing::WriteFile(drawing, "0\nEOF\n");
    world.form.chkAutoName.Value = c.autoName;
    world.form.SetProjectLocation(c.typedLocation);
    world.form.SetProjectName(c.typedName);
    world.windows.openAnswer = drawing;
    world.form.cmdBrowseCAD_Click();
    EXPECT_EQ(world.form.txtCADFile.Text, drawing);
    std::string location = std::string(c.location) == "@" ? DirectoryOfPath(drawing) : c.location;
    EXPECT_EQ(world.form.txtProjectLocation.Text, location) << c.drawing;
    EXPECT_EQ(world.form.txtProjectName.Text, c.name) << c.drawing;
    EXPECT_EQ(world.form.cmdCreate.Enabled, std::string(c.name) != "") << c.drawing;
  }
}

TEST(CreateForm, RefusesBadDrawingsAndExistingProjectsAndKeepsTheDialog) {
  CreateWorld world;
  world.form.SetProjectLocation(world.state.AppDirectory);
  world.form.SetProjectName("sample_feet");
  world.form.SetCadFile(world.Path("missing.dwg"));
  world.form.cmdCreate_Click();
  EXPECT_EQ(world.form.Focus, "txtCADFile");

  std::string dir = world.state.AppDirectory + "/";
  std::string exact = dir + std::string(255 - dir.size() - 4, 'd') + ".dwg";
  world.form.SetCadFile(exact + "x");
  world.form.cmdCreate_Click();
  world.form.SetCadFile(exact);  // 255 characters pass the length test
  world.form.cmdCreate_Click();

  world.form.SetCadFile("");
  world.prompter.Answer({MsgAnswer::No, MsgAnswer::Yes});
  world.form.cmdCreate_Click();
  world.form.cmdCreate_Click();
  EXPECT_EQ(world.form.Focus, "txtProjectName");
  EXPECT_EQ(world.prompter.Prompts(),
            (std::vector<std::string>{messages::DrawingNotFound, messages::DrawingPathTooLong,
                                      messages::DrawingNotFound, messages::AskNoDrawing,
                                      messages::AskNoDrawing, messages::ProjectExists}));
  EXPECT_TRUE(world.form.Loaded);
  EXPECT_TRUE(world.state.ProjectFile.empty());
  EXPECT_TRUE(world.windows.calls.empty());
}

TEST(CreateForm, MakesAMissingDirectoryOnlyWhenAskedTo) {
  CreateWorld world;
  std::string dir = world.Path("new/deeper");
  world.form.SetProjectLocation(dir);
  world.form.SetProjectName("a.b");
  world.prompter.Answer({MsgAnswer::No});
  world.form.cmdCreate_Click();
  EXPECT_EQ(world.form.Focus, "txtProjectLocation");
  EXPECT_FALSE(DirectoryExists(dir));
  EXPECT_EQ(world.prompter.shown[0].Title, messages::CreateDirectoryTitle);
  EXPECT_EQ(world.prompter.shown[0].DefaultButton, 2);

  world.prompter.Answer({MsgAnswer::Yes, MsgAnswer::Yes});
  world.form.cmdCreate_Click();
  EXPECT_TRUE(FileExists(dir + "/a.b.pvd"));  // full stops stay in the name
  EXPECT_EQ(world.state.ProjectFile, dir + "/a.b.pvd");

  // A failure after the directory was made is reported as the directory's.
  CreateWorld broken;
  std::filesystem::remove(broken.system.Path());
  broken.form.SetProjectLocation(broken.Path("other"));
  broken.form.SetProjectName("p");
  broken.prompter.Answer({MsgAnswer::Yes, MsgAnswer::Yes});
  broken.form.cmdCreate_Click();
  EXPECT_EQ(broken.prompter.Prompts().back(), messages::DirectoryNotCreated);
  EXPECT_FALSE(FileExists(broken.Path("other/p.pvd")));  // nothing half made is left
}

TEST(CreateForm, ACreatedProjectBecomesCurrentAndTheChoiceOfAutoNamingIsKept) {
  CreateWorld world;
  world.form.chkAutoName.Value = 0;
  world.form.SetProjectLocation("");  // lands beside the program
  world.form.SetProjectName("fresh");
  world.form.SetCadFile(world.Path("sample_feet.dxf"));
  world.form.cmdCreate_Click();
  std::string project = world.state.AppDirectory + "/fresh.pvd";
  EXPECT_EQ(world.state.ProjectFile, project);
  EXPECT_EQ(world.state.DrawingFile, world.Path("sample_feet.dxf"));
  EXPECT_FALSE(world.form.Loaded);
  EXPECT_TRUE(world.form.txtProjectName.Text.empty());
  EXPECT_EQ(world.state.RecentProjects[0], project);
  EXPECT_EQ(world.windows.editorCaption, "Parvenna Editor - " + world.state.AppDirectory.substr(0, 2) + "/.../fresh.pvd");
  EXPECT_FALSE(world.system.ReadAutoName(world.prompter));
  EXPECT_EQ(world.windows.calls,
            (std::vector<std::string>{"ShowEditor", "ShowBackColourMenu", "SettingsLoaded",
                                      "ShowForeColourMenu 256", "ShowBackColourMenu",
                                      "EnableEditorFrames", "OpenDrawing", "CurrentCadDisabled",
                                      "ShowDrawingPath", "ShowNewParcelState", "SetCaptions",
                                      "RefreshParcelList"}));
  EXPECT_TRUE(world.prompter.shown.empty());
}

TEST(CreateForm, CancellingOrClosingNeverStoresTheAutoNameChoice) {
  for (bool byCloseBox : {false, true}) {
    CreateWorld world;
    world.form.chkAutoName.Value = 0;
    if (byCloseBox) {
      world.form.Form_Unload();
    } else {
      world.form.cmdCancel_Click();
    }
    EXPECT_TRUE(world.system.ReadAutoName(world.prompter));
    EXPECT_FALSE(world.windows.Called("ShowNewParcelState"));
  }
}

TEST(CreateForm, TheLocatedDirectoryIsTakenOnceWhenTheDialogComesBack) {
  CreateWorld world;
  world.form.cmdBrowseLoc_Click();
  EXPECT_TRUE(world.form.frmDirLocate.Visible);
  world.form.frmDirLocate.Drive1_Change("/nonexistent-drive", world.prompter);
  EXPECT_EQ(world.prompter.Prompts(), std::vector<std::string>{messages::DeviceNotReady});
  world.form.frmDirLocate.Dir1Path = world.state.AppDirectory;
  world.form.frmDirLocate.cmdOK_Click();
  world.form.Form_Activate();
  EXPECT_EQ(world.form.txtProjectLocation.Text, world.state.AppDirectory + "/");
  world.form.SetProjectLocation("typed");
  world.form.Form_Activate();
  EXPECT_EQ(world.form.txtProjectLocation.Text, "typed");
}

}  // namespace
}  // namespace parvenna::store
