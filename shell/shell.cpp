#include "shell/shell.h"

#include <filesystem>

#include "platform/run_error.h"
#include "shell/messages.h"
#include "store/messages.h"
#include "store/places.h"
#include "store/project_file.h"

namespace parvenna::shell {

std::string UnknownErrorText(int number) {
  return messages::UnknownErrorStart + std::to_string(number) + messages::UnknownErrorEnd;
}

void ReportUnknownError(Prompter& prompter, int number) {
  Inform(prompter,
         messages::ReportedErrorStart + std::to_string(number) + messages::UnknownErrorEnd + "\n" +
             messages::SupportSentence,
         MsgIcon::Critical);
}

Shell::Shell(std::string appDirectory, Prompter& prompterPort, Canvas& sketch,
             ShellWindows& shellWindows)
    : systemStore(appDirectory),
      prompter(prompterPort),
      windows(shellWindows),
      opener(state, prompter, systemStore, recent, *this),
      frmEditor(state, prompter, sketch, *this),
      frmView(state, prompter, frmEditor),
      frmCreate(state, prompter, systemStore, opener, *this),
      frmSetting(state, prompter, systemStore, opener, *this),
      menu(frmEditor.menus) {
  state.AppDirectory = std::move(appDirectory);
  BindMenu();
}

Shell::~Shell() = default;

bool Shell::Start(const std::string& commandLine) {
  FirstRun = systemStore.ReadFirstRun(prompter);
  if (FirstRun) systemStore.RewriteRelativeRecent();
  if (!systemStore.Open(prompter)) return false;
  VersionText = std::string(messages::ProgramVersion) + messages::Version;
  windows.ShowMain();

  // The main window comes up around the editor; until a project says
  // otherwise the drawing is white and keeps its own colours.
  state.ForeColourNumber = 256;
  state.BackRed = state.BackGreen = state.BackBlue = 255;
  SetEditorTopmost(true);

  frmEditor.ExitConfirmed = false;
  // The windows are named after the most recent project as soon as the list
  // is read; an empty list names nothing.
  if (systemStore.FillRecentMenuAtStart(state, recent)) {
    SetCaptions(store::EditorCaption(recent), store::MainCaption(recent));
  } else {
    menu.ShowHistory(recent);
  }
  frmEditor.EnableEditorFrames(false);
  frmEditor.ResetEditor();
  Editing = false;
  Redraw = true;
  menu.mnuOptions_DropDown(state);

  if (FirstRun) {
    // FirstRun was cleared before the questions: a crash between them does
    // not ask again.
    const bool bearing = AskYesNo(prompter, messages::AskBearing, MsgIcon::Question,
                                  messages::InitialConfiguration);
    systemStore.WriteDefaultBearing(bearing, prompter);
    const bool metric = AskYesNo(prompter, messages::AskUnit, MsgIcon::Question,
                                 messages::InitialConfiguration);
    systemStore.WriteDefaultUnit(metric, prompter);
  }
  // The drawing fills the main window; the editor stands in its place above it.
  frmView.mnuNativeView_Click(windows.AreaWidth(), windows.AreaHeight());
  windows.ShowEditor();
  // The program is up: a project of the command line that fails to open,
  // whatever its failure, leaves it running without that project.
  try {
    opener.OpenFromCommandLine(commandLine);
  } catch (const std::exception& e) {
    const auto* known = dynamic_cast<const RunError*>(&e);
    const int number = known ? known->Code() : static_cast<int>(ErrorNumber::InvalidCall);
    Inform(prompter, UnknownErrorText(number), MsgIcon::Critical, messages::UnknownErrorTitle);
  }
  return true;
}

bool Shell::QueryUnload() { return frmEditor.Form_QueryUnload(); }

void Shell::Activated(bool front) { SetEditorTopmost(front); }

// ---- The menu ------------------------------------------------------------------

void Shell::BindMenu() {
  auto on = [this](const char* name, std::function<void()> action) {
    handlers_[name] = [action = std::move(action)](int) { action(); };
  };
  editor::EditorForm& e = frmEditor;

  on("mnuNew", [this] {
    if (SaveEnabled()) {
      Inform(prompter, store::messages::SaveBeforeNew);
      return;
    }
    frmCreate.Form_Load();
    windows.ShowCreateDialog();
  });
  on("mnuOpen", [this] { opener.mnuOpen_Click(); });
  handlers_["mnuHistory"] = [this](int index) { opener.mnuHistory_Click(index); };
  on("mnuRelocateCAD", [this] { opener.mnuRelocateCAD_Click(); });
  on("mnuCurrentCAD", [this] { opener.mnuCurrentCAD_Click(); });
  on("mnuExit", [this] { windows.CloseMain(); });

  on("mnuSaveParcel", [&e] { e.cmdSave_Click(); });
  on("mnuCancelParcel", [&e] { e.mnuCancelParcel_Click(); });
  on("mnuEditMode", [&e] { e.cmdEdit_Click(); });
  on("mnuDeleteParcel", [&e] { e.Delete_Parcel(); });
  on("mnuInsertParcel", [&e] { e.cmdInsert_Click(); });
  on("mnuDeleteCourse", [&e] { e.mnuDeleteCourse_Click(); });
  on("mnuInsertBefore", [&e] { e.mnuInsertBefore_Click(); });
  on("mnuInsertAfter", [&e] { e.mnuInsertAfter_Click(); });
  on("mnuFlipBearing", [&e] { e.FlipCurrentBearing(); });
  on("mnuChangeLineCurve", [&e] { e.mnuChangeLineCurve_Click(); });
  on("mnuNorthing", [&e] { e.mnuNorthing_Click(); });

  on("mnuSizePicture", [&e] { e.ToggleSketchZoom(); });
  on("mnuMiniWin", [this] { windows.MinimizeMain(); });
  on("mnuRefresh", [this, &e] {
    Redraw = true;
    OpenDrawing();
    e.CalculateAndDraw();
  });
  on("mnuWhite", [this] { SetBackColour(0); });
  on("mnuBlack", [this] { SetBackColour(1); });
  on("mnuYellow", [this] { SetBackColour(2); });
  on("mnuBlue", [this] { SetBackColour(3); });
  on("mnuFOriginal", [this] { SetForeColour(256); });
  on("mnuFWhite", [this] { SetForeColour(14); });
  on("mnuFBlack", [this] { SetForeColour(7); });
  on("mnuFYellow", [this] { SetForeColour(2); });
  on("mnuFBlue", [this] { SetForeColour(5); });

  on("mnuSetting", [this] {
    frmSetting.Form_Load();
    windows.ShowSettingDialog();
  });
  on("mnuVerfyCurves",
     [this] { ToggleOption(store::OptionMenu::mnuVerfyCurves, menu.mnuVerfyCurves); });
  on("mnuAutoInvert", [this] { ToggleOption(store::OptionMenu::mnuAutoInvert, menu.mnuAutoInvert); });
  on("mnuVerfyTangent",
     [this] { ToggleOption(store::OptionMenu::mnuVerfyTangent, menu.mnuVerfyTangent); });
  on("mnuMiniWindow", [this] { ToggleOption(store::OptionMenu::mnuMiniWindow, menu.mnuMiniWindow); });

  on("mnuFullReport", [this] { ShowReport(messages::FullReport); });
  on("mnuSumReport", [this] { ShowReport(messages::SummaryReport); });
  on("mnuPicReport", [this] { ShowReport(messages::PictureReport); });
  on("mnuMapcheckReport", [this] { ShowReport(messages::MapcheckReport); });
  on("mnuNativeView",
     [this] { frmView.mnuNativeView_Click(windows.AreaWidth(), windows.AreaHeight()); });
  on("mnuSplitVertical",
     [this] { frmView.mnuSplitVertical_Click(windows.AreaWidth(), windows.AreaHeight()); });

  on("mnuHelp", [this] {
    // The main window goes down for the help only when the help came up.
    if (OpenLink("file://" + store::SuppliedFile("help/index.html"))) windows.MinimizeMain();
  });
  on("mnuVideoQuick", [this] { ShowVideo("quickstart.mp4"); });
  on("mnuVideoFullTraining", [this] { ShowVideo("fulltraining.mp4"); });
  on("mnuVideoConfg", [this] { ShowVideo("configuration.mp4"); });
  on("mnuAbout", [this] {
    try {
      windows.ShowAbout(systemStore.ReadCredits());
    } catch (const RunError& failure) {
      ReportUnknownError(prompter, failure.Code());
    }
  });
  on("mnuFAQ", [this] { OpenLink(messages::FaqAddress); });
  on("mnuSupport", [this] { OpenLink(messages::SupportAddress); });
  on("mnuComment", [this] { OpenLink(messages::CommentsAddress); });
  on("mnuWebsite", [this] { OpenLink(messages::WebsiteAddress); });
}

void Shell::MenuClick(const std::string& name, int index) {
  auto handler = handlers_.find(name);
  if (handler == handlers_.end()) return;
  handler->second(index);
}

void Shell::MenuDropDown(const std::string& name) {
  if (name == "mnuEdit") menu.mnuEdit_DropDown(frmEditor);
  else if (name == "mnuView") menu.mnuView_DropDown(frmEditor);
  else if (name == "mnuOptions") menu.mnuOptions_DropDown(state);
}

void Shell::SetBackColour(int number) {
  const store::BackColourRgb rgb = store::BackColourOf(number);
  state.BackRed = rgb.Red;
  state.BackGreen = rgb.Green;
  state.BackBlue = rgb.Blue;
  ShowBackColourMenu();
  store::SaveProjectSetting(state, prompter, store::project_columns::BackColor, store::Value(number));
  OpenDrawing();
}

void Shell::SetForeColour(int number) {
  state.ForeColourNumber = number;
  ShowForeColourMenu(number);
  store::SaveProjectSetting(state, prompter, store::project_columns::ForeColor, store::Value(number));
  OpenDrawing();
}

void Shell::ToggleOption(store::OptionMenu entry, MenuItem& item) {
  store::ToggleOptionMenu(state, prompter, entry, item.Checked);
}

void Shell::ShowReport(const std::string& caption) {
  if (frmEditor.cmdSave.Enabled) {
    Inform(prompter, messages::SaveBeforeReports);
    return;
  }
  windows.ShowReport(caption);
}

void Shell::ShowVideo(const std::string& fileName) {
  const std::filesystem::path video = store::SuppliedFile(fileName);
  if (!std::filesystem::exists(video)) {
    Inform(prompter, messages::NoVideo, MsgIcon::Information);
    return;
  }
  OpenLink("file://" + video.string());
}

bool Shell::OpenLink(const std::string& url) {
  if (windows.OpenUrl(url)) return true;
  Inform(prompter, messages::CannotOpenStart + url + messages::CannotOpenEnd, MsgIcon::Exclamation);
  return false;
}

// ---- store::ProjectWindows ---------------------------------------------------------

std::optional<std::string> Shell::ShowOpen(const store::FileDialogRequest& request) {
  return windows.ShowOpen(request);
}

bool Shell::SaveEnabled() const { return frmEditor.cmdSave.Enabled; }

void Shell::SetEditorTopmost(bool topmost) { windows.SetEditorTopmost(topmost); }

void Shell::SetCaptions(const std::string& editorCaption, const std::string& mainCaption) {
  // The captions come from the recent menu just read: its entries show now,
  // so that each names the project it opens.
  EditorCaption = editorCaption;
  MainCaption = mainCaption;
  menu.ShowHistory(recent);
  windows.SetCaptions(editorCaption, mainCaption);
}

void Shell::ShowForeColourMenu(int number) { menu.ShowForeColourMenu(number); }

void Shell::ShowBackColourMenu() { menu.ShowBackColourMenu(state); }

void Shell::EnableEditorFrames(bool enabled) {
  frmEditor.EnableEditorFrames(enabled);
  menu.mnuOptions_DropDown(state);
}

void Shell::ShowDrawingPath(const std::string& drawingFile) {
  frmEditor.menus.mnuRelocateCAD.Enabled = true;
  frmEditor.menus.mnuCurrentCAD.Caption = drawingFile;
}

void Shell::SetCurrentCadEnabled(bool enabled) { frmEditor.menus.mnuCurrentCAD.Enabled = enabled; }

bool Shell::OpenDrawing() {
  const bool opened = frmView.OpenDrawing();
  windows.RefreshDrawing();
  return opened;
}

void Shell::SettingsLoaded() {
  if (!state.ToolTipsOn) {
    // Every loaded form; the options and report windows clear theirs as
    // they load. Tooltips turned on again show from the next start.
    frmEditor.ClearToolTips();
    frmView.ClearToolTips();
    frmCreate.ClearToolTips();
  }
  frmEditor.LayoutArcFields();
  frmEditor.SetTabOrder();
  menu.ShowOptionTicks(state);
  frmEditor.ShowNotation();
}

void Shell::ShowParcels() { frmEditor.Show_Parcels(); }

void Shell::ClearEditingFlag() { Editing = false; }

void Shell::ShowOpenedProject() {
  editor::EditorForm& e = frmEditor;
  e.Parcel_Bound();
  e.ClearGrid();
  e.cmdAutoInverse.Enabled = true;
  e.cmdZoom.Enabled = true;
  if (e.cbxParcel.ListCount() > 0) {
    e.SetListIndex(0);
    e.SetEditing(false);
    e.SetFieldsEnabled(false);
  } else {
    e.SetEditing(false);
    e.SetFieldsEnabled(false);
    e.cmdEdit.Enabled = false;
  }
}

void Shell::ShowEditor() { windows.ShowEditor(); }

void Shell::ShowNewParcelState() {
  BringUpDrawing();
  frmEditor.cmdInsert_Click();
}

void Shell::RefreshParcelList() { frmEditor.Parcel_Bound(); }

void Shell::LayoutArcFields() {
  frmEditor.LayoutArcFields();
  frmEditor.SetTabOrder();
}

void Shell::CalculateAndDraw() { frmEditor.CalculateAndDraw(); }

// ---- editor::EditorHost --------------------------------------------------------------

void Shell::BringUpDrawing() { windows.BringUpDrawing(); }

void Shell::MinimizeEditor() { windows.MinimizeEditor(); }

void Shell::ShowRowMenu(int row) { windows.ShowRowMenu(row); }

}  // namespace parvenna::shell
