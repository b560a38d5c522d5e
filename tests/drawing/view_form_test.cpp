// The drawing window's model on real drawings and a real project file: the
// two views, the layer menus, the saved windows, the buttons, the mouse, and
// the picks that key courses into the editor form.
#include <gtest/gtest.h>

#include <filesystem>

#include "drawing/messages.h"
#include "drawing/view_form.h"
#include "editor/editor_form.h"
#include "store/store.h"
#include "tests/drawing/dxf_writer.h"
#include "tests/store/temp_dir.h"
#include "tests/support/recording_canvas.h"
#include "tests/support/scripted_prompter.h"

namespace parvenna::drawing {
namespace {

using parvenna::testing::ScriptedPrompter;
using parvenna::testing::TempDir;

const std::string Drawings = std::string(PARVENNA_TESTDATA_DIR) + "/drawings/";
const std::string Lot7 = Drawings + "generated/generated_plat_lot7.dxf";
const std::string Deg = "\u00B0";

class QuietEditorHost : public editor::EditorHost {
 public:
  void BringUpDrawing() override {}
  void MinimizeEditor() override {}
  void ShowRowMenu(int) override {}
};

class RecordingViewHost : public ViewHost {
 public:
  int editorChanged = 0;
  std::vector<std::pair<WindowRect, WindowRect>> placed;
  void EditorChanged() override { ++editorChanged; }
  void PlaceWindows(const WindowRect& editor, const WindowRect& view) override {
    placed.emplace_back(editor, view);
  }
};

// A copy of the sample project in a temporary directory, its editor form and
// the drawing window's model over them, with views of 800 by 600 pixels.
class ViewFormTest : public ::testing::Test {
 protected:
  ViewFormTest() {
    std::filesystem::copy_file(parvenna::testing::Supplied("sample_feet.pvd"), dir / "p.pvd");
    state.ProjectFile = (dir / "p.pvd").string();
    state.AppDirectory = dir.WithSeparator();
    MakeForms();
  }

  void MakeForms() {
    view.reset();
    editor = std::make_unique<editor::EditorForm>(state, prompter, canvas, editorHost);
    editor->EnableEditorFrames(true);
    view = std::make_unique<ViewForm>(state, prompter, *editor);
    view->SetHost(&host);
    for (int v = 0; v < kViewCount; ++v) view->View_Resize(v, 800, 600);
  }

  ViewForm& f() { return *view; }

  bool Open(const std::string& path) {
    state.DrawingFile = path;
    return f().OpenDrawing();
  }

  // The drawing point shown at a pixel of a view, and back.
  CanvasPoint Pixel(int v, Point p) { return f().View(v).ToScreen(p); }

  void Click(int v, Point p) {
    const CanvasPoint at = Pixel(v, p);
    f().View_MouseDown(v, MouseButton::Left, at.x, at.y);
    f().View_MouseUp(v, at.x, at.y);
  }

  std::array<double, 5> StoredView(int v) {
    store::Database db = store::Database::Open(state.ProjectFile);
    store::Recordset rs = db.OpenRecordset("tblSetting");
    rs.MoveFirst();
    const std::string n = std::to_string(v + 1);
    return {rs.Get("ZoomFactor" + n).AsDouble(), rs.Get("BLX" + n).AsDouble(),
            rs.Get("BLY" + n).AsDouble(), rs.Get("TRX" + n).AsDouble(),
            rs.Get("TRY" + n).AsDouble()};
  }

  std::vector<const CommandButton*> DrawingButtons() {
    return {&f().cmdLayer1, &f().cmdLayer2, &f().cmdZoomIn, &f().cmdZoomOut, &f().cmdPartLarge,
            &f().cmdUndo,   &f().cmd100,    &f().cmdRedraw, &f().cmdDone};
  }

  TempDir dir;
  store::ProjectState state;
  ScriptedPrompter prompter;
  parvenna::testing::RecordingCanvas canvas{4995, 4995};
  QuietEditorHost editorHost;
  RecordingViewHost host;
  std::unique_ptr<editor::EditorForm> editor;
  std::unique_ptr<ViewForm> view;
};

void ExpectWindow(const ViewState& a, const std::array<double, 5>& b, double tolerance) {
  EXPECT_NEAR(a.zoomFactor, b[0], tolerance);
  EXPECT_NEAR(a.blx, b[1], tolerance);
  EXPECT_NEAR(a.bly, b[2], tolerance);
  EXPECT_NEAR(a.trx, b[3], tolerance);
  EXPECT_NEAR(a.try_, b[4], tolerance);
}

// ---- Opening -----------------------------------------------------------------------

struct Kind {
  const char* file;
  std::vector<std::string> someLayers;
};

class OpeningTest : public ViewFormTest, public ::testing::WithParamInterface<Kind> {};

TEST_P(OpeningTest, BothViewsShowOneReadingWithTheirOwnLayerMenus) {
  ASSERT_TRUE(Open(Drawings + GetParam().file));
  EXPECT_TRUE(prompter.shown.empty());
  EXPECT_TRUE(f().View(0).IsLoaded());
  EXPECT_EQ(f().View(0).SharedDrawing(), f().View(1).SharedDrawing());
  EXPECT_EQ(f().ViewerVisible, (std::array<bool, 2>{true, true}));
  EXPECT_EQ(f().OverviewVisible, (std::array<bool, 2>{true, false}));
  for (const CommandButton* b : DrawingButtons()) EXPECT_TRUE(b->Enabled);

  ASSERT_EQ(static_cast<int>(f().mnuLayer1.size()), f().View(0).LayerCount());
  ASSERT_EQ(f().mnuLayer2.size(), f().mnuLayer1.size());
  for (const std::string& layer : GetParam().someLayers) {
    const auto has = [&](const std::vector<MenuItem>& menu, const std::string& caption) {
      return std::any_of(menu.begin(), menu.end(), [&](const MenuItem& m) {
        return m.Caption == caption && m.Checked;
      });
    };
    EXPECT_TRUE(has(f().mnuLayer1, "Layer1 " + layer)) << layer;
    EXPECT_TRUE(has(f().mnuLayer2, "Layer2 " + layer)) << layer;
  }
  // No saved window: the whole drawing.
  EXPECT_DOUBLE_EQ(f().View(0).ReadWindow().zoomFactor, 1);
}

INSTANTIATE_TEST_SUITE_P(
    Kinds, OpeningTest,
    ::testing::Values(Kind{"generated/generated_plat_lot7.dxf", {"BOUNDARY", "BEARINGS"}},
                      Kind{"dwg_r2000_two_layers_text.dwg", {"0", "Tavolo 1"}},
                      Kind{"dgn_v7_smalltest.dgn", {"1", "2"}}),
    [](const ::testing::TestParamInfo<Kind>& p) {
      return std::string(p.param.file).substr(std::string(p.param.file).rfind('.') + 1);
    });

TEST_F(ViewFormTest, ANewProjectsUnsavedViewsShowTheWholeDrawing) {
  // A project as the create dialog makes it: zoom 0 with the corners 0, 0, 1, 1.
  for (std::size_t v = 0; v < 2; ++v) {
    state.ViewZoom[v] = 0;
    state.ViewBLX[v] = state.ViewBLY[v] = 0;
    state.ViewTRX[v] = state.ViewTRY[v] = 1;
  }
  ASSERT_TRUE(Open(Drawings + "generated/generated_plat_lot7.dxf"));
  for (int v = 0; v < 2; ++v) {
    const ViewState window = f().View(v).ReadWindow();
    EXPECT_DOUBLE_EQ(window.zoomFactor, 1) << v;
    EXPECT_GT(window.trx - window.blx, 1) << "not the one unit at the origin";
  }
}

TEST_F(ViewFormTest, BadFilesGiveTheMessageLeaveTheViewsEmptyAndKeepTheProject) {
  TempDir scratch;
  parvenna::testing::WriteFile(scratch / "noise.dwg", std::string(4000, '\x5a'));
  parvenna::testing::WriteFile(scratch / "notes.dgn", "not a drawing\n");
  const std::vector<std::pair<std::string, std::string>> cases = {
      {Drawings + "dwg_r2000_crc_error_UNREADABLE.dwg", messages::ReasonDwgDamaged},
      {Drawings + "dgn_v8_UNSUPPORTED.dgn", messages::ReasonDgnV8},
      {(scratch / "noise.dwg").string(), messages::ReasonNotADrawing},
      {(scratch / "notes.dgn").string(), messages::ReasonNotADrawing},
      {(scratch / "missing.dxf").string(), messages::ReasonNotFound}};
  for (const auto& [bad, reason] : cases) {
    SCOPED_TRACE(bad);
    ASSERT_TRUE(Open(Lot7));
    prompter.shown.clear();
    EXPECT_FALSE(Open(bad));
    // The box's own words first, then why and what to do.
    ASSERT_EQ(prompter.Prompts(),
              std::vector<std::string>{std::string(messages::OpenDrawingFileError) + "\n\n" + reason});
    EXPECT_FALSE(f().View(0).IsLoaded());
    EXPECT_FALSE(f().View(1).IsLoaded());
    EXPECT_TRUE(f().mnuLayer1.empty());
    for (const CommandButton* b : DrawingButtons()) EXPECT_FALSE(b->Enabled);
    EXPECT_EQ(state.ProjectFile, (dir / "p.pvd").string());
    // Buttons, wheel and clicks on empty views do nothing.
    f().cmdZoomIn_Click();
    f().MouseWheel1_Scroll(120, 10, 10);
    f().View_MouseDown(0, MouseButton::Left, 10, 10);
    f().View_MouseUp(0, 10, 10);
    // A refresh tries the file again.
    EXPECT_FALSE(f().OpenDrawing());
    EXPECT_EQ(prompter.shown.size(), 2u);
  }
}

TEST_F(ViewFormTest, NoDrawingHidesTheViewsAndTurnsTheButtonsOff) {
  ASSERT_TRUE(Open(Lot7));
  EXPECT_TRUE(Open(""));
  EXPECT_TRUE(prompter.shown.empty());
  EXPECT_EQ(f().ViewerVisible, (std::array<bool, 2>{false, false}));
  EXPECT_EQ(f().OverviewVisible, (std::array<bool, 2>{false, false}));
  for (const CommandButton* b : DrawingButtons()) EXPECT_FALSE(b->Enabled);
  // The same drawing linked again is read again.
  ASSERT_TRUE(Open(Lot7));
  EXPECT_TRUE(f().View(1).IsLoaded());
}

TEST_F(ViewFormTest, AnUnchangedPathIsNotReadAgainButTakesTheSavedWindowAndColours) {
  TempDir scratch;
  const std::string copy = (scratch / "lot7.dxf").string();
  std::filesystem::copy_file(Lot7, copy);
  ASSERT_TRUE(Open(copy));
  const auto reading = f().View(0).SharedDrawing();
  std::filesystem::remove(copy);  // a second reading would fail

  state.ViewZoom[1] = 4;
  state.ViewBLX[1] = 5000, state.ViewBLY[1] = 5000, state.ViewTRX[1] = 5080, state.ViewTRY[1] = 5060;
  state.BackRed = state.BackGreen = state.BackBlue = 0;
  state.ForeColourNumber = ForeYellow;
  const unsigned before = f().Generation(1);
  EXPECT_TRUE(f().OpenDrawing());
  EXPECT_TRUE(prompter.shown.empty());
  EXPECT_EQ(f().View(0).SharedDrawing(), reading);
  EXPECT_GT(f().Generation(1), before);
  const ViewState shown = f().View(1).ReadWindow();
  EXPECT_NEAR((shown.blx + shown.trx) / 2, 5040, 1e-6);
  EXPECT_NEAR((shown.bly + shown.try_) / 2, 5030, 1e-6);
  EXPECT_EQ(f().View(0).BackColour(), colours::Black);
  EXPECT_EQ(f().View(1).ForeColourNumber(), ForeYellow);
  // The first view had no saved window and stays whole.
  EXPECT_DOUBLE_EQ(f().View(0).ReadWindow().zoomFactor, 1);
}

// ---- Layers ----------------------------------------------------------------------------

TEST_F(ViewFormTest, ALayerTurnedOffInOneViewStaysOnInTheOther) {
  ASSERT_TRUE(Open(Lot7));
  int bearings = -1;
  for (int i = 0; i < f().View(0).LayerCount(); ++i) {
    if (f().View(0).LayerName(i) == "BEARINGS") bearings = i;
  }
  ASSERT_GE(bearings, 0);
  const auto b = static_cast<std::size_t>(bearings);
  const Point label{5010.6496, 5061.8769};

  f().mnuLayer1_Click(bearings);
  EXPECT_FALSE(f().mnuLayer1[b].Checked);
  EXPECT_TRUE(f().mnuLayer2[b].Checked);
  EXPECT_FALSE(f().View(0).LayerVisible(bearings));
  EXPECT_TRUE(f().View(1).LayerVisible(bearings));
  // A hidden label cannot be found in the first view, still in the second.
  EXPECT_FALSE(f().View(0).FindTextAt(label));
  EXPECT_TRUE(f().View(1).FindTextAt(label));

  f().mnuLayer2_Click(bearings);
  f().mnuLayer1_Click(bearings);
  EXPECT_TRUE(f().View(0).LayerVisible(bearings));
  EXPECT_FALSE(f().View(1).LayerVisible(bearings));
  f().mnuLayer1_Click(99);  // no such entry
}

// ---- Saved views ----------------------------------------------------------------------------

TEST_F(ViewFormTest, SavedViewsRoundTripThroughTheProjectFile) {
  ASSERT_TRUE(Open(Lot7));
  f().cmdZoomIn_Click();
  f().SSTab1_Click(1);
  EXPECT_EQ(f().OverviewVisible, (std::array<bool, 2>{false, true}));
  f().cmdZoomIn_Click();
  f().cmdZoomIn_Click();
  f().MouseWheel1_Scroll(-120, 200, 100);

  const ViewState first = f().View(0).ReadWindow(), second = f().View(1).ReadWindow();
  EXPECT_NEAR(first.zoomFactor, 2, 1e-9);
  EXPECT_NEAR(second.zoomFactor, 4 / std::sqrt(2.0), 1e-9);
  ExpectWindow(first, StoredView(0), 1e-9);
  ExpectWindow(second, StoredView(1), 1e-9);

  // The project opened again, as the opening routine reads it.
  store::ProjectState again;
  again.ProjectFile = state.ProjectFile;
  for (int v = 0; v < kViewCount; ++v) {
    const auto saved = StoredView(v);
    const auto i = static_cast<std::size_t>(v);
    again.ViewZoom[i] = saved[0], again.ViewBLX[i] = saved[1], again.ViewBLY[i] = saved[2];
    again.ViewTRX[i] = saved[3], again.ViewTRY[i] = saved[4];
  }
  state = again;
  MakeForms();
  ASSERT_TRUE(Open(Lot7));
  ExpectWindow(f().View(0).ReadWindow(), StoredView(0), 1e-6);
  ExpectWindow(f().View(1).ReadWindow(), StoredView(1), 1e-6);
  // Back goes to the whole drawing.
  f().cmdUndo_Click();
  EXPECT_NEAR(f().View(0).ReadWindow().zoomFactor, 1, 1e-9);

  // A view without a drawing has no top right: all five are stored as 0.
  ASSERT_TRUE(Open(""));
  f().SaveView(0);
  EXPECT_EQ(StoredView(0), (std::array<double, 5>{0, 0, 0, 0, 0}));
  EXPECT_TRUE(prompter.shown.empty());
}

TEST_F(ViewFormTest, AProjectThatCannotBeWrittenGivesOneBoxAndTheViewsGoOn) {
  ASSERT_TRUE(Open(Lot7));
  std::filesystem::remove(state.ProjectFile);
  std::filesystem::create_directory(state.ProjectFile);  // no database there
  f().cmdZoomIn_Click();
  f().cmdZoomIn_Click();
  EXPECT_EQ(prompter.shown.size(), 1u);
  EXPECT_NEAR(f().View(0).ReadWindow().zoomFactor, 4, 1e-9);
  EXPECT_NEAR(state.ViewZoom[0], 4, 1e-9);
}

// ---- Mouse and buttons --------------------------------------------------------------------------

TEST_F(ViewFormTest, DragPansWheelZoomsAtTheCursorAndAPartIsEnlarged) {
  ASSERT_TRUE(Open(Lot7));
  const auto secondBefore = StoredView(1);
  const Point corner{5027.1569, 5122.4548};
  CanvasPoint at = Pixel(0, corner);

  // A drag with the right button: the point under the press follows the mouse.
  f().View_MouseDown(0, MouseButton::Right, at.x, at.y);
  EXPECT_EQ(f().MousePointer, 99);
  f().View_MouseMove(0, true, at.x + 40, at.y + 10);
  f().View_MouseMove(0, true, at.x + 120, at.y - 30);
  f().View_MouseUp(0, at.x + 120, at.y - 30);
  EXPECT_EQ(f().MousePointer, 0);
  CanvasPoint now = Pixel(0, corner);
  EXPECT_NEAR(now.x, at.x + 120, 1e-6);
  EXPECT_NEAR(now.y, at.y - 30, 1e-6);
  ExpectWindow(f().View(0).ReadWindow(), StoredView(0), 1e-9);
  // A move without a button held does not pan.
  f().View_MouseMove(0, false, 10, 10);
  EXPECT_NEAR(Pixel(0, corner).x, now.x, 1e-9);

  // The wheel keeps the drawing point under the cursor.
  at = {300, 250};
  const Point under = f().View(0).ToDrawing(at.x, at.y);
  f().MouseWheel1_Scroll(240, at.x, at.y);
  EXPECT_NEAR(f().View(0).ReadWindow().zoomFactor, 2, 1e-9);
  const Point still = f().View(0).ToDrawing(at.x, at.y);
  EXPECT_NEAR(still.x, under.x, 1e-9);
  EXPECT_NEAR(still.y, under.y, 1e-9);

  // Enlarge a part: the dragged window fills the view.
  f().cmd100_Click();
  f().cmdPartLarge_Click();
  const Point a = f().View(0).ToDrawing(100, 100), b = f().View(0).ToDrawing(300, 200);
  f().View_MouseDown(0, MouseButton::Left, 100, 100);
  f().View_MouseMove(0, true, 250, 180);
  f().View_MouseUp(0, 300, 200);
  const ViewState part = f().View(0).ReadWindow();
  EXPECT_NEAR(part.zoomFactor, 4, 1e-9);
  EXPECT_LE(part.blx, a.x + 1e-9);
  EXPECT_GE(part.trx, b.x - 1e-9);
  EXPECT_NEAR((part.bly + part.try_) / 2, (a.y + b.y) / 2, 1e-9);
  ExpectWindow(part, StoredView(0), 1e-9);
  f().cmdUndo_Click();
  EXPECT_NEAR(f().View(0).ReadWindow().zoomFactor, 1, 1e-9);
  // The second view was never touched.
  EXPECT_EQ(StoredView(1), secondBefore);
}

TEST_F(ViewFormTest, APickKeysBearingThenDistanceOfTheFocusedCourse) {
  ASSERT_TRUE(Open(Lot7));
  const Point bearing{5010.6496, 5061.8769}, distance{5019.4361, 5059.9284};
  // Nothing is grabbed while no parcel is edited.
  Click(0, bearing);
  EXPECT_EQ(editor->txtBearingLine[0].Text, "");
  EXPECT_TRUE(editor->grab.usedEntities.empty());

  editor->cmdInsert_Click();
  editor->SetFocus({editor::FocusKind::Field, 0, CourseField::BearingLine});
  f().cmdZoomIn_Click();  // picks work at any zoom
  Click(0, bearing);
  EXPECT_EQ(editor->txtBearingLine[0].Text, "N12" + Deg + "30'15\"E");
  EXPECT_EQ(editor->FocusField, 2);
  f().SSTab1_Click(1);
  Click(1, distance);
  EXPECT_EQ(editor->txtDistanceLine[0].Text, "125.43");
  EXPECT_EQ(editor->FocusRow, 2);
  EXPECT_EQ(host.editorChanged, 2);
  // Both labels show as used in both views.
  ASSERT_EQ(editor->grab.usedEntities.size(), 2u);
  for (int v = 0; v < kViewCount; ++v) {
    ASSERT_TRUE(f().View(v).FindTextAt(bearing));
    EXPECT_TRUE(f().View(v).IsMarked(f().View(v).Found() - 1));
  }
}

// A block of two labels inserted twice: GDAL gives each copy's labels the
// handle of their reference.
TEST_F(ViewFormTest, AMarkCoversThePickedLabelOnlyAndGoesWithTheUsedList) {
  parvenna::testing::DxfWriter dxf;
  dxf.Layer("LABELS");
  dxf.BeginBlock("COURSE");
  dxf.Text("LABELS", 0, 0, 2, "N 10%%d00'00\" E");
  dxf.Text("LABELS", 0, -5, 2, "100.00");
  dxf.EndBlock();
  dxf.Insert("LABELS", "COURSE", 0, 0);
  dxf.Insert("LABELS", "COURSE", 100, 0);
  ASSERT_TRUE(dxf.Save((dir / "blocks.dxf").string()));
  ASSERT_TRUE(Open((dir / "blocks.dxf").string()));
  const auto marked = [&](int v) {
    int n = 0;
    const DrawingDocument& doc = *f().View(v).Document();
    for (std::uint32_t i = 0; i < doc.entities.size(); ++i) n += f().View(v).IsMarked(i);
    return n;
  };
  editor->cmdInsert_Click();
  editor->SetFocus({editor::FocusKind::Field, 0, CourseField::BearingLine});
  Click(0, {5, 1});
  ASSERT_EQ(editor->txtBearingLine[0].Text, "N10" + Deg + "00'00\"E");
  EXPECT_EQ(marked(0), 1);
  EXPECT_EQ(marked(1), 1);
  Click(0, {105, -4});  // the other copy's distance
  EXPECT_EQ(editor->txtDistanceLine[0].Text, "100.00");
  EXPECT_EQ(marked(0), 2);
  // Cancel empties the list of used labels: the marks go with it.
  editor->cmdCancel_Click();
  f().FollowUsedList();
  EXPECT_EQ(marked(0), 0);
  EXPECT_EQ(marked(1), 0);
}

TEST_F(ViewFormTest, TheOverviewMovesTheViewAndCanBeHidden) {
  ASSERT_TRUE(Open(Lot7));
  EXPECT_TRUE(f().OverviewVisible[0]);
  EXPECT_FALSE(f().OverviewVisible[1]);
  f().cmdZoomIn_Click();
  f().cmdZoomIn_Click();
  // A click at the lower left of a 200 by 150 overview: the view goes there.
  const Box extent = f().View(0).Document()->extent;
  Point target;
  ASSERT_TRUE(f().View(0).OverviewToDrawing(40, 120, 200, 150, target));
  f().Overview_Click(0, 40, 120, 200, 150);
  const ViewState moved = f().View(0).ReadWindow();
  EXPECT_NEAR((moved.blx + moved.trx) / 2, target.x, 1e-6);
  EXPECT_NEAR((moved.bly + moved.try_) / 2, target.y, 1e-6);
  EXPECT_LT(target.x, extent.Centre().x);
  EXPECT_LT(target.y, extent.Centre().y);
  EXPECT_NEAR(moved.zoomFactor, 4, 1e-9);  // the same zoom
  ExpectWindow(moved, StoredView(0), 1e-6);  // kept in the project
  // Hidden, it takes no clicks; shown again on the page on show only.
  f().cmdOverview_Click();
  EXPECT_FALSE(f().OverviewVisible[0]);
  f().Overview_Click(0, 190, 10, 200, 150);
  ExpectWindow(f().View(0).ReadWindow(), StoredView(0), 1e-6);
  f().SSTab1_Click(1);
  EXPECT_FALSE(f().OverviewVisible[1]);
  f().cmdOverview_Click();
  EXPECT_TRUE(f().OverviewVisible[1]);
  EXPECT_FALSE(f().OverviewVisible[0]);
}

TEST_F(ViewFormTest, DoneHandsOnTheWaitingLabelsAndInvertsWhenTheProjectAsks) {
  for (const bool autoInvert : {false, true}) {
    SCOPED_TRACE(autoInvert);
    state.AutoInvertOn = autoInvert;
    MakeForms();
    ASSERT_TRUE(Open(Lot7));
    editor->cmdInsert_Click();
    editor->SetFocus({editor::FocusKind::Field, 0, CourseField::BearingLine});
    editor->grab.GrabActive = true;
    // A square whose third side was labelled the wrong way round.
    editor->grab.GrabQueue = {"N0" + Deg + "0'0\"E",  "100", "N90" + Deg + "0'0\"E", "100",
                              "N0" + Deg + "0'0\"E",  "100", "N90" + Deg + "0'0\"W", "100"};
    f().cmdDone_Click();
    EXPECT_FALSE(editor->grab.GrabActive);
    EXPECT_TRUE(editor->grab.GrabQueue.empty());
    EXPECT_EQ(editor->txtDistanceLine[3].Text, "100");
    EXPECT_NEAR(editor->parcel.Closure, autoInvert ? 0 : 200, 1e-6);
    EXPECT_EQ(host.editorChanged > 0, true);
  }
}

// ---- Layouts ------------------------------------------------------------------------------------

TEST_F(ViewFormTest, LayoutsPlaceTheEditorBesideOrAboveTheDrawing) {
  const double w = 19200, h = 12000;
  f().mnuSplitVertical_Click(w, h);
  f().mnuNativeView_Click(w, h);
  ASSERT_EQ(host.placed.size(), 2u);
  const auto [editorSplit, viewSplit] = host.placed[0];
  EXPECT_EQ(editorSplit.Left, 0);
  EXPECT_EQ(editorSplit.Height, h);
  EXPECT_GE(editorSplit.Width, editor->Width);
  EXPECT_EQ(viewSplit.Left, editorSplit.Width);
  EXPECT_EQ(viewSplit.Left + viewSplit.Width, w);
  EXPECT_EQ(viewSplit.Height, h);
  const auto [editorNative, viewNative] = host.placed[1];
  EXPECT_EQ(viewNative, (WindowRect{0, 0, w, h}));
  EXPECT_GE(editorNative.Width, editor->Width);
  EXPECT_LT(editorNative.Width, w);
  // A narrow area is shared half and half.
  const WindowLayout narrow = f().SplitLayout(6000, 4000);
  EXPECT_EQ(narrow.editor.Width, 3000);
  EXPECT_EQ(narrow.view, (WindowRect{3000, 0, 3000, 4000}));
}

}  // namespace
}  // namespace parvenna::drawing
