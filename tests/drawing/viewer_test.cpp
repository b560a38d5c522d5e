// A view of a drawing: its window through the zoom commands, layers per
// view, what a frame paints and costs, the overview, and the search.
#include <gtest/gtest.h>

#include <algorithm>

#include "drawing/viewer.h"
#include "tests/drawing/dxf_writer.h"
#include "tests/store/temp_dir.h"
#include "tests/support/recording_canvas.h"

namespace parvenna::drawing {
namespace {

using testing::RecordingCanvas;
using Op = RecordingCanvas::Op;

// A 1000 by 1000 sheet: a 20 by 20 grid of lots, each with a label, on
// layers LOTS and LABELS; one layer off in the file.
class ViewerTest : public ::testing::Test {
 protected:
  static void SetUpTestSuite() {
    dir_ = new testing::TempDir;
    testing::DxfWriter dxf;
    dxf.Layer("LOTS", 7);
    dxf.Layer("LABELS", 1);
    dxf.Layer("OFF", 3, true);
    for (int i = 0; i < 20; ++i) {
      for (int j = 0; j < 20; ++j) {
        const double x = i * 50, y = j * 50;
        dxf.Polyline("LOTS", {{x, y}, {x + 50, y}, {x + 50, y + 50}, {x, y + 50}}, true);
        dxf.Text("LABELS", x + 5, y + 20, 4, "L" + std::to_string(i) + "-" + std::to_string(j));
      }
    }
    dxf.Line("OFF", 0, 0, 1000, 1000);
    dxf.Circle("LOTS", 500, 500, 10);
    path_ = (dir_->path() / "sheet.dxf").string();
    ASSERT_TRUE(dxf.Save(path_));
    std::string detail;
    drawing_ = ReadIndexedDrawing(path_, detail);
    ASSERT_TRUE(drawing_) << detail;
  }
  static void TearDownTestSuite() {
    drawing_.reset();
    delete dir_;
  }
  void SetUp() override {
    view.SetViewport(1000, 500);
    view.Show(drawing_);
  }

  static std::size_t Count(const RecordingCanvas& c, Op op) { return c.Count(op); }

  static testing::TempDir* dir_;
  static std::string path_;
  static std::shared_ptr<const IndexedDrawing> drawing_;
  Viewer view;
};

testing::TempDir* ViewerTest::dir_ = nullptr;
std::string ViewerTest::path_;
std::shared_ptr<const IndexedDrawing> ViewerTest::drawing_;

void ExpectWindow(const ViewState& s, double blx, double bly, double trx, double try_) {
  EXPECT_NEAR(s.blx, blx, 1e-6);
  EXPECT_NEAR(s.bly, bly, 1e-6);
  EXPECT_NEAR(s.trx, trx, 1e-6);
  EXPECT_NEAR(s.try_, try_, 1e-6);
}

TEST_F(ViewerTest, ZoomCommandsKeepTheCentreAndUndoGoesBack) {
  const ViewState all = view.ReadWindow();
  EXPECT_NEAR(all.zoomFactor, 1, 1e-9);
  EXPECT_LE(all.blx, 0);
  EXPECT_GE(all.trx, 1000);
  EXPECT_NEAR((all.trx - all.blx) / (all.try_ - all.bly), 2, 1e-9);  // the picture's aspect

  view.Run(ViewCommand::ZoomIn);
  ViewState in = view.ReadWindow();
  EXPECT_NEAR(in.zoomFactor, 2, 1e-9);
  EXPECT_NEAR(in.trx - in.blx, (all.trx - all.blx) / 2, 1e-6);
  EXPECT_NEAR(in.blx + in.trx, all.blx + all.trx, 1e-6);
  view.Run(ViewCommand::ZoomOut);
  view.Run(ViewCommand::ZoomOut);
  EXPECT_NEAR(view.ReadWindow().zoomFactor, 0.5, 1e-9);
  view.Run(ViewCommand::UndoZoom);
  view.Run(ViewCommand::UndoZoom);
  ExpectWindow(view.ReadWindow(), in.blx, in.bly, in.trx, in.try_);
  view.Run(ViewCommand::ZoomAll);
  ExpectWindow(view.ReadWindow(), all.blx, all.bly, all.trx, all.try_);
}

TEST_F(ViewerTest, AShownWindowReadsBackAndSavedZerosShowTheWhole) {
  view.ShowWindow(100, 100, 300, 200);
  ExpectWindow(view.ReadWindow(), 100, 100, 300, 200);
  const ViewState saved = view.ReadWindow();
  Viewer other;
  other.SetViewport(1000, 500);
  other.Show(drawing_);
  other.ShowWindow(saved.blx, saved.bly, saved.trx, saved.try_);
  ExpectWindow(other.ReadWindow(), 100, 100, 300, 200);

  const ViewState all = other.ReadWindow();
  other.ShowWindow(0, 0, 0, 0);
  EXPECT_NEAR(other.ReadWindow().zoomFactor, 1, 1e-9);
  other.ShowWindow(1, 1, 1, 5);  // no width
  EXPECT_NEAR(other.ReadWindow().zoomFactor, 1, 1e-9);
  (void)all;

  // A window of another aspect widens to the picture's, round its centre.
  view.ShowWindow(0, 0, 100, 100);
  ExpectWindow(view.ReadWindow(), -50, 0, 150, 100);
}

TEST_F(ViewerTest, ZoomFactorPanAndZoomAtTheCursor) {
  view.ShowWindow(100, 100, 300, 200);
  view.SetZoomFactor(view.ReadWindow().zoomFactor * 2);
  ExpectWindow(view.ReadWindow(), 150, 125, 250, 175);
  view.Pan(10, -5);  // the drawing moves with the hand: the window the other way
  ExpectWindow(view.ReadWindow(), 140, 130, 240, 180);
  const Point cursor{150, 140};
  const CanvasPoint before = view.ToScreen(cursor);
  view.ZoomAt(cursor, 2);
  const CanvasPoint after = view.ToScreen(cursor);
  EXPECT_NEAR(before.x, after.x, 1e-6);
  EXPECT_NEAR(before.y, after.y, 1e-6);
  const Point back = view.ToDrawing(after.x, after.y);
  EXPECT_NEAR(back.x, 150, 1e-9);
  EXPECT_NEAR(back.y, 140, 1e-9);
  view.SetZoomFactor(0);
  view.Pan(1.0 / 0.0, 0);
  EXPECT_TRUE(std::isfinite(view.ReadWindow().blx));
}

TEST_F(ViewerTest, EnlargePartTakesTheDraggedWindow) {
  view.MouseDown({0, 0});
  view.MouseUp({10, 10});
  EXPECT_NEAR(view.ReadWindow().zoomFactor, 1, 1e-9);  // no command yet
  view.Run(ViewCommand::PartLarge);
  EXPECT_TRUE(view.AwaitingPart());
  view.MouseDown({200, 300});
  view.MouseMove({300, 330});
  RecordingCanvas canvas(1000, 500);
  view.Render(canvas);
  EXPECT_EQ(canvas.Picture().back().op, Op::Box);  // the band
  view.MouseUp({400, 400});
  EXPECT_FALSE(view.AwaitingPart());
  ExpectWindow(view.ReadWindow(), 200, 300, 400, 400);
}

TEST_F(ViewerTest, AFramePaintsWhatItsWindowMeets) {
  RecordingCanvas canvas(1000, 500);
  view.Render(canvas);
  const std::size_t whole = view.LastFrameEntities();
  EXPECT_EQ(whole, 801u);  // the line is on a layer that is off
  EXPECT_EQ(canvas.calls.front().op, Op::Cls);
  EXPECT_EQ(canvas.calls.front().colour, colours::White);
  EXPECT_EQ(Count(canvas, Op::Polyline), 400u);
  EXPECT_EQ(Count(canvas, Op::Circle), 1u);
  // Labels two pixels high are the lines they stand on.
  EXPECT_EQ(Count(canvas, Op::Text), 0u);
  EXPECT_EQ(Count(canvas, Op::Line), 400u);

  view.ShowWindow(510, 510, 540, 540);  // inside one lot
  canvas.Clear();
  view.Render(canvas);
  EXPECT_LE(view.LastFrameEntities(), 6u);
  EXPECT_GE(view.LastFrameEntities(), 2u);
  const auto picture = canvas.Picture();
  const auto text = std::find_if(picture.begin(), picture.end(),
                                 [](const auto& c) { return c.op == Op::Text; });
  ASSERT_NE(text, picture.end());
  EXPECT_EQ(text->text, "L10-10");
  // Baseline start of L10-10 at (505, 520): on the picture, y downwards.
  const CanvasPoint at = view.ToScreen({505, 520});
  EXPECT_NEAR(text->a, at.x, 1e-6);
  EXPECT_NEAR(text->b, at.y, 1e-6);
  EXPECT_EQ(text->colour, (Rgb{255, 0, 0}));
}

TEST_F(ViewerTest, LayersAreSwitchedPerView) {
  Viewer second;
  second.SetViewport(1000, 500);
  second.Show(view.SharedDrawing());
  EXPECT_FALSE(view.LayerVisible(2));  // off in the file
  ASSERT_TRUE(view.SetLayerVisible("LABELS", false));
  EXPECT_FALSE(view.SetLayerVisible("NO SUCH", false));
  RecordingCanvas one(1000, 500), two(1000, 500);
  view.Render(one);
  second.Render(two);
  EXPECT_EQ(view.LastFrameEntities(), 401u);
  EXPECT_EQ(second.LastFrameEntities(), 801u);
  second.ShowAllLayers();
  second.Render(two);
  EXPECT_EQ(second.LastFrameEntities(), 802u);
  EXPECT_EQ(view.LayerName(1), "LABELS");
  EXPECT_EQ(view.LayerName(7), "");
}

TEST_F(ViewerTest, ColoursForeNumbersMarksAndContrast) {
  view.ShowWindow(510, 510, 540, 540);
  RecordingCanvas canvas(1000, 500);
  view.Render(canvas);
  // LOTS is white (7): on a white sheet it is drawn black.
  for (const auto& c : canvas.Picture()) {
    if (c.op == Op::Polyline) {
      EXPECT_EQ(c.colour, colours::Black);
    }
  }
  view.SetBackColour(colours::Black);
  view.SetForeColour(ForeYellow);
  view.Render(canvas);
  EXPECT_EQ(canvas.calls.back().colour == colours::Yellow, true);
  const auto clear = std::find_if(canvas.calls.rbegin(), canvas.calls.rend(),
                                  [](const auto& c) { return c.op == Op::Cls; });
  EXPECT_EQ(clear->colour, colours::Black);
  for (const auto& c : canvas.Picture()) {
    if (c.op != Op::Cls) {
      EXPECT_EQ(c.colour, colours::Yellow);
    }
  }
  ASSERT_TRUE(view.FindTextAt({507, 521}));
  ASSERT_TRUE(view.MarkUsed(view.FoundHandle()));
  EXPECT_FALSE(view.MarkUsed("ZZ"));
  view.Render(canvas);
  const auto picture = canvas.Picture();
  const auto text = std::find_if(picture.begin(), picture.end(),
                                 [](const auto& c) { return c.op == Op::Text; });
  ASSERT_NE(text, picture.end());
  EXPECT_EQ(text->colour, UsedMarkColour);
}

TEST_F(ViewerTest, OverviewShowsTheWholeAndTheWindow) {
  view.ShowWindow(100, 100, 300, 200);
  RecordingCanvas canvas(200, 100);
  view.RenderOverview(canvas);
  const auto picture = canvas.Picture();
  ASSERT_EQ(picture.back().op, Op::Box);
  EXPECT_EQ(picture.back().colour, (Rgb{255, 0, 0}));
  const double width = picture.back().c - picture.back().a;
  EXPECT_NEAR(width, 200.0 * 100 / 1040, 1e-6);
  // Small texts become the line they stand on.
  EXPECT_EQ(canvas.Count(Op::Text), 0u);
}

TEST_F(ViewerTest, SearchFindsTextsBeforeLinesAndWalksOn) {
  // Near enough is three pixels: zoomed in, a point on the lot line at
  // x = 500 meets the two lots on either side, and not the label 5 units off.
  view.ShowWindow(490, 490, 560, 560);
  ASSERT_TRUE(view.Search({500, 520}));
  EXPECT_EQ(view.FoundDescription(), "POLYLINE");
  const std::string first = view.FoundHandle();
  const std::string second = view.NextEntity();
  EXPECT_NE(second, "");
  EXPECT_NE(second, first);
  EXPECT_EQ(view.NextEntity(), "");
  EXPECT_EQ(view.Found(), 0u);
  // The search from a handle goes on after it.
  ASSERT_TRUE(view.Search({500, 520}, first));
  EXPECT_EQ(view.FoundHandle(), second);
  EXPECT_FALSE(view.FindTextAt({500, 520}));

  ASSERT_TRUE(view.FindTextAt({506, 521}));
  EXPECT_EQ(view.FoundText(), "L10-10");
  EXPECT_FALSE(view.FindTextAt({506, 535}));  // beside it, within the lot
  view.ZoomAll();  // at the whole sheet three pixels reach the label
  EXPECT_TRUE(view.FindTextAt({500, 520}));
  EXPECT_FALSE(view.Search({5000, 5000}));
  EXPECT_EQ(view.FoundHandle(), "");
  EXPECT_EQ(view.FoundText(), "");
}

TEST_F(ViewerTest, AClosedViewIgnoresCommands) {
  view.Close();
  EXPECT_FALSE(view.IsLoaded());
  view.Run(ViewCommand::ZoomIn);
  view.Pan(1, 1);
  EXPECT_FALSE(view.FindTextAt({506, 521}));
  RecordingCanvas canvas(100, 100);
  view.Render(canvas);
  view.RenderOverview(canvas);
  EXPECT_EQ(canvas.calls.size(), 2u);
  EXPECT_EQ(view.ReadWindow().zoomFactor, 0);
  EXPECT_FALSE(view.Load(path_ + ".missing"));
  EXPECT_FALSE(view.LoadDetail().empty());
  EXPECT_TRUE(view.Load(path_));
  EXPECT_EQ(view.LayerCount(), 3);
}

// Coordinates and heights at the ends of the number range load, paint and
// pick without harm.
TEST(ViewerLimits, HugeCoordinatesAndHeights) {
  testing::TempDir dir;
  testing::DxfWriter dxf;
  dxf.Layer("0");
  dxf.Line("0", -1e307, -1e307, 1e307, 1e307);
  dxf.Line("0", 0, 0, 1, 1);
  dxf.Text("0", 5, 5, 1e300, "N 1%%d2'3\" E 99999999999999999999999");
  dxf.Text("0", 9, 9, 1, "small");
  ASSERT_TRUE(dxf.Save((dir / "huge.dxf").string()));
  Viewer view;
  ASSERT_TRUE(view.Load((dir / "huge.dxf").string())) << view.LoadDetail();
  RecordingCanvas canvas(640, 480);
  view.Render(canvas);
  view.RenderOverview(canvas);
  view.ShowWindow(8, 8, 12, 12);
  view.Render(canvas);
  EXPECT_TRUE(view.FindTextAt({9.5, 9.3}));
  EXPECT_EQ(view.FoundText(), "small");
  view.ZoomIn();
  view.ZoomAt({1e306, 1e306}, 1e-300);
  view.Render(canvas);
  EXPECT_TRUE(std::isfinite(view.ReadWindow().zoomFactor) || view.ReadWindow().zoomFactor == 0);
}

}  // namespace
}  // namespace parvenna::drawing
