// Opening the DWG drawings of the test data through the converter, beside
// GDAL's reading of AutoCAD's own DXF of the same drawing, in one run.
//
// For each DWG: the converter's wall time and the most memory it held (its
// own process), then the time to read its records into the document and the
// document's size. For the DXF: GDAL's features read alone, the whole load
// into the document, and the most memory a process held that did only that
// (beside one that did nothing). Each figure is the best of a few runs.
//
//   build/bin/drawing_dwg_open_bench [runs]
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <functional>
#include <string>
#include <vector>

#include "drawing/drawing_document.h"
#include "drawing/dwg_converter.h"
#include "drawing/dwg_reader.h"
#include "drawing/dwg_records.h"
#include "drawing/gdal_reader.h"

namespace parvenna::drawing {
namespace {

using Clock = std::chrono::steady_clock;

std::string Drawings(const std::string& name) {
  return std::string(PARVENNA_TESTDATA_DIR) + "/drawings/" + name;
}

double Seconds(Clock::time_point from) { return std::chrono::duration<double>(Clock::now() - from).count(); }

// The most memory, in megabytes, of a child process that runs work and ends.
double ChildPeakMegabytes(const std::function<void()>& work) {
  const pid_t pid = fork();
  if (pid == 0) {
    work();
    _exit(0);
  }
  int status = 0;
  rusage usage{};
  wait4(pid, &status, 0, &usage);
  return static_cast<double>(usage.ru_maxrss) / 1024;
}

struct DwgFigures {
  double convert = 1e9, read = 1e9, peak = 0, documentMb = 0;
  std::size_t entities = 0, texts = 0, recordsMb = 0;
  bool ok = false;
};

DwgFigures OpenDwg(const std::string& path, int runs) {
  DwgFigures f;
  for (int run = 0; run < runs; ++run) {
    DwgConversion converted = ConvertDwg(path);
    if (converted.failure != DwgFailure::None) {
      std::fprintf(stderr, "%s: %s\n", path.c_str(), converted.detail.c_str());
      return f;
    }
    f.convert = std::min(f.convert, converted.seconds);
    f.peak = std::max(f.peak, static_cast<double>(converted.peakKilobytes) / 1024);
    f.recordsMb = converted.records.size() >> 20;
    const Clock::time_point began = Clock::now();
    DwgRecords records;
    std::string why;
    if (!records.Parse(std::move(converted.records), why)) return f;
    DrawingDocument doc;
    ReadDwgRecords(records, doc);
    f.read = std::min(f.read, Seconds(began));
    f.entities = doc.entities.size();
    f.texts = doc.texts.size();
    f.documentMb = static_cast<double>(doc.MemoryBytes()) / (1 << 20);
  }
  f.ok = true;
  return f;
}

}  // namespace
}  // namespace parvenna::drawing

int main(int argc, char** argv) {
  using namespace parvenna::drawing;
  const int runs = argc > 1 ? std::max(1, std::atoi(argv[1])) : 3;
  const std::vector<std::string> dwgs = {
      "dwg_r14_many_entities.dwg",       "dwg_r2000_partial_read.dwg",     "dwg_r2004_many_entities.dwg",
      "dwg_r2010_many_entities.dwg",     "dwg_r2018_many_entities.dwg",    "dwg_r2000_two_layers_text.dwg",
      "dwg_r2000_mtext.dwg",             "dwg_r2000_autocad_text_lines.dwg", "dwg_r2004_mtext_UNSUPPORTED.dwg",
      "dwg_r2007_text.dwg",              "dwg_r2010_mtext_UNSUPPORTED.dwg", "dwg_r2018_arc.dwg",
      "generated/bearings_text_r2004.dwg"};
  std::printf("Converter: %s, best of %d runs\n\n", ConverterDirectory().c_str(), runs);
  std::printf("%-36s %10s %12s %10s %9s %6s %10s\n", "DWG", "convert s", "converter MB", "read ms",
              "entities", "texts", "document MB");
  for (const std::string& name : dwgs) {
    const DwgFigures f = OpenDwg(Drawings(name), runs);
    if (!f.ok) {
      std::printf("%-36s cannot be read\n", name.c_str());
      continue;
    }
    std::printf("%-36s %10.3f %12.1f %10.2f %9zu %6zu %10.3f\n", name.c_str(), f.convert, f.peak,
                f.read * 1000, f.entities, f.texts, f.documentMb);
  }

  const std::string dxf = Drawings("dxf_r2000_many_entities.dxf");
  double featuresOnly = 1e9, load = 1e9;
  std::size_t entities = 0, texts = 0;
  double documentMb = 0;
  for (int run = 0; run < runs; ++run) {
    Clock::time_point began = Clock::now();
    const long long features = ReadFeaturesOnly(dxf);
    featuresOnly = std::min(featuresOnly, Seconds(began));
    began = Clock::now();
    const LoadResult loaded = LoadDrawing(dxf);
    load = std::min(load, Seconds(began));
    if (!loaded.document || features < 0) {
      std::printf("%s cannot be read: %s\n", dxf.c_str(), loaded.detail.c_str());
      return 1;
    }
    entities = loaded.document->entities.size();
    texts = loaded.document->texts.size();
    documentMb = static_cast<double>(loaded.document->MemoryBytes()) / (1 << 20);
  }
  const double idle = ChildPeakMegabytes([] {});
  const double peak = ChildPeakMegabytes([&] { LoadDrawing(dxf); });
  std::printf("\nAutoCAD's DXF of the same drawing through GDAL (dxf_r2000_many_entities.dxf):\n");
  std::printf("  features read alone %.3f s; loaded into the document %.3f s; %zu entities, %zu texts, "
              "document %.3f MB\n",
              featuresOnly, load, entities, texts, documentMb);
  std::printf("  most memory of a process that loads it %.1f MB (one that does nothing: %.1f MB)\n", peak,
              idle);
  return 0;
}
