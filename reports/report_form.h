#pragma once

#include <array>
#include <string>

#include "platform/controls.h"
#include "platform/prompter.h"
#include "reports/mapcheck_text.h"
#include "reports/messages.h"
#include "reports/report_course.h"
#include "reports/report_filter.h"
#include "reports/report_windows.h"
#include "store/project_state.h"
#include "store/store.h"

namespace parvenna::editor {
class EditorForm;
}

namespace parvenna::reports {

// The window's caption is the switch between the reports.
enum class ReportKind { Full, Summary, Picture, Mapcheck, Unknown };
ReportKind KindOfCaption(const std::string& caption);
const char* CaptionOf(ReportKind kind);


// The preview: the work file's text as loaded, and the selection, in
// characters.
struct RichTextBox {
  std::string Text;
  std::size_t SelStart = 0;
  std::size_t SelLength = 0;
  std::string FontName = "Courier New";  // fixed pitch, so the columns stand
  bool Visible = true;
  double Top = 480;
  double Width = 9480;
  double Height = 6120;
  std::string ToolTipText;
};

struct BarFrame {
  double Width = 9480;
  double Height = 480;
};

// The window's Help menu. Each entry does what its namesake in the main
// menu does.
struct ReportMenus {
  MenuItem mnuHelp = Menu(messages::HelpMenu);
  MenuItem mnuQuickHelp = Menu(messages::QuickHelpMenu);
  MenuItem mnuAbout = Menu(messages::AboutMenu);
  MenuItem mnuFAQ = Menu(messages::FaqMenu);
  MenuItem mnuSupport = Menu(messages::SupportMenu);
  MenuItem mnuComment = Menu(messages::CommentMenu);

  struct Entry {
    const char* name;
    MenuItem ReportMenus::*item;
    const char* namesake;  // the entry of the main menu it runs
  };
  static constexpr std::array<Entry, 5> Entries{{
      {"mnuQuickHelp", &ReportMenus::mnuQuickHelp, "mnuHelp"},
      {"mnuAbout", &ReportMenus::mnuAbout, "mnuAbout"},
      {"mnuFAQ", &ReportMenus::mnuFAQ, "mnuFAQ"},
      {"mnuSupport", &ReportMenus::mnuSupport, "mnuSupport"},
      {"mnuComment", &ReportMenus::mnuComment, "mnuComment"},
  }};
};

// frmReport: the one window of the three closure reports. It reads the
// project file afresh through a database handle of its own, writes the text
// reports into work files beside the program and shows them; the picture
// report has no preview and steps the editor instead.
class ReportForm {
 public:
  // `editor` serves the picture report; the text reports do without it.
  ReportForm(store::ProjectState& project, Prompter& prompter, ReportWindows& windows,
             editor::EditorForm* editor = nullptr);

  // ---- Controls, in the order of the bar ----------------------------------
  std::string Caption;
  double Left = 0, Top = 0, Width = 9600, Height = 7305;
  double ScaleWidth = 9480, ScaleHeight = 6600;
  BarFrame frameBar;
  ComboBox cbxParcel;
  CommandButton cmdExport, cmdPrint, cmdClose;
  std::array<OptionButton, 3> optPassFail;
  Label Label1;
  // The precision asked of the mapcheck, 1 in this number; shown only there.
  TextBox txtRatio;
  RichTextBox rtfReport;
  ReportMenus menus;

  // ---- Fields while the window lives -----------------------------------------
  std::string ReportTextPath;
  std::string ReportCsvPath;  // empty until a full report was built
  std::string DirectionLabel;
  // When set, the work files go here instead of beside the program (the
  // command-line tool keeps them apart from a running program's).
  std::string WorkDirectoryOverride;
  bool Unloaded = false;
  // What the mapcheck states and asks: the date of its head, the point of
  // beginning and the precision (the ratio follows txtRatio).
  std::string ReportDate;
  MapcheckOptions mapcheckOptions;

  ReportKind Kind() const { return KindOfCaption(Caption); }

  // ---- Events ----------------------------------------------------------------
  void Form_Load();
  void Form_Activate();
  void Form_Resize();
  void Form_Unload();
  // An option takes the value: a change to true clears the others and fires
  // optPassFail_Click; a change to false fires nothing.
  void SetOptionValue(int index, bool value);
  // The user picks an entry of the combo: fires cbxParcel_Click.
  void SelectParcel(int listIndex);
  void optPassFail_Click(int index);
  void cbxParcel_Click();
  // The user changed the mapcheck's precision: a whole number from 1 up is
  // taken and the report built again; anything else is refused with a box
  // and the former number comes back.
  void txtRatio_Change(const std::string& text);
  void cmdExport_Click();
  void cmdPrint_Click();
  void cmdClose_Click();
  // An entry of the Help menu, by its name: runs its namesake.
  void HelpMenu_Click(const std::string& name);

  // The narrow window of the picture report, which shows only the bar and
  // puts "Save as" outside it.
  void SetUpPictureWindow();

  // ---- Builders --------------------------------------------------------------
  void BuildFullReport();
  void BuildSummaryReport();
  void BuildMapcheckReport();
  // The mapcheck last built.
  const MapcheckDocument& Mapcheck() const { return mapcheck_; }
  // Whichever the caption names; nothing for the picture report.
  void BuildReport();

  FilterChoice Choice() const;
  // Saves the preview by the name's ending; errors end it without a word.
  void SaveAs(const std::string& name);
  // The preview, or its selection, on a printer.
  void PrintPreview(Printer& printer) const;

  store::ProjectState& project;
  Prompter& prompter;
  ReportWindows& windows;
  editor::EditorForm* editor;

 private:
  void SetWorkPaths(bool withCsv);
  void LoadPreview(std::string&& written, bool writtenOk);
  store::Database db_;
  ReportWork work_;
  MapcheckDocument mapcheck_;
};

// The report menu of the main window: with the editor's Save enabled the
// box asks to save first and no report opens (false); otherwise the caption
// is set, and for the picture report the editor goes off the screen and the
// window is made narrow. The caller then shows the window.
bool OpenReport(ReportKind kind, bool editorSaveEnabled, ReportForm& form);

}  // namespace parvenna::reports
