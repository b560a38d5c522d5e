// Drawings read from real files and from files the tests write; files that
// cannot be read give no document and never bring the program down.
#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <fstream>
#include <random>

#include "drawing/cad_text.h"
#include "drawing/drawing_document.h"
#include "drawing/drawing_format.h"
#include "drawing/messages.h"
#include "tests/drawing/dxf_writer.h"
#include "tests/store/temp_dir.h"

namespace parvenna::drawing {
namespace {

std::string Drawings(const std::string& name) {
  return std::string(PARVENNA_TESTDATA_DIR) + "/drawings/" + name;
}

std::vector<std::string> RawTexts(const DrawingDocument& doc) {
  std::vector<std::string> out;
  for (const TextData& t : doc.texts) out.emplace_back(doc.RawText(t));
  return out;
}

const Layer* FindLayer(const DrawingDocument& doc, const std::string& name) {
  for (const Layer& l : doc.layers) {
    if (l.name == name) return &l;
  }
  return nullptr;
}

std::size_t CountKind(const DrawingDocument& doc, EntityKind kind) {
  return static_cast<std::size_t>(std::count_if(doc.entities.begin(), doc.entities.end(),
                                                [&](const Entity& e) { return e.kind == kind; }));
}

bool Contains(const std::vector<std::string>& all, const std::string& one) {
  return std::find(all.begin(), all.end(), one) != all.end();
}

TEST(LoadDrawing, GeneratedPlatKeepsRawTextAndShowsItDecoded) {
  const LoadResult r = LoadDrawing(Drawings("generated/generated_plat_lot7.dxf"));
  ASSERT_TRUE(r.document) << r.detail;
  const DrawingDocument& doc = *r.document;
  EXPECT_EQ(doc.format, DrawingFormat::Dxf);
  EXPECT_EQ(doc.texts.size(), 17u);
  const auto raw = RawTexts(doc);
  EXPECT_TRUE(Contains(raw, "N\\~12%%d30'15\"\\~E"));
  EXPECT_TRUE(Contains(raw, "S\\~77\u00B029'45\"\\~E"));  // a cp1252 byte in the file
  EXPECT_TRUE(Contains(raw, "S\\~89%%D52'10\"\\~W\\P53.27'"));
  for (const TextData& t : doc.texts) {
    if (doc.RawText(t) == "S\\~89%%D52'10\"\\~W\\P53.27'") {
      EXPECT_EQ(doc.ShownText(t), "S 89\u00B052'10\" W\n53.27'");
      EXPECT_EQ(t.lines, 2);
    }
  }
  for (const char* name : {"BOUNDARY", "BEARINGS", "DISTANCES", "CORNERS", "CORNER_IDS",
                           "ANNOTATION", "TITLE"}) {
    ASSERT_NE(FindLayer(doc, name), nullptr) << name;
  }
  EXPECT_EQ(FindLayer(doc, "BOUNDARY")->entityCount, 5u);
  EXPECT_EQ(FindLayer(doc, "CORNERS")->entityCount, 4u);
  const Entity& first = doc.entities.front();
  EXPECT_EQ(doc.HandleText(first), "20000");
  EXPECT_EQ(first.colour, (Rgb{255, 0, 0}));
}

TEST(LoadDrawing, GeneratedPlatAsDgnKeepsTheCodesLiterally) {
  const LoadResult r = LoadDrawing(Drawings("generated/generated_plat_lot7.dgn"));
  ASSERT_TRUE(r.document) << r.detail;
  const DrawingDocument& doc = *r.document;
  EXPECT_EQ(doc.format, DrawingFormat::Dgn);
  EXPECT_EQ(doc.texts.size(), 18u);
  const auto raw = RawTexts(doc);
  EXPECT_TRUE(Contains(raw, "N 12%%d30'15\" E"));
  EXPECT_TRUE(Contains(raw, "53.27'"));
  std::vector<std::string> levels;
  for (const Layer& l : doc.layers) levels.push_back(l.name);
  EXPECT_EQ(levels, (std::vector<std::string>{"10", "20", "21", "30", "31", "40", "50"}));
}

TEST(LoadDrawing, DgnV7TextHasItsInsertionPoint) {
  const LoadResult r = LoadDrawing(Drawings("dgn_v7_smalltest.dgn"));
  ASSERT_TRUE(r.document) << r.detail;
  ASSERT_EQ(r.document->texts.size(), 1u);
  const TextData& t = r.document->texts[0];
  EXPECT_EQ(r.document->RawText(t), "Demo Text");
  EXPECT_NEAR(t.insertion.x, 0.7365, 1e-3);
  EXPECT_NEAR(t.insertion.y, 4.2198, 1e-3);
}

TEST(LoadDrawing, DwgR2000ThroughTheConverter) {
  const LoadResult r = LoadDrawing(Drawings("dwg_r2000_two_layers_text.dwg"));
  ASSERT_TRUE(r.document) << r.detail;
  const DrawingDocument& doc = *r.document;
  EXPECT_EQ(doc.format, DrawingFormat::Dwg);
  ASSERT_NE(FindLayer(doc, "0"), nullptr);
  ASSERT_NE(FindLayer(doc, "Tavolo 1"), nullptr);
  EXPECT_EQ(FindLayer(doc, "Tavolo 1")->entityCount, 4u);
  EXPECT_EQ(RawTexts(doc), std::vector<std::string>{"Jen teksto simpla, cxu ne?"});
  EXPECT_EQ(CountKind(doc, EntityKind::Circle), 1u);
  EXPECT_EQ(CountKind(doc, EntityKind::Line), 3u);
  EXPECT_EQ(doc.version, "AC1015");

  const LoadResult texts = LoadDrawing(Drawings("dwg_r2000_autocad_text_lines.dwg"));
  ASSERT_TRUE(texts.document) << texts.detail;
  EXPECT_EQ(texts.document->texts.size(), 15u);
  EXPECT_TRUE(Contains(RawTexts(*texts.document), "AT HALF"));
}

TEST(LoadDrawing, SampleDxfLayersArcsAndPaperSpace) {
  const LoadResult r = LoadDrawing(Drawings("dxf_r2000_many_entities.dxf"));
  ASSERT_TRUE(r.document) << r.detail;
  const DrawingDocument& doc = *r.document;
  for (const char* name : {"0", "Layer1", "Defpoints", "Layer2", "Layer_Lt_dash",
                           "Layer_true_color", "Layer_Lock", "0 @ 1", "Layer_color_80 @ 1",
                           "Layer_color_book"}) {
    EXPECT_NE(FindLayer(doc, name), nullptr) << name;
  }
  EXPECT_GE(CountKind(doc, EntityKind::Circle), 8u);
  EXPECT_GE(CountKind(doc, EntityKind::Arc), 3u);
  EXPECT_TRUE(Contains(RawTexts(doc), "Hello this is a single line text"));
  EXPECT_GE(doc.texts.size(), 60u);
}

TEST(LoadDrawing, Utf8DxfWithACodePageHeaderIsNotDoubleEncoded) {
  const LoadResult r = LoadDrawing(Drawings("dxf_r2013_mtext_inline_codes.dxf"));
  ASSERT_TRUE(r.document) << r.detail;
  bool degree = false;
  for (const TextData& t : r.document->texts) {
    const std::string raw(r.document->RawText(t));
    EXPECT_EQ(raw.find("\u00C2\u00B0"), std::string::npos);
    EXPECT_EQ(raw.find("\u00E2\u20AC"), std::string::npos);
    degree = degree || raw.find("\u00B0") != std::string::npos;
    // Shown text has no paragraph codes left.
    EXPECT_EQ(std::string(r.document->ShownText(t)).find("\\P"), std::string::npos);
  }
  EXPECT_TRUE(degree);
}

TEST(LoadDrawing, R12DxfLoads) {
  const LoadResult r = LoadDrawing(Drawings("dxf_r12_many_entities.dxf"));
  ASSERT_TRUE(r.document) << r.detail;
  EXPECT_NE(FindLayer(*r.document, "LAYER1"), nullptr);
  EXPECT_GE(r.document->texts.size(), 200u);
}

TEST(LoadDrawing, FilesThatCannotBeReadSayWhyAndWhatToDo) {
  const std::vector<std::pair<std::string, std::string>> cases = {
      {"dwg_r2000_crc_error_UNREADABLE.dwg", messages::ReasonDwgDamaged},
      {"dgn_v8_UNSUPPORTED.dgn", messages::ReasonDgnV8},
      {"no_such_file.dwg", messages::ReasonNotFound},
      {"", messages::ReasonNotFound}};
  for (const auto& [name, reason] : cases) {
    const LoadResult r = LoadDrawing(Drawings(name));
    EXPECT_FALSE(r.document) << name;
    EXPECT_EQ(r.detail, reason) << name;
  }
}

TEST(LoadDrawing, RandomTruncatedAndMislabelledBytesGiveNoDocument) {
  testing::TempDir dir;
  std::mt19937 random(7);
  std::string noise(20000, '\0');
  for (char& c : noise) c = static_cast<char>(random());
  const std::string plat = testing::ReadFile(Drawings("generated/generated_plat_lot7.dxf"));
  const std::string dwg = testing::ReadFile(Drawings("dwg_r2000_two_layers_text.dwg"));
  const std::vector<std::pair<std::string, std::string>> files = {
      {"noise.dwg", noise},
      {"noise.dxf", noise},
      {"noise.dgn", noise},
      {"empty.dxf", ""},
      {"binary.dxf", "AutoCAD Binary DXF\r\n\x1a" + noise},
      {"header_only.dwg", "AC1015"},
      {"half.dwg", dwg.substr(0, dwg.size() / 2)},
      {"text.dgn", "just some words, no drawing\n"},
      {"dgn_header.dgn", std::string("\x08\x09\xFE\x02", 4) + noise.substr(0, 100)},
  };
  for (const auto& [name, bytes] : files) {
    testing::WriteFile(dir / name, bytes);
    EXPECT_FALSE(LoadDrawing((dir / name).string()).document) << name;
  }
  // A DXF cut short in its entities still gives what it holds, or nothing;
  // either way no failure escapes.
  testing::WriteFile(dir / "cut.dxf", plat.substr(0, plat.size() * 2 / 3));
  EXPECT_NO_THROW(LoadDrawing((dir / "cut.dxf").string()));
}

TEST(LoadDrawing, WrittenDxfLayersTextsAndCurves) {
  testing::TempDir dir;
  testing::DxfWriter dxf;
  dxf.Layer("0");
  dxf.Layer("LOTS", 3);
  dxf.Layer("HIDDEN", 1, /*off=*/true);
  dxf.Layer("FROZEN", 5, false, /*frozen=*/true);
  dxf.Layer("EMPTY", 2);
  dxf.Line("LOTS", 0, 0, 100, 0);
  dxf.Circle("LOTS", 50, 50, 10);
  dxf.Arc("LOTS", 0, 0, 20, 0, 90);
  dxf.Polyline("HIDDEN", {{0, 0}, {10, 0}, {10, 10}}, true);
  dxf.Text("FROZEN", 5, 5, 2.5, "%%c12 %%p0.5 100%%%", 90);
  dxf.MText("LOTS", 40, 40, 2, "{\\fArial|b1;LOT}\\P7", 5);
  dxf.PaperSpaceLine("LOTS", -1000, -1000, 1000, 1000);
  ASSERT_TRUE(dxf.Save((dir / "w.dxf").string()));

  const LoadResult r = LoadDrawing((dir / "w.dxf").string());
  ASSERT_TRUE(r.document) << r.detail;
  const DrawingDocument& doc = *r.document;
  ASSERT_EQ(doc.layers.size(), 5u);
  EXPECT_TRUE(FindLayer(doc, "LOTS")->on);
  EXPECT_FALSE(FindLayer(doc, "HIDDEN")->on);
  EXPECT_FALSE(FindLayer(doc, "FROZEN")->on);
  EXPECT_EQ(FindLayer(doc, "LOTS")->colour, (Rgb{0, 255, 0}));
  EXPECT_EQ(FindLayer(doc, "EMPTY")->entityCount, 0u);
  EXPECT_EQ(FindLayer(doc, "LOTS")->entityCount, 4u);  // not the paper space line
  EXPECT_LT(doc.extent.maxX, 200);

  ASSERT_EQ(CountKind(doc, EntityKind::Circle), 1u);
  ASSERT_EQ(CountKind(doc, EntityKind::Arc), 1u);
  for (const Entity& e : doc.entities) {
    if (e.kind == EntityKind::Circle) {
      EXPECT_NEAR(doc.ArcOf(e).radius, 10, 1e-6);
      EXPECT_NEAR(doc.ArcOf(e).centre.x, 50, 1e-6);
    }
    if (e.kind == EntityKind::Arc) {
      EXPECT_NEAR(doc.ArcOf(e).start, 0, 1e-6);
      EXPECT_NEAR(doc.ArcOf(e).end, std::acos(-1.0) / 2, 1e-6);
      EXPECT_NEAR(e.bounds.maxY, 20, 1e-6);
    }
    if (e.kind == EntityKind::Polyline) {
      EXPECT_EQ(e.count, 4u);  // closed
    }
  }
  ASSERT_EQ(doc.texts.size(), 2u);
  const TextData& turned = doc.texts[0];
  EXPECT_EQ(doc.RawText(turned), "%%c12 %%p0.5 100%%%");
  EXPECT_EQ(doc.ShownText(turned), "\u220512 \u00B10.5 100%");
  EXPECT_FLOAT_EQ(turned.height, 2.5f);
  EXPECT_NEAR(turned.rotation, std::acos(-1.0) / 2, 1e-6);
  const TextData& mtext = doc.texts[1];
  EXPECT_EQ(doc.ShownText(mtext), "LOT\n7");
  EXPECT_EQ(mtext.halign, HAlign::Centre);
  EXPECT_EQ(mtext.valign, VAlign::Middle);
}

TEST(GuessFormat, ByContentFirstThenByName) {
  EXPECT_EQ(GuessFormat("a.dgn", "AC1015\0\0").format, DrawingFormat::Dwg);
  EXPECT_TRUE(GuessFormat("a.dgn", "AC1015\0\0").readable);
  EXPECT_TRUE(GuessFormat("a.dwg", "AC1032").readable);
  EXPECT_TRUE(GuessFormat("a.dwg", "AC1012").readable);
  const FormatGuess r12 = GuessFormat("a.dwg", "AC1009");
  EXPECT_FALSE(r12.readable);
  EXPECT_EQ(r12.detail, std::string(messages::ReasonDwgVersion) + "R11/R12 (AC1009)" +
                            messages::ReasonDwgTooOld + messages::SaveAsAdvice);
  EXPECT_FALSE(GuessFormat("a.dwg", "AC1.50").readable);
  EXPECT_NE(GuessFormat("a.dwg", "AC1040").detail.find("newer than 2018"), std::string::npos);
  EXPECT_EQ(GuessFormat("x.dwg", std::string("\x08\x09\xFE\x02", 4)).format, DrawingFormat::Dgn);
  EXPECT_EQ(GuessFormat("x.txt", "  0\nSECTION\n  2\nHEADER\n  9\n$ACADVER\n  1\nAC1027\n").version,
            "AC1027");
  EXPECT_EQ(GuessFormat("x.DWG", "hello").format, DrawingFormat::Dwg);
  EXPECT_EQ(GuessFormat("x.map", "hello").format, DrawingFormat::Dgn);
  EXPECT_FALSE(GuessFormat("x.dxf", "").readable);
  EXPECT_TRUE(DxfTextIsUtf8("AC1021"));
  EXPECT_FALSE(DxfTextIsUtf8("AC1018"));
}

TEST(CadText, ShownTextTakesOutCodes) {
  EXPECT_EQ(ShownTextOf("{\\C1;\\fTimes|b0;\\H1.4x;HEAD}\\PN\\~1%%d\\U+00B0 \\S1^2; \\\\ \\{x\\}"),
            "HEAD\nN 1\u00B0\u00B0 1/2 \\ {x}");
  EXPECT_EQ(ShownTextOf("%%u%%o%%176 %%"), "\u00B0 %%");
  EXPECT_EQ(ShownTextOf("\\"), "\\");
  EXPECT_EQ(ShownTextOf("\\H2"), "\\H2");  // an unfinished code stays
  EXPECT_EQ(EnsureUtf8("94\xB0"), "94\u00B0");
  EXPECT_EQ(EnsureUtf8("\x80"), "\u20AC");
  EXPECT_EQ(EnsureUtf8("ok \u00B0"), "ok \u00B0");
  const TextMeasure m = MeasureText("ab\u00B0\nxyzzy\n");
  EXPECT_EQ(m.lines, 3u);
  EXPECT_EQ(m.longest, 5u);
}

}  // namespace
}  // namespace parvenna::drawing
