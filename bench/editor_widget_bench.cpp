// A keystroke in the editor window, offscreen: row 49's distance of a
// 50-course parcel with curves changes, the form runs Change, CalculateAndDraw
// and the sketch, and the window shows the new state (mirror and paint).
#include <benchmark/benchmark.h>

#include <cmath>
#include <cstdlib>
#include <numbers>

#include <QApplication>
#include <QKeyEvent>

#include "editor/editor_form.h"
#include "geometry/bearing_text.h"
#include "tests/support/scripted_prompter.h"
#include "ui/editor_window.h"
#include "ui/painter_canvas.h"

namespace {

using namespace parvenna;

struct NoHost : editor::EditorHost {
  void BringUpDrawing() override {}
  void MinimizeEditor() override {}
  void ShowRowMenu(int) override {}
};

// The form and the window on a parcel of 50 courses, every fifth a curve.
struct Fixture {
  store::ProjectState project;
  testing::ScriptedPrompter prompter;
  ui::PainterCanvas canvas;
  NoHost host;
  editor::EditorForm form{project, prompter, canvas, host};
  ui::EditorWindow window{form, canvas};

  Fixture() {
    project.ArcOrder = {2, 4, 3, 1};
    form.LayoutArcFields();
    form.SetTabOrder();
    form.EnableEditorFrames(true);
    window.bind();
    window.show();
    form.cmdInsert_Click();
    const Notation notation;
    for (int i = 0; i < CourseLimit; ++i) {
      const double a = (90 - 360.0 * i / CourseLimit) * std::numbers::pi / 180;
      const std::string bearing = BearingFromPoints(notation, 0, 0, std::cos(a), std::sin(a));
      if (i % 5 == 2) {  // ten curves; row 49 stays a line
        form.ChangeLineCurve(i);
        form.SetFieldText(i, CourseField::BearingArc, bearing);
        form.SetFieldText(i, CourseField::Arc, "100.52");
        form.SetFieldText(i, CourseField::Radius, "400");
        form.SetFieldText(i, CourseField::Chord, "100");
        form.SetSign(2 * i + (i % 10 == 2 ? 0 : 1), SignTicked);
      } else {
        form.SetFieldText(i, CourseField::BearingLine, bearing);
        form.SetFieldText(i, CourseField::DistanceLine, "100");
      }
    }
    // Row 49 in view, its distance focused, the whole window painted once.
    form.SetFocus({editor::FocusKind::Field, CourseLimit - 1, CourseField::DistanceLine});
    form.GotoFocusLine();
    window.Refresh();
    window.Row(CourseLimit - 1).txtDistanceLine->setFocus();
    QApplication::processEvents();
  }

  // One key typed into row 49's distance: "5" after "100", or Backspace.
  void Keystroke() {
    QLineEdit* field = window.Row(CourseLimit - 1).txtDistanceLine;
    const bool add = field->text() == "100";
    field->end(false);
    QKeyEvent press(QEvent::KeyPress, add ? Qt::Key_5 : Qt::Key_Backspace, Qt::NoModifier,
                    add ? QString("5") : QString(QChar(8)));
    QApplication::sendEvent(field, &press);
  }
};

Fixture& Shared() {
  static Fixture* fixture = new Fixture;
  return *fixture;
}

// The whole way: key event, filter, Change, CalculateAndDraw, mirror, paint.
void BM_WidgetKeystrokeInRow49(benchmark::State& s) {
  Fixture& f = Shared();
  for (auto _ : s) {
    f.Keystroke();
    QApplication::processEvents();  // paints what the keystroke changed
  }
  s.SetLabel("closure " + f.form.results.lblClosure.Caption + ", distance " +
             f.form.txtDistanceLine[CourseLimit - 1].Text);
}
BENCHMARK(BM_WidgetKeystrokeInRow49)->Unit(benchmark::kMillisecond);

// The same keystroke without painting: the form and the mirror alone.
void BM_WidgetKeystrokeNoPaint(benchmark::State& s) {
  Fixture& f = Shared();
  for (auto _ : s) {
    f.Keystroke();
  }
  QApplication::processEvents();
}
BENCHMARK(BM_WidgetKeystrokeNoPaint)->Unit(benchmark::kMicrosecond);

// The whole window painted, as when it is uncovered: the most a keystroke
// could ever cost in painting.
void BM_WidgetFullRepaint(benchmark::State& s) {
  Fixture& f = Shared();
  for (auto _ : s) f.window.repaint();
}
BENCHMARK(BM_WidgetFullRepaint)->Unit(benchmark::kMillisecond);

// A refresh that finds nothing changed: the cost of reading the form again.
void BM_WidgetRefreshUnchanged(benchmark::State& s) {
  Fixture& f = Shared();
  for (auto _ : s) f.window.Refresh();
}
BENCHMARK(BM_WidgetRefreshUnchanged)->Unit(benchmark::kMicrosecond);

}  // namespace

int main(int argc, char** argv) {
  setenv("QT_QPA_PLATFORM", "offscreen", 0);
  QApplication app(argc, argv);
  benchmark::Initialize(&argc, argv);
  if (benchmark::ReportUnrecognizedArguments(argc, argv)) return 1;
  benchmark::RunSpecifiedBenchmarks();
  benchmark::Shutdown();
  return 0;
}
