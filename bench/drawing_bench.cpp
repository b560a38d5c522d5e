// The drawing engine on a county plat sheet of half a million entities:
// loading beside GDAL's own reading, and again from the cache; a frame of the whole sheet and of one
// lot at 1920 by 1080, counted in canvas calls and painted by the views' own
// Qt canvas into an image, and a pan of a tenth of the view; a pick; and the
// memory an entity takes.
//
// The sheet is written by the benchmark (tests/drawing/plat_sheet.h): 625
// blocks of 40 lots; each lot a closed boundary, fifteen lines (setbacks,
// easements, ticks), a curve, a monument circle, a bearing-and-distance label
// and a lot number.
#include <benchmark/benchmark.h>

#include <chrono>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <cstdlib>
#include <string>

#include <QGuiApplication>
#include <QImage>

#include "drawing/gdal_reader.h"
#include "drawing/viewer.h"
#include "tests/drawing/plat_sheet.h"
#include "ui/drawing_frame.h"

namespace parvenna::drawing {

std::string SheetPath() {
  return (std::filesystem::temp_directory_path() / "parvenna_drawing_bench_sheet.dxf").string();
}

std::string CachePath() {
  return (std::filesystem::temp_directory_path() / "parvenna_drawing_bench_cache").string();
}

namespace {

using testing::PlatSheet;

const std::string& Sheet() {
  static const std::string path = [] {
    const std::string p = SheetPath();
    PlatSheet().Write(p);
    return p;
  }();
  return path;
}

std::shared_ptr<const IndexedDrawing> LoadedSheet() {
  static std::shared_ptr<const IndexedDrawing> drawing = [] {
    std::string detail;
    auto d = ReadIndexedDrawing(Sheet(), detail);
    if (!d) std::fprintf(stderr, "cannot read the sheet: %s\n", detail.c_str());
    return d;
  }();
  return drawing;
}

// Counts what would be painted.
class CountingCanvas : public Canvas {
 public:
  double Width() const override { return 1920; }
  double Height() const override { return 1080; }
  void SetSize(double, double) override {}
  void Cls() override { ++calls; }
  void Line(double, double, double, double, Rgb) override { ++calls; }
  void Box(double, double, double, double, Rgb) override { ++calls; }
  void Circle(double, double, double, Rgb, double, double) override { ++calls; }
  void Polyline(std::span<const CanvasPoint> points, Rgb) override {
    ++calls;
    vertices += points.size();
  }
  void Text(double, double, std::string_view, double, double, Rgb) override { ++calls; }
  std::size_t calls = 0, vertices = 0;
};

void BM_LoadSheet(benchmark::State& state) {
  const std::string& path = Sheet();
  std::size_t entities = 0;
  for (auto _ : state) {
    std::string detail;
    auto drawing = ReadIndexedDrawing(path, detail);
    entities = drawing ? drawing->document.entities.size() : 0;
    benchmark::DoNotOptimize(drawing);
  }
  state.counters["entities"] = static_cast<double>(entities);
}

// The first opening with a cache: the sheet read, and its copy written.
void BM_LoadSheetKeepingItsCopy(benchmark::State& state) {
  const DrawingCache cache(CachePath());
  std::string detail;
  for (auto _ : state) {
    state.PauseTiming();
    std::error_code ec;
    std::filesystem::remove(cache.CopyPath(Sheet()), ec);
    state.ResumeTiming();
    auto drawing = ReadIndexedDrawing(Sheet(), detail, &cache);
    benchmark::DoNotOptimize(drawing);
  }
}

// The sheet opened again unchanged: from the copy its first reading kept.
void BM_LoadSheetFromCache(benchmark::State& state) {
  const DrawingCache cache(CachePath());
  std::string detail;
  const bool kept = ReadIndexedDrawing(Sheet(), detail, &cache) != nullptr;
  bool cached = false;
  for (auto _ : state) {
    auto drawing = ReadIndexedDrawing(Sheet(), detail, &cache);
    cached = kept && drawing && drawing->cached;
    benchmark::DoNotOptimize(drawing);
  }
  if (!cached) state.SkipWithError("the sheet was not read from the cache");
  std::error_code ec;
  state.counters["copy_MB"] = static_cast<double>(std::filesystem::file_size(cache.CopyPath(Sheet()), ec)) / 1e6;
}

void BM_GdalAloneReadsSheet(benchmark::State& state) {
  const std::string& path = Sheet();
  long long features = 0;
  for (auto _ : state) {
    features = ReadFeaturesOnly(path);
    benchmark::DoNotOptimize(features);
  }
  state.counters["features"] = static_cast<double>(features);
}

// A 1920 by 1080 view of the whole sheet; false when there is no sheet.
bool SheetView(benchmark::State& state, Viewer& view) {
  auto drawing = LoadedSheet();
  if (!drawing) {
    state.SkipWithError("no sheet");
    return false;
  }
  view.SetViewport(1920, 1080);
  view.Show(drawing);
  return true;
}

// The lower left corner of a lot in the middle of the sheet.
constexpr double kLotX = 12 * PlatSheet::kBlockWidth + 3 * PlatSheet::kLotWidth;
constexpr double kLotY = 12 * PlatSheet::kBlockDepth + PlatSheet::kLotDepth;
constexpr double kLotWidth = PlatSheet::kLotWidth, kLotDepth = PlatSheet::kLotDepth;

void Frame(benchmark::State& state, bool oneLot) {
  Viewer view;
  if (!SheetView(state, view)) return;
  if (oneLot) view.ShowWindow(kLotX - 10, kLotY - 10, kLotX + kLotWidth + 10, kLotY + kLotDepth + 10);
  CountingCanvas canvas;
  for (auto _ : state) {
    canvas.calls = canvas.vertices = 0;
    view.Render(canvas);
  }
  state.counters["entities"] = static_cast<double>(view.LastFrameEntities());
  state.counters["calls"] = static_cast<double>(canvas.calls);
}

void BM_FrameWholeSheet(benchmark::State& state) { Frame(state, false); }
void BM_FrameOneLot(benchmark::State& state) { Frame(state, true); }

// The same frames painted by the views' canvas into a 1920 by 1080 image:
// what the user waits for.
const QSize kFrameSize(1920, 1080);

void Painted(benchmark::State& state, bool oneLot) {
  Viewer view;
  if (!SheetView(state, view)) return;
  if (oneLot) view.ShowWindow(kLotX - 10, kLotY - 10, kLotX + kLotWidth + 10, kLotY + kLotDepth + 10);
  ui::DrawingFrame frame;
  frame.Paint(view, kFrameSize);
  for (auto _ : state) frame.Paint(view, kFrameSize);
  state.counters["entities"] = static_cast<double>(frame.LastEntities());
}

void BM_PaintWholeSheet(benchmark::State& state) { Painted(state, false); }
void BM_PaintOneLot(benchmark::State& state) { Painted(state, true); }

// The whole sheet dragged by a tenth of the view's width, to and fro, as a
// pan brings its frames up to date.
void BM_PaintPanStep(benchmark::State& state) {
  Viewer view;
  if (!SheetView(state, view)) return;
  ui::DrawingFrame frame;
  frame.Paint(view, kFrameSize);
  const double step = kFrameSize.width() / 10.0 / (view.ToScreen({1, 0}).x - view.ToScreen({0, 0}).x);
  int n = 0;
  for (auto _ : state) {
    view.Pan((n++ / 4) % 2 == 0 ? step : -step, 0);
    frame.Update(view, kFrameSize);
  }
}

void Pick(benchmark::State& state, bool wholeSheet) {
  Viewer view;
  if (!SheetView(state, view)) return;
  if (!wholeSheet) view.ShowWindow(kLotX - 200, kLotY - 200, kLotX + 400, kLotY + 400);  // a block or so
  bool found = false;
  for (auto _ : state) {
    found = view.FindTextAt({kLotX + 10, kLotY + 5});
    benchmark::DoNotOptimize(found);
  }
  if (!found) state.SkipWithError("the label was not found");
}

void BM_PickInABlockView(benchmark::State& state) { Pick(state, false); }
void BM_PickInTheWholeSheet(benchmark::State& state) { Pick(state, true); }

void BM_MemoryPerEntity(benchmark::State& state) {
  auto drawing = LoadedSheet();
  if (!drawing) {
    state.SkipWithError("no sheet");
    return;
  }
  for (auto _ : state) benchmark::DoNotOptimize(drawing->document.MemoryBytes());
  const double n = static_cast<double>(drawing->document.entities.size());
  state.counters["entities"] = n;
  state.counters["texts"] = static_cast<double>(drawing->document.texts.size());
  state.counters["doc_bytes_per_entity"] = static_cast<double>(drawing->document.MemoryBytes()) / n;
  state.counters["index_bytes_per_entity"] = static_cast<double>(drawing->index.MemoryBytes()) / n;
}

BENCHMARK(BM_GdalAloneReadsSheet)->Unit(benchmark::kMillisecond)->Iterations(2);
BENCHMARK(BM_LoadSheet)->Unit(benchmark::kMillisecond)->Iterations(2);
BENCHMARK(BM_LoadSheetKeepingItsCopy)->Unit(benchmark::kMillisecond)->Iterations(2);
BENCHMARK(BM_LoadSheetFromCache)->Unit(benchmark::kMillisecond)->Iterations(5);
BENCHMARK(BM_FrameWholeSheet)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_FrameOneLot)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_PaintWholeSheet)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_PaintPanStep)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_PaintOneLot)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_PickInABlockView)->Unit(benchmark::kMicrosecond);
BENCHMARK(BM_PickInTheWholeSheet)->Unit(benchmark::kMicrosecond);
BENCHMARK(BM_MemoryPerEntity)->Iterations(1);

}  // namespace
}  // namespace parvenna::drawing

// The sheet and the cache of its copy are written once per run and removed at
// the end. The painting
// needs the fonts of a Qt application, on the offscreen platform unless
// another is asked for.
int main(int argc, char** argv) {
  benchmark::Initialize(&argc, argv);
  if (benchmark::ReportUnrecognizedArguments(argc, argv)) return 1;
  setenv("QT_QPA_PLATFORM", "offscreen", 0);
  QGuiApplication app(argc, argv);
  benchmark::RunSpecifiedBenchmarks();
  benchmark::Shutdown();
  std::error_code ignored;
  std::filesystem::remove(parvenna::drawing::SheetPath(), ignored);
  std::filesystem::remove_all(parvenna::drawing::CachePath(), ignored);
  return 0;
}
