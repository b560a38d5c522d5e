#pragma once

#include <gtest/gtest.h>

#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "reports/report_form.h"
#include "store/project_state.h"
#include "store/store.h"
#include "tests/store/temp_dir.h"
#include "tests/support/recording_printer.h"
#include "tests/support/scripted_prompter.h"

namespace parvenna::testing {

// The window calls, recorded; dialogs answered from fields.
class FakeReportWindows : public reports::ReportWindows {
 public:
  std::optional<std::string> saveName;  // what ShowSave returns
  bool printerChosen = true;            // ShowPrinter returns a printer, or cancels
  std::vector<int> printerFlags;
  std::vector<RecordingPrinter::Job> printed;  // the jobs of the printer handed out last
  std::vector<RecordingPrinter::Job> pictureJobs;  // the jobs of the last picture run
  std::vector<std::string> calls;

  std::optional<std::string> ShowSave(const std::string& filter) override {
    calls.push_back("ShowSave " + filter);
    return saveName;
  }
  std::unique_ptr<Printer> ShowPrinter(int flags) override {
    printerFlags.push_back(flags);
    if (!printerChosen) return nullptr;
    printed.clear();
    return std::make_unique<RecordingPrinter>(&printed);
  }
  std::unique_ptr<Printer> PicturePrinter() override {
    calls.push_back("PicturePrinter");
    if (!printerChosen) return nullptr;
    return std::make_unique<RecordingPrinter>(&pictureJobs);
  }
  void SetReportTopmost() override { calls.push_back("ReportTopmost"); }
  void SetEditorTopmost(bool topmost) override {
    calls.push_back(topmost ? "EditorTopmost" : "EditorNotTopmost");
  }
  void MoveEditorOffScreen() override { calls.push_back("EditorOffScreen"); }
  void CenterEditor() override { calls.push_back("CenterEditor"); }
  void DoEvents() override { calls.push_back("DoEvents"); }
};

// One course as stored. Null columns are written as NULL.
struct StoredRow {
  std::string RowNo = "0";
  std::string RowType = "1";
  std::string Length = "0";
  std::string Direction = "''";  // SQL text, quotes and all
  std::string Arc = "NULL";
  std::string Radius = "NULL";
  std::string Plus = "NULL";
};

StoredRow Line(int rowNo, const std::string& direction, const std::string& length);
StoredRow Curve(int rowNo, const std::string& chordDirection, const std::string& chord,
                const std::string& arc, const std::string& radius, int plus);

// A project file in a fresh directory, which is also the program's
// directory, so that the work files land there.
class ReportProject {
 public:
  explicit ReportProject(bool unitFeet = true, int decimals = 2, bool bearing = true,
                         double tolerance = 0.01);

  // Adds a parcel with a saved closure (SQL text, "NULL" allowed); returns its id.
  long AddParcel(const std::string& name, const std::string& savedClosure,
                 const std::vector<StoredRow>& rows);
  void Execute(const std::string& sql);

  std::string Path() const { return (dir / "project.pvd").string(); }
  std::string Directory() const { return dir.WithSeparator(); }

  TempDir dir;
  store::ProjectState state;
  long nextId = 1;
};

// The report window over a project, loaded and activated.
struct OpenWindow {
  ScriptedPrompter prompter;
  FakeReportWindows windows;
  reports::ReportForm form;

  OpenWindow(ReportProject& project, reports::ReportKind kind)
      : form(project.state, prompter, windows) {
    reports::OpenReport(kind, false, form);
    form.Form_Load();
    form.Form_Activate();
  }
  // The preview's lines, without their CR LF.
  std::vector<std::string> Lines() const;
  // The index in the combo of a parcel name.
  int IndexOf(const std::string& name) const;
};

// Splits a text at CR LF.
std::vector<std::string> SplitCrLf(const std::string& text);

}  // namespace parvenna::testing
