// The keystroke path of the editor: CalculateAndDraw with its sketch, on a
// parcel of 50 courses of which 10 are curves, beside the bare walk of the
// same rows.
#include <benchmark/benchmark.h>

#include <cmath>

#include "geometry/bearing_text.h"
#include "geometry/closure.h"
#include "tests/support/recording_canvas.h"

namespace {

using namespace parvenna;

// A fifty-sided figure walked clockwise; every fifth course is a curve that
// bulges outwards, alternately added and subtracted.
CourseList FiftyCourses() {
  CourseList parcel;
  const Notation notation;
  const double side = 100;
  const double radius = 400;
  for (int i = 0; i < CourseLimit; ++i) {
    const double azimuth = 360.0 * i / CourseLimit;
    const double a = (90 - azimuth) * 3.14159265358979 / 180;
    const std::string bearing = BearingFromPoints(notation, 0, 0, std::cos(a), std::sin(a));
    Course& c = parcel.rows[i];
    if (i % 5 == 4) {
      c.Kind = CourseKind::Curve;
      c.BearingArc = bearing;
      c.Chord = "100.00";
      c.Radius = "400.00";
      c.Arc = std::to_string(2 * radius * std::asin(side / 2 / radius)).substr(0, 6);
      (i % 10 == 4 ? c.SignPlus : c.SignMinus) = SignTicked;
    } else {
      c.BearingLine = bearing;
      c.DistanceLine = "100.00";
    }
  }
  return parcel;
}

void BM_CalculateAndDraw(benchmark::State& s) {
  const CourseList parcel = FiftyCourses();
  const GeometrySettings settings;
  ParcelState state;
  ResultPanel panel;
  testing::RecordingCanvas canvas(4320, 4320);
  for (auto _ : s) {
    canvas.calls.clear();
    CalculateAndDraw(parcel, settings, state, panel, canvas);
    benchmark::DoNotOptimize(panel.lblArea.Caption.data());
  }
  s.counters["drawn"] = static_cast<double>(canvas.calls.size());
  s.SetLabel("area " + panel.lblArea.Caption + ", closure " + panel.lblClosure.Caption);
}
BENCHMARK(BM_CalculateAndDraw)->Unit(benchmark::kMicrosecond);

void BM_CalCoord(benchmark::State& s) {
  const CourseList parcel = FiftyCourses();
  const Notation notation;
  ParcelState state;
  for (auto _ : s) {
    CalCoord(parcel, notation, CourseLimit - 1, state);
    benchmark::DoNotOptimize(state.Coord.data());
  }
}
BENCHMARK(BM_CalCoord)->Unit(benchmark::kMicrosecond);

}  // namespace

BENCHMARK_MAIN();
