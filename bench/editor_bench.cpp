// A keystroke in the editor: row 49's distance of a 50-course parcel with
// curves changes, and the form runs Change, CalculateAndDraw and the sketch.
#include <benchmark/benchmark.h>

#include <cmath>

#include "editor/editor_form.h"
#include "geometry/bearing_text.h"
#include "geometry/numbers.h"
#include "tests/support/recording_canvas.h"
#include "tests/support/scripted_prompter.h"

namespace {

using namespace parvenna;

struct NoHost : editor::EditorHost {
  void BringUpDrawing() override {}
  void MinimizeEditor() override {}
  void ShowRowMenu(int) override {}
};

void BM_KeystrokeInRow49(benchmark::State& s) {
  store::ProjectState project;
  project.ArcOrder = {2, 4, 3, 1};
  testing::ScriptedPrompter prompter;
  testing::RecordingCanvas canvas(4995, 4995);
  NoHost host;
  editor::EditorForm form(project, prompter, canvas, host);
  form.EnableEditorFrames(true);
  form.cmdInsert_Click();
  const Notation notation;
  for (int i = 0; i < CourseLimit; ++i) {
    const double a = (90 - 360.0 * i / CourseLimit) * Pi / 180;
    const std::string bearing = BearingFromPoints(notation, 0, 0, std::cos(a), std::sin(a));
    if (i % 5 == 2) {  // row 49, typed into, is a line
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
  bool flip = false;
  for (auto _ : s) {
    canvas.calls.clear();
    form.SetFieldText(49, CourseField::DistanceLine, (flip = !flip) ? "100.5" : "100");
    benchmark::DoNotOptimize(form.results.lblClosure.Caption.data());
  }
  s.SetLabel("closure " + form.results.lblClosure.Caption + ", last course " +
             std::to_string(form.parcel.LastCourse));
}
BENCHMARK(BM_KeystrokeInRow49)->Unit(benchmark::kMicrosecond);

}  // namespace

BENCHMARK_MAIN();
