// Drawings kept in the user's cache: an unchanged file opens from its copy
// and shows and picks exactly what the file does; a changed file, a copy
// that is damaged in any way, and a cache that cannot be written all end in
// the file being read, and never in another drawing.
#include <gtest/gtest.h>

#include <chrono>
#include <cmath>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <string>
#include <vector>

#include "drawing/drawing_cache.h"
#include "drawing/viewer.h"
#include "tests/drawing/plat_sheet.h"
#include "tests/store/temp_dir.h"

namespace parvenna::drawing {
namespace {

namespace fs = std::filesystem;
using parvenna::testing::TempDir;

std::string TestDrawing(const std::string& name) {
  return std::string(PARVENNA_TESTDATA_DIR) + "/drawings/" + name;
}

// The same bits: the breaks between a hatch's rings are NaN.
bool Same(double a, double b) { return std::memcmp(&a, &b, sizeof a) == 0; }
bool Same(Point a, Point b) { return Same(a.x, b.x) && Same(a.y, b.y); }
bool Same(const Box& a, const Box& b) {
  return Same(a.minX, b.minX) && Same(a.minY, b.minY) && Same(a.maxX, b.maxX) && Same(a.maxY, b.maxY);
}

// Every member of two documents, entity by entity; the first difference.
std::string Difference(const DrawingDocument& a, const DrawingDocument& b) {
  if (a.format != b.format || a.version != b.version || a.path != b.path) return "the file";
  if (a.layers.size() != b.layers.size()) return "the number of layers";
  for (std::size_t i = 0; i < a.layers.size(); ++i) {
    const Layer &x = a.layers[i], &y = b.layers[i];
    if (x.name != y.name || x.on != y.on || x.colour != y.colour || x.entityCount != y.entityCount) {
      return "layer " + x.name;
    }
  }
  if (a.entities.size() != b.entities.size()) return "the number of entities";
  for (std::size_t i = 0; i < a.entities.size(); ++i) {
    const Entity &x = a.entities[i], &y = b.entities[i];
    if (!Same(x.bounds, y.bounds) || x.handle != y.handle || x.first != y.first || x.count != y.count ||
        x.layer != y.layer || x.kind != y.kind || x.colour != y.colour || x.flags != y.flags) {
      return "entity " + std::to_string(i);
    }
  }
  if (a.vertices.size() != b.vertices.size()) return "the number of vertices";
  for (std::size_t i = 0; i < a.vertices.size(); ++i) {
    if (!Same(a.vertices[i], b.vertices[i])) return "vertex " + std::to_string(i);
  }
  if (a.arcs.size() != b.arcs.size()) return "the number of arcs";
  for (std::size_t i = 0; i < a.arcs.size(); ++i) {
    const ArcData &x = a.arcs[i], &y = b.arcs[i];
    if (!Same(x.centre, y.centre) || !Same(x.radius, y.radius) || !Same(x.start, y.start) ||
        !Same(x.end, y.end)) {
      return "arc " + std::to_string(i);
    }
  }
  if (a.texts.size() != b.texts.size()) return "the number of texts";
  for (std::size_t i = 0; i < a.texts.size(); ++i) {
    const TextData &x = a.texts[i], &y = b.texts[i];
    if (!Same(x.insertion, y.insertion) || x.height != y.height || x.rotation != y.rotation ||
        x.width != y.width || x.widthFactor != y.widthFactor || x.spacing != y.spacing ||
        x.lines != y.lines || x.halign != y.halign || x.valign != y.valign || x.codes != y.codes ||
        a.RawText(x) != b.RawText(y) || a.ShownText(x) != b.ShownText(y)) {
      return "text " + std::to_string(i);
    }
  }
  if (!Same(a.extent, b.extent)) return "the extent";
  if (a.fileCounts.size() != b.fileCounts.size()) return "the number of file counts";
  for (std::size_t i = 0; i < a.fileCounts.size(); ++i) {
    if (a.fileCounts[i].type != b.fileCounts[i].type || a.fileCounts[i].count != b.fileCounts[i].count) {
      return "the count of " + a.fileCounts[i].type;
    }
  }
  return "";
}

// What a click finds at points of every text and along every other entity,
// as the views' searches hand it on.
std::vector<std::string> Picks(const std::shared_ptr<const IndexedDrawing>& drawing) {
  Viewer view;
  view.SetViewport(800, 600);
  view.Show(drawing);
  std::vector<std::string> found;
  const DrawingDocument& d = drawing->document;
  for (const TextData& text : d.texts) {
    for (const Point at : {text.insertion, Point{text.insertion.x + text.height, text.insertion.y + text.height / 2}}) {
      found.push_back(view.FindTextAt(at) ? view.FoundHandle() + " " + view.FoundText() : "-");
    }
  }
  for (std::size_t i = 0; i < d.entities.size() && i < 400; ++i) {
    const Entity& e = d.entities[i];
    const Point at = e.kind == EntityKind::Arc || e.kind == EntityKind::Circle ? d.ArcOf(e).centre
                     : e.kind == EntityKind::Text                              ? d.TextOf(e).insertion
                                                                               : d.VerticesOf(e)[0];
    found.push_back(view.Search(at) ? view.FoundHandle() + " " + view.FoundDescription() : "-");
  }
  return found;
}

class DrawingCacheTest : public ::testing::Test {
 protected:
  // A drawing of the test data copied into the test's folder.
  std::string Copied(const std::string& name) {
    const fs::path to = dir_ / name;
    fs::copy_file(TestDrawing(name), to, fs::copy_options::overwrite_existing);
    return to.string();
  }
  std::shared_ptr<const IndexedDrawing> Read(const std::string& path, const DrawingCache& cache) {
    std::string detail;
    auto drawing = ReadIndexedDrawing(path, detail, &cache);
    EXPECT_TRUE(drawing) << path << ": " << detail;
    return drawing;
  }

  TempDir dir_;
  DrawingCache cache_{(dir_ / "cache" / "drawings").string()};
};

TEST_F(DrawingCacheTest, AnUnchangedDrawingOpensFromItsCopyAndShowsAndPicksWhatTheFileDoes) {
  const std::string sheet = (dir_ / "sheet.dxf").string();
  parvenna::testing::PlatSheet plat;
  plat.blocksPerSide = 2;
  plat.coloured = true;
  ASSERT_TRUE(plat.Write(sheet));
  for (const std::string& path :
       {sheet, Copied("dxf_r2000_many_entities.dxf"), Copied("dwg_r2018_many_entities.dwg"),
        Copied("dwg_r2000_two_layers_text.dwg"), Copied("dgn_v7_smalltest.dgn"),
        Copied("dxf_r2013_mtext_inline_codes.dxf")}) {
    std::string detail;
    const auto fresh = ReadIndexedDrawing(path, detail);
    ASSERT_TRUE(fresh) << path << ": " << detail;

    const auto first = Read(path, cache_);
    ASSERT_TRUE(first);
    EXPECT_FALSE(first->cached) << path;
    EXPECT_TRUE(fs::exists(cache_.CopyPath(path))) << path;
    const auto again = Read(path, cache_);
    ASSERT_TRUE(again);
    EXPECT_TRUE(again->cached) << path;

    EXPECT_EQ(Difference(fresh->document, again->document), "") << path;
    EXPECT_EQ(fresh->textReach, again->textReach) << path;
    EXPECT_EQ(Picks(fresh), Picks(again)) << path;
  }
}

TEST_F(DrawingCacheTest, AChangedFileIsReadAgainAndItsNewCopyKept) {
  const std::string path = Copied("dxf_r2000_many_entities.dxf");
  ASSERT_FALSE(Read(path, cache_)->cached);

  // The same bytes with a later time.
  fs::last_write_time(path, fs::last_write_time(path) + std::chrono::seconds(2));
  EXPECT_FALSE(Read(path, cache_)->cached);
  EXPECT_TRUE(Read(path, cache_)->cached);

  // Another drawing under the same name: its own texts, not the copy's.
  fs::copy_file(TestDrawing("dxf_r12_many_entities.dxf"), path, fs::copy_options::overwrite_existing);
  const auto changed = Read(path, cache_);
  EXPECT_FALSE(changed->cached);
  std::string detail;
  EXPECT_EQ(Difference(changed->document, ReadIndexedDrawing(path, detail)->document), "");

  // The same file reached by another spelling of its path is one copy.
  const std::string roundabout = (dir_ / "." / "cache" / ".." / "dxf_r2000_many_entities.dxf").string();
  EXPECT_EQ(cache_.CopyPath(roundabout), cache_.CopyPath(path));
  EXPECT_TRUE(Read(roundabout, cache_)->cached);
}

TEST_F(DrawingCacheTest, ADamagedCopyIsRemovedAndTheFileReadAgain) {
  const std::string path = Copied("dxf_r2000_many_entities.dxf");
  std::string detail;
  const auto fresh = ReadIndexedDrawing(path, detail);
  ASSERT_TRUE(fresh) << detail;
  ASSERT_FALSE(Read(path, cache_)->cached);
  const fs::path copy = cache_.CopyPath(path);
  std::string whole;
  {
    std::ifstream in(copy, std::ios::binary);
    whole.assign(std::istreambuf_iterator<char>(in), {});
  }
  ASSERT_GT(whole.size(), 1000u);

  struct Damage {
    const char* what;
    std::string bytes;
  };
  const auto flipped = [&](std::size_t at) {
    std::string b = whole;
    b[at] = static_cast<char>(b[at] ^ 0x10);
    return b;
  };
  const std::vector<Damage> damages{
      {"cut short", whole.substr(0, whole.size() / 2)},
      {"cut by one byte", whole.substr(0, whole.size() - 1)},
      {"a byte too many", whole + "x"},
      {"empty", ""},
      {"the first bytes of another kind of file", "AC1032" + whole.substr(6)},
      {"a bit of the sum", flipped(9)},
      {"a bit of the key", flipped(40)},
      {"a bit among the entities", flipped(whole.size() / 3)},
      {"a bit near the end", flipped(whole.size() - 12)},
      {"random bytes", std::string(whole.size(), '\x5a')},
  };
  for (const Damage& damage : damages) {
    {
      std::ofstream out(copy, std::ios::binary | std::ios::trunc);
      out << damage.bytes;
    }
    const auto read = Read(path, cache_);
    ASSERT_TRUE(read) << damage.what;
    EXPECT_FALSE(read->cached) << damage.what;
    EXPECT_EQ(Difference(fresh->document, read->document), "") << damage.what;
    // Made again whole from the file.
    EXPECT_TRUE(Read(path, cache_)->cached) << damage.what;
  }
}

TEST_F(DrawingCacheTest, ACacheThatCannotBeWrittenCostsOnlyTheReading) {
  const std::string path = Copied("dxf_r2000_many_entities.dxf");
  // Its directory would stand under a file.
  { std::ofstream(dir_ / "blocked") << "a file"; }
  const DrawingCache blocked((dir_ / "blocked" / "drawings").string());
  for (int i = 0; i < 2; ++i) {
    const auto read = Read(path, blocked);
    ASSERT_TRUE(read);
    EXPECT_FALSE(read->cached);
  }
  // No cache at all, and a file that cannot be read: its reason, as ever.
  std::string detail;
  EXPECT_FALSE(ReadIndexedDrawing((dir_ / "missing.dxf").string(), detail, &cache_));
  EXPECT_FALSE(detail.empty());
  EXPECT_FALSE(fs::exists(cache_.CopyPath((dir_ / "missing.dxf").string())));
}

TEST_F(DrawingCacheTest, OnlyTheMostRecentlyUsedCopiesAreKept) {
  std::vector<std::string> paths;
  for (int i = 0; i <= DrawingCache::kKept + 2; ++i) {
    paths.push_back((dir_ / ("lot" + std::to_string(i) + ".dxf")).string());
    fs::copy_file(TestDrawing("generated/generated_plat_lot7.dxf"), paths.back());
  }
  const auto older = fs::file_time_type::clock::now() - std::chrono::hours(1);
  for (std::size_t i = 0; i < paths.size(); ++i) {
    ASSERT_FALSE(Read(paths[i], cache_)->cached);
    // Each copy older than the next; the first used again since.
    fs::last_write_time(cache_.CopyPath(paths[i]), older + std::chrono::seconds(i));
    if (i == 0) continue;
    ASSERT_TRUE(Read(paths[0], cache_)->cached);
    fs::last_write_time(cache_.CopyPath(paths[0]), older + std::chrono::seconds(i) + std::chrono::milliseconds(500));
  }
  int kept = 0;
  for (const auto& entry : fs::directory_iterator(cache_.Directory())) kept += entry.path().extension() == ".drawing";
  EXPECT_EQ(kept, DrawingCache::kKept);
  EXPECT_TRUE(fs::exists(cache_.CopyPath(paths[0])));
  EXPECT_TRUE(fs::exists(cache_.CopyPath(paths.back())));
  EXPECT_FALSE(fs::exists(cache_.CopyPath(paths[1])));
  EXPECT_FALSE(fs::exists(cache_.CopyPath(paths[2])));
}

}  // namespace
}  // namespace parvenna::drawing
