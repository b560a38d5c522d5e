#include "store/create_form.h"

#include <filesystem>
#include <system_error>

#include "store/messages.h"
#include "store/paths.h"
#include "store/project_file.h"
#include "store/value.h"

namespace parvenna::store {

namespace {
#ifdef _WIN32
constexpr const char* kFallbackDrive = "c:";
#else
constexpr const char* kFallbackDrive = "/";
#endif
}  // namespace

DirLocateForm::DirLocateForm() : Caption(messages::DirLocateTitle) {
  cmdOK.Caption = messages::CaptionOK;
  cmdCancel.Caption = messages::CaptionCancel;
}

void DirLocateForm::Form_Load() {
  Centred = true;
  Visible = true;
}

void DirLocateForm::Drive1_Change(const std::string& drive, Prompter& prompter) {
  Drive1 = drive;
  if (!drive.empty() && DirectoryExists(drive)) {
    Dir1Path = drive;
    return;
  }
  Inform(prompter, messages::DeviceNotReady, MsgIcon::Exclamation, messages::DeviceNotReadyTitle);
  Drive1 = kFallbackDrive;
  Dir1Path = kFallbackDrive;
}

void DirLocateForm::cmdOK_Click() {
  Located = WithSeparator(Dir1Path);
  Visible = false;
}

CreateForm::CreateForm(ProjectState& state, Prompter& prompter, SystemStore& store,
                       ProjectOpener& opener, ProjectWindows& windows)
    : Caption(messages::CreateTitle),
      state_(state),
      prompter_(prompter),
      store_(store),
      opener_(opener),
      windows_(windows) {
  txtProjectName.ToolTipText = messages::TipProjectName;
  txtCADFile.ToolTipText = messages::TipCadFile;
  cmdBrowseLoc.Caption = messages::CaptionBrowseLoc;
  cmdBrowseCAD.Caption = messages::CaptionBrowseCad;
  chkAutoName.Caption = messages::CaptionAutoName;
  cmdCreate.Caption = messages::CaptionCreate;
  cmdCancel.Caption = messages::CaptionCancel;
}

void CreateForm::Form_Load() {
  Loaded = true;
  if (!state_.ToolTipsOn) ClearToolTips();
  chkAutoName.Value = store_.ReadAutoName(prompter_) ? 1 : 0;
}

void CreateForm::ClearToolTips() {
  for (TextBox* box : {&txtProjectName, &txtProjectLocation, &txtCADFile}) box->ToolTipText.clear();
  chkAutoName.ToolTipText.clear();
  for (CommandButton* button : {&cmdBrowseLoc, &cmdBrowseCAD, &cmdCreate, &cmdCancel,
                                &frmDirLocate.cmdOK, &frmDirLocate.cmdCancel}) {
    button->ToolTipText.clear();
  }
}

void CreateForm::Form_Activate() {
  cancelled_ = true;
  if (!frmDirLocate.Located.empty() && locateAsked_) {
    txtProjectLocation.Text = frmDirLocate.Located;
    frmDirLocate.Located.clear();
  }
  Topmost = true;
  cmdCreate.Enabled = !txtProjectName.Text.empty();
}

void CreateForm::SetProjectName(const std::string& text) {
  if (text == txtProjectName.Text) return;
  txtProjectName.Text = text;
  txtProjectName_Change();
}

void CreateForm::txtProjectName_Change() { cmdCreate.Enabled = !txtProjectName.Text.empty(); }

void CreateForm::cmdBrowseLoc_Click() {
  frmDirLocate.Form_Load();
  locateAsked_ = true;
}

void CreateForm::cmdBrowseCAD_Click() {
  std::optional<std::string> chosen =
      windows_.ShowOpen(FileDialogRequest{messages::DrawingFilter, 1, 0, true});
  if (!chosen || chosen->empty() || !FileExists(*chosen)) return;
  txtCADFile.Text = *chosen;
  // The project named after its drawing, when asked for and nothing was typed.
  if (chkAutoName.Value == 1 && txtProjectLocation.Text.empty() && txtProjectName.Text.empty()) {
    txtProjectLocation.Text = DirectoryOfPath(*chosen);
    std::string file = FileNameOfPath(*chosen);
    auto stop = file.find('.');
    SetProjectName(stop == std::string::npos ? "" : file.substr(0, stop));
  }
}

void CreateForm::cmdCreate_Click() {
  if (!cmdCreate.Enabled) return;
  cancelled_ = false;
  if (!DirectoryExists(txtProjectLocation.Text)) {
    if (!AskYesNo(prompter_, messages::AskCreateDirectory, MsgIcon::Question,
                  messages::CreateDirectoryTitle, 2)) {
      Focus = "txtProjectLocation";
      return;
    }
    // From here a failure of this click is reported as the directory's.
    try {
      std::error_code ec;
      std::filesystem::create_directories(NativePath(txtProjectLocation.Text), ec);
      if (ec || !DirectoryExists(txtProjectLocation.Text)) {
        throw StoreError(errors::DiskError, ec.message());
      }
      CreateAfterDirectory();
    } catch (const std::exception&) {
      Inform(prompter_, messages::DirectoryNotCreated);
    }
    return;
  }
  // With the directory there already, a failure goes on to the general report.
  CreateAfterDirectory();
}

void CreateForm::CreateAfterDirectory() {
  if (txtProjectLocation.Text.empty()) txtProjectLocation.Text = state_.AppDirectory;
  txtProjectLocation.Text = WithSeparator(txtProjectLocation.Text);
  if (txtCADFile.Text.empty() && !AskYesNo(prompter_, messages::AskNoDrawing)) return;
  if (CharacterCount(txtCADFile.Text) > static_cast<std::size_t>(kDrawingPathLimit)) {
    Inform(prompter_, messages::DrawingPathTooLong);
    return;
  }
  if (!FileExists(txtCADFile.Text)) {
    Inform(prompter_, messages::DrawingNotFound);
    Focus = "txtCADFile";
    return;
  }
  if (!CreateProjectFile()) return;
  if (!txtProjectName.Text.empty()) {
    state_.ProjectFile = txtProjectLocation.Text + txtProjectName.Text + kProjectExtension;
    state_.DrawingFile = txtCADFile.Text;
    AddRecentProject();
    opener_.OpenCreated();
    txtProjectName.Text.clear();
    txtProjectLocation.Text.clear();
    txtCADFile.Text.clear();
    Form_Unload();
  }
  opener_.FinishCreated();
}

bool CreateForm::CreateProjectFile() {
  std::string path = txtProjectLocation.Text + txtProjectName.Text + kProjectExtension;
  if (PathExists(path)) {
    Inform(prompter_, messages::ProjectExists);
    Focus = "txtProjectName";
    return false;
  }
  MakeProjectFile(path, txtCADFile.Text, store_);
  return true;
}

void CreateForm::AddRecentProject() {
  try {
    store_.AddRecentProject(txtProjectName.Text + kProjectExtension, txtProjectLocation.Text);
  } catch (const RunError&) {
    Inform(prompter_, messages::RecentUpdateError);
  }
}

void CreateForm::cmdCancel_Click() {
  cancelled_ = true;
  Form_Unload();
}

void CreateForm::Form_Unload() {
  if (!Loaded) return;
  Loaded = false;
  Topmost = false;
  if (!cancelled_) {
    store_.SaveAutoName(chkAutoName.Value == 1, prompter_);
    windows_.ShowNewParcelState();
  }
}

}  // namespace parvenna::store
