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

inline constexpr int kParcelNameLimit = 50;  // characters of tblParcel.Parcel

// Proves that ProjectFile opens, reads its drawing path and holds what its
// parcels are listed and found by: the three tables, the key and name of
// tblParcel, the key and row number of tblMeasurements. DrawingFile takes
// the drawing path, resolved, or the default drawing when that is not there.
// On a failure "Can't open the project: " and the path, with the missing
// table or column named on the next line, and false.
bool CheckProjectFile(ProjectState& state, Prompter& prompter);

// Why parcels cannot be saved to a project that opens: a column of a parcel
// or of its courses is missing, or the file or its folder does not take
// writes. The sentence to show, or empty when parcels can be saved.
std::string ProjectWriteRefusal(const std::string& projectFile);

// The reason a write to the project failed, as the end of a sentence: "the
// disk is full", "the project is read-only", ...
std::string StoreFailureReason(const RunError& failure);

}  // namespace parvenna::store
