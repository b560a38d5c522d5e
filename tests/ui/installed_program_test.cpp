// The program as a package installs it: binaries in usr/bin, the supplied
// files in usr/share/parvenna, nothing of the user's beside them. The first
// start asks its two questions and works on the user's copies; a parcel
// keyed and saved, a report, and a second start that finds the parcel through
// the recent list, with the supplied files untouched throughout.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <filesystem>

#include <QStandardPaths>
#include <QTest>

#include "store/places.h"
#include "store/store.h"
#include "tests/store/temp_dir.h"
#include "tests/support/scripted_prompter.h"
#include "tests/ui/ui_app.h"
#include "ui/course_row_view.h"
#include "ui/editor_window.h"
#include "ui/main_window.h"

namespace parvenna::ui {
namespace {

namespace fs = std::filesystem;
using ::testing::HasSubstr;
using ::testing::Not;
using parvenna::testing::CopySupplied;
using parvenna::testing::ReadFile;
using parvenna::testing::ScopedEnv;
using parvenna::testing::ScriptedPrompter;
using parvenna::testing::TempDir;

constexpr const char* kSupplied[] = {"ParvennaPro.pvs", "sample_feet.pvd", "sample_feet.dxf",
                                     "sample_metres.pvd", "sample_metres.dxf", "default.dxf"};

class InstalledProgramTest : public ::testing::Test {
 protected:
  InstalledProgramTest() {
    testing::TestApp();
    fs::create_directories(bin);
    fs::create_directories(share);
    for (const char* name : kSupplied) CopySupplied(share, {name});
  }

  std::string UserFile(const std::string& name) const { return (root / "data/Parvenna" / name).string(); }
  bool SuppliedUntouched() const {
    for (const char* name : kSupplied) {
      if (ReadFile(share / name) != ReadFile(parvenna::testing::Supplied(name))) return false;
    }
    return true;
  }

  TempDir root;
  fs::path bin = root / "usr/bin";
  fs::path share = root / "usr/share/parvenna";
  ScopedEnv data{"XDG_DATA_HOME", (root / "data").c_str()};
  ScopedEnv cache{"XDG_CACHE_HOME", (root / "cache").c_str()};
  ScriptedPrompter prompter;
};

TEST_F(InstalledProgramTest, TheUsersCopiesCarryTheParcelTheRecentListAndTheDefaults) {
  {
    const store::Places places = store::LocatePlaces(bin.string());
    ASSERT_TRUE(places.Failure.empty()) << places.Failure;
    MainWindow window(places.AppDirectory, &prompter);
    window.show();
    prompter.Answer({MsgAnswer::No, MsgAnswer::Yes});  // azimuths, metric
    ASSERT_TRUE(window.Start("\"" + UserFile("sample_feet.pvd") + "\""));
    EXPECT_THAT(prompter.Prompts(), ::testing::ElementsAre(HasSubstr("angular measurement"),
                                                           HasSubstr("linear measurement")));
    editor::EditorForm& form = window.Shell().frmEditor;
    EXPECT_EQ(form.txtParcel.Text, "Lot 101");

    window.Trigger("mnuInsertParcel");
    QTest::keyClicks(window.Editor().txtParcel(), "Lot 9");
    CourseRowView& row = window.Editor().Row(0);
    QTest::keyClicks(row.Field(CourseField::BearingLine), "n12d30'15\"e");
    QTest::keyClicks(row.Field(CourseField::DistanceLine), "125.5");
    prompter.Answer({MsgAnswer::Yes});  // it fails the tolerance: save all the same
    window.Trigger("mnuSaveParcel");

    // The full report's work file lands in the user's cache. Saving opened
    // the next parcel, which goes first.
    window.Trigger("mnuCancelParcel");
    window.Trigger("mnuFullReport");
    QTest::qWait(20);
    const fs::path report = root / "cache/Parvenna/temp.rpt";
    ASSERT_TRUE(fs::is_regular_file(report));
    EXPECT_THAT(ReadFile(report), HasSubstr("Lot 9"));
    form.ExitConfirmed = true;
  }
  EXPECT_THAT(prompter.Prompts(), Not(::testing::Contains(HasSubstr("DB error"))));
  EXPECT_THAT(prompter.Prompts(), Not(::testing::Contains(HasSubstr("Update error"))));
  EXPECT_TRUE(SuppliedUntouched());
  EXPECT_FALSE(fs::exists(share / "temp.rpt"));
  {
    store::Database defaults = store::Database::Open(UserFile("ParvennaPro.pvs"));
    store::Recordset rs = defaults.OpenRecordset("tblSetting");
    EXPECT_FALSE(rs.Get("FirstRun").AsBool());
    EXPECT_FALSE(rs.Get("Bearing").AsBool());
    EXPECT_FALSE(rs.Get("unitfeet").AsBool());
  }

  // The second start: no questions, the recent list leads to the parcel.
  prompter.shown.clear();
  const store::Places places = store::LocatePlaces(bin.string());
  MainWindow again(places.AppDirectory, &prompter);
  ASSERT_TRUE(again.Start(""));
  EXPECT_TRUE(prompter.shown.empty());
  EXPECT_EQ(again.Shell().state.RecentProjects[0], UserFile("sample_feet.pvd"));
  EXPECT_THAT(again.Shell().menu.mnuHistory[0].Caption, HasSubstr("sample_feet.pvd"));
  again.Trigger("mnuHistory", 0);
  EXPECT_THAT(again.windowTitle().toStdString(), HasSubstr("sample_feet.pvd"));
  const auto& list = again.Shell().frmEditor.cbxParcel.List;
  EXPECT_NE(std::find(list.begin(), list.end(), " Lot 9"), list.end());
  EXPECT_TRUE(prompter.shown.empty());
  again.Shell().frmEditor.ExitConfirmed = true;
}

// The program finds its user directories by the rules that Qt follows for
// the application's name, so that both name the same directories.
TEST_F(InstalledProgramTest, TheUsersDirectoriesAreThoseQtNames) {
  const QString oldName = QCoreApplication::applicationName();
  const QString oldOrganisation = QCoreApplication::organizationName();
  QCoreApplication::setApplicationName(store::kApplicationName);
  QCoreApplication::setOrganizationName("");
  const auto check = [] {
    const store::UserDirectories user = store::UserDirectoriesOf();
    EXPECT_EQ(user.Data, QStandardPaths::writableLocation(QStandardPaths::AppDataLocation).toStdString());
    EXPECT_EQ(user.Cache, QStandardPaths::writableLocation(QStandardPaths::CacheLocation).toStdString());
  };
  check();
  {
    ScopedEnv home("HOME", root.path().c_str());
    ScopedEnv noData("XDG_DATA_HOME", nullptr);
    ScopedEnv noCache("XDG_CACHE_HOME", nullptr);
    check();
  }
  QCoreApplication::setApplicationName(oldName);
  QCoreApplication::setOrganizationName(oldOrganisation);
}

}  // namespace
}  // namespace parvenna::ui
