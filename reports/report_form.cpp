#include "reports/report_form.h"

#include <filesystem>

#include "geometry/numbers.h"
#include "reports/mapcheck_pages.h"
#include "reports/messages.h"
#include "reports/picture_report.h"
#include "reports/rich_text.h"
#include "reports/text_reports.h"
#include "reports/work_files.h"
#include "store/paths.h"

namespace parvenna::reports {

ReportKind KindOfCaption(const std::string& caption) {
  if (caption == messages::FullCaption) return ReportKind::Full;
  if (caption == messages::SummaryCaption) return ReportKind::Summary;
  if (caption == messages::PictureCaption) return ReportKind::Picture;
  if (caption == messages::MapcheckCaption) return ReportKind::Mapcheck;
  return ReportKind::Unknown;
}

const char* CaptionOf(ReportKind kind) {
  switch (kind) {
    case ReportKind::Full: return messages::FullCaption;
    case ReportKind::Summary: return messages::SummaryCaption;
    case ReportKind::Picture: return messages::PictureCaption;
    case ReportKind::Mapcheck: return messages::MapcheckCaption;
    case ReportKind::Unknown: break;
  }
  return "";
}

ReportForm::ReportForm(store::ProjectState& projectState, Prompter& prompterPort,
                       ReportWindows& windowsPort, editor::EditorForm* editorForm)
    : project(projectState), prompter(prompterPort), windows(windowsPort), editor(editorForm) {
  using namespace messages;
  cbxParcel.Text = ComboDesignText;
  cbxParcel.ToolTipText = ParcelTip;
  cmdExport = Button(ExportCaption);
  cmdExport.ToolTipText = ExportTip;
  cmdExport.Left = 7200;
  cmdPrint = Button(PrintCaption);
  cmdPrint.ToolTipText = PrintTip;
  cmdPrint.Left = 5280;
  cmdClose = Button(CloseCaption);
  cmdClose.ToolTipText = CloseTip;
  cmdClose.Left = 6240;
  optPassFail[0] = Option(AllCaption, AllTip);
  optPassFail[1] = Option(PassCaption, PassTip);
  optPassFail[2] = Option(FailCaption, FailTip);
  Label1.Caption = ParcelLabel;
  txtRatio.Text = PlainNumber(mapcheckOptions.ratio);
  txtRatio.ToolTipText = mapcheck::RatioTip;
  txtRatio.Visible = false;
  rtfReport.ToolTipText = PreviewTip;
  ReportDate = TodayText();
}

void ReportForm::Form_Load() {
  if (Kind() == ReportKind::Picture) {
    Left = (windows.ScreenWidth() - Width) / 2;
    Top = (windows.ScreenHeight() - Height) / 2;
  }
  db_ = store::Database::Open(store::NativePath(project.ProjectFile));

  cbxParcel.List.clear();
  cbxParcel.ItemData.clear();
  cbxParcel.ListIndex = -1;
  cbxParcel.Text.clear();
  // Errors in the listing are passed over: an empty or odd table leaves what
  // could be listed.
  ResumeNext([&] {
    store::Recordset rs = db_.OpenRecordset("SELECT * FROM tblParcel ORDER BY Parcel");
    int newIndex = -1;
    for (ResumeNext([&] { rs.MoveFirst(); }); !rs.Eof(); rs.MoveNext()) {
      ResumeNext([&] {
        const store::Value name = rs.Get("Parcel");
        if (name.IsNull()) throw RunError(ErrorNumber(94), "Invalid use of Null");
        cbxParcel.List.push_back(name.AsText());
        cbxParcel.ItemData.push_back(0);
        newIndex = cbxParcel.ListCount() - 1;
      });
      ResumeNext([&] {
        if (newIndex < 0) throw RunError(ErrorNumber::SubscriptOutOfRange, "No entry");
        cbxParcel.ItemData[static_cast<std::size_t>(newIndex)] = rs.Get("ParcelID").AsLong();
      });
    }
  });

  txtRatio.Visible = Kind() == ReportKind::Mapcheck;
  if (!project.ToolTipsOn) {
    for (std::string* tip : {&cbxParcel.ToolTipText, &txtRatio.ToolTipText, &cmdExport.ToolTipText,
                             &cmdPrint.ToolTipText, &cmdClose.ToolTipText,
                             &optPassFail[0].ToolTipText, &optPassFail[1].ToolTipText,
                             &optPassFail[2].ToolTipText, &rtfReport.ToolTipText}) {
      tip->clear();
    }
  }
  DirectionLabel = project.BearingMode ? messages::Bearing : messages::Azimuth;
}

void ReportForm::Form_Activate() {
  SetOptionValue(0, true);
  windows.SetReportTopmost();
}

void ReportForm::Form_Resize() {
  if (frameBar.Height < ScaleHeight) rtfReport.Height = ScaleHeight - frameBar.Height;
  rtfReport.Width = ScaleWidth;
}

void ReportForm::Form_Unload() {
  windows.CenterEditor();
  windows.SetEditorTopmost(true);
  Unloaded = true;
}

void ReportForm::SetOptionValue(int index, bool value) {
  OptionButton& option = optPassFail.at(static_cast<std::size_t>(index));
  if (!value) {
    option.Value = false;
    return;
  }
  if (option.Value) return;
  for (OptionButton& other : optPassFail) other.Value = false;
  option.Value = true;
  optPassFail_Click(index);
}

void ReportForm::SelectParcel(int listIndex) {
  if (listIndex < 0 || listIndex >= cbxParcel.ListCount()) return;
  cbxParcel.ListIndex = listIndex;
  cbxParcel.Text = cbxParcel.List[static_cast<std::size_t>(listIndex)];
  cbxParcel_Click();
}

void ReportForm::optPassFail_Click(int) {
  cbxParcel.Text.clear();
  BuildReport();
}

void ReportForm::cbxParcel_Click() {
  // Only the values change: no option's click runs.
  for (OptionButton& option : optPassFail) option.Value = false;
  BuildReport();
}

void ReportForm::BuildReport() {
  switch (Kind()) {
    case ReportKind::Full: BuildFullReport(); break;
    case ReportKind::Summary: BuildSummaryReport(); break;
    case ReportKind::Mapcheck: BuildMapcheckReport(); break;
    default: break;  // the picture report remembers the choice for its print
  }
}

FilterChoice ReportForm::Choice() const {
  FilterChoice choice;
  choice.parcelChosen = !cbxParcel.Text.empty();
  const int index = cbxParcel.ListIndex;
  if (index >= 0 && index < static_cast<int>(cbxParcel.ItemData.size())) {
    choice.chosenId = cbxParcel.ItemData[static_cast<std::size_t>(index)];
  }
  choice.all = optPassFail[0].Value;
  choice.pass = optPassFail[1].Value;
  choice.fail = optPassFail[2].Value;
  choice.tolerance = project.ClosureToleranceValue;
  return choice;
}

// A build writes its work files whole when it ends, and a report without
// data leaves them empty. Nothing reads them in between, so they are not
// emptied first: a work file written over keeps its pages on the disk.
void ReportForm::SetWorkPaths(bool withCsv) {
  const std::string& directory =
      WorkDirectoryOverride.empty() ? project.AppDirectory : WorkDirectoryOverride;
  ReportTextPath = WorkFile(directory, messages::TextWorkFile);
  if (withCsv) ReportCsvPath = WorkFile(directory, messages::CsvWorkFile);
}

void ReportForm::LoadPreview(std::string&& written, bool writtenOk) {
  // The preview shows the work file; when it was just written whole, its
  // bytes are those in hand and need not be read back.
  if (!writtenOk && !ReadWholeFile(ReportTextPath, written)) return;
  rtfReport.Text = std::move(written);
  rtfReport.SelStart = rtfReport.SelLength = 0;
}

void ReportForm::BuildFullReport() {
  SetWorkPaths(true);
  ReportStreams out;
  BuildResult result = BuildResult::Built;
  const bool read = ResumeNext([&] {
    result = WriteFullReport(db_, Choice(), ReportSettings::Of(project), work_, out);
  });
  if (read && result == BuildResult::NoData) {
    WriteWholeFile(ReportCsvPath, "");
    WriteWholeFile(ReportTextPath, "");
    Inform(prompter, messages::NoDataText);
    return;  // the preview keeps what it had
  }
  WriteWholeFile(ReportCsvPath, out.csv);
  const bool written = WriteWholeFile(ReportTextPath, out.text);
  LoadPreview(std::move(out.text), written);
}

void ReportForm::BuildSummaryReport() {
  SetWorkPaths(false);
  std::string out;
  BuildResult result = BuildResult::Built;
  const bool read = ResumeNext([&] {
    result = WriteSummaryReport(db_, Choice(), ReportSettings::Of(project), work_, out);
  });
  if (read && result == BuildResult::NoData) {
    WriteWholeFile(ReportTextPath, "");
    Inform(prompter, messages::NoDataText);
    return;
  }
  const bool written = WriteWholeFile(ReportTextPath, out);
  LoadPreview(std::move(out), written);
}

void ReportForm::SaveAs(const std::string& name) {
  try {
    std::string ending = name.size() >= 3 ? name.substr(name.size() - 3) : name;
    ending = store::UpperCase(ending);
    if (ending == "TXT") {
      WriteWholeFile(name, rtfReport.Text);
    } else if (ending == "CSV") {
      // Only a full report leaves a CSV work file; otherwise nothing is written.
      if (ReportCsvPath.empty()) return;
      std::filesystem::copy_file(store::NativePath(ReportCsvPath), store::NativePath(name),
                                 std::filesystem::copy_options::overwrite_existing);
    } else {
      WriteWholeFile(name, RichTextOf(rtfReport.Text));
    }
  } catch (const std::exception&) {
    // A failed save ends without a word.
  }
}

void ReportForm::cmdExport_Click() {
  const std::optional<std::string> name = windows.ShowSave(messages::SaveFilter);
  if (!name || name->empty()) return;
  SaveAs(*name);
}

void ReportForm::cmdPrint_Click() {
  if (Kind() == ReportKind::Picture) {
    if (editor != nullptr) PictureReport(*this, *editor).PictureRun();
    return;
  }
  // The mapcheck prints its own pages, with the sketches, not the preview.
  const bool pages = Kind() == ReportKind::Mapcheck;
  int flags = 256;
  if (rtfReport.SelLength != 0 && !pages) flags += 1;
  std::unique_ptr<Printer> printer = windows.ShowPrinter(flags);
  if (!printer) return;
  if (pages) PrintMapcheck(mapcheck_, *printer);
  else PrintPreview(*printer);
}

void ReportForm::cmdClose_Click() { Form_Unload(); }

void ReportForm::HelpMenu_Click(const std::string& name) {
  for (const ReportMenus::Entry& entry : ReportMenus::Entries) {
    if (name == entry.name) windows.RunMainMenu(entry.namesake);
  }
}

void ReportForm::SetUpPictureWindow() {
  windows.MoveEditorOffScreen();
  windows.SetEditorTopmost(false);
  Height = rtfReport.Top + 405;
  Width = cmdExport.Left;
  frameBar.Width = Width;
  rtfReport.Visible = false;
}

bool OpenReport(ReportKind kind, bool editorSaveEnabled, ReportForm& form) {
  if (editorSaveEnabled) {
    Inform(form.prompter, messages::SaveFirst);
    return false;
  }
  if (kind == ReportKind::Picture) form.SetUpPictureWindow();
  form.Caption = CaptionOf(kind);
  return true;
}

}  // namespace parvenna::reports
