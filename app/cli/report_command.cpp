#include "app/cli/report_command.h"

#include <filesystem>
#include <iostream>
#include <random>

#include "app/cli/project_access.h"
#include "editor/editor_form.h"
#include "geometry/numbers.h"
#include "reports/mapcheck_pages.h"
#include "reports/work_files.h"
#include "reports/messages.h"
#include "reports/recorded_picture.h"
#include "reports/report_form.h"
#include "store/places.h"
#include "store/project_file.h"
#include "store/project_opening.h"
#include "store/system_store.h"

namespace parvenna::cli {
namespace {

namespace fs = std::filesystem;
using reports::ReportKind;

struct UsageError {
  std::string what;
};

struct ReportOptions {
  ReportKind kind = ReportKind::Unknown;
  std::string project;
  int filter = 0;  // 0 all, 1 pass, 2 fail
  bool parcelGiven = false;
  std::string parcel;
  std::string outFile, csvFile, pdfFile, coursesCsvFile;
  reports::MapcheckOptions mapcheck;
  bool mapcheckOption = false;  // --ratio, --pob or --courses-csv was given
};

// "N,E": the point of beginning of the mapcheck.
void ReadPob(const std::string& text, reports::MapcheckOptions& options) {
  const std::size_t comma = text.find(',');
  try {
    if (comma == std::string::npos || text.find(',', comma + 1) != std::string::npos) throw 0;
    options.pobNorth = TextToDouble(text.substr(0, comma));
    options.pobEast = TextToDouble(text.substr(comma + 1));
  } catch (...) {
    throw UsageError{"--pob is the northing and easting of the beginning, as 5000,2000, not \"" +
                     text + "\""};
  }
}

ReportOptions Parse(const std::vector<std::string>& args) {
  ReportOptions o;
  if (args.empty()) throw UsageError{"no report named"};
  if (args[0] == "full") o.kind = ReportKind::Full;
  else if (args[0] == "summary") o.kind = ReportKind::Summary;
  else if (args[0] == "picture") o.kind = ReportKind::Picture;
  else if (args[0] == "mapcheck") o.kind = ReportKind::Mapcheck;
  else throw UsageError{"unknown report \"" + args[0] + "\""};
  for (std::size_t i = 1; i < args.size(); ++i) {
    const std::string& a = args[i];
    auto value = [&]() -> const std::string& {
      if (i + 1 >= args.size()) throw UsageError{a + " needs a value"};
      return args[++i];
    };
    if (a == "--filter") {
      const std::string& f = value();
      if (f == "all") o.filter = 0;
      else if (f == "pass") o.filter = 1;
      else if (f == "fail") o.filter = 2;
      else throw UsageError{"--filter is all, pass or fail, not \"" + f + "\""};
    } else if (a == "--parcel") {
      o.parcel = value();
      o.parcelGiven = true;
    } else if (a == "--out") o.outFile = value();
    else if (a == "--csv") o.csvFile = value();
    else if (a == "--pdf") o.pdfFile = value();
    else if (a == "--courses-csv" || a == "--ratio" || a == "--pob") {
      o.mapcheckOption = true;
      const std::string& v = value();
      if (a == "--courses-csv") o.coursesCsvFile = v;
      else if (a == "--pob") ReadPob(v, o.mapcheck);
      else if (const std::optional<double> ratio = reports::RatioOfText(v)) o.mapcheck.ratio = *ratio;
      else throw UsageError{"--ratio is a whole number from 1 to 1000000000, not \"" + v + "\""};
    }
    else if (a.size() > 1 && a[0] == '-') throw UsageError{"unknown option " + a};
    else if (o.project.empty()) o.project = a;
    else throw UsageError{"only one project, found also \"" + a + "\""};
  }
  if (o.project.empty()) throw UsageError{"no project file given"};
  if (o.kind == ReportKind::Picture && o.pdfFile.empty()) {
    throw UsageError{"the picture report is printed: give --pdf FILE"};
  }
  if (o.kind != ReportKind::Full && o.kind != ReportKind::Mapcheck && !o.csvFile.empty()) {
    throw UsageError{"only the full report and the mapcheck have CSV rows"};
  }
  if (o.kind != ReportKind::Mapcheck && o.mapcheckOption) {
    throw UsageError{"--ratio, --pob and --courses-csv belong to the mapcheck"};
  }
  return o;
}

// The windows of a report run from a script: no dialogs; the picture report
// and a printed text report go to the PDF printer.
class ScriptWindows : public reports::ReportWindows {
 public:
  std::unique_ptr<Printer> printer;
  std::optional<std::string> ShowSave(const std::string&) override { return {}; }
  std::unique_ptr<Printer> ShowPrinter(int) override { return std::move(printer); }
  std::unique_ptr<Printer> PicturePrinter() override { return std::move(printer); }
  void SetReportTopmost() override {}
  void SetEditorTopmost(bool) override {}
  void MoveEditorOffScreen() override {}
  void CenterEditor() override {}
  void DoEvents() override {}
};

// A directory of this run's own for the work files, so that runs side by
// side and a running program do not overwrite each other's.
class RunDirectory {
 public:
  RunDirectory() {
    std::random_device random;
    path_ = fs::temp_directory_path() / ("parvenna-report-" + std::to_string(random()));
    fs::create_directories(path_);
  }
  ~RunDirectory() {
    std::error_code ec;
    fs::remove_all(path_, ec);
  }
  std::string Path() const { return path_.string() + "/"; }

 private:
  fs::path path_;
};

int Run(const ReportOptions& o, std::ostream& out, std::ostream& err,
        const PdfPrinterFactory& pdfPrinter, const std::string& appDirectory) {
  StreamPrompter prompter(err);
  store::ProjectState state;
  state.AppDirectory = appDirectory.empty() ? store::ProgramDirectory() : appDirectory;
  std::error_code ec;
  state.ProjectFile = fs::absolute(o.project, ec).string();
  if (!store::CheckProjectFile(state, prompter)) return 1;
  store::SystemStore systemStore(state.AppDirectory);
  store::RecentMenu menu;
  store::NoProjectWindows projectWindows;
  store::ProjectOpener(state, prompter, systemStore, menu, projectWindows).LoadProjectSettings();

  ScriptWindows windows;
  if (!o.pdfFile.empty()) {
    if (!pdfPrinter) {
      err << "parvenna-cli: this build cannot write PDF files\n";
      return 1;
    }
    windows.printer = pdfPrinter(o.pdfFile);
    if (!windows.printer) {
      err << "parvenna-cli: cannot write " << o.pdfFile << "\n";
      return 1;
    }
  }
  RunDirectory work;
  reports::RecordedPicture sketch;
  NoEditorHost host;
  std::unique_ptr<editor::EditorForm> editor;
  if (o.kind == ReportKind::Picture) {
    editor = std::make_unique<editor::EditorForm>(state, prompter, sketch, host);
    // The list alone: the run loads each parcel itself, the first one too,
    // and one without courses is passed over with its message.
    editor->Parcel_Bound();
  }
  reports::ReportForm form(state, prompter, windows, editor.get());
  form.WorkDirectoryOverride = work.Path();
  form.mapcheckOptions = o.mapcheck;
  form.txtRatio.Text = PlainNumber(o.mapcheck.ratio);
  reports::OpenReport(o.kind, false, form);
  form.Form_Load();
  if (o.parcelGiven) {
    const int index = IndexOfParcel(form.cbxParcel, o.parcel);
    if (index < 0) {
      err << "parvenna-cli: no parcel named \"" << o.parcel << "\" in " << o.project << "\n";
      return 1;
    }
    form.SelectParcel(index);
  } else {
    form.SetOptionValue(o.filter, true);
  }
  const auto noData = [&] {
    for (const std::string& text : prompter.shown) {
      if (text == reports::messages::NoDataText || text == reports::messages::NoDataPicture) return true;
    }
    return false;
  };

  if (o.kind == ReportKind::Picture) {
    form.cmdPrint_Click();
    windows.printer.reset();  // the file is written
    return noData() ? 1 : 0;
  }
  if (noData()) return 1;
  if (o.outFile.empty()) out << form.rtfReport.Text;
  else form.SaveAs(o.outFile);
  if (!o.csvFile.empty() && !fs::equivalent(o.csvFile, form.ReportCsvPath, ec)) {
    fs::copy_file(form.ReportCsvPath, o.csvFile, fs::copy_options::overwrite_existing, ec);
    if (ec) {
      err << "parvenna-cli: cannot write " << o.csvFile << "\n";
      return 1;
    }
  }
  if (!o.coursesCsvFile.empty() &&
      !reports::WriteWholeFile(o.coursesCsvFile, reports::CoursesCsv(form.Mapcheck()))) {
    err << "parvenna-cli: cannot write " << o.coursesCsvFile << "\n";
    return 1;
  }
  if (windows.printer) {
    if (o.kind == ReportKind::Mapcheck) reports::PrintMapcheck(form.Mapcheck(), *windows.printer);
    else form.PrintPreview(*windows.printer);
  }
  return 0;
}

}  // namespace

int RunReport(const std::vector<std::string>& args, std::ostream& out, std::ostream& err,
              const PdfPrinterFactory& pdfPrinter, const std::string& appDirectory) {
  try {
    return Run(Parse(args), out, err, pdfPrinter, appDirectory);
  } catch (const UsageError& e) {
    err << "parvenna-cli report: " << e.what << "\n" << kReportUsage;
    return 2;
  } catch (const RunError& e) {
    err << "parvenna-cli: Unkown Error Number " << e.Code() << " has occured. (" << e.what()
        << ")\n";
    return 1;
  }
}

}  // namespace parvenna::cli
