#pragma once

#include <array>
#include <string>
#include <vector>

#include "geometry/notation.h"
#include "geometry/settings.h"

// The program-wide state of the open project: the paths, the recent list and
// the working copies of the project's settings. One object of it lives in the
// application and is handed down by reference; every routine reads the copies
// here, never the file, between an opening and the next.
namespace parvenna::store {

// The place, 1 to 4, of each curve field in the order of entry.
struct ArcFieldOrder {
  int Arc = 1;
  int Chord = 2;
  int Radius = 3;
  int Bearing = 4;
};

inline constexpr int kRecentCount = 10;
inline constexpr int kViewCount = 2;

struct ProjectState {
  std::string AppDirectory;  // the running program's directory
  std::string ProjectFile;   // full path of the open project; empty while none is open
  std::string DrawingFile;   // full path of the linked drawing, resolved
  std::array<std::string, kRecentCount> RecentProjects;  // index 0 the newest
  // Why parcels cannot be saved to the open project (a read-only file or
  // folder, a column missing); empty when they can.
  std::string ReadOnlyMessage;

  ArcFieldOrder ArcOrder;
  double ClosureToleranceValue = 0.01;
  bool UnitIsFeet = true;
  bool SquareX = true;  // kept and stored; nothing else reads it
  bool MinimizeDuringGrab = false;
  int ErrDecimals = 2;
  bool AddAreaCheckOn = true;
  bool AutoInvertOn = false;
  bool TangentCheckOn = true;
  double WarningRange = 0;      // decimal degrees
  double TangentTolerance = 0;  // decimal degrees
  bool ToolTipsOn = true;
  bool BearingMode = true;
  std::string DegreeSymbolText = "%%D";
  int BackRed = 255;
  int BackGreen = 255;
  int BackBlue = 255;
  int ForeColourNumber = 256;
  // The saved window of each drawing view; a zoom of 0 means none was saved.
  std::array<double, kViewCount> ViewZoom{};
  std::array<double, kViewCount> ViewBLX{};
  std::array<double, kViewCount> ViewBLY{};
  std::array<double, kViewCount> ViewTRX{};
  std::array<double, kViewCount> ViewTRY{};

  Notation notation() const { return Notation{BearingMode, DegreeSymbolText}; }

  GeometrySettings Geometry() const {
    GeometrySettings g;
    g.notation = notation();
    g.unitfeet = UnitIsFeet;
    g.ErrDecimal = ErrDecimals;
    g.ClosureTolerance = ClosureToleranceValue;
    g.AddAreaCheck = AddAreaCheckOn;
    g.AutoInvert = AutoInvertOn;
    g.TangentCheck = TangentCheckOn;
    g.WarningRange = WarningRange;
    g.TangentTolerance = TangentTolerance;
    return g;
  }
};

// The history menu of the main window: one entry at first, "No recent
// projects", and up to ten once projects have been used. It never shrinks
// during a run.
struct MenuEntry {
  std::string Caption;
  bool Enabled = true;
  bool Visible = true;
  bool Checked = false;
};

struct RecentMenu {
  std::vector<MenuEntry> mnuHistory;
  RecentMenu();
};

// The two window captions that name the most recent project.
std::string EditorCaption(const RecentMenu& menu);
std::string MainCaption(const RecentMenu& menu);

// The drawing colours: the back colour number of the project as red, green
// and blue, and the entries of the colour menus that show them.
struct BackColourRgb {
  int Red, Green, Blue;
};
BackColourRgb BackColourOf(int backColor);
enum class BackColourEntry { mnuWhite, mnuBlack, mnuYellow, mnuBlue };
// False for a colour that is none of the four: the ticks stay as they were.
bool BackColourMenuEntry(const ProjectState& state, BackColourEntry& entry);
enum class ForeColourEntry { mnuFWhite, mnuFBlack, mnuFYellow, mnuFBlue, mnuFOriginal };
// False for a number that is none of the five: the ticks stay as they were.
bool ForeColourMenuEntry(int number, ForeColourEntry& entry);
// The fore colour numbers of the five options of the options dialog.
inline constexpr std::array<int, 5> kForeColourNumbers{14, 7, 2, 5, 256};

}  // namespace parvenna::store
