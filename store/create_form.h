#pragma once

#include <string>

#include "platform/prompter.h"
#include "platform/controls.h"
#include "store/project_opening.h"
#include "store/project_state.h"
#include "store/project_windows.h"
#include "store/system_store.h"

namespace parvenna::store {

// frmDirLocate: picks the directory of a new project.
class DirLocateForm {
 public:
  std::string Caption;
  std::string Drive1;
  std::string Dir1Path;
  CommandButton cmdOK;
  CommandButton cmdCancel;
  bool Visible = false;
  bool Centred = false;
  bool Topmost = false;
  // The directory chosen by OK, with its separator; taken and emptied by the
  // create dialog when it comes to the front again.
  std::string Located;

  DirLocateForm();
  void Form_Load();
  void Form_Activate() { Topmost = true; }
  void Drive1_Change(const std::string& drive, Prompter& prompter);
  void cmdOK_Click();
  void cmdCancel_Click() { Visible = false; }
};

// frmCreate, "Create new project": names the file, its place and its drawing,
// makes the file and opens it.
class CreateForm {
 public:
  CreateForm(ProjectState& state, Prompter& prompter, SystemStore& store, ProjectOpener& opener,
             ProjectWindows& windows);

  std::string Caption;
  TextBox txtProjectName;
  TextBox txtProjectLocation;
  TextBox txtCADFile;
  CheckBox chkAutoName;
  CommandButton cmdBrowseLoc;
  CommandButton cmdBrowseCAD;
  CommandButton cmdCreate;
  CommandButton cmdCancel;
  DirLocateForm frmDirLocate;
  bool Loaded = false;
  bool Topmost = false;
  std::string Focus;  // the name of the control that has the focus

  void Form_Load();
  void Form_Activate();
  // The user's typing.
  void SetProjectName(const std::string& text);
  void SetProjectLocation(const std::string& text) { txtProjectLocation.Text = text; }
  void SetCadFile(const std::string& text) { txtCADFile.Text = text; }

  void cmdBrowseLoc_Click();
  void cmdBrowseCAD_Click();
  void cmdCreate_Click();
  void cmdCancel_Click();
  // Unloading, by cmdCancel, the close box or a successful create. Only the
  // last stores the auto-name choice and readies the editor.
  void Form_Unload();

  bool CreateProjectFile();
  void AddRecentProject();
  // Tooltips off: the controls of the form and of its directory box lose
  // their tooltips.
  void ClearToolTips();

  bool Cancelled() const { return cancelled_; }

 private:
  void txtProjectName_Change();
  void CreateAfterDirectory();

  ProjectState& state_;
  Prompter& prompter_;
  SystemStore& store_;
  ProjectOpener& opener_;
  ProjectWindows& windows_;
  bool cancelled_ = true;
  bool locateAsked_ = false;
};

}  // namespace parvenna::store
