#pragma once

#include <array>
#include <string>
#include <vector>

#include "editor/editor_form.h"
#include "platform/controls.h"
#include "store/project_state.h"

namespace parvenna::shell {

// One node of the menu bar: an entry with its state, a submenu, or a rule.
struct MenuNode {
  std::string name;
  MenuItem* item = nullptr;  // nullptr for a rule
  std::vector<MenuNode> children;
  bool separator() const { return item == nullptr; }
};

// The menu of the main window. Entries whose state the editor sets live in the
// editor's EditorMenus and are referred to from the tree.
class MainMenu {
 public:
  explicit MainMenu(editor::EditorMenus& editorMenus);
  MainMenu(const MainMenu&) = delete;
  MainMenu& operator=(const MainMenu&) = delete;

  MenuItem mnuFile = Menu("&File"), mnuNew = Menu("&New"), mnuOpen = Menu("&Open"),
           mnuCADLink = Menu("Drawing file link"), mnuExit = Menu("E&xit");
  // Mirrors the recent menu; entries past those loaded are hidden.
  std::array<MenuItem, store::kRecentCount> mnuHistory{};
  MenuItem mnuDeleteCourse = Menu("Delete course"), mnuInsertBefore = Menu("Insert before"),
           mnuInsertAfter = Menu("Insert after"), mnuFlipBearing = Menu("Flip &bearing"),
           mnuChangeLineCurve = Menu("Change to curve"),
           mnuNorthing = Menu("Restore all to North");
  MenuItem mnuMiniWin = Menu("Minimize window"), mnuRefresh = Menu("Refresh"),
           mnuBackColour = Menu("Drawing Back Colour"), mnuWhite = Menu("White"),
           mnuBlack = Menu("Black"), mnuYellow = Menu("Yellow"), mnuBlue = Menu("Blue"),
           mnuForeColour = Menu("Drawing Fore Colour"), mnuFOriginal = Menu("Original"),
           mnuFWhite = Menu("White"), mnuFBlack = Menu("Black"), mnuFYellow = Menu("Yellow"),
           mnuFBlue = Menu("Blue");
  MenuItem mnuSetting = Menu("Project options"), mnuVerfyCurves = Menu("Verify area in curves"),
           mnuAutoInvert = Menu("Auto invert"),
           mnuVerfyTangent = Menu("Verify tangential curves"),
           mnuMiniWindow = Menu("Minimize during grab");
  MenuItem mnuFullReport = Menu("Full report"), mnuSumReport = Menu("Summary report"),
           mnuPicReport = Menu("Picture report"), mnuMapcheckReport = Menu("Mapcheck");
  MenuItem mnuWindows = Menu("&Windows"), mnuNativeView = Menu("Native view"),
           mnuSplitVertical = Menu("Split vertical");
  MenuItem mnuHelpMain = Menu("&Help"), mnuHelp = Menu("Help"),
           mnuVideos = Menu("&Training videos"), mnuVideoQuick = Menu("&Quick start video"),
           mnuVideoFullTraining = Menu("Full training video"),
           mnuVideoConfg = Menu("Configuration video"), mnuAbout = Menu("About Parvenna"),
           mnuFAQ = Menu("FA&Q online"), mnuSupport = Menu("Email support"),
           mnuComment = Menu("Email comments"), mnuWebsite = Menu("Parvenna website");

  editor::EditorMenus& editorMenus;

  // The whole bar in order; the nodes point at the entries above.
  const std::vector<MenuNode>& Tree() const { return tree_; }
  MenuItem* Find(const std::string& name);

  // The drop-down rules.
  void mnuEdit_DropDown(const editor::EditorForm& editor);
  void mnuView_DropDown(const editor::EditorForm& editor);
  void mnuOptions_DropDown(const store::ProjectState& state);

  // The ticks of the colour submenus, from the state and from a number.
  void ShowBackColourMenu(const store::ProjectState& state);
  void ShowForeColourMenu(int number);
  // The option entries' ticks from the settings just read.
  void ShowOptionTicks(const store::ProjectState& state);
  // The history entries from the recent menu.
  void ShowHistory(const store::RecentMenu& recent);

 private:
  void BuildTree();
  std::vector<MenuNode> tree_;
};

}  // namespace parvenna::shell
