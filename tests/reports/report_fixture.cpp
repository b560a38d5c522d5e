#include "tests/reports/report_fixture.h"

#include <algorithm>

namespace parvenna::testing {

std::string SqlText(const std::string& text) {
  std::string out = "'";
  for (char c : text) {
    out += c;
    if (c == '\'') out += '\'';
  }
  return out + "'";
}

StoredRow Line(int rowNo, const std::string& direction, const std::string& length) {
  StoredRow row;
  row.RowNo = std::to_string(rowNo);
  row.RowType = "1";
  row.Length = length;
  row.Direction = SqlText(direction);
  return row;
}

StoredRow Curve(int rowNo, const std::string& chordDirection, const std::string& chord,
                const std::string& arc, const std::string& radius, int plus) {
  StoredRow row;
  row.RowNo = std::to_string(rowNo);
  row.RowType = "0";
  row.Length = chord;
  row.Direction = SqlText(chordDirection);
  row.Arc = arc;
  row.Radius = radius;
  row.Plus = std::to_string(plus);
  return row;
}

ReportProject::ReportProject(bool unitFeet, int decimals, bool bearing, double tolerance) {
  store::Database db = store::Database::Create(Path());
  db.ExecuteScript(ReadFile(std::string(PARVENNA_SOURCE_DIR) + "/samples/project_schema.sql"));
  db.Execute("INSERT INTO tblSetting VALUES (1, 4, 2, 3, " + std::to_string(tolerance) + ", " +
             (unitFeet ? "1" : "0") + ", 1, 'site.dwg', 0, " + std::to_string(decimals) +
             ", 1, 0, 1, 5, 0, 1, 0, 30, 0, 0, " + (bearing ? "1" : "0") +
             ", '%%D', 0, 256, 0, 0, 0, 1, 1, 0, 0, 0, 1, 1)");
  db.Close();
  state.AppDirectory = Directory();
  state.ProjectFile = Path();
  state.DrawingFile = "C:\\plans\\site.dwg";
  state.UnitIsFeet = unitFeet;
  state.ErrDecimals = decimals;
  state.BearingMode = bearing;
  state.ClosureToleranceValue = tolerance;
}

void ReportProject::Execute(const std::string& sql) {
  store::Database db = store::Database::Open(Path());
  db.ExecuteScript(sql);
}

long ReportProject::AddParcel(const std::string& name, const std::string& savedClosure,
                              const std::vector<StoredRow>& rows) {
  const long id = nextId++;
  std::string sql = "INSERT INTO tblParcel (ParcelID, Parcel, Closure, Area, ClosureBearing, "
                    "PrecisionRatio) VALUES (" + std::to_string(id) + ", " + SqlText(name) + ", " +
                    savedClosure + ", 0, '', 0);\n";
  for (const StoredRow& r : rows) {
    sql += "INSERT INTO tblMeasurements VALUES (" + std::to_string(id) + ", " + r.RowNo + ", " +
           r.RowType + ", " + r.Length + ", " + r.Direction + ", " + r.Arc + ", " + r.Radius +
           ", " + r.Plus + ");\n";
  }
  Execute(sql);
  return id;
}

std::vector<std::string> SplitCrLf(const std::string& text) {
  std::vector<std::string> lines;
  std::size_t start = 0;
  for (;;) {
    const std::size_t end = text.find("\r\n", start);
    if (end == std::string::npos) {
      if (start < text.size()) lines.push_back(text.substr(start));
      return lines;
    }
    lines.push_back(text.substr(start, end - start));
    start = end + 2;
  }
}

std::vector<std::string> OpenWindow::Lines() const { return SplitCrLf(form.rtfReport.Text); }

int OpenWindow::IndexOf(const std::string& name) const {
  const auto& list = form.cbxParcel.List;
  const auto found = std::find(list.begin(), list.end(), name);
  return found == list.end() ? -1 : static_cast<int>(found - list.begin());
}

}  // namespace parvenna::testing
