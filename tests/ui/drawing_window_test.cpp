// The drawing window over its form, offscreen: the views paint the drawing
// and paint again only after a change, the wheel zooms about the cursor, a
// drag pans, the layer menus pop up at their buttons, and a dragged band
// enlarges a part.
#include <gtest/gtest.h>

#include <cstdio>
#include <cstdlib>

#include <QApplication>
#include <QMenu>
#include <QMouseEvent>
#include <QRubberBand>
#include <QTabWidget>
#include <QTest>
#include <QToolButton>
#include <QWheelEvent>

#include "drawing/drawing_document.h"
#include "drawing/view_form.h"
#include "editor/editor_form.h"
#include "tests/support/recording_canvas.h"
#include "tests/support/scripted_prompter.h"
#include "tests/ui/ui_app.h"
#include "ui/drawing_view.h"
#include "ui/drawing_window.h"

namespace parvenna::ui {
namespace {

using parvenna::testing::ScriptedPrompter;

class QuietHost : public editor::EditorHost {
 public:
  void BringUpDrawing() override {}
  void MinimizeEditor() override {}
  void ShowRowMenu(int) override {}
};

// Pixels of an image that differ from the colour of its top left corner.
int InkedPixels(const QImage& image, const QRect& area) {
  const QRgb back = image.pixel(area.topLeft());
  int inked = 0;
  for (int y = area.top(); y <= area.bottom(); ++y) {
    for (int x = area.left(); x <= area.right(); ++x) inked += image.pixel(x, y) != back;
  }
  return inked;
}

// Counts the paint events a widget receives.
class PaintCounter : public QObject {
 public:
  explicit PaintCounter(QWidget* widget) { widget->installEventFilter(this); }
  bool eventFilter(QObject*, QEvent* event) override {
    count += event->type() == QEvent::Paint;
    return false;
  }
  int count = 0;
};

class DrawingWindowTest : public ::testing::Test {
 protected:
  DrawingWindowTest() {
    window.bind();
    window.resize(900, 650);
    window.show();
    EXPECT_TRUE(QTest::qWaitForWindowExposed(&window));
  }

  void Open() {
    project.DrawingFile =
        std::string(PARVENNA_TESTDATA_DIR) + "/drawings/generated/generated_plat_lot7.dxf";
    ASSERT_TRUE(form.OpenDrawing());
    window.Refresh();
    QApplication::processEvents();
  }

  DrawingView* view() { return window.View(0); }

  void Mouse(QEvent::Type type, QPointF at, Qt::MouseButton button, Qt::MouseButtons held) {
    QMouseEvent event(type, at, view()->mapToGlobal(at), button, held, Qt::NoModifier);
    QApplication::sendEvent(view(), &event);
  }

  QApplication& app = testing::TestApp();
  store::ProjectState project;  // no project file: the views are kept in memory only
  ScriptedPrompter prompter;
  parvenna::testing::RecordingCanvas sketch;
  QuietHost host;
  editor::EditorForm editor{project, prompter, sketch, host};
  drawing::ViewForm form{project, prompter, editor};
  DrawingWindow window{form};
};

TEST_F(DrawingWindowTest, TheViewPaintsTheDrawingOnceForEachChange) {
  EXPECT_FALSE(window.ButtonOf(form.cmdZoomIn)->isEnabled());
  Open();
  EXPECT_TRUE(window.ButtonOf(form.cmdZoomIn)->isEnabled());
  EXPECT_EQ(window.SSTab1()->tabText(1), "Second View");
  EXPECT_EQ(form.View(0).ViewportWidth(), view()->width());

  const QImage shot = view()->grab().toImage();
  const QRect overview = view()->OverviewRect();
  ASSERT_FALSE(overview.isEmpty());
  QRect drawingArea = view()->rect();
  drawingArea.setRight(overview.left() - 1);
  EXPECT_GT(InkedPixels(shot, drawingArea), 500);
  // The overview frames the window in red.
  bool red = false;
  for (int x = overview.left(); x <= overview.right() && !red; ++x) {
    for (int y = overview.top(); y <= overview.bottom() && !red; ++y) {
      const QColor c = shot.pixelColor(x, y);
      red = c.red() > 200 && c.green() < 60 && c.blue() < 60;
    }
  }
  EXPECT_TRUE(red);

  const int frames = view()->FramesPainted();
  view()->grab();
  EXPECT_EQ(view()->FramesPainted(), frames);
  QTest::mouseClick(window.ButtonOf(form.cmdZoomIn), Qt::LeftButton);
  view()->grab();
  EXPECT_EQ(view()->FramesPainted(), frames + 1);
  EXPECT_NEAR(form.View(0).ReadWindow().zoomFactor, 2, 1e-9);
}

TEST_F(DrawingWindowTest, TheWheelZoomsAboutTheCursorAndADragPans) {
  Open();
  const QPointF at(250, 180);
  const drawing::Point under = form.View(0).ToDrawing(at.x(), at.y());
  QWheelEvent wheel(at, view()->mapToGlobal(at), QPoint(), QPoint(0, 240), Qt::NoButton,
                    Qt::NoModifier, Qt::NoScrollPhase, false);
  QApplication::sendEvent(view(), &wheel);
  EXPECT_NEAR(form.View(0).ReadWindow().zoomFactor, 2, 1e-9);
  drawing::Point still = form.View(0).ToDrawing(at.x(), at.y());
  EXPECT_NEAR(still.x, under.x, 1e-9);
  EXPECT_NEAR(still.y, under.y, 1e-9);

  Mouse(QEvent::MouseButtonPress, at, Qt::RightButton, Qt::RightButton);
  EXPECT_EQ(view()->cursor().shape(), Qt::ClosedHandCursor);
  Mouse(QEvent::MouseMove, at + QPointF(30, 10), Qt::NoButton, Qt::RightButton);
  Mouse(QEvent::MouseMove, at + QPointF(80, 40), Qt::NoButton, Qt::RightButton);
  Mouse(QEvent::MouseButtonRelease, at + QPointF(80, 40), Qt::RightButton, Qt::NoButton);
  still = form.View(0).ToDrawing(at.x() + 80, at.y() + 40);
  EXPECT_NEAR(still.x, under.x, 1e-9);
  EXPECT_NEAR(still.y, under.y, 1e-9);
  EXPECT_EQ(view()->cursor().shape(), Qt::OpenHandCursor);
  // The saved window follows the view.
  EXPECT_NEAR(project.ViewBLX[0], form.View(0).ReadWindow().blx, 1e-9);
}

TEST_F(DrawingWindowTest, TheLayerMenuPopsUpAtItsButtonAndTurnsTheLayerOfItsViewOnly) {
  Open();
  QTest::mouseClick(window.ButtonOf(form.cmdLayer1), Qt::LeftButton);
  QMenu* menu = window.LayerMenu(0);
  EXPECT_TRUE(menu->isVisible());
  ASSERT_EQ(menu->actions().size(), form.View(0).LayerCount());
  EXPECT_EQ(menu->actions().front()->text().left(7), "Layer1 ");
  menu->actions().front()->trigger();
  menu->hide();
  EXPECT_FALSE(form.View(0).LayerVisible(0));
  EXPECT_TRUE(form.View(1).LayerVisible(0));
  EXPECT_FALSE(menu->actions().front()->isChecked());
  EXPECT_TRUE(window.LayerMenu(1)->actions().front()->isChecked());
}

TEST_F(DrawingWindowTest, ABandDraggedAfterPartEnlargesThatPart) {
  Open();
  QTest::mouseClick(window.ButtonOf(form.cmdPartLarge), Qt::LeftButton);
  EXPECT_EQ(view()->cursor().shape(), Qt::CrossCursor);
  Mouse(QEvent::MouseButtonPress, {100, 100}, Qt::LeftButton, Qt::LeftButton);
  Mouse(QEvent::MouseMove, {200, 160}, Qt::NoButton, Qt::LeftButton);
  auto* band = view()->findChild<QRubberBand*>();
  ASSERT_NE(band, nullptr);
  EXPECT_TRUE(band->isVisible());
  EXPECT_EQ(band->geometry(), QRect(QPoint(100, 100), QPoint(200, 160)));
  Mouse(QEvent::MouseButtonRelease, {300, 200}, Qt::LeftButton, Qt::NoButton);
  EXPECT_FALSE(band->isVisible());
  EXPECT_GT(form.View(0).ReadWindow().zoomFactor, 3);
  // The second page shows its own, untouched view.
  window.SSTab1()->setCurrentIndex(1);
  EXPECT_EQ(form.SSTab1.Tab, 1);
  EXPECT_NEAR(form.View(1).ReadWindow().zoomFactor, 1, 1e-9);
}

TEST_F(DrawingWindowTest, AClickOnTheOverviewMovesTheViewAndItsButtonHidesIt) {
  Open();
  QTest::mouseClick(window.ButtonOf(form.cmdZoomIn), Qt::LeftButton);
  QTest::mouseClick(window.ButtonOf(form.cmdZoomIn), Qt::LeftButton);
  const QRect inset = view()->OverviewRect();
  ASSERT_FALSE(inset.isEmpty());
  const QPoint within(inset.width() / 5, inset.height() * 4 / 5);
  drawing::Point target;
  ASSERT_TRUE(form.View(0).OverviewToDrawing(within.x(), within.y(), inset.width(), inset.height(), target));
  QTest::mouseClick(view(), Qt::LeftButton, {}, inset.topLeft() + within);
  const drawing::ViewState moved = form.View(0).ReadWindow();
  EXPECT_NEAR((moved.blx + moved.trx) / 2, target.x, 1e-6);
  EXPECT_NEAR((moved.bly + moved.try_) / 2, target.y, 1e-6);
  EXPECT_NEAR(moved.zoomFactor, 4, 1e-9);

  // The inset's frame, along its top edge, goes from the picture with it:
  // the view is painted again at once.
  PaintCounter paints(view());
  const auto framed = [&] {
    QApplication::processEvents();
    const QImage shot = view()->grab().toImage();
    const QColor edge = view()->palette().color(QPalette::Mid);
    int n = 0;
    for (int x = inset.left(); x < inset.right(); ++x) n += shot.pixelColor(x, inset.top()).rgb() == edge.rgb();
    return n;
  };
  EXPECT_GT(framed(), inset.width() / 2);
  QToolButton* button = window.ButtonOf(form.cmdOverview);
  ASSERT_NE(button, nullptr);
  EXPECT_TRUE(button->isChecked());
  paints.count = 0;
  QTest::mouseClick(button, Qt::LeftButton);
  QApplication::processEvents();
  EXPECT_GE(paints.count, 1);
  EXPECT_FALSE(button->isChecked());
  EXPECT_TRUE(view()->OverviewRect().isEmpty());
  EXPECT_LT(framed(), inset.width() / 10);
  // What stood under the inset is the drawing's again: a press there pans.
  Mouse(QEvent::MouseButtonPress, inset.center(), Qt::RightButton, Qt::RightButton);
  Mouse(QEvent::MouseMove, inset.center() - QPoint(40, 0), Qt::NoButton, Qt::RightButton);
  Mouse(QEvent::MouseButtonRelease, inset.center() - QPoint(40, 0), Qt::RightButton, Qt::NoButton);
  EXPECT_GT(form.View(0).ReadWindow().blx, moved.blx);
  QTest::mouseClick(button, Qt::LeftButton);
  EXPECT_FALSE(view()->OverviewRect().isEmpty());
}

// A DWG 2018 in the window: a dimension's label, its codes taken off, lands
// in the distance field.
TEST_F(DrawingWindowTest, ALabelOfADwg2018LandsInTheEditor) {
  project.DrawingFile = std::string(PARVENNA_TESTDATA_DIR) + "/drawings/dwg_r2018_many_entities.dwg";
  ASSERT_TRUE(form.OpenDrawing()) << prompter.Prompts().size();
  window.Refresh();
  const drawing::DrawingDocument* doc = form.View(0).Document();
  ASSERT_NE(doc, nullptr);
  const drawing::TextData* label = nullptr;
  for (const drawing::TextData& t : doc->texts) {
    if (doc->RawText(t) == "\\A1;35.1233") label = &t;
  }
  ASSERT_NE(label, nullptr);
  const auto corners = drawing::TextCorners(*label);
  const drawing::Point middle{(corners[0].x + corners[2].x) / 2, (corners[0].y + corners[2].y) / 2};
  form.View(0).ShowWindow(middle.x - 10, middle.y - 6, middle.x + 10, middle.y + 6);
  form.cmdRedraw_Click();
  window.Refresh();
  editor.cmdInsert_Click();
  editor.SetFocus({editor::FocusKind::Field, 0, CourseField::DistanceLine});
  const CanvasPoint at = form.View(0).ToScreen(middle);
  QTest::mouseClick(view(), Qt::LeftButton, {}, QPoint(static_cast<int>(at.x), static_cast<int>(at.y)));
  EXPECT_EQ(editor.txtDistanceLine[0].Text, "35.1233");
}

// ---- On a real screen -----------------------------------------------------------------

// Shows the window on the sample drawing and photographs the screen at each
// step, for a person to look at. Runs only when PARVENNA_DRAWING_DEMO_DIR
// names a directory for the pictures, under an X server:
//   xvfb-run -s '-screen 0 1280x900x24' env QT_QPA_PLATFORM=xcb
//     PARVENNA_DRAWING_DEMO_DIR=/tmp/shots test_ui --gtest_filter='*OnScreen*'
TEST_F(DrawingWindowTest, OnScreenSampleDrawingStepByStep) {
  const char* out = std::getenv("PARVENNA_DRAWING_DEMO_DIR");
  if (!out) GTEST_SKIP() << "PARVENNA_DRAWING_DEMO_DIR is not set";
  const char* file = std::getenv("PARVENNA_DRAWING_DEMO_FILE");
  project.DrawingFile = file ? file : std::string(PARVENNA_SUPPLIED_DIR) + "/sample_feet.dxf";
  window.setGeometry(0, 0, 1200, 860);
  form.OpenDrawing();
  window.Refresh();
  int step = 0;
  const auto shoot = [&](const std::string& name) {
    QTest::qWait(400);
    const std::string path = std::string(out) + "/drawing_" + std::to_string(++step) + "_" + name + ".png";
    EXPECT_EQ(std::system(("import -window root " + path).c_str()), 0) << path;
  };
  shoot("whole");
  // PARVENNA_DRAWING_DEMO_WINDOW=BLX,BLY,TRX,TRY: a part of the drawing as well.
  if (const char* part = std::getenv("PARVENNA_DRAWING_DEMO_WINDOW")) {
    double c[4] = {};
    if (std::sscanf(part, "%lf,%lf,%lf,%lf", &c[0], &c[1], &c[2], &c[3]) == 4) {
      form.View(0).ShowWindow(c[0], c[1], c[2], c[3]);
      form.cmdRedraw_Click();
      window.Refresh();
      shoot("part");
      form.cmd100_Click();
      window.Refresh();
    }
  }

  // Grab the first two labels while a parcel is edited: they turn to the used colour.
  editor.cmdInsert_Click();
  editor.SetFocus({editor::FocusKind::Field, 0, CourseField::BearingLine});
  const drawing::DrawingDocument* doc = form.View(0).Document();
  ASSERT_NE(doc, nullptr);
  int clicked = 0;
  for (const drawing::Entity& e : doc->entities) {
    if (e.kind != drawing::EntityKind::Text || doc->layers[e.layer].name == "TITLE") continue;
    const auto corners = drawing::TextCorners(doc->TextOf(e));
    const drawing::Point centre{(corners[0].x + corners[2].x) / 2, (corners[0].y + corners[2].y) / 2};
    const CanvasPoint at = form.View(0).ToScreen(centre);
    QTest::mouseClick(window.View(0), Qt::LeftButton, {}, QPoint(static_cast<int>(at.x), static_cast<int>(at.y)));
    if (++clicked == 2) break;
  }
  if (!file) {
    EXPECT_FALSE(editor.txtBearingLine[0].Text.empty());
  }
  shoot("picked");

  const QPointF centre(window.View(0)->width() / 2.0, window.View(0)->height() / 2.0);
  QWheelEvent wheel(centre, window.View(0)->mapToGlobal(centre), QPoint(), QPoint(0, 480),
                    Qt::NoButton, Qt::NoModifier, Qt::NoScrollPhase, false);
  QApplication::sendEvent(window.View(0), &wheel);
  window.Refresh();
  shoot("wheel_zoomed");

  QTest::mouseClick(window.ButtonOf(form.cmdLayer1), Qt::LeftButton);
  shoot("layer_menu");
  window.LayerMenu(0)->hide();

  project.BackRed = project.BackGreen = project.BackBlue = 0;
  project.ForeColourNumber = drawing::ForeOriginal;
  form.OpenDrawing();
  window.SSTab1()->setCurrentIndex(1);
  window.Refresh();
  shoot("second_view_black");
}

}  // namespace
}  // namespace parvenna::ui
