// Where the program finds its supplied files and where it writes: its own
// folder when run from a build or a copy of the user's, the user's data and
// cache directories when installed.
#include "store/places.h"

#include <gtest/gtest.h>

#include <filesystem>

#include "store/messages.h"
#include "store/store.h"
#include "store/system_store.h"
#include "tests/store/child_process.h"
#include "tests/store/temp_dir.h"
#include "tests/support/scripted_prompter.h"

namespace parvenna::store {
namespace {

namespace fs = std::filesystem;
using parvenna::testing::ChildLimits;
using parvenna::testing::ChildOutcome;
using parvenna::testing::CopySupplied;
using parvenna::testing::ReadFile;
using parvenna::testing::RunInChild;
using parvenna::testing::ScopedEnv;
using parvenna::testing::ScriptedPrompter;
using parvenna::testing::TempDir;
using parvenna::testing::WriteFile;

// An installed program: its binaries' folder empty of data, the supplied
// files under share/parvenna, and a user whose directories do not exist yet.
struct Installed {
  TempDir root;
  fs::path bin = root / "usr/bin";
  fs::path share = root / "usr/share/parvenna";
  ScopedEnv home{"HOME", (root / "home").c_str()};
  ScopedEnv data{"XDG_DATA_HOME", nullptr};
  ScopedEnv cache{"XDG_CACHE_HOME", nullptr};
  UserDirectories user = UserDirectoriesOf();

  Installed() {
    fs::create_directories(bin);
    fs::create_directories(share);
    CopySupplied(share, {"ParvennaPro.pvs", "sample_feet.pvd", "sample_feet.dxf",
                         "sample_metres.pvd", "sample_metres.dxf", "default.dxf"});
    // Installed files are read-only; the user's copies must not be.
    for (const auto& entry : fs::directory_iterator(share)) {
      fs::permissions(entry.path(), fs::perms::owner_read | fs::perms::group_read | fs::perms::others_read);
    }
  }
  Places Locate() const { return LocatePlaces(bin.string()); }
  fs::path Data(const std::string& name) const { return fs::path(user.Data) / name; }
};

TEST(SuppliedFile, BesideTheProgramFirstThenUnderShare) {
  Installed program;
  EXPECT_EQ(SuppliedFile(program.bin.string(), "default.dxf"), (program.share / "default.dxf").string());
  EXPECT_EQ(SuppliedFile(program.bin.string() + "/", "default.dxf"), (program.share / "default.dxf").string());
  // A file beside the program wins: a build folder or a copy of the user's.
  WriteFile(program.bin / "default.dxf", "mine");
  EXPECT_EQ(SuppliedFile(program.bin.string(), "default.dxf"), (program.bin / "default.dxf").string());
  // Neither has it: the place beside the program, for a message to name.
  EXPECT_EQ(SuppliedFile(program.bin.string(), "help/index.html"), (program.bin / "help/index.html").string());
  // This test program stands in the build's tests/ folder: the build's
  // share/parvenna is its supplied folder, as for an installed program.
  EXPECT_TRUE(fs::is_regular_file(SuppliedFile("help/index.html")));
}

TEST(LocatePlaces, AProgramWithItsOwnWritableStoreKeepsUsingItsOwnDirectory) {
  TempDir program;
  TempDir home;
  ScopedEnv data("XDG_DATA_HOME", (home / "data").c_str());
  ScopedEnv cache("XDG_CACHE_HOME", (home / "cache").c_str());
  CopySupplied(program.path(), {"ParvennaPro.pvs"});
  const UserDirectories user = UserDirectoriesOf();
  const Places places = LocatePlaces(program.WithSeparator());
  EXPECT_EQ(places.AppDirectory, program.path().string());
  EXPECT_FALSE(places.PerUser);
  EXPECT_TRUE(places.Failure.empty());
  EXPECT_FALSE(fs::exists(user.Data)) << "nothing is made for the user";
  EXPECT_EQ(WorkDirectory(places.AppDirectory), places.AppDirectory);
}

TEST(LocatePlaces, TheFirstStartOfAnInstalledProgramCopiesTheStoreAndSamplesForTheUser) {
  Installed program;
  const Places places = program.Locate();
  ASSERT_TRUE(places.Failure.empty()) << places.Failure;
  EXPECT_TRUE(places.PerUser);
  EXPECT_EQ(places.AppDirectory, program.user.Data);
  for (const char* name : {"ParvennaPro.pvs", "sample_feet.pvd", "sample_feet.dxf",
                           "sample_metres.pvd", "sample_metres.dxf"}) {
    ASSERT_TRUE(fs::is_regular_file(program.Data(name))) << name;
    EXPECT_EQ(ReadFile(program.Data(name)), ReadFile(program.share / name)) << name;
    EXPECT_NE(fs::status(program.Data(name)).permissions() & fs::perms::owner_write, fs::perms::none)
        << name << " is the user's to write";
  }
  EXPECT_FALSE(fs::exists(program.Data("default.dxf"))) << "read from where it was supplied";
  EXPECT_FALSE(fs::exists(program.Data("ParvennaPro.pvs.part")));

  // The copy is a store the program can hold and write: FirstRun clears.
  SystemStore store(places.AppDirectory);
  ScriptedPrompter prompter;
  EXPECT_TRUE(store.ReadFirstRun(prompter));
  EXPECT_FALSE(store.ReadFirstRun(prompter));
  EXPECT_TRUE(store.Open(prompter));
  EXPECT_TRUE(prompter.shown.empty());

  // Work files go to the user's cache, not among the data.
  EXPECT_EQ(WorkDirectory(places.AppDirectory), program.user.Cache);
  EXPECT_TRUE(fs::is_directory(program.user.Cache));
}

TEST(LocatePlaces, LaterStartsKeepTheUsersFilesAsTheyAre) {
  Installed program;
  ASSERT_TRUE(program.Locate().Failure.empty());
  WriteFile(program.Data("sample_feet.pvd"), "parcels of the user's");
  fs::remove(program.Data("sample_metres.pvd"));
  {
    Database db = Database::Open(program.Data("ParvennaPro.pvs"));
    db.Execute("UPDATE tblSetting SET FirstRun = 0");
  }
  const Places again = program.Locate();
  EXPECT_TRUE(again.Failure.empty());
  EXPECT_EQ(ReadFile(program.Data("sample_feet.pvd")), "parcels of the user's");
  EXPECT_FALSE(fs::exists(program.Data("sample_metres.pvd"))) << "a sample the user removed stays away";
  EXPECT_FALSE(Database::Open(program.Data("ParvennaPro.pvs")).OpenRecordset("tblSetting").Get("FirstRun").AsBool());
}

TEST(LocatePlaces, AFirstStartCutShortIsDoneAgainWithoutTouchingWhatTheUserHas) {
  Installed program;
  fs::create_directories(program.user.Data);
  WriteFile(program.Data("sample_feet.pvd"), "a project of the user's by that name");
  WriteFile(program.Data("ParvennaPro.pvs.part"), "half a store");
  const Places places = program.Locate();
  ASSERT_TRUE(places.Failure.empty()) << places.Failure;
  EXPECT_EQ(ReadFile(program.Data("sample_feet.pvd")), "a project of the user's by that name");
  EXPECT_EQ(ReadFile(program.Data("ParvennaPro.pvs")), ReadFile(program.share / "ParvennaPro.pvs"));
  EXPECT_TRUE(fs::is_regular_file(program.Data("sample_metres.pvd")));
  EXPECT_FALSE(fs::exists(program.Data("ParvennaPro.pvs.part")));
}

TEST(LocatePlaces, AUserDirectoryThatCannotBeMadeIsNamed) {
  Installed program;
  fs::create_directories(program.root / "home");
  WriteFile(program.root / "home/.local", "a file where the directory should be");
  const Places places = program.Locate();
  EXPECT_TRUE(places.PerUser);
  EXPECT_EQ(places.Failure.rfind(messages::UserFolderFailed, 0), 0u) << places.Failure;
  EXPECT_NE(places.Failure.find(program.user.Data), std::string::npos) << places.Failure;
}

TEST(LocatePlaces, WithoutASuppliedStoreTheStoresOwnWordsFollow) {
  Installed program;
  fs::remove(program.share / "ParvennaPro.pvs");
  const Places places = program.Locate();
  EXPECT_TRUE(places.Failure.empty());
  EXPECT_FALSE(fs::exists(program.Data("ParvennaPro.pvs")));
  ScriptedPrompter prompter;
  EXPECT_FALSE(SystemStore(places.AppDirectory).Open(prompter));
  ASSERT_EQ(prompter.shown.size(), 1u);
  EXPECT_EQ(prompter.shown[0].Prompt, messages::StoreMissing);
}

TEST(LocatePlaces, AProgramFolderTheUserCannotWriteSendsTheUserToACopy) {
  // A copy of the program with its store, on a folder that is not the
  // user's: run as a user who is not root, since root writes anywhere.
  TempDir program;
  TempDir home;
  CopySupplied(program.path(), {"ParvennaPro.pvs", "sample_feet.pvd"});
  fs::permissions(program.path(), fs::perms::owner_all | fs::perms::group_read | fs::perms::group_exec |
                                      fs::perms::others_read | fs::perms::others_exec);
  fs::permissions(home.path(), fs::perms::all);
  ScopedEnv data("XDG_DATA_HOME", (home / "data").c_str());
  ChildLimits asUser;
  asUser.unprivileged = true;
  const ChildOutcome outcome = RunInChild(asUser, [&] {
    const Places places = LocatePlaces(program.path().string());
    return places.AppDirectory + (places.PerUser ? " per user" : " own") +
           (fs::is_regular_file(fs::path(places.AppDirectory) / "ParvennaPro.pvs") ? " with store" : "") +
           (fs::is_regular_file(fs::path(places.AppDirectory) / "sample_feet.pvd") ? " with sample" : "");
  });
  EXPECT_EQ(outcome.status, 0);
  EXPECT_EQ(outcome.said, (home / "data/Parvenna").string() + " per user with store with sample");
}

TEST(UserDirectories, FollowTheFreedesktopRules) {
  TempDir home;
  ScopedEnv homeVar("HOME", home.path().c_str());
  {
    ScopedEnv data("XDG_DATA_HOME", nullptr);
    ScopedEnv cache("XDG_CACHE_HOME", nullptr);
    const UserDirectories user = UserDirectoriesOf();
    EXPECT_EQ(user.Data, (home / ".local/share/Parvenna").string());
    EXPECT_EQ(user.Cache, (home / ".cache/Parvenna").string());
  }
  {
    ScopedEnv data("XDG_DATA_HOME", "/srv/data/");
    ScopedEnv cache("XDG_CACHE_HOME", "/var/cache/u");
    const UserDirectories user = UserDirectoriesOf();
    EXPECT_EQ(user.Data, "/srv/data/Parvenna");
    EXPECT_EQ(user.Cache, "/var/cache/u/Parvenna");
  }
  {
    // A relative base is no base: the rules say to ignore it.
    ScopedEnv data("XDG_DATA_HOME", "relative/data");
    ScopedEnv cache("XDG_CACHE_HOME", "");
    const UserDirectories user = UserDirectoriesOf();
    EXPECT_EQ(user.Data, (home / ".local/share/Parvenna").string());
    EXPECT_EQ(user.Cache, (home / ".cache/Parvenna").string());
  }
}

TEST(WorkDirectory, TheUsersCacheWhenTheDirectoryIsTheUsersDataOrCannotBeWritten) {
  TempDir home;
  ScopedEnv data("XDG_DATA_HOME", (home / "data").c_str());
  ScopedEnv cache("XDG_CACHE_HOME", (home / "cache").c_str());
  const UserDirectories user = UserDirectoriesOf();
  fs::create_directories(user.Data);
  EXPECT_EQ(WorkDirectory(user.Data), user.Cache);
  EXPECT_EQ(WorkDirectory(user.Data + "/"), user.Cache);
  EXPECT_EQ(WorkDirectory((home / "not-there").string()), user.Cache);
  EXPECT_TRUE(fs::is_directory(user.Cache));
  EXPECT_EQ(WorkDirectory(home.path().string()), home.path().string());
}

}  // namespace
}  // namespace parvenna::store
