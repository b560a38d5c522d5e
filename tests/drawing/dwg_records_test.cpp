// The DWG converter's records made into a document, without the converter:
// blocks drawn in place with what they inherit, curves, texts placed as
// drawn, hatches, and records that are cut short or malformed.
#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <numbers>
#include <set>

#include "drawing/dwg_reader.h"
#include "drawing/grabbing.h"
#include "drawing/viewer.h"
#include "tests/drawing/fake_grab_editor.h"
#include "tests/support/recording_canvas.h"

namespace parvenna::drawing {
namespace {

constexpr double kPi = std::numbers::pi;

// The converter's output around these lines.
DrawingDocument Read(const std::string& lines) {
  DwgRecords records;
  std::string why;
  EXPECT_TRUE(records.Parse("parvenna-dwg\t1\n" + lines + "end\n", why)) << why;
  DrawingDocument doc;
  ReadDwgRecords(records, doc);
  return doc;
}

// A number as the converter writes it: every digit kept.
std::string Num(double v) {
  char buffer[32];
  std::snprintf(buffer, sizeof buffer, "%.17g", v);
  return buffer;
}

std::string Model(const std::string& entities) { return "model\n" + entities + "endmodel\n"; }

const Entity* ByHandle(const DrawingDocument& doc, std::uint64_t handle) {
  for (const Entity& e : doc.entities) {
    if (e.handle == handle) return &e;
  }
  return nullptr;
}

std::vector<const Entity*> OfKind(const DrawingDocument& doc, EntityKind kind) {
  std::vector<const Entity*> out;
  for (const Entity& e : doc.entities) {
    if (e.kind == kind) out.push_back(&e);
  }
  return out;
}

void ExpectNear(Point p, double x, double y) {
  EXPECT_NEAR(p.x, x, 1e-9);
  EXPECT_NEAR(p.y, y, 1e-9);
}

TEST(DwgRecords, LayersKeepTheirTableOrderStateAndColour) {
  const DrawingDocument doc = Read(
      "layer\t0\t7\t0\t0\nlayer\tBOUNDARY\t1\t0\t0\nlayer\tOFF\t3\t1\t0\n"
      "layer\tFROZEN\t#102030\t0\t1\n" +
      Model("line\tA1\tBOUNDARY\tL\t0\t0\t10\t0\nline\tA2\tNEW\t5\t0\t0\t0\t10\n"));
  ASSERT_EQ(doc.layers.size(), 5u);
  EXPECT_EQ(doc.layers[1].name, "BOUNDARY");
  EXPECT_EQ(doc.layers[1].colour, (Rgb{255, 0, 0}));
  EXPECT_FALSE(doc.layers[2].on);
  EXPECT_FALSE(doc.layers[3].on);
  EXPECT_EQ(doc.layers[3].colour, (Rgb{0x10, 0x20, 0x30}));
  EXPECT_EQ(doc.layers[4].name, "NEW");  // not in the table: added, shown
  EXPECT_EQ(doc.entities[0].colour, (Rgb{255, 0, 0}));  // by layer
  EXPECT_EQ(doc.entities[1].colour, (Rgb{0, 0, 255}));  // colour 5
  EXPECT_EQ(doc.layers[1].entityCount, 1u);
}

// A lot's block: a line on layer 0 in the colour of the reference, and a
// label on its own layer, both inserted twice.
const std::string kLotBlock =
    "block\tLOT\t10\t0\n"
    "line\t20\t0\tB\t10\t0\t20\t0\n"
    "text\t21\tLABELS\tL\tTEXT\t0\t10\t5\t2\t0\t1\t0\t0\t0\t0\tLOT 7\n"
    "endblock\n";

TEST(DwgRecords, BlocksAreDrawnInPlaceWithWhatTheyInherit) {
  const DrawingDocument doc = Read(
      "layer\tLABELS\t2\t0\t0\nlayer\tLOTS\t3\t0\t0\n" + kLotBlock +
      Model("insert\t30\tLOTS\t1\t0\tLOT\t100\t50\t2\t2\t" + Num(kPi / 2) +
            "\t1\t1\t0\t0\n"
            "insert\t31\tLOTS\t4\t1\tLOT\t0\t0\t1\t1\t0\t1\t1\t0\t0\n"));
  const auto lines = OfKind(doc, EntityKind::Line);
  const auto texts = OfKind(doc, EntityKind::Text);
  ASSERT_EQ(lines.size(), 2u);
  ASSERT_EQ(texts.size(), 2u);
  // Base point (10, 0) to the insertion point, scale 2, a quarter turn.
  const auto first = doc.VerticesOf(*lines[0]);
  ExpectNear(first[0], 100, 50);
  ExpectNear(first[1], 100, 70);
  EXPECT_EQ(doc.layers[lines[0]->layer].name, "LOTS");  // layer 0 takes the reference's
  EXPECT_EQ(lines[0]->colour, (Rgb{255, 0, 0}));       // by block: the reference's colour 1
  EXPECT_EQ(doc.layers[texts[0]->layer].name, "LABELS");
  EXPECT_EQ(texts[0]->colour, (Rgb{255, 255, 0}));
  const TextData& turned = doc.TextOf(*texts[0]);
  EXPECT_FLOAT_EQ(turned.height, 4);
  EXPECT_NEAR(turned.rotation, kPi / 2, 1e-6);
  ExpectNear(turned.insertion, 90, 50);
  // The second reference is mirrored: its x axis runs to the left.
  const auto mirrored = doc.VerticesOf(*lines[1]);
  ExpectNear(mirrored[0], 0, 0);
  ExpectNear(mirrored[1], -10, 0);
  EXPECT_EQ(lines[1]->colour, (Rgb{0, 255, 255}));
  // Each copy is an entity of its own, to be marked alone.
  std::set<std::uint64_t> handles;
  for (const Entity& e : doc.entities) handles.insert(e.handle);
  EXPECT_EQ(handles.size(), doc.entities.size());
  EXPECT_NE(ByHandle(doc, 0x20), nullptr);
  EXPECT_NE(ByHandle(doc, 0x21), nullptr);
}

TEST(DwgRecords, AGrabMarksOneCopyOfABlocksLabel) {
  const DrawingDocument doc = Read(
      kLotBlock + Model("insert\t30\t0\tL\t0\tLOT\t0\t0\t1\t1\t0\t1\t1\t0\t0\n"
                        "insert\t31\t0\tL\t0\tLOT\t100\t0\t1\t1\t0\t1\t1\t0\t0\n"));
  const auto drawing = IndexDrawing(doc);
  Viewer view;
  view.SetViewport(1000, 500);
  view.Show(drawing);
  testing::FakeGrabEditor editor;
  editor.focusRow = 0;  // the parcel's name
  GrabState state;
  PickInView(view, {1, 6}, editor, state, Notation{true, "%%D"}, 1);
  ASSERT_EQ(state.usedEntities.size(), 1u);
  int marked = 0;
  for (std::uint32_t i = 0; i < drawing->document.entities.size(); ++i) marked += view.IsMarked(i);
  EXPECT_EQ(marked, 1);
  EXPECT_EQ(editor.name, "LOT 7");
}

TEST(DwgRecords, ArraysAndNestingStopWhereAFileWouldRunAway) {
  const DrawingDocument grid = Read(
      "block\tB\t0\t0\npoint\t1\t0\tL\t0\t0\nendblock\n" +
      Model("insert\t2\t0\tL\t0\tB\t0\t0\t1\t1\t0\t3\t2\t10\t20\n"
            "insert\t3\t0\tL\t0\tB\t0\t0\t1\t1\t0\t100000\t100000\t1\t1\n"));
  ASSERT_EQ(grid.entities.size(), 6u);  // the second asks for ten billion copies
  ExpectNear(grid.vertices[5], 20, 20);
  // A block that holds itself is drawn a bounded number of times.
  const DrawingDocument loop = Read(
      "block\tSELF\t0\t0\nline\t1\t0\tL\t0\t0\t1\t1\ninsert\t2\t0\tL\t0\tSELF\t1\t1\t1\t1\t0\t1\t1\t0\t0\n"
      "endblock\n" + Model("insert\t3\t0\tL\t0\tSELF\t0\t0\t1\t1\t0\t1\t1\t0\t0\n"
                           "insert\t4\t0\tL\t0\tMISSING\t0\t0\t1\t1\t0\t1\t1\t0\t0\n"));
  EXPECT_GT(loop.entities.size(), 1u);
  EXPECT_LE(loop.entities.size(), 20u);
}

TEST(DwgRecords, CurvesAreDrawnOnTheirCircles) {
  const DrawingDocument doc = Read(Model(
      // A half circle by its bulge, anticlockwise from (0, 0) to (10, 0).
      "poly\t1\t0\tL\t0\t0\t2\t0\t0\t1\t10\t0\t0\n"
      // An arc of a mirrored entity: a quarter from 0 to 90 degrees of its own axes.
      "arc\t2\t0\tL\t1\t10\t0\t5\t0\t" + Num(kPi / 2) + "\n"
      "ellipse\t3\t0\tL\t0\t0\t0\t4\t0\t0.5\t0\t" + Num(2 * kPi) + "\n"
      "spline\t4\t0\tL\t0\t1\t5\t0\t0\t1\t2\t2\t3\t0\t0\t1\t5\t5\t1\t10\t0\t1\t0\n"));
  const Entity& half = *ByHandle(doc, 1);
  ASSERT_EQ(half.kind, EntityKind::Polyline);
  bool below = false;
  for (const Point& p : doc.VerticesOf(half)) {
    EXPECT_NEAR(std::hypot(p.x - 5, p.y), 5, 1e-9);
    below = below || (std::abs(p.x - 5) < 0.5 && p.y < -4.9);
  }
  EXPECT_TRUE(below) << "a positive bulge runs anticlockwise: under the chord";
  ExpectNear(doc.VerticesOf(half).back(), 10, 0);

  const Entity& arc = *ByHandle(doc, 2);
  ASSERT_EQ(arc.kind, EntityKind::Arc);
  ExpectNear(doc.ArcOf(arc).centre, -10, 0);
  EXPECT_NEAR(arc.bounds.minX, -15, 1e-9);
  EXPECT_NEAR(arc.bounds.maxX, -10, 1e-9);
  EXPECT_NEAR(arc.bounds.maxY, 5, 1e-9);
  EXPECT_NEAR(arc.bounds.minY, 0, 1e-9);

  const Entity& ellipse = *ByHandle(doc, 3);
  EXPECT_NEAR(ellipse.bounds.maxX, 4, 1e-9);
  EXPECT_NEAR(ellipse.bounds.maxY, 2, 2e-3);
  // A spline of degree 1 runs through its control points.
  const auto spline = doc.VerticesOf(*ByHandle(doc, 4));
  ExpectNear(spline.front(), 0, 0);
  ExpectNear(spline.back(), 10, 0);
  EXPECT_TRUE(std::any_of(spline.begin(), spline.end(),
                          [](Point p) { return std::abs(p.x - 5) < 1e-9 && std::abs(p.y - 5) < 1e-9; }));
}

TEST(DwgRecords, TextsStandAsTheirAlignmentSays) {
  const DrawingDocument doc = Read(Model(
      "text\t1\t0\tL\tTEXT\t0\t0\t0\t2.5\t0.5\t1\t0\t0\t0\t0\tBASE\n"
      "text\t2\t0\tL\tTEXT\t0\t0\t0\t2\t0\t1\t1\t0\t50\t20\tCENTRED\n"
      "text\t3\t0\tL\tATTRIB\t0\t0\t0\t2\t0\t1\t4\t0\t5\t5\tMIDDLE\n"
      // Fitted between two points 30 apart: the width follows, not the height.
      "text\t4\t0\tL\tTEXT\t0\t0\t0\t2\t1\t1\t5\t0\t0\t30\tFIT\n"
      "mtext\t5\t0\tL\t10\t10\t3\t0\t9\t2\tLOT\\\\P{\\\\fArial|b1;7}\n"));
  const TextData& base = doc.TextOf(*ByHandle(doc, 1));
  EXPECT_FLOAT_EQ(base.height, 2.5f);
  EXPECT_NEAR(base.rotation, 0.5, 1e-6);
  EXPECT_EQ(base.halign, HAlign::Left);
  EXPECT_EQ(base.valign, VAlign::Baseline);
  const TextData& centred = doc.TextOf(*ByHandle(doc, 2));
  ExpectNear(centred.insertion, 50, 20);  // the second point
  EXPECT_EQ(centred.halign, HAlign::Centre);
  const TextData& middle = doc.TextOf(*ByHandle(doc, 3));
  EXPECT_EQ(middle.valign, VAlign::Middle);
  const TextData& fit = doc.TextOf(*ByHandle(doc, 4));
  EXPECT_NEAR(fit.rotation, kPi / 2, 1e-6);
  EXPECT_FLOAT_EQ(fit.height, 2);
  EXPECT_NEAR(fit.width, 30, 1e-4);
  const TextData& mtext = doc.TextOf(*ByHandle(doc, 5));
  EXPECT_EQ(doc.ShownText(mtext), "LOT\n7");
  EXPECT_EQ(mtext.lines, 2);
  EXPECT_EQ(mtext.halign, HAlign::Right);
  EXPECT_EQ(mtext.valign, VAlign::Bottom);
  EXPECT_FLOAT_EQ(mtext.spacing, 2);
  // Its box stands above and to the left of its point: bottom right.
  const Entity& e = *ByHandle(doc, 5);
  EXPECT_NEAR(e.bounds.maxX, 10, 1e-4);
  EXPECT_NEAR(e.bounds.minY, 10, 1e-4);
}

TEST(DwgRecords, HatchesAreAreasAndNeverLabels) {
  const DrawingDocument doc = Read(Model(
      // A solid square with a square hole, and a pattern hatch of arc and line edges.
      "hatch\t1\t0\tL\t0\t1\t2\t1\tP\t1\t4\t0\t0\t0\t10\t0\t0\t10\t10\t0\t0\t10\t0\t"
      "1\tP\t1\t4\t4\t4\t0\t6\t4\t0\t6\t6\t0\t4\t6\t0\n"
      "hatch\t2\t0\tL\t0\t0\t1\t2\tL\t20\t0\t30\t0\tA\t25\t0\t5\t0\t" + Num(kPi) + "\t1\n"
      "text\t3\t0\tL\tTEXT\t0\t22\t1\t1\t0\t1\t0\t0\t0\t0\t123.45\n"));
  const Entity& solid = *ByHandle(doc, 1);
  ASSERT_EQ(solid.kind, EntityKind::Hatch);
  EXPECT_TRUE(solid.flags & kFilled);
  int rings = 0;
  ForEachRing(doc.VerticesOf(solid), [&](std::span<const Point> ring) {
    ++rings;
    EXPECT_EQ(ring.size(), 5u);  // closed
  });
  EXPECT_EQ(rings, 2);
  const Entity& pattern = *ByHandle(doc, 2);
  EXPECT_FALSE(pattern.flags & kFilled);
  EXPECT_NEAR(pattern.bounds.maxY, 5, 5e-3);  // drawn as points along the arc

  const auto drawing = IndexDrawing(doc);
  Viewer view;
  view.SetViewport(800, 400);
  view.Show(drawing);
  EXPECT_FALSE(view.FindTextAt({0, 5}));  // on the solid hatch's edge
  ASSERT_TRUE(view.Search({0, 5}));
  EXPECT_EQ(view.FoundDescription(), "HATCH");
  ASSERT_TRUE(view.FindTextAt({24, 1.5}));  // the label over the pattern hatch
  EXPECT_EQ(view.FoundText(), "123.45");

  testing::RecordingCanvas canvas(800, 400);
  view.Render(canvas);
  EXPECT_EQ(canvas.Count(testing::RecordingCanvas::Op::Fill), 1u);
  EXPECT_GE(canvas.Count(testing::RecordingCanvas::Op::Polyline), 1u);
}

TEST(DwgRecords, TextFieldsKeepTheirEscapedCharacters) {
  const DrawingDocument doc = Read(Model("text\t1\t0\tL\tTEXT\t0\t0\t0\t1\t0\t1\t0\t0\t0\t0\ta\\tb\\\\P\\nc\n"));
  ASSERT_EQ(doc.texts.size(), 1u);
  EXPECT_EQ(doc.RawText(doc.texts[0]), "a\tb\\P\nc");
  // Single-line text knows no paragraph code: only the real line break counts.
  EXPECT_EQ(doc.texts[0].lines, 2);
}

TEST(DwgRecords, MalformedRecordsAreLeftOutAndCutOutputIsRefused) {
  const DrawingDocument doc = Read(Model(
      "line\t1\t0\tL\t0\t0\t10\n"                       // a field short
      "line\t2\t0\tL\t0\t0\tnan\t0\n"                  // not a number
      "poly\t3\t0\tL\t0\t0\t99999999\t0\t0\t0\n"       // more vertices than fields
      "hatch\t4\t0\tL\t0\t1\t1\t1\tQ\t0\t0\n"          // an edge of no known kind
      "text\t5\t0\tL\tTEXT\t0\t1e400\t0\t1\t0\t1\t0\t0\t0\t0\tX\n"
      "circle\t6\t0\tL\t0\t0\t0\t-1\n"                 // no radius
      "unknown\t7\t0\tL\t1\t2\n"
      "line\t8\t0\tL\t0\t0\t1\t1\n"));
  ASSERT_EQ(doc.entities.size(), 1u);
  EXPECT_EQ(doc.entities[0].handle, 8u);

  DwgRecords records;
  std::string why;
  EXPECT_FALSE(records.Parse("parvenna-dwg\t1\nmodel\nline\t1\t0\tL\t0\t0\t1\t1\n", why));
  EXPECT_FALSE(why.empty());
  EXPECT_FALSE(records.Parse("", why));
  EXPECT_FALSE(records.Parse("Open dwg file with error code: 64\nparvenna-dwg\t1\nend\n", why));
  EXPECT_FALSE(records.Parse("parvenna-dwg\t2\nend\n", why));
}

// Numbers far beyond what their fields mean, as damaged output may hold
// (found by the fuzzer): each is taken as out of range, never cast as it is.
TEST(DwgRecords, NumbersBeyondTheirFieldsReadAsOutOfRange) {
  const DrawingDocument doc = Read(Model(
      "spline\t1\t0\tL\t0\t1e10\t5\t0\t0\t1\t2\t2\t3\t0\t0\t1\t5\t5\t1\t10\t0\t1\t0\n"
      "text\t2\t0\tL\tTEXT\t0\t0\t0\t2\t0\t1\t1e10\t-1e10\t0\t0\tFAR\n"
      "mtext\t3\t0\tL\t10\t10\t3\t0\t1e10\t2\tBIG\n") +
      "count\tHUGE\t9999999999\n");
  // A degree no curve has: drawn by its control points.
  ASSERT_NE(ByHandle(doc, 1), nullptr);
  EXPECT_EQ(doc.VerticesOf(*ByHandle(doc, 1)).size(), 3u);
  const TextData& far = doc.TextOf(*ByHandle(doc, 2));
  EXPECT_EQ(far.halign, HAlign::Left);
  EXPECT_EQ(far.valign, VAlign::Baseline);
  const TextData& big = doc.TextOf(*ByHandle(doc, 3));
  EXPECT_EQ(big.halign, HAlign::Right);
  EXPECT_EQ(big.valign, VAlign::Bottom);
  EXPECT_EQ(doc.FileCountOf("HUGE"), 0u);
}

TEST(DwgRecords, TheFilesCountsAreKeptByType) {
  const DrawingDocument doc = Read(Model("") + "count\tTEXT\t29\ncount\tINSERT\t6\ncount\tBAD\t-1\n");
  EXPECT_EQ(doc.FileCountOf("TEXT"), 29u);
  EXPECT_EQ(doc.FileCountOf("INSERT"), 6u);
  EXPECT_EQ(doc.FileCountOf("BAD"), 0u);
  ASSERT_EQ(doc.fileCounts.size(), 2u);
  EXPECT_EQ(doc.fileCounts[0].type, "INSERT");  // in the order of the names
}

}  // namespace
}  // namespace parvenna::drawing
