#pragma once

#include <string>
#include <vector>

#include "platform/prompter.h"
#include "store/project_state.h"
#include "store/store.h"

// The project file (.pvd): three tables, their columns in a fixed order, one
// unique index. The order is part of the format: routines read tblSetting by
// position, and the columns stand in the order in which versions added them.
namespace parvenna::store {

class SystemStore;

namespace project_columns {
inline constexpr int txtArc = 0;
inline constexpr int txtChord = 1;
inline constexpr int txtRadius = 2;
inline constexpr int txtBearing = 3;
inline constexpr int ClosureTolerance = 4;
inline constexpr int UnitFeet = 5;
inline constexpr int SquareX = 6;
inline constexpr int AutoCADFile = 7;
inline constexpr int Minimize = 8;
inline constexpr int ErrDecimal = 9;
inline constexpr int AddAreaCheck = 10;
inline constexpr int AutoInvert = 11;
inline constexpr int TangentCheck = 12;
inline constexpr int WarningRanged = 13;
inline constexpr int TangentToleranced = 14;
inline constexpr int ToolTipOn = 15;
inline constexpr int TangentTolerancem = 16;
inline constexpr int TangentTolerances = 17;
inline constexpr int WarningRangem = 18;
inline constexpr int WarningRanges = 19;
inline constexpr int Bearing = 20;
inline constexpr int DegreeSymbol = 21;
inline constexpr int BackColor = 22;
inline constexpr int ForeColor = 23;
inline constexpr int ZoomFactor1 = 24;  // then BLX1, BLY1, TRX1, TRY1, ZoomFactor2, ... TRY2
}  // namespace project_columns

inline constexpr const char* kProjectExtension = ".pvd";
inline constexpr int kDrawingPathLimit = 255;  // characters of AutoCADFile

TableDef ProjectSettingTable();
TableDef ParcelTable();
IndexDef ParcelIndex();  // TempIndex: one parcel name once
TableDef MeasurementTable();

// Makes a project file at `path`: the three tables, the index, and the one
// settings row from the system store's defaults, with `drawing` as its
// drawing path and no saved views. A file left half made by a failure is
// removed before the failure goes on.
void MakeProjectFile(const std::string& path, const std::string& drawing, const SystemStore& store);

// Writes one column of the open project's settings row, by position. On a
// failure the general error box, and false.
bool SaveProjectSetting(const ProjectState& state, Prompter& prompter, int position,
                        const Value& value);

// Proves that ProjectFile opens and reads its drawing path: DrawingFile
// takes it, resolved, or the default drawing when that is not there. On a
// failure "Can't open the project: " and the path, and false.
bool CheckProjectFile(ProjectState& state, Prompter& prompter);

}  // namespace parvenna::store
