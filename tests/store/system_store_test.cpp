#include "store/system_store.h"

#include <gtest/gtest.h>

#include <filesystem>

#include "store/messages.h"
#include "tests/store/store_fixture.h"

namespace parvenna::store {
namespace {

using parvenna::testing::StoreWorld;

TEST(SuppliedSystemStore, KeepsItsColumnsAtThePositionsTheRoutinesRead) {
  StoreWorld world;
  Database db = world.system.OpenBriefly();
  std::vector<FieldInfo> fields = db.Fields("tblSetting");
  const std::pair<int, const char*> positions[] = {
      {system_columns::txtArc, "txtArc"},         {system_columns::txtChord, "txtChord"},
      {system_columns::txtRadius, "txtRadius"},   {system_columns::txtBearing, "txtBearing"},
      {system_columns::unitfeet, "unitfeet"},     {system_columns::SquareX, "SquareX"},
      {system_columns::Minimize, "Minimize"},     {system_columns::AddAreaCheck, "AddAreaCheck"},
      {system_columns::AutoInvert, "AutoInvert"}, {system_columns::TangentCheck, "TangentCheck"},
      {system_columns::WarningRanged, "WarningRanged"},
      {system_columns::TangentToleranced, "TangentToleranced"},
      {system_columns::Decimal, "Decimal"},       {system_columns::Tolerance, "Tolerance"},
      {system_columns::ToolTipOn, "ToolTipOn"},   {system_columns::TangentTolerancem, "TangentTolerancem"},
      {system_columns::TangentTolerances, "TangentTolerances"},
      {system_columns::WarningRangem, "WarningRangem"},
      {system_columns::WarningRanges, "WarningRanges"}, {system_columns::Bearing, "Bearing"},
      {system_columns::DegreeSymbol, "DegreeSymbol"},   {system_columns::BackColor, "BackColor"},
      {system_columns::ForeColor, "ForeColor"},   {system_columns::AutoName, "AutoName"},
      {system_columns::FirstRun, "FirstRun"}};
  ASSERT_EQ(fields.size(), 25u);
  for (auto [position, name] : positions) EXPECT_EQ(fields[static_cast<std::size_t>(position)].Name, name);
  EXPECT_EQ(fields[system_columns::DegreeSymbol].Size, 3);
  EXPECT_EQ(db.TableNames(), (std::vector<std::string>{"tblSetting", "tblRecentProject", "tblCredits"}));
  EXPECT_TRUE(db.Fields("tblRecentProject")[0].AutoIncrement);
  Recordset row = db.OpenRecordset("tblSetting");
  EXPECT_EQ(row.RecordCount(), 1);
  EXPECT_TRUE(row.Get("FirstRun").AsBool());
  EXPECT_TRUE(row.Get(system_columns::unitfeet).AsBool());
}

TEST(SystemStore, FirstRunIsReadOnceAndMakesTheSampleEntryWhole) {
  StoreWorld world;
  {
    Recordset rs = world.system.OpenBriefly().OpenRecordset("tblRecentProject");
    rs.AddNew();
    rs.Set("ProjectName", "keep.pvd");
    rs.Set("ProjectLocation", ".\\plans\\");  // only the bare prefix is rewritten
    rs.Update();
  }
  EXPECT_TRUE(world.system.ReadFirstRun(world.prompter));
  EXPECT_FALSE(world.system.ReadFirstRun(world.prompter));
  world.system.RewriteRelativeRecent();
  Recordset rs = world.system.OpenBriefly().OpenRecordset("tblRecentProject");
  EXPECT_EQ(rs.Get("ProjectLocation").AsText(), world.state.AppDirectory + "/");
  rs.MoveNext();
  EXPECT_EQ(rs.Get("ProjectLocation").AsText(), ".\\plans\\");
  EXPECT_TRUE(world.prompter.shown.empty());
}

TEST(SystemStore, RecentProjectsKeepOneRowPerProjectWhateverTheCase) {
  StoreWorld world;
  world.system.RecordRecentProject("/plans/Lot.pvd", world.prompter);
  world.system.RecordRecentProject("/PLANS/lot.PVD", world.prompter);
  world.system.RecordRecentProject("/plans/other.pvd", world.prompter);
  world.system.RecordRecentProject("/plans/lot.pvd", world.prompter);
  Recordset rs = world.system.OpenBriefly().OpenRecordset(
      "SELECT * FROM tblRecentProject ORDER BY AccessID DESC");
  EXPECT_EQ(rs.RecordCount(), 3);  // the sample, other, lot
  EXPECT_EQ(rs.Get("ProjectName").AsText(), "lot.pvd");
  EXPECT_EQ(rs.Get("ProjectLocation").AsText(), "/plans/");
}

TEST(SystemStore, TheMenuShowsTheTenNewestAndNeverShrinks) {
  StoreWorld world;
  for (int i = 1; i <= 12; ++i) {
    world.system.RecordRecentProject("/plans/p" + std::to_string(i) + ".pvd", world.prompter);
  }
  world.system.RecordRecentProject("\\\\server\\share\\net.pvd", world.prompter);
  ASSERT_TRUE(world.system.LoadRecentProjects(world.state, world.menu));
  ASSERT_EQ(world.menu.mnuHistory.size(), 10u);
  EXPECT_EQ(world.menu.mnuHistory[0].Caption, "\\\\/.../net.pvd");
  EXPECT_EQ(world.state.RecentProjects[0], "\\\\server\\share\\net.pvd");
  EXPECT_EQ(world.menu.mnuHistory[1].Caption, "/p/.../p12.pvd");
  EXPECT_EQ(world.state.RecentProjects[9], "/plans/p4.pvd");
  EXPECT_EQ(EditorCaption(world.menu), "Parvenna Editor - \\\\/.../net.pvd");

  // Rows gone from under a longer menu: the entries there are not all filled.
  world.system.OpenBriefly().Execute("DELETE FROM tblRecentProject WHERE AccessID < 10");
  EXPECT_FALSE(world.system.LoadRecentProjects(world.state, world.menu));
  EXPECT_EQ(world.menu.mnuHistory.size(), 10u);
  world.system.OpenBriefly().Execute("DELETE FROM tblRecentProject");
  EXPECT_FALSE(world.system.LoadRecentProjects(world.state, world.menu));
  EXPECT_TRUE(world.prompter.shown.empty());
}

TEST(SystemStore, TheStartMenuRewritesTheRelativeEntryOrStaysEmptyAndDisabled) {
  StoreWorld world;
  ASSERT_TRUE(world.system.FillRecentMenuAtStart(world.state, world.menu));
  EXPECT_EQ(world.state.RecentProjects[0], world.state.AppDirectory + "/sample_feet.pvd");

  StoreWorld empty;
  empty.system.OpenBriefly().Execute("DELETE FROM tblRecentProject");
  EXPECT_FALSE(empty.system.FillRecentMenuAtStart(empty.state, empty.menu));
  ASSERT_EQ(empty.menu.mnuHistory.size(), 1u);
  EXPECT_EQ(empty.menu.mnuHistory[0].Caption, messages::NoRecentProjects);
  EXPECT_FALSE(empty.menu.mnuHistory[0].Enabled);
  EXPECT_TRUE(empty.prompter.shown.empty());
}

// A project deep in folders, its path `length` characters long.
std::string DeepProject(StoreWorld& world, std::size_t length) {
  std::filesystem::path folder = world.dir.path();
  // The folders, then the last folder's name to make up the length, then
  // "/" and the 20 characters of the file's name.
  while (folder.string().size() + 1 + 120 + 1 + 21 < length) {
    folder /= std::string(120, static_cast<char>('a' + folder.string().size() % 26));
  }
  const std::size_t rest = length - folder.string().size() - 1 - 21;
  folder /= std::string(rest, 'z');
  std::filesystem::create_directories(folder);
  const std::string path = (folder / (std::string(16, 'p') + ".pvd")).string();
  EXPECT_EQ(path.size(), length);
  if (length <= Database::PathLimit()) world.MakeProject(path.substr(world.dir.path().string().size() + 1));
  return path;
}

TEST(SystemStore, ThePathsOfProjectsLongerThan255CharactersAreKept) {
  StoreWorld world;
  ASSERT_GE(Database::PathLimit(), 500u);
  const std::string path = DeepProject(world, Database::PathLimit());
  ASSERT_TRUE(world.Open(path));
  EXPECT_TRUE(world.prompter.shown.empty()) << world.prompter.Prompts()[0];
  EXPECT_EQ(world.state.RecentProjects[0], path);
  EXPECT_EQ(world.windows.mainCaption, "Parvenna Main - /t/.../" + std::string(16, 'p') + ".pvd")
      << "the captions name the project just opened";

  // One character more than a project's path can have: refused, and said why.
  world.prompter.shown.clear();
  const std::string longer = DeepProject(world, Database::PathLimit() + 1);
  EXPECT_FALSE(world.Open(longer));
  EXPECT_EQ(world.prompter.Prompts(),
            std::vector<std::string>{"Can't open the project: " + longer +
                                     "\nIts path is longer than the " +
                                     std::to_string(Database::PathLimit()) +
                                     " characters a project's path can have."});
  ASSERT_TRUE(world.system.LoadRecentProjects(world.state, world.menu));
  EXPECT_EQ(world.state.RecentProjects[0], path) << "what did not open is not recent";
}

TEST(SystemStore, AnOlderStoreWithLimitedPathsIsWidenedAtTheStart) {
  StoreWorld world;
  {
    Database db = world.system.OpenBriefly();
    db.ExecuteScript(
        "CREATE TABLE old (AccessID INTEGER PRIMARY KEY AUTOINCREMENT, AccessDate DATETIME, "
        "ProjectName TEXT(255), ProjectLocation TEXT(255));"
        "INSERT INTO old SELECT * FROM tblRecentProject; DROP TABLE tblRecentProject;"
        "ALTER TABLE old RENAME TO tblRecentProject;");
    ASSERT_EQ(db.Fields("tblRecentProject")[3].Size, 255);
  }
  ASSERT_TRUE(world.system.Open(world.prompter));
  Database db = world.system.OpenBriefly();
  EXPECT_EQ(db.Fields("tblRecentProject")[3].Size, 0);
  EXPECT_TRUE(db.Fields("tblRecentProject")[0].AutoIncrement);
  Recordset rows = db.OpenRecordset("tblRecentProject");
  EXPECT_EQ(rows.RecordCount(), 1) << "its rows kept";
  EXPECT_EQ(rows.Get("ProjectName").AsText(), "sample_feet.pvd");

  const std::string path = DeepProject(world, 400);
  ASSERT_TRUE(world.Open(path));
  EXPECT_TRUE(world.prompter.shown.empty());
  EXPECT_EQ(world.state.RecentProjects[0], path);
}

TEST(SystemStore, ACreatedProjectTrimsTheTableToTen) {
  StoreWorld world;
  for (int i = 0; i < 12; ++i) world.system.AddRecentProject("p" + std::to_string(i) + ".pvd", "/x/");
  Recordset rs = world.system.OpenBriefly().OpenRecordset("tblRecentProject");
  EXPECT_EQ(rs.RecordCount(), 10);
  EXPECT_EQ(rs.Get("ProjectName").AsText(), "p2.pvd");
}

TEST(SystemStore, DefaultsAreWrittenByPositionAndFailuresKeepTheProgramGoing) {
  StoreWorld world;
  world.system.WriteDefaultBearing(false, world.prompter);
  world.system.WriteDefaultUnit(true, world.prompter);
  world.system.SaveAutoName(false, world.prompter);
  EXPECT_FALSE(world.system.ReadAutoName(world.prompter));
  Recordset rs = world.system.OpenBriefly().OpenRecordset("tblSetting");
  EXPECT_FALSE(rs.Get("Bearing").AsBool());
  EXPECT_FALSE(rs.Get("unitfeet").AsBool());
  EXPECT_TRUE(world.prompter.shown.empty());

  std::filesystem::remove(world.system.Path());
  world.system.WriteDefaultBearing(true, world.prompter);
  EXPECT_FALSE(world.system.ReadAutoName(world.prompter));
  EXPECT_TRUE(world.system.RecordRecentProject("/a/b.pvd", world.prompter));
  EXPECT_FALSE(world.system.ReadFirstRun(world.prompter));
  EXPECT_EQ(world.prompter.Prompts(),
            (std::vector<std::string>{messages::DefaultNotChanged, messages::GeneralError,
                                      messages::RecentUpdateError, messages::OpenSystemDbError}));
  EXPECT_EQ(world.prompter.shown[0].Title, "Warning");
  EXPECT_EQ(world.system.ReadCredits(), "");
}

TEST(SystemStore, CreditsListEachContributionWithItsNames) {
  StoreWorld world;
  world.system.OpenBriefly().Execute(
      "INSERT INTO tblCredits VALUES ('Testing', 'A. Surveyor'), ('Testing', 'B. Examiner'), "
      "('Surveyor''s notes', 'C. Chain')");
  std::string credits = world.system.ReadCredits();
  EXPECT_NE(credits.find("\nTesting\nA. Surveyor\nB. Examiner\n"), std::string::npos);
  // An apostrophe breaks its own query: the contribution stands without names.
  EXPECT_NE(credits.find("\nSurveyor's notes\n"), std::string::npos);
  EXPECT_EQ(credits.find("C. Chain"), std::string::npos);
}

TEST(SystemStore, AStoreThatIsMissingOrNoStoreEndsTheProgramWithItsWords) {
  StoreWorld world;
  std::filesystem::remove(world.system.Path());
  EXPECT_FALSE(world.system.Open(world.prompter));
  parvenna::testing::WriteFile(world.system.Path(), "not a database at all");
  EXPECT_FALSE(world.system.Open(world.prompter));
  Database::Create(world.system.Path() + ".other").Append(TableDef{"t", {{"a", FieldType::Long}}});
  std::filesystem::rename(world.system.Path() + ".other", world.system.Path());
  EXPECT_FALSE(world.system.Open(world.prompter));
  ASSERT_EQ(world.prompter.shown.size(), 3u);
  for (const Message& m : world.prompter.shown) {
    EXPECT_EQ(m.Prompt, messages::StoreMissing);
    EXPECT_EQ(m.Icon, MsgIcon::Critical);
  }
}

}  // namespace
}  // namespace parvenna::store
