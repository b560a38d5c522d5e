#pragma once

#include <array>
#include <memory>
#include <string>
#include <vector>

#include "drawing/editor_grab.h"
#include "drawing/view_host.h"
#include "drawing/viewer.h"
#include "editor/editor_form.h"
#include "platform/controls.h"
#include "platform/prompter.h"
#include "store/project_state.h"

// The drawing window (frmView) as a model: two views of the project's
// drawing on the two pages of a tab, the zoom buttons, the layer menus, the
// saved windows and the picks that feed the editor. Its widget mirrors the
// controls here and hands in the mouse in picture units (pixels, y down) of
// the view it happened in; layout rectangles are twips.
//
// Invariants:
// - Both views show the same file, read once; each keeps its own window,
//   layers and marks.
// - With no drawing, or after a failed read, neither view is loaded and the
//   nine drawing buttons are off.
// - The project's saved window of a view (ProjectState::View*) always
//   matches what the view last showed after a change by the user: each such
//   change is written to the project file at once.
// - Generation(view) grows whenever the picture of that view would differ,
//   so a widget repaints only then.
namespace parvenna::drawing {

inline constexpr int kViewCount = 2;

// The tab control over the two views.
struct TabControl {
  int Tab = 0;  // the page on show, 0 or 1
  std::array<std::string, kViewCount> TabCaption;
};

enum class MouseButton { Left, Right, Middle };

// Where the layout menus put the editor and the drawing window.
struct WindowLayout {
  WindowRect editor;
  WindowRect view;
};

// The border on each side of a window and its caption bar, in twips.
inline constexpr double kWindowBorderTwips = 60;
inline constexpr double kWindowCaptionTwips = 450;
// Where the editor stands at start, in the main window's area.
inline constexpr double kEditorLeft = 10;
inline constexpr double kEditorTop = 1340;

class ViewForm {
 public:
  ViewForm(store::ProjectState& state, Prompter& prompter, editor::EditorForm& editor);
  ~ViewForm();
  ViewForm(const ViewForm&) = delete;
  ViewForm& operator=(const ViewForm&) = delete;

  void SetHost(ViewHost* host) { host_ = host; }
  // Tooltips off: the buttons lose theirs.
  void ClearToolTips();
  // Drawings are kept in this directory once read, and an unchanged one is
  // read from there; none is kept until a directory is given.
  void UseDrawingCache(std::string directory) { cache_ = DrawingCache(std::move(directory)); }
  Prompter& prompter() { return prompter_; }
  // A click in a view grabs its label: a parcel is being edited.
  bool Grabbing() const { return editor_.cmdSave.Enabled && !lastDrawing_.empty(); }

  // ---- Controls -------------------------------------------------------------
  CommandButton cmdLayer1, cmdLayer2, cmdRedraw, cmd100, cmdUndo, cmdPartLarge, cmdZoomOut,
      cmdZoomIn, cmdDone;
  // Shows or hides the overview in the corner of the view, which may cover
  // a label the user wants.
  CommandButton cmdOverview;
  TabControl SSTab1;
  // Entry i of a view's layer menu: "Layer1 " or "Layer2 " and the layer's
  // name; Checked while the layer shows in that view.
  std::vector<MenuItem> mnuLayer1, mnuLayer2;
  // The view of each page, and whether it and its overview show.
  std::array<bool, kViewCount> ViewerVisible{};
  std::array<bool, kViewCount> OverviewVisible{};
  // Whether the user wants the overview of the page on show.
  bool OverviewWanted() const { return overviewWanted_; }
  // 99 while a button is held in a view (the hand), otherwise 0.
  int MousePointer = 0;
  // The grab mode of the labels (2 reverses bearings as they come in).
  int grabMode = 1;

  Viewer& View(int view) { return views_.at(static_cast<std::size_t>(view)).viewer; }
  const Viewer& View(int view) const { return views_.at(static_cast<std::size_t>(view)).viewer; }
  unsigned Generation(int view) const { return views_.at(static_cast<std::size_t>(view)).generation; }
  // The view whose layer menu a click on cmdLayer1 or cmdLayer2 asked for,
  // or -1; the widget pops the menu up at its button and clears this.
  int LayerMenuRequest = -1;

  // ---- The drawing ------------------------------------------------------------
  // Shows DrawingFile in both views. A path shown already is not read again:
  // its views only take the saved windows and the colours of the project.
  // False when the file could not be read: the box says "Open drawing file
  // error!", and under it why and what to do.
  bool OpenDrawing();
  const std::string& LastDrawing() const { return lastDrawing_; }

  // ---- Layers -------------------------------------------------------------------
  void cmdLayer1_Click() { LayerMenuRequest = 0; }
  void cmdLayer2_Click() { LayerMenuRequest = 1; }
  // Turns layer `index` (from 0) over in its own view only.
  void mnuLayer1_Click(int index);
  void mnuLayer2_Click(int index);

  // ---- Buttons (on the view of the page on show) ---------------------------------
  void cmdZoomIn_Click();
  void cmdZoomOut_Click();
  void cmd100_Click();
  // The next drag in the view spans the window to show.
  void cmdPartLarge_Click();
  void cmdUndo_Click();
  // Paints both views afresh.
  void cmdRedraw_Click();
  // Hands the waiting labels to the fields; then the automatic inversion when
  // the project asks for it.
  void cmdDone_Click();
  // The editor came back from being minimised: the values that wait are
  // placed, without the automatic inversion of Done.
  void PlaceWaitingValues();
  void SSTab1_Click(int tab);
  void cmdOverview_Click();
  // A click at (x, y) of the overview, of this size in picture units: the
  // view moves to have that point of the drawing in its middle.
  void Overview_Click(int view, double x, double y, double width, double height);

  // The marks of the views follow the editor's list of used labels: a label
  // grabbed is marked in both views, and the marks go when the list is
  // cleared (a new parcel, Cancel). The window calls this after every event.
  void FollowUsedList();

  // ---- Mouse, in the picture units of a view ---------------------------------------
  // A press picks the label under it (while a parcel is edited) and starts a
  // pan; after cmdPartLarge it starts the part's window instead.
  void View_MouseDown(int view, MouseButton button, double x, double y);
  void View_MouseMove(int view, bool buttonHeld, double x, double y);
  void View_MouseUp(int view, double x, double y);
  // The wheel on the page on show: eighths of a degree as the mouse reports
  // them, 120 a notch; two notches make one zoom in, and the drawing point
  // under the cursor stays under it.
  void MouseWheel1_Scroll(int delta, double x, double y);
  void View_Resize(int view, double width, double height);

  // Writes the window of a view to the project as its saved view: the zoom
  // factor and the two corners, all 0 when the window has no top right.
  void SaveView(int view);

  // ---- Layouts of the main window's area (twips) ------------------------------------
  // Free windows: the drawing fills the area; the editor stands above it at
  // the left, low enough to leave the drawing's bar of buttons in sight, and
  // as tall as the area lets it be. The layout of the start.
  WindowLayout NativeLayout(double areaWidth, double areaHeight) const;
  // Side by side: the editor on the left at its own width (at most half the
  // area), the drawing beside it; both the area's height.
  WindowLayout SplitLayout(double areaWidth, double areaHeight) const;
  void mnuNativeView_Click(double areaWidth, double areaHeight);
  void mnuSplitVertical_Click(double areaWidth, double areaHeight);
  // The area changed size: the windows take the places of the layout chosen
  // last for the new size, the editor only where the user left it alone.
  void AreaResized(double areaWidth, double areaHeight);
  bool SplitShown = false;  // the split layout was chosen last

 private:
  struct Pane {
    Viewer viewer;
    unsigned generation = 0;
    bool pressed = false;    // a button is down for a pan
    bool band = false;       // a button is down for the part's window
    double lastX = 0, lastY = 0;
    bool moved = false;      // the press became a pan
  };

  Pane& pane(int view) { return views_.at(static_cast<std::size_t>(view)); }
  int Current() const { return SSTab1.Tab == 1 ? 1 : 0; }
  // Every button of the bar, for what is done to all of them alike.
  std::array<CommandButton*, 10> Buttons();
  void SetDrawingButtons(bool enabled);
  void CloseViews();
  void BuildLayerMenus();
  void ApplySavedWindow(int view);
  void ApplyColours();
  void Changed(int view) { ++pane(view).generation; }
  // A change of the window made by the user: repaint, and keep it.
  void WindowChanged(int view);
  void RunCommand(ViewCommand command);
  void ToggleLayer(int view, std::vector<MenuItem>& menu, int index);
  void ShowOverviews();

  store::ProjectState& state_;
  Prompter& prompter_;
  editor::EditorForm& editor_;
  EditorGrab grab_;
  ViewHost* host_ = nullptr;
  std::array<Pane, kViewCount> views_;
  std::string lastDrawing_;
  DrawingCache cache_{""};
  bool saveFailed_ = false;  // the box was shown once; the views are not saved again
  bool overviewWanted_ = true;
  std::vector<std::string> marked_;  // the used labels the views show marked
};

}  // namespace parvenna::drawing
