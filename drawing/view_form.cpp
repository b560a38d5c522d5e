#include "drawing/view_form.h"

#include <algorithm>
#include <cmath>

#include "drawing/grabbing.h"
#include "drawing/messages.h"
#include "editor/change_batch.h"
#include "geometry/auto_inverse.h"
#include "store/messages.h"
#include "store/paths.h"
#include "store/store.h"

namespace parvenna::drawing {
namespace {

std::uint8_t Channel(int value) { return static_cast<std::uint8_t>(std::clamp(value, 0, 255)); }

bool Near(double a, double b) {
  return std::abs(a - b) <= 1e-9 * std::max({1.0, std::abs(a), std::abs(b)});
}

// The saved-view columns of one view, in the order they stand in tblSetting.
std::array<std::string, 5> SavedViewColumns(int view) {
  const std::string n = std::to_string(view + 1);
  return {"ZoomFactor" + n, "BLX" + n, "BLY" + n, "TRX" + n, "TRY" + n};
}

}  // namespace

ViewForm::ViewForm(store::ProjectState& state, Prompter& prompter, editor::EditorForm& editor)
    : state_(state), prompter_(prompter), editor_(editor), grab_(editor) {
  cmdLayer1 = Button("Layers 1", "Layers shown in the first view");
  cmdLayer2 = Button("Layers 2", "Layers shown in the second view");
  cmdRedraw = Button("Redraw", "Paint both views afresh");
  cmd100 = Button("All", "Show the whole drawing");
  cmdUndo = Button("Back", "Go back to the window shown before");
  cmdPartLarge = Button("Part", "Drag a window around the part to enlarge");
  cmdZoomOut = Button("Out", "Zoom out");
  cmdZoomIn = Button("In", "Zoom in");
  cmdDone = Button("Done", "Put the picked values into the courses");
  cmdOverview = Button("Overview", "Show or hide the overview of the whole drawing");
  SSTab1.TabCaption = {messages::FirstView, messages::SecondView};
  SetDrawingButtons(false);
}

ViewForm::~ViewForm() = default;

std::array<CommandButton*, 10> ViewForm::Buttons() {
  return {&cmdLayer1, &cmdLayer2, &cmdZoomIn, &cmdZoomOut, &cmdPartLarge, &cmdUndo,
          &cmd100,    &cmdRedraw, &cmdDone,   &cmdOverview};
}

void ViewForm::ClearToolTips() {
  for (CommandButton* b : Buttons()) b->ToolTipText.clear();
}

void ViewForm::SetDrawingButtons(bool enabled) {
  for (CommandButton* b : Buttons()) b->Enabled = enabled;
}

void ViewForm::CloseViews() {
  for (int v = 0; v < kViewCount; ++v) {
    Pane& p = pane(v);
    if (p.viewer.IsLoaded()) p.viewer.Close();
    p.pressed = p.band = p.moved = false;
    ViewerVisible[static_cast<std::size_t>(v)] = false;
    OverviewVisible[static_cast<std::size_t>(v)] = false;
    Changed(v);
  }
  mnuLayer1.clear();
  mnuLayer2.clear();
  marked_.clear();
  SetDrawingButtons(false);
}

// ---- The drawing --------------------------------------------------------------

bool ViewForm::OpenDrawing() {
  const std::string& path = state_.DrawingFile;
  if (path == lastDrawing_) {
    // The views keep the file they hold; a large drawing takes seconds to read.
    ApplyColours();
    for (int v = 0; v < kViewCount; ++v) {
      if (View(v).IsLoaded()) ApplySavedWindow(v);
    }
    return path.empty() || View(0).IsLoaded();
  }

  CloseViews();
  lastDrawing_.clear();
  if (path.empty()) return true;  // no drawing linked: nothing to show, no error

  std::string detail;
  std::shared_ptr<const IndexedDrawing> drawing = ReadIndexedDrawing(path, detail, &cache_);
  if (!drawing) {
    // The path is not kept, so that the next refresh tries the file again.
    Inform(prompter_, detail.empty() ? std::string(messages::OpenDrawingFileError)
                                     : std::string(messages::OpenDrawingFileError) + "\n\n" + detail);
    return false;
  }
  lastDrawing_ = path;
  saveFailed_ = false;
  for (int v = 0; v < kViewCount; ++v) {
    View(v).Show(drawing);
    ViewerVisible[static_cast<std::size_t>(v)] = true;
  }
  SetDrawingButtons(true);
  BuildLayerMenus();
  ApplyColours();
  for (int v = 0; v < kViewCount; ++v) {
    // A fresh view shows the whole drawing already.
    const auto i = static_cast<std::size_t>(v);
    if (state_.ViewZoom[i] != 0 || state_.ViewTRX[i] != 0 || state_.ViewTRY[i] != 0 ||
        state_.ViewBLX[i] != 0 || state_.ViewBLY[i] != 0) {
      ApplySavedWindow(v);
    }
    Changed(v);
  }
  ShowOverviews();
  marked_.clear();
  FollowUsedList();
  return true;
}

void ViewForm::ShowOverviews() {
  for (int v = 0; v < kViewCount; ++v) {
    OverviewVisible[static_cast<std::size_t>(v)] = overviewWanted_ && v == Current() && View(v).IsLoaded();
  }
}

void ViewForm::cmdOverview_Click() {
  overviewWanted_ = !overviewWanted_;
  ShowOverviews();
}

void ViewForm::Overview_Click(int view, double x, double y, double width, double height) {
  Viewer& viewer = View(view);
  Point at;
  if (!OverviewVisible[static_cast<std::size_t>(view)] ||
      !viewer.OverviewToDrawing(x, y, width, height, at)) {
    return;
  }
  viewer.CentreOn(at);
  WindowChanged(view);
}

void ViewForm::FollowUsedList() {
  const std::vector<std::string>& used = editor_.grab.usedEntities;
  if (used == marked_) return;
  const bool grown = used.size() > marked_.size() && std::equal(marked_.begin(), marked_.end(), used.begin());
  if (!grown) {
    for (int v = 0; v < kViewCount; ++v) View(v).ClearMarks();
    marked_.clear();
  }
  for (std::size_t i = marked_.size(); i < used.size(); ++i) {
    for (int v = 0; v < kViewCount; ++v) View(v).MarkUsed(used[i]);
  }
  marked_ = used;
  for (int v = 0; v < kViewCount; ++v) Changed(v);
}

void ViewForm::BuildLayerMenus() {
  mnuLayer1.clear();
  mnuLayer2.clear();
  const Viewer& first = View(0);
  for (int i = 0; i < first.LayerCount(); ++i) {
    MenuItem one = Menu(messages::Layer1Prefix + first.LayerName(i));
    MenuItem two = Menu(messages::Layer2Prefix + first.LayerName(i));
    one.Checked = first.LayerVisible(i);
    two.Checked = View(1).LayerVisible(i);
    mnuLayer1.push_back(std::move(one));
    mnuLayer2.push_back(std::move(two));
  }
  cmdLayer1.Enabled = cmdLayer2.Enabled = !mnuLayer1.empty();
}

// The saved window of a view, or the whole drawing when all five are 0. A
// view already showing it is left alone, so that a refresh adds nothing to
// the way back.
void ViewForm::ApplySavedWindow(int view) {
  const auto v = static_cast<std::size_t>(view);
  Viewer& viewer = View(view);
  const double zoom = state_.ViewZoom[v], blx = state_.ViewBLX[v], bly = state_.ViewBLY[v],
               trx = state_.ViewTRX[v], try_ = state_.ViewTRY[v];
  const ViewState now = viewer.ReadWindow();
  if (Near(now.blx, blx) && Near(now.bly, bly) && Near(now.trx, trx) && Near(now.try_, try_)) return;
  // A zoom of 0 means that no view was saved yet: a new project keeps the
  // corners 0, 0, 1, 1 with it, and a view without a drawing stores all zero.
  if (zoom == 0 || (blx == 0 && bly == 0 && trx == 0 && try_ == 0)) {
    viewer.ZoomAll();
    if (zoom > 0) viewer.SetZoomFactor(zoom);
  } else {
    viewer.ShowWindow(blx, bly, trx, try_);
  }
  Changed(view);
}

void ViewForm::ApplyColours() {
  const Rgb back{Channel(state_.BackRed), Channel(state_.BackGreen), Channel(state_.BackBlue)};
  for (int v = 0; v < kViewCount; ++v) {
    Viewer& viewer = View(v);
    if (viewer.BackColour() == back && viewer.ForeColourNumber() == state_.ForeColourNumber) continue;
    viewer.SetBackColour(back);
    viewer.SetForeColour(state_.ForeColourNumber);
    Changed(v);
  }
}

// ---- Layers ---------------------------------------------------------------------

void ViewForm::ToggleLayer(int view, std::vector<MenuItem>& menu, int index) {
  if (index < 0 || index >= static_cast<int>(menu.size())) return;
  MenuItem& entry = menu[static_cast<std::size_t>(index)];
  entry.Checked = !entry.Checked;
  // The menu lists the layers in the drawing's order.
  View(view).SetLayerVisible(index, entry.Checked);
  Changed(view);
}

void ViewForm::mnuLayer1_Click(int index) { ToggleLayer(0, mnuLayer1, index); }
void ViewForm::mnuLayer2_Click(int index) { ToggleLayer(1, mnuLayer2, index); }

// ---- Buttons ------------------------------------------------------------------------

void ViewForm::RunCommand(ViewCommand command) {
  const int v = Current();
  if (!View(v).IsLoaded()) return;
  View(v).Run(command);
  if (command != ViewCommand::PartLarge) WindowChanged(v);
}

void ViewForm::cmdZoomIn_Click() { RunCommand(ViewCommand::ZoomIn); }
void ViewForm::cmdZoomOut_Click() { RunCommand(ViewCommand::ZoomOut); }
void ViewForm::cmd100_Click() { RunCommand(ViewCommand::ZoomAll); }
void ViewForm::cmdPartLarge_Click() { RunCommand(ViewCommand::PartLarge); }
void ViewForm::cmdUndo_Click() { RunCommand(ViewCommand::UndoZoom); }

void ViewForm::cmdRedraw_Click() {
  for (int v = 0; v < kViewCount; ++v) Changed(v);
}

void ViewForm::cmdDone_Click() {
  FlushGrabQueue(grab_, editor_.grab, state_.notation());
  if (state_.AutoInvertOn) {
    editor::ChangeBatch batch(editor_);
    AutoInverse(editor_, editor_.Settings(), editor_.parcel, prompter_);
  }
  if (host_) {
    host_->EditorChanged();
    host_->RestoreEditor();
  }
}

void ViewForm::PlaceWaitingValues() {
  if (editor_.grab.GrabQueue.empty()) return;
  FlushGrabQueue(grab_, editor_.grab, state_.notation());
  if (host_) host_->EditorChanged();
}

void ViewForm::SSTab1_Click(int tab) {
  if (tab < 0 || tab >= kViewCount) return;
  SSTab1.Tab = tab;
  ShowOverviews();
  if (View(tab).IsLoaded()) ApplySavedWindow(tab);
}

// ---- Mouse ------------------------------------------------------------------------------

void ViewForm::View_MouseDown(int view, MouseButton button, double x, double y) {
  Pane& p = pane(view);
  Viewer& viewer = p.viewer;
  if (!viewer.IsLoaded()) return;
  const Point at = viewer.ToDrawing(x, y);
  if (viewer.AwaitingPart()) {
    viewer.MouseDown(at);
    p.band = true;
    return;
  }
  MousePointer = 99;
  p.pressed = true;
  p.moved = false;
  p.lastX = x;
  p.lastY = y;
  if (button != MouseButton::Left || state_.DrawingFile.empty()) return;

  PickInView(viewer, at, grab_, editor_.grab, state_.notation(), grabMode);
  // A grabbed label shows as used in both views.
  FollowUsedList();
  if (grab_.Editing() && host_) host_->EditorChanged();
}

void ViewForm::View_MouseMove(int view, bool buttonHeld, double x, double y) {
  Pane& p = pane(view);
  Viewer& viewer = p.viewer;
  if (!viewer.IsLoaded()) return;
  if (p.band) {
    viewer.MouseMove(viewer.ToDrawing(x, y));
    return;
  }
  if (!buttonHeld || !p.pressed || (x == p.lastX && y == p.lastY)) return;
  // The drawing point under the press follows the mouse.
  const Point from = viewer.ToDrawing(p.lastX, p.lastY), to = viewer.ToDrawing(x, y);
  viewer.Pan(to.x - from.x, to.y - from.y);
  p.lastX = x;
  p.lastY = y;
  p.moved = true;
  Changed(view);
}

void ViewForm::View_MouseUp(int view, double x, double y) {
  Pane& p = pane(view);
  MousePointer = 0;
  if (p.band) {
    p.band = false;
    p.viewer.MouseUp(p.viewer.ToDrawing(x, y));
    WindowChanged(view);
    return;
  }
  if (!p.pressed) return;
  p.pressed = false;
  // A pan is kept once, when the button comes up.
  if (p.moved) WindowChanged(view);
  p.moved = false;
}

void ViewForm::MouseWheel1_Scroll(int delta, double x, double y) {
  const int v = Current();
  Viewer& viewer = View(v);
  if (!viewer.IsLoaded() || delta == 0) return;
  viewer.ZoomAt(viewer.ToDrawing(x, y), std::pow(2.0, delta / 240.0));
  WindowChanged(v);
}

void ViewForm::View_Resize(int view, double width, double height) {
  Viewer& viewer = View(view);
  if (width == viewer.ViewportWidth() && height == viewer.ViewportHeight()) return;
  viewer.SetViewport(width, height);
  Changed(view);
}

// ---- Saved views ----------------------------------------------------------------------------

void ViewForm::WindowChanged(int view) {
  Changed(view);
  SaveView(view);
}

void ViewForm::SaveView(int view) {
  const auto v = static_cast<std::size_t>(view);
  ViewState s = View(view).ReadWindow();
  if (s.trx == 0 && s.try_ == 0) s = ViewState{};
  state_.ViewZoom[v] = s.zoomFactor;
  state_.ViewBLX[v] = s.blx;
  state_.ViewBLY[v] = s.bly;
  state_.ViewTRX[v] = s.trx;
  state_.ViewTRY[v] = s.try_;
  if (state_.ProjectFile.empty() || saveFailed_) return;

  const std::array<std::string, 5> columns = SavedViewColumns(view);
  const std::array<double, 5> values{s.zoomFactor, s.blx, s.bly, s.trx, s.try_};
  try {
    store::Database db = store::Database::Open(store::NativePath(state_.ProjectFile));
    store::Recordset rs = db.OpenRecordset("tblSetting");
    // A project of an older version keeps no views: it opens at the whole drawing.
    if (!rs.HasField(columns[4])) return;
    rs.MoveFirst();
    rs.Edit();
    for (std::size_t k = 0; k < columns.size(); ++k) rs.Set(columns[k], store::Value(values[k]));
    rs.Update();
  } catch (const RunError&) {
    // One box for a file that cannot take the views; the views still work.
    saveFailed_ = true;
    Inform(prompter_, store::messages::GeneralError);
  }
}

// ---- Layouts --------------------------------------------------------------------------------

WindowLayout ViewForm::NativeLayout(double areaWidth, double areaHeight) const {
  const double w = editor_.Width + 2 * kWindowBorderTwips;
  const double least = editor::EditorForm::MinimumHeight + kWindowCaptionTwips + kWindowBorderTwips;
  WindowLayout layout;
  layout.editor = {kEditorLeft, kEditorTop, std::min(w, areaWidth),
                   std::max(least, areaHeight - kEditorTop)};
  layout.view = {0, 0, areaWidth, areaHeight};
  return layout;
}

WindowLayout ViewForm::SplitLayout(double areaWidth, double areaHeight) const {
  const double w = std::min(editor_.Width + 2 * kWindowBorderTwips, areaWidth / 2);
  WindowLayout layout;
  layout.editor = {0, 0, w, areaHeight};
  layout.view = {w, 0, areaWidth - w, areaHeight};
  return layout;
}

void ViewForm::mnuNativeView_Click(double areaWidth, double areaHeight) {
  SplitShown = false;
  const WindowLayout layout = NativeLayout(areaWidth, areaHeight);
  if (host_) host_->PlaceWindows(layout.editor, layout.view);
}

void ViewForm::mnuSplitVertical_Click(double areaWidth, double areaHeight) {
  SplitShown = true;
  const WindowLayout layout = SplitLayout(areaWidth, areaHeight);
  if (host_) host_->PlaceWindows(layout.editor, layout.view);
}

void ViewForm::AreaResized(double areaWidth, double areaHeight) {
  const WindowLayout layout =
      SplitShown ? SplitLayout(areaWidth, areaHeight) : NativeLayout(areaWidth, areaHeight);
  if (host_) host_->FollowArea(layout.editor, layout.view);
}

}  // namespace parvenna::drawing
