// The full and summary reports of a project of 10,000 parcels of 20 courses,
// beside a bare SQLite read of the same rows. Targets: each report at most 3
// times the bare read, and the full report under 2 seconds. The mapcheck of
// the same project is timed beside them.
#include <sqlite3.h>

#include <algorithm>
#include <chrono>
#include <cmath>
#include <cstdio>
#include <functional>
#include <string>

#include "reports/report_form.h"
#include "reports/work_files.h"
#include "store/store.h"
#include "tests/store/temp_dir.h"
#include "tests/support/scripted_prompter.h"

namespace {

using namespace parvenna;
using Clock = std::chrono::steady_clock;

constexpr int kParcels = 10000;
constexpr int kCourses = 20;

class NoWindows : public reports::ReportWindows {
 public:
  std::optional<std::string> ShowSave(const std::string&) override { return {}; }
  std::unique_ptr<Printer> ShowPrinter(int) override { return nullptr; }
  std::unique_ptr<Printer> PicturePrinter() override { return nullptr; }
  void SetReportTopmost() override {}
  void SetEditorTopmost(bool) override {}
  void MoveEditorOffScreen() override {}
  void CenterEditor() override {}
  void DoEvents() override {}
};

// Twenty courses a parcel, every fifth a curve; directions all round the
// compass, lengths with decimals, some above 999.
void MakeProject(const std::string& path) {
  store::Database db = store::Database::Create(path);
  std::string schema;
  reports::ReadWholeFile(std::string(PARVENNA_SOURCE_DIR) + "/samples/project_schema.sql", schema);
  db.ExecuteScript(schema);
  std::string sql = "BEGIN;\n";
  sql.reserve(30'000'000);
  char row[256];
  const char* quadrants[] = {"NE", "SE", "SW", "NW"};
  for (int p = 1; p <= kParcels; ++p) {
    std::snprintf(row, sizeof row,
                  "INSERT INTO tblParcel VALUES (%d, 'Lot %05d', %g, 0, '', 0);\n", p, p,
                  (p % 7) * 0.01);
    sql += row;
    for (int r = 0; r < kCourses; ++r) {
      const int k = (p * 31 + r * 17) % 360;
      const char* q = quadrants[r % 4];
      char direction[64];
      std::snprintf(direction, sizeof direction, "%c%d\u00B0%d''%d\"%c", q[0], k % 90, (k * 7) % 60,
                    (k * 13) % 60, q[1]);
      const double length = 50 + (p * r) % 1000 + 0.37;
      if (r % 5 == 4) {
        std::snprintf(row, sizeof row,
                      "INSERT INTO tblMeasurements VALUES (%d, %d, 0, %.2f, '%s', %.2f, %.2f, %d);\n",
                      p, r, length, direction, length * 1.1, length * 2, r % 2);
      } else {
        std::snprintf(row, sizeof row,
                      "INSERT INTO tblMeasurements VALUES (%d, %d, 1, %.2f, '%s', NULL, NULL, NULL);\n",
                      p, r, length, direction);
      }
      sql += row;
    }
  }
  sql += "COMMIT;\n";
  db.ExecuteScript(sql);
}

// Every row of both tables stepped through and every column read.
long BareRead(const std::string& path) {
  sqlite3* db = nullptr;
  sqlite3_open_v2(path.c_str(), &db, SQLITE_OPEN_READONLY, nullptr);
  long cells = 0;
  for (const char* query : {"select * FROM tblParcel  ORDER BY Parcel", "select * FROM tblMeasurements"}) {
    sqlite3_stmt* statement = nullptr;
    sqlite3_prepare_v2(db, query, -1, &statement, nullptr);
    const int columns = sqlite3_column_count(statement);
    while (sqlite3_step(statement) == SQLITE_ROW) {
      for (int c = 0; c < columns; ++c) {
        if (sqlite3_column_type(statement, c) == SQLITE_TEXT) {
          cells += sqlite3_column_bytes(statement, c) > 0;
        } else {
          cells += sqlite3_column_double(statement, c) != 0;
        }
      }
    }
    sqlite3_finalize(statement);
  }
  sqlite3_close(db);
  return cells;
}

// The best of `runs` timings, in milliseconds.
double Best(int runs, const std::function<void()>& work) {
  double best = 1e300;
  for (int i = 0; i < runs; ++i) {
    const auto start = Clock::now();
    work();
    best = std::min(best, std::chrono::duration<double, std::milli>(Clock::now() - start).count());
  }
  return best;
}

}  // namespace

int main() {
  testing::TempDir dir;
  const std::string path = (dir / "large.pvd").string();
  std::printf("Generating %d parcels x %d courses...\n", kParcels, kCourses);
  MakeProject(path);

  store::ProjectState state;
  state.AppDirectory = dir.WithSeparator();
  state.ProjectFile = path;
  state.DrawingFile = "C:\\plans\\county.dwg";
  testing::ScriptedPrompter prompter;
  NoWindows windows;

  long cells = 0;
  const double bare = Best(5, [&] { cells = BareRead(path); });

  // The same rows through the store's dynasets, as the forms read them, and
  // through its forward-only cursors, as the reports do: the floor under
  // both reports.
  const double storeRead = Best(5, [&] {
    store::Database db = store::Database::Open(path);
    store::Recordset parcels = db.OpenRecordset("select * FROM tblParcel  ORDER BY Parcel");
    store::Recordset rows = db.OpenRecordset("select * FROM tblMeasurements");
    if (rows.RecordCount() + parcels.RecordCount() == 0) std::printf("no rows\n");
  });
  long cursorCells = 0;
  const double cursorRead = Best(5, [&] {
    store::Database db = store::Database::Open(path);
    cursorCells = 0;
    for (const char* query : {"select * FROM tblParcel  ORDER BY Parcel", "select * FROM tblMeasurements"}) {
      for (store::ForwardCursor rows = db.OpenForwardCursor(query); !rows.Eof(); rows.MoveNext()) {
        for (int c = 0; c < rows.FieldCount(); ++c) cursorCells += !rows.Get(c).IsNull();
      }
    }
  });

  reports::ReportForm full(state, prompter, windows);
  reports::OpenReport(reports::ReportKind::Full, false, full);
  full.Form_Load();
  full.optPassFail[0].Value = true;
  const double fullMs = Best(5, [&] { full.BuildFullReport(); });

  reports::ReportForm summary(state, prompter, windows);
  reports::OpenReport(reports::ReportKind::Summary, false, summary);
  summary.Form_Load();
  summary.optPassFail[0].Value = true;
  const double summaryMs = Best(5, [&] { summary.BuildSummaryReport(); });

  // The mapcheck walks each parcel with the editor's routines and runs the
  // checks of a save over it: no target, the figure is for comparison.
  reports::ReportForm mapcheck(state, prompter, windows);
  reports::OpenReport(reports::ReportKind::Mapcheck, false, mapcheck);
  mapcheck.Form_Load();
  mapcheck.optPassFail[0].Value = true;
  const double mapcheckMs = Best(3, [&] { mapcheck.BuildMapcheckReport(); });

  std::printf("bare SQLite read      %8.1f ms  (%ld non-empty cells)\n", bare, cells);
  std::printf("store dynasets         %8.1f ms  %.2f x the bare read\n", storeRead, storeRead / bare);
  std::printf("store cursors          %8.1f ms  %.2f x the bare read (%ld cells not Null)\n",
              cursorRead, cursorRead / bare, cursorCells);
  std::printf("full report           %8.1f ms  %.2f x the bare read (target <= 3), %.2f of 2 s\n",
              fullMs, fullMs / bare, fullMs / 2000);
  std::printf("summary report        %8.1f ms  %.2f x the bare read (target <= 3)\n", summaryMs,
              summaryMs / bare);
  std::printf("mapcheck              %8.1f ms  %.2f x the full report, %.1f us a parcel\n",
              mapcheckMs, mapcheckMs / fullMs, mapcheckMs * 1000 / kParcels);
  std::printf("full report text      %8zu bytes, %zu lines\n", full.rtfReport.Text.size(),
              static_cast<std::size_t>(std::count(full.rtfReport.Text.begin(),
                                                  full.rtfReport.Text.end(), '\n')));
  return 0;
}
