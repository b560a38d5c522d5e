#pragma once

#include <string>

#include "platform/prompter.h"
#include "store/project_state.h"
#include "store/store.h"

// The store beside the program, ParvennaPro.pvs: the defaults for new
// projects, the recent projects and the credits. The program holds it
// exclusively for the whole run, and that hold is what keeps a second running
// copy out; every routine below opens it again for a moment by path, which the
// hold allows within this process.
namespace parvenna::store {

// Positions in the system store's tblSetting. They differ from a project's on
// purpose: the column names and places are those of the first versions.
namespace system_columns {
inline constexpr int txtArc = 0;
inline constexpr int txtChord = 1;
inline constexpr int txtRadius = 2;
inline constexpr int txtBearing = 3;
inline constexpr int unitfeet = 4;
inline constexpr int SquareX = 5;
inline constexpr int Minimize = 6;
inline constexpr int AddAreaCheck = 7;
inline constexpr int AutoInvert = 8;
inline constexpr int TangentCheck = 9;
inline constexpr int WarningRanged = 10;
inline constexpr int TangentToleranced = 11;
inline constexpr int Decimal = 12;
inline constexpr int Tolerance = 13;
inline constexpr int AutoName = 14;
inline constexpr int ToolTipOn = 15;
inline constexpr int TangentTolerancem = 16;
inline constexpr int TangentTolerances = 17;
inline constexpr int WarningRangem = 18;
inline constexpr int WarningRanges = 19;
inline constexpr int FirstRun = 20;
inline constexpr int Bearing = 21;
inline constexpr int DegreeSymbol = 22;
inline constexpr int BackColor = 23;
inline constexpr int ForeColor = 24;
}  // namespace system_columns

class SystemStore {
 public:
  explicit SystemStore(std::string appDirectory);

  const std::string& AppDirectory() const { return appDirectory_; }
  const std::string& Path() const { return path_; }

  // OpenSystemStore: takes the long-lived exclusive hold. False after the
  // critical box of a second instance or of a missing or damaged store: the
  // program must end then.
  bool Open(Prompter& prompter);
  bool IsHeld() const { return held_.IsOpen(); }

  // A short opening by path, shared.
  Database OpenBriefly() const;

  bool ReadAutoName(Prompter& prompter) const;
  void SaveAutoName(bool value, Prompter& prompter) const;
  void WriteDefaultBearing(bool value, Prompter& prompter) const;
  // True means metric: the unit column holds "feet".
  void WriteDefaultUnit(bool metric, Prompter& prompter) const;
  // The old value of FirstRun; a true one is cleared in the store.
  bool ReadFirstRun(Prompter& prompter) const;
  // Rows whose location is the relative prefix get the program's directory.
  void RewriteRelativeRecent() const;

  // Moves the project to the top of the recent table. Always true: a failure
  // is reported, and the opening goes on.
  bool RecordRecentProject(const std::string& path, Prompter& prompter) const;
  // The new project of the create dialog, with the table trimmed to ten rows.
  void AddRecentProject(const std::string& projectName, const std::string& location) const;

  // Fills the history menu and RecentProjects from the table, newest first.
  // False, with no word of its own, when the table is empty or unreadable.
  // The caller then sets the window captions from the first entry.
  bool LoadRecentProjects(ProjectState& state, RecentMenu& menu) const;
  // The same once at the start, with relative locations made whole first and
  // an empty table leaving the one entry "No recent projects", disabled.
  bool FillRecentMenuAtStart(ProjectState& state, RecentMenu& menu) const;

  // The text of the about box's credits: each contribution, then its names.
  std::string ReadCredits();

 private:
  bool FillMenu(Recordset& rs, ProjectState& state, RecentMenu& menu) const;

  std::string appDirectory_;
  std::string path_;
  Database held_;
};

// The date and time now, as the store keeps it.
std::string NowText();

}  // namespace parvenna::store
