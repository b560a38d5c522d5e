#pragma once

#include <optional>
#include <string>

// What opening a project asks of the windows around it. The shell implements
// it over the main window, the editor and the drawing views; the store's
// routines decide what happens and in which order, and never see a window.
namespace parvenna::store {

struct FileDialogRequest {
  std::string Filter;  // "Text (*.x)|*.x|..." pairs
  int FilterIndex = 1;
  int Flags = 0;       // 4: hide the read-only box
  bool FileMustExist = false;
};

class ProjectWindows {
 public:
  virtual ~ProjectWindows() = default;

  // An open file dialog; nothing when the user cancels.
  virtual std::optional<std::string> ShowOpen(const FileDialogRequest& request) = 0;

  // The editor's state as the opening routines consult it.
  virtual bool SaveEnabled() const = 0;  // cmdSave of frmEditor
  virtual void SetEditorTopmost(bool topmost) = 0;

  virtual void SetCaptions(const std::string& editorCaption, const std::string& mainCaption) = 0;
  virtual void ShowForeColourMenu(int number) = 0;
  virtual void ShowBackColourMenu() = 0;  // from BackRed, BackGreen, BackBlue of the state
  virtual void EnableEditorFrames(bool enabled) = 0;
  // mnuRelocateCAD enabled, the caption of mnuCurrentCAD the drawing's path.
  virtual void ShowDrawingPath(const std::string& drawingFile) = 0;
  virtual void SetCurrentCadEnabled(bool enabled) = 0;  // mnuCurrentCAD

  // The drawing of DrawingFile opened in both views; false when it failed.
  virtual bool OpenDrawing() = 0;

  // The settings just read are in the state: the windows bring themselves in
  // line (tooltips cleared when they are off, the curve fields of every row
  // in the new order, the ticks of the option menu entries, the caption of
  // lblBearing).
  virtual void SettingsLoaded() = 0;

  // The editor's parcel routines at the points of the opening.
  virtual void ShowParcels() = 0;         // Show_Parcels: refill the list, show the first
  virtual void ClearEditingFlag() = 0;    // the editing flag of the parcel's life
  virtual void ShowOpenedProject() = 0;   // after mnuOpen: Parcel_Bound, panel cleared, first parcel shown
  virtual void ShowEditor() = 0;          // frmEditor shown (end of a create)
  virtual void ShowNewParcelState() = 0;  // windows up, editor ready for a new, empty parcel
  virtual void RefreshParcelList() = 0;   // Parcel_Bound

  // After the options were applied.
  virtual void LayoutArcFields() = 0;
  virtual void CalculateAndDraw() = 0;
};

// A project read without any window around it (the command-line tool): every
// request is answered with nothing.
class NoProjectWindows : public ProjectWindows {
 public:
  std::optional<std::string> ShowOpen(const FileDialogRequest&) override { return {}; }
  bool SaveEnabled() const override { return false; }
  void SetEditorTopmost(bool) override {}
  void SetCaptions(const std::string&, const std::string&) override {}
  void ShowForeColourMenu(int) override {}
  void ShowBackColourMenu() override {}
  void EnableEditorFrames(bool) override {}
  void ShowDrawingPath(const std::string&) override {}
  void SetCurrentCadEnabled(bool) override {}
  bool OpenDrawing() override { return true; }
  void SettingsLoaded() override {}
  void ShowParcels() override {}
  void ClearEditingFlag() override {}
  void ShowOpenedProject() override {}
  void ShowEditor() override {}
  void ShowNewParcelState() override {}
  void RefreshParcelList() override {}
  void LayoutArcFields() override {}
  void CalculateAndDraw() override {}
};

}  // namespace parvenna::store
