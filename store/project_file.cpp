#include "store/project_file.h"

#include <filesystem>

#include "store/messages.h"
#include "store/paths.h"
#include "store/system_store.h"

namespace parvenna::store {

TableDef ProjectSettingTable() {
  using T = FieldType;
  TableDef table{"tblSetting",
                 {{"txtArc", T::Integer},
                  {"txtChord", T::Integer},
                  {"txtRadius", T::Integer},
                  {"txtBearing", T::Integer},
                  {"ClosureTolerance", T::Double},
                  {"UnitFeet", T::Boolean},
                  {"SquareX", T::Boolean},
                  {"AutoCADFile", T::Text, kDrawingPathLimit},
                  {"Minimize", T::Boolean},
                  {"ErrDecimal", T::Integer},
                  {"AddAreaCheck", T::Boolean},
                  {"AutoInvert", T::Boolean},
                  {"TangentCheck", T::Boolean},
                  {"WarningRanged", T::Integer},
                  {"TangentToleranced", T::Integer},
                  {"ToolTipOn", T::Boolean},
                  {"TangentTolerancem", T::Integer},
                  {"TangentTolerances", T::Integer},
                  {"WarningRangem", T::Integer},
                  {"WarningRanges", T::Integer},
                  {"Bearing", T::Boolean},
                  {"DegreeSymbol", T::Text, 3},
                  {"BackColor", T::Integer},
                  {"ForeColor", T::Integer}}};
  for (const char* view : {"1", "2"}) {
    for (const char* name : {"ZoomFactor", "BLX", "BLY", "TRX", "TRY"}) {
      table.Fields.push_back({std::string(name) + view, T::Double});
    }
  }
  return table;
}

TableDef ParcelTable() {
  using T = FieldType;
  // ClosureBearing has no size of its own: the store's default, no limit.
  return TableDef{"tblParcel",
                  {{"ParcelID", T::Long, 0, true},
                   {"Parcel", T::Text, kParcelNameLimit},
                   {"Closure", T::Double},
                   {"Area", T::Double},
                   {"ClosureBearing", T::Text},
                   {"PrecisionRatio", T::Double}}};
}

IndexDef ParcelIndex() { return IndexDef{"TempIndex", "tblParcel", {"Parcel"}, true}; }

TableDef MeasurementTable() {
  using T = FieldType;
  return TableDef{"tblMeasurements",
                  {{"ParcelID", T::Long},
                   {"RowNo", T::Integer},
                   {"RowType", T::Integer},
                   {"Length", T::Double},
                   {"Direction", T::Text, 50},
                   {"Arc", T::Double},
                   {"Radius", T::Double},
                   {"Plus", T::Integer}}};
}

void MakeProjectFile(const std::string& path, const std::string& drawing, const SystemStore& store) {
  std::string native = NativePath(path);
  try {
    Database project = Database::Create(native);
    project.Append(ProjectSettingTable());
    project.Append(ParcelTable());
    project.Append(ParcelIndex());
    project.Append(MeasurementTable());

    Database system = store.OpenBriefly();
    Recordset defaults = system.OpenRecordset("tblSetting");
    Recordset row = project.OpenRecordset("tblSetting");
    row.AddNew();
    auto copy = [&](const char* to, const char* from) { row.Set(to, defaults.Get(from)); };
    for (const char* name : {"txtArc", "txtChord", "txtRadius", "txtBearing", "unitfeet"}) {
      copy(name, name);
    }
    copy("ErrDecimal", "Decimal");
    copy("ClosureTolerance", "Tolerance");
    copy("SquareX", "SquareX");
    copy("Minimize", "Minimize");
    row.Set("AutoCADFile", drawing);
    for (const char* name :
         {"AddAreaCheck", "AutoInvert", "TangentCheck", "WarningRanged", "WarningRangem",
          "WarningRanges", "TangentToleranced", "TangentTolerancem", "TangentTolerances",
          "ToolTipOn", "Bearing", "DegreeSymbol", "BackColor", "ForeColor"}) {
      copy(name, name);
    }
    // A zoom of 0 says that no view was saved yet; the window is a unit square.
    for (const char* view : {"1", "2"}) {
      row.Set(std::string("ZoomFactor") + view, 0.0);
      row.Set(std::string("BLX") + view, 0.0);
      row.Set(std::string("BLY") + view, 0.0);
      row.Set(std::string("TRX") + view, 1.0);
      row.Set(std::string("TRY") + view, 1.0);
    }
    row.Update();
  } catch (...) {
    std::error_code ec;
    std::filesystem::remove(native, ec);
    throw;
  }
}

bool SaveProjectSetting(const ProjectState& state, Prompter& prompter, int position,
                        const Value& value) {
  try {
    Database db = Database::Open(NativePath(state.ProjectFile));
    Recordset rs = db.OpenRecordset("tblSetting");
    rs.MoveFirst();
    rs.Edit();
    rs.Set(position, value);
    rs.Update();
    return true;
  } catch (const RunError&) {
    Inform(prompter, messages::GeneralError);
    return false;
  }
}

namespace {

bool HasColumn(const std::vector<FieldInfo>& fields, std::string_view name) {
  for (const FieldInfo& field : fields) {
    if (UpperCase(field.Name) == UpperCase(name)) return true;
  }
  return false;
}

// The columns of a table that the file lacks, in the order of the format.
std::vector<std::string> MissingColumns(const Database& db, const TableDef& table) {
  std::vector<FieldInfo> present = db.Fields(table.Name);
  std::vector<std::string> missing;
  for (const FieldDef& field : table.Fields) {
    if (!HasColumn(present, field.Name)) missing.push_back(field.Name);
  }
  return missing;
}

// What the parcel list and the loading of a parcel cannot do without, named
// for the surveyor; empty when all of it is there.
std::string MissingForParcels(const Database& db) {
  struct Needed {
    TableDef table;
    std::vector<std::string> keys;
  };
  const Needed needed[] = {{ProjectSettingTable(), {"AutoCADFile"}},
                           {ParcelTable(), {"ParcelID", "Parcel"}},
                           {MeasurementTable(), {"ParcelID", "RowNo"}}};
  for (const Needed& n : needed) {
    std::vector<FieldInfo> present;
    try {
      present = db.Fields(n.table.Name);
    } catch (const StoreError& e) {
      if (e.Code() != errors::NoSuchTable) throw;
      return std::string(messages::TableMissingStart) + n.table.Name + messages::TableMissingEnd;
    }
    for (const std::string& key : n.keys) {
      if (!HasColumn(present, key)) {
        return std::string(messages::ColumnMissingStart) + key + messages::ColumnMissingMiddle +
               n.table.Name + ".";
      }
    }
  }
  return "";
}

// A place of a curve field outside 1 to 4 cannot lay out the rows: named for
// the surveyor, or empty when every place that reads is one of them.
std::string PlaceOutOfRange(const Recordset& settings) {
  for (const char* name : {"txtArc", "txtChord", "txtRadius", "txtBearing"}) {
    int place = 1;
    try {
      const Value value = settings.Get(name);
      if (!value.IsNull()) place = value.AsInteger();
    } catch (const RunError&) {
      // A place that does not read ends the reading of the settings, as ever.
    }
    if (place < 1 || place > 4) {
      return std::string(messages::ColumnMissingStart) + name + messages::PlaceHolds +
             std::to_string(place) + messages::PlaceEnd;
    }
  }
  return "";
}

}  // namespace

bool CheckProjectFile(ProjectState& state, Prompter& prompter) {
  std::string missing;
  try {
    Database db = Database::Open(NativePath(state.ProjectFile));
    // A file cut short or damaged may still give its first page; the walk
    // over every page keeps it from becoming the current project.
    if (!db.IsIntact()) throw StoreError(errors::CorruptFile, "damaged");
    missing = MissingForParcels(db);
    if (missing.empty()) {
      Recordset rs = db.OpenRecordset("tblsetting");
      rs.MoveFirst();
      missing = PlaceOutOfRange(rs);
    }
    if (missing.empty()) {
      Recordset rs = db.OpenRecordset("tblsetting");
      rs.MoveFirst();
      std::string drawing = rs.Get("AutoCADFile").AsText();
      rs.Close();
      db.Close();
      state.DrawingFile = ResolveDrawingPath(drawing, state.AppDirectory);
      if (!FileExists(state.DrawingFile)) state.DrawingFile = DefaultDrawingPath(state.AppDirectory);
      return true;
    }
  } catch (const RunError& e) {
    if (e.Code() == errors::InvalidPath) {
      missing = messages::PathTooLongStart + std::to_string(Database::PathLimit()) +
                messages::PathTooLongEnd;
    }
  }
  Inform(prompter, messages::CantOpenProject + state.ProjectFile + (missing.empty() ? "" : "\n") +
                       missing);
  return false;
}

std::string ProjectWriteRefusal(const std::string& projectFile) {
  const std::string start = messages::ProjectStart + projectFile;
  try {
    Database db = Database::Open(NativePath(projectFile));
    for (const TableDef& table : {ParcelTable(), MeasurementTable()}) {
      const std::vector<std::string> missing = MissingColumns(db, table);
      if (!missing.empty()) {
        return start + messages::LacksColumnMiddle + missing.front() + messages::LacksColumnOf +
               table.Name + messages::CannotTakeParcels;
      }
    }
    if (db.AcceptsWrites()) return "";
  } catch (const RunError&) {
    // A file that opened a moment ago and now does not open for writing.
  }
  return start + messages::ReadOnlyEnd;
}

std::string StoreFailureReason(const RunError& failure) {
  switch (failure.Code()) {
    case errors::DiskFull: return messages::ReasonDiskFull;
    case errors::ReadOnlyFile:
    case errors::ReadOnlyRecordset: return messages::ReasonReadOnly;
    case errors::Locked:
    case errors::ExclusiveRefused: return messages::ReasonLocked;
    case errors::DiskError: return messages::ReasonDiskError;
    case errors::CorruptFile:
    case errors::UnrecognizedFormat: return messages::ReasonDamaged;
    case errors::FileNotFound: return messages::ReasonNotFound;
    case errors::NoSuchTable:
    case errors::FieldNotFound:
    case errors::TooFewParameters: return messages::ReasonSchema;
    case errors::NoCurrentRecord:
    case errors::RecordDeleted: return messages::ReasonParcelGone;
    case errors::FieldTooSmall: return messages::ReasonTooLong;
    default:
      return messages::ReasonOtherStart + std::to_string(failure.Code()) + " (" + failure.what() +
             ")";
  }
}

}  // namespace parvenna::store
