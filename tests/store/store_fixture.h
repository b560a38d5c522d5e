#pragma once

#include <filesystem>
#include <optional>
#include <string>
#include <vector>

#include "store/project_file.h"
#include "store/project_opening.h"
#include "store/project_state.h"
#include "store/system_store.h"
#include "tests/store/temp_dir.h"
#include "tests/support/scripted_prompter.h"

namespace parvenna::testing {

// The windows around the opening routines: records every call in order and
// answers the file dialog and the drawing's opening from its fields.
class RecordingWindows : public store::ProjectWindows {
 public:
  std::vector<std::string> calls;
  std::optional<std::string> openAnswer;
  bool drawingOpens = true;
  bool saveEnabled = false;
  std::string editorCaption, mainCaption;
  store::FileDialogRequest lastOpen;

  std::optional<std::string> ShowOpen(const store::FileDialogRequest& request) override {
    calls.push_back("ShowOpen " + request.Filter.substr(0, 8));
    lastOpen = request;
    return openAnswer;
  }
  bool SaveEnabled() const override { return saveEnabled; }
  void SetEditorTopmost(bool topmost) override { calls.push_back(topmost ? "Topmost" : "NotTopmost"); }
  void SetCaptions(const std::string& editor, const std::string& main) override {
    editorCaption = editor;
    mainCaption = main;
    calls.push_back("SetCaptions");
  }
  void ShowForeColourMenu(int number) override { calls.push_back("ShowForeColourMenu " + std::to_string(number)); }
  void ShowBackColourMenu() override { calls.push_back("ShowBackColourMenu"); }
  void EnableEditorFrames(bool enabled) override { calls.push_back(enabled ? "EnableEditorFrames" : "DisableEditorFrames"); }
  void ShowDrawingPath(const std::string&) override { calls.push_back("ShowDrawingPath"); }
  void SetCurrentCadEnabled(bool enabled) override { calls.push_back(enabled ? "CurrentCadEnabled" : "CurrentCadDisabled"); }
  bool OpenDrawing() override {
    calls.push_back("OpenDrawing");
    return drawingOpens;
  }
  void SettingsLoaded() override { calls.push_back("SettingsLoaded"); }
  void ShowParcels() override { calls.push_back("ShowParcels"); }
  void ClearEditingFlag() override { calls.push_back("ClearEditingFlag"); }
  void ShowOpenedProject() override { calls.push_back("ShowOpenedProject"); }
  void ShowEditor() override { calls.push_back("ShowEditor"); }
  void ShowNewParcelState() override { calls.push_back("ShowNewParcelState"); }
  void RefreshParcelList() override { calls.push_back("RefreshParcelList"); }
  void LayoutArcFields() override { calls.push_back("LayoutArcFields"); }
  void CalculateAndDraw() override { calls.push_back("CalculateAndDraw"); }

  bool Called(const std::string& call) const {
    for (const std::string& c : calls) {
      if (c == call) return true;
    }
    return false;
  }
};

// A program directory of its own for each test: the supplied system store,
// the sample projects and their drawings, copied from the build.
class StoreWorld {
 public:
  TempDir dir;
  store::ProjectState state;
  ScriptedPrompter prompter;
  RecordingWindows windows;
  store::RecentMenu menu;
  store::SystemStore system;
  store::ProjectOpener opener;

  StoreWorld()
      : system(AppDir(dir)), opener(state, prompter, system, menu, windows) {
    parvenna::testing::CopySupplied(dir.path(), {"ParvennaPro.pvs", "sample_feet.pvd", "sample_metres.pvd",
                                                 "sample_feet.dxf", "sample_metres.dxf"});
    state.AppDirectory = AppDir(dir);
  }

  static std::string AppDir(const TempDir& d) { return d.path().string(); }
  std::string Path(const std::string& name) const { return (dir / name).string(); }

  // A new project made as the create dialog makes it.
  std::string MakeProject(const std::string& name, const std::string& drawing = "") {
    std::string path = Path(name);
    store::MakeProjectFile(path, drawing, system);
    return path;
  }

  // Opens a project as the history menu does.
  bool Open(const std::string& path) {
    state.ProjectFile = path;
    state.RecentProjects[0] = path;
    std::string previous;
    return store::CheckProjectFile(state, prompter) &&
           opener.OpenCurrent(store::Entrance::History, previous);
  }
};

}  // namespace parvenna::testing
