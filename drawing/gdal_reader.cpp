// The one place that talks to GDAL: the features of a DXF or DGN V7 become
// our own entities here, and nothing of GDAL leaves this file.
#include "drawing/gdal_reader.h"

#include <cpl_conv.h>
#include <cpl_error.h>
#include <gdal.h>
#include <ogr_api.h>

#include <cmath>
#include <cstdlib>
#include <cstring>
#include <fstream>
#include <mutex>
#include <numbers>
#include <unordered_map>

#include "drawing/cad_text.h"
#include "drawing/document_builder.h"
#include "drawing/dxf_tables.h"
#include "drawing/messages.h"

namespace parvenna::drawing {
namespace {

constexpr double kTwoPi = 2 * std::numbers::pi;
// The reader places the points of a curve at most 4 degrees apart.
constexpr double kLongestStep = 4.5 * std::numbers::pi / 180;

void RegisterDrivers() {
  static std::once_flag once;
  std::call_once(once, [] { GDALAllRegister(); });
}

// A configuration option for this thread, restored when the scope ends.
class ConfigScope {
 public:
  ConfigScope(const char* key, const char* value) : key_(key) {
    if (const char* old = CPLGetThreadLocalConfigOption(key, nullptr)) {
      had_ = true;
      old_ = old;
    }
    CPLSetThreadLocalConfigOption(key, value);
  }
  ~ConfigScope() { CPLSetThreadLocalConfigOption(key_, had_ ? old_.c_str() : nullptr); }
  ConfigScope(const ConfigScope&) = delete;
  ConfigScope& operator=(const ConfigScope&) = delete;

 private:
  const char* key_;
  bool had_ = false;
  std::string old_;
};

// GDAL's warnings go nowhere; the last error is read for the detail.
class QuietErrors {
 public:
  QuietErrors() {
    CPLPushErrorHandler(CPLQuietErrorHandler);
    CPLErrorReset();
  }
  ~QuietErrors() { CPLPopErrorHandler(); }
  QuietErrors(const QuietErrors&) = delete;
  QuietErrors& operator=(const QuietErrors&) = delete;
};

struct DatasetCloser {
  void operator()(void* ds) const { GDALClose(ds); }
};
using DatasetPtr = std::unique_ptr<void, DatasetCloser>;

struct FeatureDestroyer {
  void operator()(OGRFeatureH f) const { OGR_F_Destroy(f); }
};
using FeaturePtr = std::unique_ptr<std::remove_pointer_t<OGRFeatureH>, FeatureDestroyer>;

struct GeometryDestroyer {
  void operator()(OGRGeometryH g) const { OGR_G_DestroyGeometry(g); }
};
using GeometryPtr = std::unique_ptr<std::remove_pointer_t<OGRGeometryH>, GeometryDestroyer>;

// What the feature's style string says that we use.
struct Style {
  bool hasColour = false;
  bool brush = false;  // the feature is filled
  Rgb colour;
  double angle = 0;   // degrees
  double size = 0;    // text height
  int anchor = 1;     // 1 to 12, as the keypad: 7 8 9 top, 4 5 6 middle, 1 2 3 baseline, 10 11 12 bottom
};

int HexDigit(char c) {
  if (c >= '0' && c <= '9') return c - '0';
  if (c >= 'a' && c <= 'f') return c - 'a' + 10;
  if (c >= 'A' && c <= 'F') return c - 'A' + 10;
  return -1;
}

bool ParseColour(std::string_view v, Rgb& out) {
  if (v.size() < 7 || v[0] != '#') return false;
  int parts[3];
  for (int i = 0; i < 3; ++i) {
    const int hi = HexDigit(v[1 + 2 * i]), lo = HexDigit(v[2 + 2 * i]);
    if (hi < 0 || lo < 0) return false;
    parts[i] = hi * 16 + lo;
  }
  out = {static_cast<std::uint8_t>(parts[0]), static_cast<std::uint8_t>(parts[1]),
         static_cast<std::uint8_t>(parts[2])};
  return true;
}

double Number(std::string_view v) {
  std::string text(v);
  return std::strtod(text.c_str(), nullptr);
}

Style ParseStyle(const char* s) {
  Style style;
  if (s == nullptr) return style;
  const char* p = s;
  bool brushColour = false;
  while (*p) {
    while (*p && *p != '(') ++p;
    if (!*p) break;
    ++p;
    while (*p && *p != ')') {
      const char* k = p;
      while (*p && *p != ':' && *p != ')' && *p != ',') ++p;
      const std::string_view key(k, static_cast<std::size_t>(p - k));
      if (*p != ':') {
        if (*p == ',') ++p;
        continue;
      }
      ++p;
      std::string_view value;
      if (*p == '"') {
        const char* v = ++p;
        while (*p && *p != '"') {
          if (*p == '\\' && p[1]) ++p;
          ++p;
        }
        value = std::string_view(v, static_cast<std::size_t>(p - v));
        if (*p) ++p;
      } else {
        const char* v = p;
        while (*p && *p != ',' && *p != ')') ++p;
        value = std::string_view(v, static_cast<std::size_t>(p - v));
      }
      if (key == "c" && (!style.hasColour || brushColour)) {
        brushColour = false;
        style.hasColour = ParseColour(value, style.colour);
      } else if (key == "fc") {
        style.brush = true;
        if (!style.hasColour) style.hasColour = brushColour = ParseColour(value, style.colour);
      } else if (key == "a") {
        style.angle = Number(value);
      } else if (key == "s") {
        style.size = Number(value);
      } else if (key == "p") {
        style.anchor = static_cast<int>(Number(value));
      }
      if (*p == ',') ++p;
    }
    if (*p == ')') ++p;
  }
  return style;
}

void AnchorOf(int anchor, HAlign& h, VAlign& v) {
  if (anchor < 1 || anchor > 12) anchor = 1;
  const int column = (anchor - 1) % 3;
  h = column == 0 ? HAlign::Left : column == 1 ? HAlign::Centre : HAlign::Right;
  const int row = (anchor - 1) / 3;
  v = row == 0 ? VAlign::Baseline : row == 1 ? VAlign::Middle : row == 2 ? VAlign::Top : VAlign::Bottom;
}

// The circle through three points; false when they are in a line.
bool CircleThrough(Point a, Point b, Point c, Point& centre, double& radius) {
  const double d = 2 * (a.x * (b.y - c.y) + b.x * (c.y - a.y) + c.x * (a.y - b.y));
  const double scale = std::max({std::abs(a.x - b.x), std::abs(a.y - b.y), std::abs(c.x - b.x),
                                 std::abs(c.y - b.y)});
  if (scale == 0 || std::abs(d) < 1e-12 * scale * scale) return false;
  const double a2 = a.x * a.x + a.y * a.y, b2 = b.x * b.x + b.y * b.y, c2 = c.x * c.x + c.y * c.y;
  centre.x = (a2 * (b.y - c.y) + b2 * (c.y - a.y) + c2 * (a.y - b.y)) / d;
  centre.y = (a2 * (c.x - b.x) + b2 * (a.x - c.x) + c2 * (b.x - a.x)) / d;
  radius = std::hypot(a.x - centre.x, a.y - centre.y);
  return std::isfinite(radius);
}

double AnticlockwiseFrom(double from, double to) {
  double d = std::fmod(to - from, kTwoPi);
  if (d < 0) d += kTwoPi;
  return d;
}

// The arc from a through m to z on the circle of arc, as a start angle and
// an anticlockwise sweep.
void SweepThrough(Point a, Point m, Point z, ArcData& arc) {
  const double a0 = std::atan2(a.y - arc.centre.y, a.x - arc.centre.x);
  const double am = std::atan2(m.y - arc.centre.y, m.x - arc.centre.x);
  const double a1 = std::atan2(z.y - arc.centre.y, z.x - arc.centre.x);
  if (AnticlockwiseFrom(a0, am) <= AnticlockwiseFrom(a0, a1)) {
    arc.start = a0;
    arc.end = AnticlockwiseFrom(a0, a1);
  } else {
    arc.start = a1;
    arc.end = AnticlockwiseFrom(a1, a0);
  }
}

// What a polygon stands for: a boundary of lines, or an area drawn as its
// rings (a pattern hatch) or filled (a solid hatch, a solid, a filled shape).
enum class Area { None, Outline, Filled };

// The features of GDAL become entities here, through the builder.
class Reader {
 public:
  explicit Reader(DocumentBuilder& builder) : builder_(builder) {}

  void SeedLayers(const std::vector<DxfLayerEntry>& table) {
    for (const auto& entry : table) {
      builder_.SeedLayer(entry.name, !entry.off && !entry.frozen,
                         entry.trueColour ? *entry.trueColour : AciColour(entry.colour));
    }
  }

  void AddGeometry(OGRGeometryH g, const EntityStyle& c, bool arcHint, Area area, int depth = 0) {
    if (g == nullptr || depth > 32) return;
    const OGRwkbGeometryType type = wkbFlatten(OGR_G_GetGeometryType(g));
    switch (type) {
      case wkbPoint:
        AddVertices(g, c);
        return;
      case wkbLineString:
        if (AddFittedArc(g, c, arcHint)) return;
        AddVertices(g, c);
        return;
      case wkbCircularString:
        if (AddCircularString(g, c)) return;
        break;
      case wkbPolygon:
        if (area != Area::None) {
          AddArea(g, c, area == Area::Filled);
          return;
        }
        [[fallthrough]];
      case wkbMultiPoint:
      case wkbMultiLineString:
      case wkbMultiPolygon:
      case wkbGeometryCollection:
        for (int i = 0; i < OGR_G_GetGeometryCount(g); ++i) {
          AddGeometry(OGR_G_GetGeometryRef(g, i), c, arcHint, area, depth + 1);
        }
        return;
      default:
        break;
    }
    // Curves and surfaces of other kinds are drawn as GDAL flattens them.
    GeometryPtr linear(OGR_G_GetLinearGeometry(g, 0, nullptr));
    if (!linear) return;
    const OGRwkbGeometryType flat = wkbFlatten(OGR_G_GetGeometryType(linear.get()));
    if (flat == wkbCircularString || flat == type) return;  // no progress
    AddGeometry(linear.get(), c, false, area, depth + 1);
  }

  void AddText(OGRGeometryH g, const EntityStyle& c, std::string_view raw, TextCodes codes,
               const Style& style) {
    Point at;
    if (g != nullptr && OGR_G_GetPointCount(g) > 0) {
      at = {OGR_G_GetX(g, 0), OGR_G_GetY(g, 0)};
    } else if (g != nullptr) {
      OGREnvelope env;
      OGR_G_GetEnvelope(g, &env);
      at = {env.MinX, env.MinY};
    }
    TextData t;
    t.insertion = at;
    t.codes = codes;
    t.height = static_cast<float>(style.size > 0 && style.size < 1e30 ? style.size : 0);
    t.rotation = static_cast<float>(std::isfinite(style.angle) ? style.angle * std::numbers::pi / 180 : 0);
    AnchorOf(style.anchor, t.halign, t.valign);
    builder_.AddText(t, raw, c);
  }

 private:
  std::span<const Point> PointsOf(OGRGeometryH g) {
    const int n = OGR_G_GetPointCount(g);
    scratch_.resize(static_cast<std::size_t>(std::max(n, 0)));
    if (n > 0) OGR_G_GetPoints(g, &scratch_[0].x, sizeof(Point), &scratch_[0].y, sizeof(Point), nullptr, 0);
    return scratch_;
  }

  void AddVertices(OGRGeometryH g, const EntityStyle& c) { builder_.AddPoints(PointsOf(g), c); }

  // A hatch or a filled shape: its rings.
  void AddArea(OGRGeometryH polygon, const EntityStyle& c, bool filled) {
    std::vector<std::vector<Point>> rings;
    for (int i = 0; i < OGR_G_GetGeometryCount(polygon); ++i) {
      GeometryPtr ring(OGR_G_GetLinearGeometry(OGR_G_GetGeometryRef(polygon, i), 0, nullptr));
      if (!ring) continue;
      const std::span<const Point> points = PointsOf(ring.get());
      rings.emplace_back(points.begin(), points.end());
    }
    builder_.AddHatch(rings, filled, c);
  }

  // DXF arcs and circles arrive as points on the curve; the curve is found
  // again from them, so it is kept as three numbers instead of ninety points.
  // Without the entity's word for it (files without subclass markers), only
  // points that stand as closely as the reader places them are taken for a
  // curve, so that a square is not read as its circumscribed circle.
  bool AddFittedArc(OGRGeometryH g, const EntityStyle& c, bool known) {
    const int n = OGR_G_GetPointCount(g);
    if (n < (known ? 4 : 8)) return false;
    const std::span<const Point> pts = PointsOf(g);
    const Point a = pts.front(), b = pts[static_cast<std::size_t>(n / 3)],
                m = pts[static_cast<std::size_t>(2 * n / 3)], z = pts.back();
    ArcData arc;
    if (!CircleThrough(a, b, m, arc.centre, arc.radius) || !(arc.radius > 0)) return false;
    const double tolerance = 1e-6 * arc.radius + 1e-9;
    for (const Point& p : pts) {
      if (std::abs(std::hypot(p.x - arc.centre.x, p.y - arc.centre.y) - arc.radius) > tolerance) {
        return false;
      }
    }
    if (!known) {
      const double longest = 2 * arc.radius * std::sin(kLongestStep / 2) + tolerance;
      for (std::size_t k = 1; k < pts.size(); ++k) {
        if (std::hypot(pts[k].x - pts[k - 1].x, pts[k].y - pts[k - 1].y) > longest) return false;
      }
    }
    const bool full = std::hypot(z.x - a.x, z.y - a.y) <= tolerance;
    if (full) arc.end = kTwoPi;
    else SweepThrough(a, b, z, arc);
    builder_.AddArc(arc, full, c);
    return true;
  }

  bool AddCircularString(OGRGeometryH g, const EntityStyle& c) {
    const int n = OGR_G_GetPointCount(g);
    if (n < 3) return false;
    const auto pt = [&](int i) { return Point{OGR_G_GetX(g, i), OGR_G_GetY(g, i)}; };
    const Point a = pt(0), m = pt(1), z = pt(n - 1);
    ArcData arc;
    if (!CircleThrough(a, m, n == 3 ? z : pt(2), arc.centre, arc.radius)) return false;
    const bool full = n > 3 && a.x == z.x && a.y == z.y;
    if (n > 3 && !full) return false;
    if (full) arc.end = kTwoPi;
    else SweepThrough(a, m, z, arc);
    builder_.AddArc(arc, full, c);
    return true;
  }

  DocumentBuilder& builder_;
  std::vector<Point> scratch_;
};

struct Fields {
  int layer = -1, paperSpace = -1, subClasses = -1, handle = -1, text = -1, level = -1;
};

Fields FieldsOf(OGRFeatureDefnH defn) {
  Fields f;
  f.layer = OGR_FD_GetFieldIndex(defn, "Layer");
  f.paperSpace = OGR_FD_GetFieldIndex(defn, "PaperSpace");
  f.subClasses = OGR_FD_GetFieldIndex(defn, "SubClasses");
  f.handle = OGR_FD_GetFieldIndex(defn, "EntityHandle");
  f.text = OGR_FD_GetFieldIndex(defn, "Text");
  f.level = OGR_FD_GetFieldIndex(defn, "Level");
  return f;
}

const char* FieldText(OGRFeatureH feature, int index) {
  if (index < 0 || !OGR_F_IsFieldSetAndNotNull(feature, index)) return "";
  return OGR_F_GetFieldAsString(feature, index);
}

bool Has(const char* subClasses, const char* name) { return std::strstr(subClasses, name) != nullptr; }

bool IsPoint(OGRGeometryH g) { return g == nullptr || wkbFlatten(OGR_G_GetGeometryType(g)) == wkbPoint; }

// How a DXF text's codes are read: by its subclass, or where the file has no
// subclass markers, by its version (R12 and older know no MTEXT).
TextCodes DxfCodes(const char* subClasses, const std::string& version) {
  if (Has(subClasses, "AcDbMText") || Has(subClasses, "AcDbMLeader")) return TextCodes::MText;
  if (*subClasses != '\0') return TextCodes::Single;
  return version >= "AC1012" ? TextCodes::MText : TextCodes::Single;
}

void ReadLayer(OGRLayerH layer, const FormatGuess& guess, DocumentBuilder& builder, Reader& reader,
               std::uint64_t& counter) {
  const DrawingFormat format = guess.format;
  const Fields f = FieldsOf(OGR_L_GetLayerDefn(layer));
  OGR_L_ResetReading(layer);
  while (FeaturePtr feature{OGR_L_GetNextFeature(layer)}) {
    OGRFeatureH ft = feature.get();
    if (f.paperSpace >= 0 && OGR_F_IsFieldSetAndNotNull(ft, f.paperSpace) &&
        OGR_F_GetFieldAsInteger(ft, f.paperSpace) != 0) {
      continue;  // the sheet layouts, not the drawing
    }
    const Style style = ParseStyle(OGR_F_GetStyleString(ft));
    EntityStyle c;
    c.colour = style.hasColour ? style.colour : Rgb{255, 255, 255};
    const bool dxf = format == DrawingFormat::Dxf;
    c.layer = builder.LayerFor(dxf ? FieldText(ft, f.layer) : FieldText(ft, f.level), c.colour);
    c.handle = dxf ? ParseHandle(FieldText(ft, f.handle)) : 0;
    if (c.handle == 0) c.handle = ++counter;
    OGRGeometryH g = OGR_F_GetGeometryRef(ft);
    const char* subClasses = FieldText(ft, f.subClasses);
    const char* text = FieldText(ft, f.text);
    // GDAL gives a hatch its pattern's name as its text: it is no label.
    const bool hatch = dxf && Has(subClasses, "AcDbHatch");
    if (*text != '\0' && !hatch && IsPoint(g)) {
      reader.AddText(g, c, EnsureUtf8(text), dxf ? DxfCodes(subClasses, guess.version) : TextCodes::Literal,
                     style);
      continue;
    }
    Area area = Area::None;
    if (hatch) area = std::strncmp(text, "SOLID", 5) == 0 ? Area::Filled : Area::Outline;
    else if (dxf ? Has(subClasses, "AcDbTrace") : style.brush) area = Area::Filled;
    reader.AddGeometry(g, c, dxf && Has(subClasses, "AcDbCircle"), area);
  }
}

}  // namespace

LoadResult ReadWithGdal(const std::string& path, const FormatGuess& guess) {
  LoadResult result;
  RegisterDrivers();
  QuietErrors quiet;
  ConfigScope escapes("DXF_TRANSLATE_ESCAPE_SEQUENCES", "FALSE");
  ConfigScope encoding("DXF_ENCODING", DxfTextIsUtf8(guess.version) ? "UTF-8" : nullptr);
  const char* dxf[] = {"DXF", nullptr};
  const char* dgn[] = {"DGN", nullptr};
  const bool isDxf = guess.format == DrawingFormat::Dxf;
  DatasetPtr ds(GDALOpenEx(path.c_str(), GDAL_OF_VECTOR | GDAL_OF_READONLY, isDxf ? dxf : dgn,
                           nullptr, nullptr));
  if (!ds) {
    const char* message = CPLGetLastErrorMsg();
    result.detail = std::string(messages::ReasonUnreadable) +
                    ((message && *message) ? message : "it holds no drawing that GDAL can read") + ".";
    return result;
  }
  auto doc = std::make_unique<DrawingDocument>();
  doc->format = guess.format;
  doc->version = guess.version;
  doc->path = path;
  DocumentBuilder builder(*doc);
  Reader reader(builder);
  if (isDxf) {
    std::ifstream in(path, std::ios::binary);
    DxfTables tables = ReadDxfTables(in);
    reader.SeedLayers(tables.layers);
    for (auto& [type, count] : tables.entityCounts) doc->fileCounts.push_back({type, count});
  }
  std::uint64_t counter = 0;
  const int layerCount = GDALDatasetGetLayerCount(ds.get());
  for (int i = 0; i < layerCount; ++i) {
    ReadLayer(GDALDatasetGetLayer(ds.get(), i), guess, builder, reader, counter);
  }
  builder.Finish();
  if (guess.format == DrawingFormat::Dgn) SortLevels(*doc);
  result.document = std::move(doc);
  return result;
}

long long ReadFeaturesOnly(const std::string& path) {
  bool opened = false;
  const std::string head = ReadHead(path, opened);
  const FormatGuess guess = GuessFormat(path, head);
  if (!opened || !guess.readable || guess.format == DrawingFormat::Dwg) return -1;
  RegisterDrivers();
  QuietErrors quiet;
  ConfigScope escapes("DXF_TRANSLATE_ESCAPE_SEQUENCES", "FALSE");
  ConfigScope encoding("DXF_ENCODING", DxfTextIsUtf8(guess.version) ? "UTF-8" : nullptr);
  const char* drivers[] = {"DXF", "DGN", nullptr};
  DatasetPtr ds(GDALOpenEx(path.c_str(), GDAL_OF_VECTOR | GDAL_OF_READONLY, drivers, nullptr, nullptr));
  if (!ds) return -1;
  long long count = 0;
  for (int i = 0; i < GDALDatasetGetLayerCount(ds.get()); ++i) {
    OGRLayerH layer = GDALDatasetGetLayer(ds.get(), i);
    while (FeaturePtr feature{OGR_L_GetNextFeature(layer)}) {
      if (OGR_F_GetGeometryRef(feature.get()) != nullptr) ++count;
    }
  }
  return count;
}

}  // namespace parvenna::drawing
