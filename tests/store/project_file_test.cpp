#include "store/project_file.h"

#include <gtest/gtest.h>

#include <functional>
#include <random>

#include "store/messages.h"
#include "store/paths.h"
#include "store/setting_form.h"
#include "tests/store/store_fixture.h"

namespace parvenna::store {
namespace {

using parvenna::testing::ReadFile;
using parvenna::testing::StoreWorld;
using parvenna::testing::WriteFile;

struct Column {
  std::string name;
  FieldType type;
  int size;
  bool autoIncrement;
  friend bool operator==(const Column&, const Column&) = default;
};

std::vector<Column> Columns(const Database& db, const std::string& table) {
  std::vector<Column> out;
  for (const FieldInfo& f : db.Fields(table)) out.push_back({f.Name, f.Type, f.Size, f.AutoIncrement});
  return out;
}

std::vector<Column> Expected(const TableDef& table) {
  std::vector<Column> out;
  for (const FieldDef& f : table.Fields) out.push_back({f.Name, f.Type, f.Size, f.AutoIncrement});
  return out;
}

TEST(ProjectFile, ANewProjectAndTheSamplesHaveExactlyTheFormat) {
  StoreWorld world;
  std::string made = world.MakeProject("new.pvd", ".\\sample_feet.dxf");
  for (const std::string& path : {made, world.Path("sample_feet.pvd"), world.Path("sample_metres.pvd")}) {
    SCOPED_TRACE(path);
    Database db = Database::Open(path);
    EXPECT_EQ(db.TableNames(), (std::vector<std::string>{"tblSetting", "tblParcel", "tblMeasurements"}));
    EXPECT_EQ(Columns(db, "tblSetting"), Expected(ProjectSettingTable()));
    EXPECT_EQ(Columns(db, "tblParcel"), Expected(ParcelTable()));
    EXPECT_EQ(Columns(db, "tblMeasurements"), Expected(MeasurementTable()));
    std::vector<IndexDef> indexes = db.Indexes("tblParcel");
    ASSERT_EQ(indexes.size(), 1u);
    EXPECT_EQ(indexes[0].Name, "TempIndex");
    EXPECT_TRUE(indexes[0].Unique);
    EXPECT_EQ(indexes[0].Fields, std::vector<std::string>{"Parcel"});
    EXPECT_TRUE(db.Indexes("tblMeasurements").empty());
    EXPECT_EQ(db.OpenRecordset("tblSetting").RecordCount(), 1);
  }
  // The first row comes from the defaults, the views from no default at all.
  Recordset row = Database::Open(made).OpenRecordset("tblSetting");
  Recordset defaults = world.system.OpenBriefly().OpenRecordset("tblSetting");
  EXPECT_EQ(row.Get("ErrDecimal"), defaults.Get("Decimal"));
  EXPECT_EQ(row.Get("ClosureTolerance"), defaults.Get("Tolerance"));
  EXPECT_EQ(row.Get("unitfeet"), defaults.Get("unitfeet"));
  EXPECT_EQ(row.Get("TangentTolerances"), defaults.Get("TangentTolerances"));
  EXPECT_EQ(row.Get("AutoCADFile").AsText(), ".\\sample_feet.dxf");
  EXPECT_EQ(row.Get("ZoomFactor1").AsDouble(), 0);
  EXPECT_EQ(row.Get("TRX1").AsDouble(), 1);
  EXPECT_EQ(row.Get("TRY2").AsDouble(), 1);
}

TEST(ProjectFile, ASecondParcelOfTheSameNameIsRefusedAndNothingIsStored) {
  StoreWorld world;
  Database db = Database::Open(world.Path("sample_feet.pvd"));
  Recordset parcels = db.OpenRecordset("tblParcel");
  long before = parcels.RecordCount();
  parcels.AddNew();
  parcels.Set("Parcel", "Lot 101");
  parcels.Set("Area", 5.0);
  try {
    parcels.Update();
    FAIL() << "a duplicate name was stored";
  } catch (const StoreError& e) {
    EXPECT_EQ(e.Code(), errors::DuplicateKey);
  }
  EXPECT_EQ(db.OpenRecordset("tblParcel").RecordCount(), before);
  EXPECT_EQ(parcels.Get("Parcel").AsText(), "Lot 101");  // the edit is still there to rename
  parcels.Set("Parcel", "Lot 104");
  parcels.Update();
  parcels.Bookmark(parcels.LastModified());
  EXPECT_EQ(parcels.Get("ParcelID").AsLong(), 4);
}

TEST(ProjectFile, SamplesOpenWithTheirDrawingsBesideTheProgram) {
  for (const char* sample : {"sample_feet", "sample_metres"}) {
    StoreWorld world;
    ASSERT_TRUE(world.Open(world.Path(std::string(sample) + ".pvd")));
    EXPECT_EQ(world.state.DrawingFile, world.Path(std::string(sample) + ".dxf"));
    EXPECT_TRUE(world.prompter.shown.empty()) << world.prompter.Prompts()[0];
    EXPECT_EQ(world.state.BearingMode, std::string(sample) == "sample_feet");
    EXPECT_EQ(world.state.UnitIsFeet, std::string(sample) == "sample_feet");
  }
}

struct OldVersion {
  const char* name;
  std::vector<const char*> dropped;
  const char* warning;  // shown when the options are applied; null for none
};

class OldProject : public ::testing::TestWithParam<OldVersion> {};

TEST_P(OldProject, OpensWithPresetsAndRefusesToWriteWhatItLacks) {
  const OldVersion& v = GetParam();
  StoreWorld world;
  std::string path = world.MakeProject("old.pvd");
  {
    Database db = Database::Open(path);
    db.Execute("UPDATE tblSetting SET Bearing = 0, DegreeSymbol = 'dg', BackColor = 1, "
               "ForeColor = 7, ZoomFactor1 = 2.5");
    for (const char* column : v.dropped) {
      db.Execute(std::string("ALTER TABLE tblSetting DROP COLUMN ") + column);
    }
  }
  ASSERT_TRUE(world.Open(path));
  auto lacks = [&](const char* column) {
    for (const char* c : v.dropped) {
      if (std::string(c) == column) return true;
    }
    return false;
  };
  EXPECT_EQ(world.state.BearingMode, lacks("Bearing"));
  EXPECT_EQ(world.state.DegreeSymbolText, lacks("DegreeSymbol") ? "%%D" : "dg");
  EXPECT_EQ(world.state.BackRed, lacks("BackColor") ? 255 : 0);
  EXPECT_EQ(world.state.ForeColourNumber, lacks("ForeColor") ? 256 : 7);
  EXPECT_EQ(world.state.ViewZoom[0], lacks("TRY2") ? 0 : 2.5);
  EXPECT_TRUE(world.windows.Called("SettingsLoaded"));

  SettingForm form(world.state, world.prompter, world.system, world.opener, world.windows);
  form.Form_Load();
  form.optBearing_Click(1);
  form.optForeColor_Click(1);
  form.SetText(form.txtTolerance, "0.05");
  world.prompter.shown.clear();
  form.cmdApply_Click();
  std::vector<std::string> expected;
  if (v.warning) expected.push_back(v.warning);
  EXPECT_EQ(world.prompter.Prompts(), expected);
  // What the project can hold is written all the same.
  EXPECT_EQ(world.state.ClosureToleranceValue, 0.05);
  EXPECT_EQ(world.state.BearingMode, lacks("Bearing"));
}

INSTANTIATE_TEST_SUITE_P(
    Versions, OldProject,
    ::testing::Values(
        OldVersion{"NoBearing", {"Bearing"}, messages::OldBearing},
        OldVersion{"NoDegreeSymbol", {"DegreeSymbol"}, messages::OldDegreeSymbol},
        OldVersion{"NoColours", {"BackColor", "ForeColor"}, messages::OldColour},
        OldVersion{"NoViews",
                   {"ZoomFactor1", "BLX1", "BLY1", "TRX1", "TRY1", "ZoomFactor2", "BLX2", "BLY2",
                    "TRX2", "TRY2"},
                   nullptr}),
    [](const auto& param) { return std::string(param.param.name); });

struct Corruption {
  const char* name;
  std::function<void(const StoreWorld&, const std::string&)> make;
  std::string why = "";  // the line under the path that names what is missing
};

// The sample project with one statement run on it.
std::function<void(const StoreWorld&, const std::string&)> SampleWith(std::string sql) {
  return [sql](const StoreWorld& w, const std::string& p) {
    std::filesystem::copy_file(w.Path("sample_feet.pvd"), p);
    Database::Open(p).ExecuteScript(sql);
  };
}

class DamagedProject : public ::testing::TestWithParam<Corruption> {};

TEST_P(DamagedProject, IsRefusedWithItsPathAndChangesNothing) {
  StoreWorld world;
  std::string path = world.Path("damaged.pvd");
  GetParam().make(world, path);
  std::string bytes = ReadFile(path);
  std::string recentBefore = ReadFile(world.system.Path());
  world.state.ProjectFile = world.Path("sample_feet.pvd");
  world.state.RecentProjects[3] = path;
  world.opener.mnuHistory_Click(3);
  const std::string why = GetParam().why.empty() ? "" : "\n" + GetParam().why;
  EXPECT_EQ(world.prompter.Prompts(), std::vector<std::string>{messages::CantOpenProject + path + why});
  EXPECT_EQ(world.state.ProjectFile, world.Path("sample_feet.pvd"));
  EXPECT_TRUE(world.windows.calls.empty());
  EXPECT_EQ(ReadFile(path), bytes);
  EXPECT_EQ(ReadFile(world.system.Path()), recentBefore);
}

INSTANTIATE_TEST_SUITE_P(
    Files, DamagedProject,
    ::testing::Values(
        Corruption{"Truncated",
                   [](const StoreWorld& w, const std::string& p) {
                     std::string whole = ReadFile(w.Path("sample_feet.pvd"));
                     WriteFile(p, whole.substr(0, whole.size() / 2));
                   }},
        Corruption{"RandomBytes",
                   [](const StoreWorld&, const std::string& p) {
                     std::string noise;
                     std::mt19937 random(7);
                     for (int i = 0; i < 20000; ++i) noise += static_cast<char>(random());
                     WriteFile(p, noise);
                   }},
        Corruption{"PictureRenamed",
                   [](const StoreWorld&, const std::string& p) {
                     WriteFile(p, std::string("\x89PNG\r\n\x1a\n\0\0\0\rIHDR", 16) + std::string(400, '\0'));
                   }},
        Corruption{"Empty", [](const StoreWorld&, const std::string& p) { WriteFile(p, ""); },
                   "The table tblSetting is missing."},
        Corruption{"NoSettingTable",
                   [](const StoreWorld&, const std::string& p) {
                     Database::Create(p).Append(ParcelTable());
                   },
                   "The table tblSetting is missing."},
        Corruption{"NoParcelTable", SampleWith("DROP TABLE tblParcel"),
                   "The table tblParcel is missing."},
        Corruption{"NoMeasurementTable", SampleWith("DROP TABLE tblMeasurements"),
                   "The table tblMeasurements is missing."},
        Corruption{"NoParcelName", SampleWith("DROP INDEX TempIndex; ALTER TABLE tblParcel DROP COLUMN Parcel"),
                   "The column Parcel is missing from tblParcel."},
        Corruption{"NoRowNo", SampleWith("ALTER TABLE tblMeasurements DROP COLUMN RowNo"),
                   "The column RowNo is missing from tblMeasurements."},
        Corruption{"NoSettingRow",
                   [](const StoreWorld& w, const std::string& p) {
                     std::filesystem::copy_file(w.Path("sample_feet.pvd"), p);
                     Database::Open(p).Execute("DELETE FROM tblSetting");
                   }},
        Corruption{"Missing", [](const StoreWorld&, const std::string&) {}}),
    [](const auto& param) { return std::string(param.param.name); });

TEST(ProjectFile, AFileWrittenByHandFromTheFormatOpensAndTakesNewSettings) {
  StoreWorld world;
  std::string path = world.Path("byhand.pvd");
  Database::Create(path).ExecuteScript(R"sql(
    CREATE TABLE tblSetting (txtArc INTEGER, txtChord INTEGER, txtRadius INTEGER, txtBearing INTEGER,
      ClosureTolerance REAL, UnitFeet BOOLEAN, SquareX BOOLEAN, AutoCADFile VARCHAR(255),
      Minimize BOOLEAN, ErrDecimal INTEGER, AddAreaCheck BOOLEAN, AutoInvert BOOLEAN,
      TangentCheck BOOLEAN, WarningRanged INTEGER, TangentToleranced INTEGER, ToolTipOn BOOLEAN,
      TangentTolerancem INTEGER, TangentTolerances INTEGER, WarningRangem INTEGER,
      WarningRanges INTEGER, Bearing BOOLEAN, DegreeSymbol VARCHAR(3), BackColor INTEGER,
      ForeColor INTEGER, ZoomFactor1 REAL, BLX1 REAL, BLY1 REAL, TRX1 REAL, TRY1 REAL,
      ZoomFactor2 REAL, BLX2 REAL, BLY2 REAL, TRX2 REAL, TRY2 REAL);
    CREATE TABLE tblParcel (ParcelID INTEGER PRIMARY KEY, Parcel VARCHAR(50) UNIQUE, Closure REAL,
      Area REAL, ClosureBearing TEXT, PrecisionRatio REAL);
    CREATE TABLE tblMeasurements (ParcelID INTEGER, RowNo INTEGER, RowType INTEGER, Length REAL,
      Direction VARCHAR(50), Arc REAL, Radius REAL, Plus INTEGER);
    INSERT INTO tblSetting VALUES (2, 1, 3, 4, 0.02, TRUE, FALSE, '', FALSE, 3, TRUE, FALSE, TRUE,
      5, 1, TRUE, 30, 0, 10, 0, FALSE, ' %%', 3, 5, 0, 0, 0, 1, 1, 0, 0, 0, 1, 1);
  )sql");
  ASSERT_TRUE(world.Open(path));
  EXPECT_EQ(world.state.DrawingFile, "");  // no drawing, and no word about it
  EXPECT_TRUE(world.prompter.shown.empty());
  EXPECT_EQ(world.state.ArcOrder.Arc, 2);
  EXPECT_EQ(world.state.ClosureToleranceValue, 0.02);
  EXPECT_EQ(world.state.ErrDecimals, 3);
  EXPECT_DOUBLE_EQ(world.state.TangentTolerance, 1.5);
  EXPECT_DOUBLE_EQ(world.state.WarningRange, 5 + 10.0 / 60);
  EXPECT_FALSE(world.state.BearingMode);
  EXPECT_EQ(world.state.DegreeSymbolText, "%%");
  EXPECT_EQ(world.state.BackBlue, 255);
  EXPECT_EQ(world.state.BackRed, 0);
  EXPECT_EQ(world.state.ForeColourNumber, 5);

  SettingForm form(world.state, world.prompter, world.system, world.opener, world.windows);
  form.Form_Load();
  EXPECT_EQ(form.lblOrder[0].Caption, "Chord");
  EXPECT_TRUE(form.optBearing[1].Value);
  form.optFeet_Click(1);
  form.cmdApply_Click();
  EXPECT_TRUE(world.prompter.shown.empty());
  EXPECT_FALSE(world.state.UnitIsFeet);
  EXPECT_EQ(world.state.ClosureToleranceValue, 0.001);

  Recordset parcels = Database::Open(path).OpenRecordset("tblParcel");
  parcels.AddNew();
  parcels.Set("Parcel", "Same");
  parcels.Update();
  parcels.AddNew();
  parcels.Set("Parcel", "Same");
  EXPECT_THROW(parcels.Update(), StoreError);  // its UNIQUE column is an index as well
}

TEST(ProjectFile, SettingsAreWrittenByPositionAndAFailureSaysSo) {
  StoreWorld world;
  world.state.ProjectFile = world.Path("sample_feet.pvd");
  EXPECT_TRUE(SaveProjectSetting(world.state, world.prompter, project_columns::AutoInvert, true));
  EXPECT_TRUE(Database::Open(world.state.ProjectFile).OpenRecordset("tblSetting").Get("AutoInvert").AsBool());
  EXPECT_FALSE(SaveProjectSetting(world.state, world.prompter, project_columns::AutoCADFile,
                                  std::string(256, 'x')));
  EXPECT_FALSE(SaveProjectSetting(world.state, world.prompter, 40, true));
  world.state.ProjectFile = world.Path("none.pvd");
  EXPECT_FALSE(SaveProjectSetting(world.state, world.prompter, 0, 1));
  EXPECT_EQ(world.prompter.Prompts(), std::vector<std::string>(3, messages::GeneralError));
}

}  // namespace
}  // namespace parvenna::store
