// The picture of a view. A pan by whole pixels moves the picture and paints
// only the strips that came into view, which are what a whole new picture
// has there; any other change paints it all afresh. And frames of real
// drawings, from the whole sheet down to a lot, painted straight into the
// pixels look as the painter paints them.
#include <gtest/gtest.h>

#include <limits>
#include <memory>
#include <string>
#include <vector>

#include <QImage>
#include <QPainter>

#include "drawing/viewer.h"
#include "tests/drawing/plat_sheet.h"
#include "tests/store/temp_dir.h"
#include "tests/ui/image_difference.h"
#include "tests/ui/ui_app.h"
#include "ui/drawing_canvas.h"
#include "ui/drawing_frame.h"

namespace parvenna::ui {
namespace {

using drawing::IndexedDrawing;
using drawing::Viewer;
using testing::Compare;

const QSize kSize(400, 300);

std::string Drawings(const std::string& name) {
  return std::string(PARVENNA_TESTDATA_DIR) + "/drawings/" + name;
}

std::shared_ptr<const IndexedDrawing> Read(const std::string& path) {
  std::string detail;
  auto drawing = drawing::ReadIndexedDrawing(path, detail);
  EXPECT_TRUE(drawing) << path << ": " << detail;
  return drawing;
}

QImage Painted(Viewer& view, DrawingCanvas::Lines lines) {
  QImage image(kSize, QImage::Format_RGB32);
  QPainter painter(&image);
  DrawingCanvas canvas(painter, kSize.width(), kSize.height(), lines);
  view.Render(canvas);
  return image;
}

class DrawingFrameTest : public ::testing::Test {
 protected:
  static void SetUpTestSuite() {
    ui::testing::TestApp();
    dir_ = new parvenna::testing::TempDir;
    const std::string sheet = (dir_->path() / "sheet.dxf").string();
    parvenna::testing::PlatSheet plat;
    plat.blocksPerSide = 3;
    plat.coloured = true;
    ASSERT_TRUE(plat.Write(sheet));
    drawings_ = new std::vector<std::shared_ptr<const IndexedDrawing>>{
        Read(sheet), Read(Drawings("dxf_r2000_many_entities.dxf")),
        Read(Drawings("generated/generated_plat_lot7.dxf"))};
  }
  static void TearDownTestSuite() {
    delete drawings_;
    delete dir_;
  }
  static const std::vector<std::shared_ptr<const IndexedDrawing>>& drawings() { return *drawings_; }

  // Pans the view so that the picture moves by (dx, dy) pixels.
  static void PanPixels(Viewer& view, double dx, double dy) {
    const double scale = view.CurrentTransform().scale;
    view.Pan(dx / scale, -dy / scale);
  }

  static parvenna::testing::TempDir* dir_;
  static std::vector<std::shared_ptr<const IndexedDrawing>>* drawings_;
};

parvenna::testing::TempDir* DrawingFrameTest::dir_ = nullptr;
std::vector<std::shared_ptr<const IndexedDrawing>>* DrawingFrameTest::drawings_ = nullptr;

TEST_F(DrawingFrameTest, APanByWholePixelsPaintsOnlyWhatCameIntoViewAndThatAsANewPictureWould) {
  for (const auto& drawing : drawings()) {
    ASSERT_TRUE(drawing);
    for (const double zoom : {1.0, 3.0, 12.0}) {
      Viewer view;
      view.SetViewport(kSize.width(), kSize.height());
      view.Show(drawing);
      view.SetBackColour({20, 20, 30});
      view.SetZoomFactor(zoom);
      // The strips painted by one thread, and in bands on every thread.
      for (const std::size_t bandsFrom : {DrawingFrame::kManyEntities, std::size_t{0}}) {
        DrawingFrame frame(bandsFrom), fresh;
        frame.Update(view, kSize);
        for (const auto& [dx, dy] : std::vector<std::pair<int, int>>{
                 {37, 0}, {0, -23}, {-61, 15}, {5, 5}, {-130, -90}, {1, 0}, {0, 299}}) {
          PanPixels(view, dx, dy);
          frame.Update(view, kSize);
          EXPECT_TRUE(frame.LastMoved());
          fresh.Paint(view, kSize);
          const testing::Difference d = Compare(frame.Image(), fresh.Image());
          // The painter fills areas that cross the picture's edge with a
          // shade that may differ by a few levels in the edge's pixels;
          // nothing more.
          EXPECT_EQ(d.marked, 0) << drawing->document.path << " at zoom " << zoom << ", pan " << dx
                                 << "," << dy << ": largest difference " << d.largest;
          EXPECT_LE(d.pixels, 20) << drawing->document.path << " at zoom " << zoom;
        }
      }
    }
  }
}

TEST_F(DrawingFrameTest, AnyOtherChangePaintsThePictureAfresh) {
  Viewer view;
  view.SetViewport(kSize.width(), kSize.height());
  view.Show(drawings().front());
  DrawingFrame frame;
  frame.Update(view, kSize);
  EXPECT_FALSE(frame.LastMoved());
  const auto paintedAfresh = [&](const char* what) {
    frame.Update(view, kSize);
    EXPECT_FALSE(frame.LastMoved()) << what;
    DrawingFrame fresh;
    fresh.Paint(view, kSize);
    EXPECT_EQ(Compare(frame.Image(), fresh.Image()).pixels, 0) << what;
  };
  PanPixels(view, 10.5, 0);
  paintedAfresh("a pan by half a pixel");
  PanPixels(view, 0, kSize.height());
  paintedAfresh("a pan past the picture");
  view.ZoomIn();
  paintedAfresh("a zoom");
  view.SetLayerVisible(0, false);
  paintedAfresh("a layer turned off");
  view.SetForeColour(drawing::ForeYellow);
  paintedAfresh("a fore colour");
  view.SetBackColour({0, 0, 80});
  paintedAfresh("a back colour");
  ASSERT_TRUE(view.MarkUsed(view.Document()->HandleText(view.Document()->entities[3])));
  paintedAfresh("a mark");
  frame.Update(view, QSize(300, 300));
  EXPECT_FALSE(frame.LastMoved());
  EXPECT_EQ(frame.Image().size(), QSize(300, 300));
}

TEST_F(DrawingFrameTest, AFramePaintedInBandsAtOnceIsTheFrameOneThreadPaints) {
  for (const auto& drawing : drawings()) {
    ASSERT_TRUE(drawing);
    for (const double zoom : {1.0, 4.0, 32.0}) {
      Viewer view;
      view.SetViewport(kSize.width(), kSize.height());
      view.Show(drawing);
      view.SetZoomFactor(zoom);
      DrawingFrame banded(0), alone(std::numeric_limits<std::size_t>::max());
      banded.Paint(view, kSize);
      alone.Paint(view, kSize);
      const testing::Difference d = Compare(banded.Image(), alone.Image());
      // Texts and areas that cross a band's edge are cut by it as by the
      // picture's: a few levels of shade in the edge's pixels at most.
      EXPECT_EQ(d.marked, 0) << drawing->document.path << " at zoom " << zoom;
      EXPECT_LE(d.pixels, 20) << drawing->document.path << " at zoom " << zoom;
      // Entities across a band's edge count once in each band.
      EXPECT_GE(banded.LastEntities(), alone.LastEntities());
    }
  }
}

// The frames as the painter paints each line, dot and arc, against the same
// frames painted straight into the pixels: lines and dots within the picture
// are the same pixels; lines across its edge may sit a fraction of a pixel
// apart, since the painter follows them from where the edge cuts them; arcs
// of up to 64 pixels are chords that may differ in the shade of a pixel;
// texts, areas and larger arcs are the painter's own.
TEST_F(DrawingFrameTest, FramesAtEveryZoomLookAsThePainterPaintsThem) {
  for (const auto& drawing : drawings()) {
    ASSERT_TRUE(drawing);
    for (const double zoom : {1.0, 2.0, 8.0, 32.0, 128.0}) {
      Viewer view;
      view.SetViewport(kSize.width(), kSize.height());
      view.Show(drawing);
      view.SetZoomFactor(zoom);
      const testing::Difference d =
          Compare(Painted(view, DrawingCanvas::Lines::Direct), Painted(view, DrawingCanvas::Lines::Painter));
      // Out of 120,000 pixels: at most 1% differs noticeably, where small
      // arcs are chords and lines cross the picture's edges.
      const int pixels = kSize.width() * kSize.height();
      EXPECT_LT(d.marked, pixels / 100) << drawing->document.path << " at zoom " << zoom;
    }
  }
}

}  // namespace
}  // namespace parvenna::ui
