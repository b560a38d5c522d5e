// The DWG drawings of the test data through the converter, beside AutoCAD's
// own DXF of the same drawing: every version opens whole, its texts stand at
// their true size and angle, hatches are areas and never labels, and a
// drawing that cannot be read says why. The converter must be installed
// (the build does it): a missing converter fails these tests.
#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <filesystem>
#include <map>
#include <numbers>

#include "drawing/drawing_document.h"
#include "drawing/grabbing.h"
#include "drawing/messages.h"
#include "drawing/viewer.h"
#include "tests/drawing/dxf_writer.h"
#include "tests/drawing/fake_grab_editor.h"
#include "tests/store/temp_dir.h"
#include "tests/support/recording_canvas.h"

namespace parvenna::drawing {
namespace {

namespace fs = std::filesystem;

std::string Drawings(const std::string& name) {
  return std::string(PARVENNA_TESTDATA_DIR) + "/drawings/" + name;
}

// Each drawing is read once for all the tests.
const DrawingDocument& Loaded(const std::string& name) {
  static std::map<std::string, LoadResult> loaded;
  auto it = loaded.find(name);
  if (it == loaded.end()) it = loaded.emplace(name, LoadDrawing(Drawings(name))).first;
  if (!it->second.document) {
    ADD_FAILURE() << name << ": " << it->second.detail;
    static const DrawingDocument empty;
    return empty;
  }
  return *it->second.document;
}

std::shared_ptr<const IndexedDrawing> Indexed(const std::string& name) { return IndexDrawing(Loaded(name)); }

const Entity* ByHandle(const DrawingDocument& doc, std::uint64_t handle) {
  for (const Entity& e : doc.entities) {
    if (e.handle == handle) return &e;
  }
  return nullptr;
}

TEST(DwgDrawings, EveryVersionOpensButTheDamagedFile) {
  std::vector<std::string> names;
  for (const std::string folder : {"", "generated/"}) {
    for (const auto& entry : fs::directory_iterator(Drawings(folder))) {
      if (entry.path().extension() == ".dwg") names.push_back(folder + entry.path().filename().string());
    }
  }
  ASSERT_GE(names.size(), 13u);
  for (const std::string& name : names) {
    SCOPED_TRACE(name);
    if (name.find("crc_error") != std::string::npos) {
      const LoadResult damaged = LoadDrawing(Drawings(name));
      EXPECT_FALSE(damaged.document);
      EXPECT_EQ(damaged.detail, messages::ReasonDwgDamaged);
      continue;
    }
    const DrawingDocument& doc = Loaded(name);
    EXPECT_EQ(doc.format, DrawingFormat::Dwg);
    EXPECT_FALSE(doc.entities.empty());
    EXPECT_FALSE(doc.extent.Empty());
  }
  // The MTEXT drawing saved as 2000, 2004, 2007 and 2010 reads alike.
  for (const char* name : {"dwg_r2000_mtext.dwg", "dwg_r2004_mtext_UNSUPPORTED.dwg", "dwg_r2007_text.dwg",
                           "dwg_r2010_mtext_UNSUPPORTED.dwg"}) {
    const DrawingDocument& doc = Loaded(name);
    ASSERT_EQ(doc.texts.size(), 1u) << name;
    EXPECT_EQ(doc.ShownText(doc.texts[0]),
              "This a multiline text to check if libredwg is able to read this in the current file "
              "format version")
        << name;
    EXPECT_FLOAT_EQ(doc.texts[0].height, 0.2f) << name;
  }
  EXPECT_EQ(Loaded("dwg_r2018_arc.dwg").arcs.size(), 1u);
}

// AutoCAD's sample saved as R14, 2000, 2004, 2010 and 2018.
class SameDrawingAsTheDxf : public ::testing::TestWithParam<const char*> {};

TEST_P(SameDrawingAsTheDxf, HoldsTheSameEntities) {
  const DrawingDocument& dxf = Loaded("dxf_r2000_many_entities.dxf");
  const DrawingDocument& dwg = Loaded(GetParam());
  const std::map<std::string, std::uint32_t> expected = {
      {"TEXT", 29}, {"MTEXT", 5}, {"LINE", 26}, {"ARC", 1}, {"LWPOLYLINE", 21}, {"INSERT", 6}};
  for (const auto& [type, count] : expected) {
    EXPECT_EQ(dxf.FileCountOf(type), count) << type;
    EXPECT_EQ(dwg.FileCountOf(type), count) << type;
  }
  // Every layer that holds something in the DXF is there, in any case.
  const auto upper = [](std::string s) {
    std::transform(s.begin(), s.end(), s.begin(), [](unsigned char c) { return std::toupper(c); });
    return s;
  };
  for (const Layer& layer : dxf.layers) {
    if (layer.entityCount == 0 || layer.name.find('@') != std::string::npos) continue;
    EXPECT_TRUE(std::any_of(dwg.layers.begin(), dwg.layers.end(),
                            [&](const Layer& l) { return upper(l.name) == upper(layer.name); }))
        << layer.name;
  }
}

TEST_P(SameDrawingAsTheDxf, TextsStandAtTheirTrueSizeAndAngle) {
  const DrawingDocument& dxf = Loaded("dxf_r2000_many_entities.dxf");
  const DrawingDocument& dwg = Loaded(GetParam());
  int compared = 0;
  for (const Entity& e : dxf.entities) {
    // GDAL aligns this attribute, top left, at its first point instead of its second.
    if (e.kind != EntityKind::Text || e.handle == 0x79F) continue;
    const Entity* twin = ByHandle(dwg, e.handle);
    if (twin == nullptr || twin->kind != EntityKind::Text) continue;
    const TextData& a = dxf.TextOf(e);
    const TextData& b = dwg.TextOf(*twin);
    if (dxf.ShownText(a) != dwg.ShownText(b)) continue;  // a block's label of another copy
    SCOPED_TRACE(std::string(dxf.ShownText(a)));
    // GDAL writes the height with three digits.
    EXPECT_NEAR(b.height, a.height, 5e-3 * a.height);
    EXPECT_NEAR(std::remainder(b.rotation - a.rotation, 2 * std::numbers::pi), 0, 1e-3);
    // The box a click meets: the same corners, however each reader anchors it.
    const auto ca = TextCorners(a), cb = TextCorners(b);
    const double tolerance = 0.02 * a.height + 5e-3 * a.width;
    for (std::size_t k = 0; k < 4; ++k) {
      EXPECT_NEAR(cb[k].x, ca[k].x, tolerance) << k;
      EXPECT_NEAR(cb[k].y, ca[k].y, tolerance) << k;
    }
    ++compared;
  }
  EXPECT_GE(compared, 35);
  // The texts the reader of GDAL left without a size have one.
  for (const TextData& t : dwg.texts) EXPECT_GT(t.height, 0.f);
}

INSTANTIATE_TEST_SUITE_P(Versions, SameDrawingAsTheDxf,
                         ::testing::Values("dwg_r14_many_entities.dwg", "dwg_r2000_partial_read.dwg",
                                           "dwg_r2004_many_entities.dwg", "dwg_r2010_many_entities.dwg",
                                           "dwg_r2018_many_entities.dwg"));

// The sample's ANSI31 hatch and its solid (gradient) neighbour, in AutoCAD's
// DXF and in the DWG: a click in the hatch finds no label, and the solid
// one is filled.
class HatchTest : public ::testing::TestWithParam<const char*> {};

TEST_P(HatchTest, IsDrawnAndNeverTakenForALabel) {
  const auto drawing = Indexed(GetParam());
  const DrawingDocument& doc = drawing->document;
  const Entity* pattern = ByHandle(doc, 0x35A);
  const Entity* solid = ByHandle(doc, 0x371);
  ASSERT_NE(pattern, nullptr);
  ASSERT_NE(solid, nullptr);
  EXPECT_EQ(pattern->kind, EntityKind::Hatch);
  EXPECT_FALSE(pattern->flags & kFilled);
  EXPECT_TRUE(solid->flags & kFilled);
  for (const TextData& t : doc.texts) EXPECT_NE(doc.RawText(t), "ANSI31");

  Viewer view;
  view.SetViewport(1200, 800);
  view.Show(drawing);
  view.ShowWindow(95, -5, 130, 50);
  testing::FakeGrabEditor editor;
  GrabState state;
  for (const Point at : {Point{104, 2}, Point{112, 7}, Point{123.1, 7}}) {
    EXPECT_FALSE(view.FindTextAt(at)) << at.x << ", " << at.y << ": " << view.FoundText();
    PickInView(view, at, editor, state, Notation{true, "%%D"}, 1);
  }
  EXPECT_TRUE(editor.writes.empty());
  EXPECT_TRUE(editor.name.empty());

  testing::RecordingCanvas canvas(1200, 800);
  view.Render(canvas);
  EXPECT_GE(canvas.Count(testing::RecordingCanvas::Op::Fill), 1u);
}

INSTANTIATE_TEST_SUITE_P(Formats, HatchTest,
                         ::testing::Values("dxf_r2000_many_entities.dxf", "dwg_r2018_many_entities.dwg"));

// The survey labels of the 2004 DWG, and the same label in a DXF: a click on
// each puts the same values into the same fields.
TEST(DwgDrawings, SurveyLabelsGrabAsFromADxf) {
  const DrawingDocument& dwg = Loaded("generated/bearings_text_r2004.dwg");
  ASSERT_EQ(dwg.texts.size(), 1u);
  const TextData& label = dwg.texts[0];
  EXPECT_FLOAT_EQ(label.height, 5);
  EXPECT_EQ(label.halign, HAlign::Centre);
  EXPECT_EQ(label.valign, VAlign::Middle);

  // An R2000 DXF writes the degree sign as \U+00B0.
  std::string raw(dwg.RawText(label));
  raw.replace(raw.find("\u00B0"), 2, "\\U+00B0");
  testing::TempDir dir;
  testing::DxfWriter writer;
  writer.Layer("Tavolo 1");
  writer.AlignedText("Tavolo 1", -50.31873725478131, 134.6957591239131, label.insertion.x,
                     label.insertion.y, 5, raw, 4, 0);
  ASSERT_TRUE(writer.Save((dir / "label.dxf").string()));

  const Point centre{label.insertion.x, label.insertion.y};
  std::vector<testing::FakeGrabEditor> editors(2);
  const std::string files[] = {Drawings("generated/bearings_text_r2004.dwg"), (dir / "label.dxf").string()};
  for (int i = 0; i < 2; ++i) {
    Viewer view;
    view.SetViewport(1000, 600);
    ASSERT_TRUE(view.Load(files[i])) << view.LoadDetail();
    ASSERT_TRUE(view.FindTextAt(centre)) << files[i];
    GrabState state;
    editors[i].focusRow = 0;  // from the parcel's name on
    PickInView(view, centre, editors[i], state, Notation{true, "%%D"}, 1);
  }
  EXPECT_FALSE(editors[0].name.empty());
  EXPECT_EQ(editors[0].name, editors[1].name);
  EXPECT_EQ(editors[0].writes, editors[1].writes);
  EXPECT_EQ(editors[0].focusRow, editors[1].focusRow);
}

TEST(DwgDrawings, AMissingOrSlowConverterSaysSo) {
  const std::string file = Drawings("dwg_r2018_arc.dwg");
  testing::TempDir empty;
  DwgOptions nowhere;
  nowhere.converterDirectory = empty.path().string();
  LoadResult r = LoadDrawing(file, nowhere);
  EXPECT_FALSE(r.document);
  EXPECT_EQ(r.detail.rfind(messages::ReasonConverterMissing, 0), 0u) << r.detail;

  DwgOptions noNode;
  noNode.node = (empty.path() / "node").string();
  r = LoadDrawing(file, noNode);
  EXPECT_FALSE(r.document);
  EXPECT_NE(r.detail.find("Node.js cannot be started"), std::string::npos) << r.detail;

  DwgOptions hurried;
  hurried.limit = std::chrono::milliseconds(20);
  r = LoadDrawing(file, hurried);
  EXPECT_FALSE(r.document);
  EXPECT_EQ(r.detail, std::string(messages::ReasonDwgTimedOut) + "1" + messages::ReasonDwgTimedOutEnd +
                          messages::SaveAsAdvice);
}

TEST(DwgDrawings, TheConverterIsFoundBesideTheProgramOrWhereItIsInstalled) {
  EXPECT_EQ(ConverterDirectory(), std::string(PARVENNA_SUPPLIED_DIR) + "/dwg_converter");
  testing::TempDir root;
  const fs::path installed = root / "share/parvenna/dwg_converter";
  fs::create_directories(installed / "node_modules/@mlightcad/libredwg-web");
  fs::create_directories(root / "bin");
  EXPECT_EQ(ConverterDirectoryFor((root / "bin").string()), "");
  testing::WriteFile(installed / "dwg_to_records.mjs", "");
  EXPECT_EQ(ConverterDirectoryFor((root / "bin").string()), "");  // LibreDWG is missing
  testing::WriteFile(installed / "node_modules/@mlightcad/libredwg-web/package.json", "{}");
  EXPECT_EQ(ConverterDirectoryFor((root / "bin").string()), installed.string());
}

}  // namespace
}  // namespace parvenna::drawing
