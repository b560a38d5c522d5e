#pragma once

#include <functional>
#include <map>
#include <memory>
#include <string>

#include "editor/editor_form.h"
#include "drawing/view_form.h"
#include "editor/editor_host.h"
#include "platform/canvas.h"
#include "platform/prompter.h"
#include "shell/main_menu.h"
#include "shell/shell_windows.h"
#include "store/create_form.h"
#include "store/project_opening.h"
#include "store/project_state.h"
#include "store/project_windows.h"
#include "store/setting_form.h"
#include "store/system_store.h"

namespace parvenna::shell {

// The application: it owns the program's state and the forms' models, starts
// and stops the program, and carries out the main menu. The windows around it
// are reached through ShellWindows; the forms talk back to it as their host.
class Shell : public store::ProjectWindows, public editor::EditorHost {
 public:
  Shell(std::string appDirectory, Prompter& prompter, Canvas& sketch, ShellWindows& windows);
  ~Shell() override;

  // The start, in its order: the first-run flag, the system store held for the
  // run (false: the program must end, the box has been shown, and no window
  // but the splash came up), the main window, the editor and its first-run
  // questions, then the project of the command line.
  bool Start(const std::string& commandLine);
  // A close request of the main window or the editor: true when the program
  // may end. "Exit Parvenna?" is asked once.
  bool QueryUnload();
  // The application came to the front or left it.
  void Activated(bool front);

  // The main menu: a click on the entry of that name (index for mnuHistory),
  // and the opening of a drop-down.
  void MenuClick(const std::string& name, int index = 0);
  void MenuDropDown(const std::string& name);
  bool Knows(const std::string& name) const { return handlers_.count(name) > 0; }

  store::ProjectState state;
  store::RecentMenu recent;
  store::SystemStore systemStore;
  std::string EditorCaption;
  std::string MainCaption;
  std::string VersionText;
  bool FirstRun = false;
  bool Editing = false;   // the editing flag of the parcel's life
  bool Redraw = true;

  Prompter& prompter;
  ShellWindows& windows;
  store::ProjectOpener opener;
  editor::EditorForm frmEditor;
  drawing::ViewForm frmView;
  store::CreateForm frmCreate;
  store::SettingForm frmSetting;
  MainMenu menu;

  // ---- store::ProjectWindows ----
  std::optional<std::string> ShowOpen(const store::FileDialogRequest& request) override;
  bool SaveEnabled() const override;
  void SetEditorTopmost(bool topmost) override;
  void SetCaptions(const std::string& editorCaption, const std::string& mainCaption) override;
  void ShowForeColourMenu(int number) override;
  void ShowBackColourMenu() override;
  void EnableEditorFrames(bool enabled) override;
  void ShowDrawingPath(const std::string& drawingFile) override;
  void SetCurrentCadEnabled(bool enabled) override;
  bool OpenDrawing() override;
  void SettingsLoaded() override;
  void ShowParcels() override;
  void ClearEditingFlag() override;
  void ShowOpenedProject() override;
  void ShowEditor() override;
  void ShowNewParcelState() override;
  void RefreshParcelList() override;
  void LayoutArcFields() override;
  void CalculateAndDraw() override;

  // ---- editor::EditorHost ----
  void BringUpDrawing() override;
  void MinimizeEditor() override;
  void ShowRowMenu(int row) override;

 private:
  void BindMenu();
  void SetBackColour(int number);
  void SetForeColour(int number);
  void ToggleOption(store::OptionMenu entry, MenuItem& item);
  void ShowReport(const std::string& caption);
  void ShowVideo(const std::string& fileName);
  // Opens a link; a box names it when nothing on the desktop opens it.
  bool OpenLink(const std::string& url);

  std::map<std::string, std::function<void(int)>> handlers_;
};

// "Unkown Error Number 6 has occured.": the catch-all's words for a failure
// that nothing else handled.
std::string UnknownErrorText(int number);

// The box of a failure in the About box or in a course command of the
// editor: the number, and how to reach support. The program goes on.
void ReportUnknownError(Prompter& prompter, int number);

}  // namespace parvenna::shell
