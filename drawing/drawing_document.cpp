// The one place that talks to GDAL: a drawing's features become our own
// entities here, and nothing of GDAL leaves this file.
#include "drawing/drawing_document.h"

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
#include "drawing/dxf_tables.h"

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
      } else if (key == "fc" && !style.hasColour) {
        style.hasColour = brushColour = ParseColour(value, style.colour);
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

std::uint64_t ParseHandle(const char* text) {
  if (text == nullptr || *text == '\0') return 0;
  char* end = nullptr;
  const unsigned long long v = std::strtoull(text, &end, 16);
  return (end != nullptr && *end == '\0') ? v : 0;
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

struct Common {
  std::uint16_t layer = 0;
  Rgb colour;
  std::uint64_t handle = 0;
};

class Reader {
 public:
  explicit Reader(DrawingDocument& doc) : doc_(doc) {}

  void SeedLayers(const std::vector<DxfLayerEntry>& table) {
    for (const auto& entry : table) {
      if (index_.contains(entry.name) || doc_.layers.size() >= 0xFFFF) continue;
      Layer layer;
      layer.name = entry.name;
      layer.on = !entry.off && !entry.frozen;
      layer.colour = entry.trueColour ? *entry.trueColour : AciColour(entry.colour);
      index_.emplace(entry.name, static_cast<std::uint16_t>(doc_.layers.size()));
      doc_.layers.push_back(std::move(layer));
    }
  }

  std::uint16_t LayerFor(std::string_view name, Rgb colour) {
    if (hasLast_ && name == lastName_) return last_;
    auto it = index_.find(std::string(name));
    std::uint16_t at = 0;
    if (it != index_.end()) {
      at = it->second;
    } else if (doc_.layers.size() < 0xFFFF) {
      at = static_cast<std::uint16_t>(doc_.layers.size());
      doc_.layers.push_back({std::string(name), true, colour, 0});
      index_.emplace(std::string(name), at);
    } else {
      at = static_cast<std::uint16_t>(doc_.layers.size() - 1);
    }
    lastName_.assign(name);
    last_ = at;
    hasLast_ = true;
    return at;
  }

  void AddGeometry(OGRGeometryH g, const Common& c, bool arcHint, int depth = 0) {
    if (g == nullptr || depth > 32) return;
    const OGRwkbGeometryType type = wkbFlatten(OGR_G_GetGeometryType(g));
    switch (type) {
      case wkbPoint:
        AddVertices(EntityKind::Point, g, c);
        return;
      case wkbLineString:
        if (AddFittedArc(g, c, arcHint)) return;
        AddVertices(OGR_G_GetPointCount(g) == 2 ? EntityKind::Line : EntityKind::Polyline, g, c);
        return;
      case wkbCircularString:
        if (AddCircularString(g, c)) return;
        break;
      case wkbPolygon:
      case wkbMultiPoint:
      case wkbMultiLineString:
      case wkbMultiPolygon:
      case wkbGeometryCollection:
        for (int i = 0; i < OGR_G_GetGeometryCount(g); ++i) {
          AddGeometry(OGR_G_GetGeometryRef(g, i), c, arcHint, depth + 1);
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
    AddGeometry(linear.get(), c, false, depth + 1);
  }

  void AddText(OGRGeometryH g, const Common& c, std::string raw, std::string shown,
               const Style& style) {
    Point at;
    if (g != nullptr && OGR_G_GetPointCount(g) > 0) {
      at = {OGR_G_GetX(g, 0), OGR_G_GetY(g, 0)};
    } else if (g != nullptr) {
      OGREnvelope env;
      OGR_G_GetEnvelope(g, &env);
      at = {env.MinX, env.MinY};
    }
    if (!std::isfinite(at.x) || !std::isfinite(at.y)) return;
    TextData t;
    t.insertion = at;
    // A height beyond what a float holds is no height; one is made up later.
    t.height = static_cast<float>(style.size > 0 && style.size < 1e30 ? style.size : 0);
    t.rotation = static_cast<float>(std::isfinite(style.angle) ? style.angle * std::numbers::pi / 180 : 0);
    AnchorOf(style.anchor, t.halign, t.valign);
    const TextMeasure m = MeasureText(shown);
    t.lines = static_cast<std::uint16_t>(std::min<std::size_t>(m.lines, 0xFFFF));
    longest_.push_back(static_cast<std::uint32_t>(m.longest));
    t.raw = static_cast<std::uint32_t>(doc_.pool.size());
    t.rawLength = static_cast<std::uint32_t>(raw.size());
    doc_.pool += raw;
    if (shown == raw) {
      t.shown = t.raw;
      t.shownLength = t.rawLength;
    } else {
      t.shown = static_cast<std::uint32_t>(doc_.pool.size());
      t.shownLength = static_cast<std::uint32_t>(shown.size());
      doc_.pool += shown;
    }
    Entity e;
    e.kind = EntityKind::Text;
    e.first = static_cast<std::uint32_t>(doc_.texts.size());
    Finish(e, c, Box::Of(at.x, at.y, at.x, at.y));
    doc_.texts.push_back(t);
  }

  // Texts without a height get one from the size of the drawing; then each
  // text's box joins its bounds and the extent.
  void FinishTexts() {
    Box extent = doc_.extent;
    const double size = std::max(extent.Width(), extent.Height());
    const float fallback = static_cast<float>(size > 0 ? size / 200 : 1.0);
    for (std::size_t i = 0; i < doc_.texts.size(); ++i) {
      TextData& t = doc_.texts[i];
      if (!(t.height > 0)) t.height = fallback;
      t.width = static_cast<float>(kCharacterWidth * t.height * longest_[i]);
    }
    for (Entity& e : doc_.entities) {
      if (e.kind != EntityKind::Text) continue;
      Box b;
      for (const Point& p : TextCorners(doc_.texts[e.first])) b.Add(p);
      e.bounds = b;
      doc_.extent.Add(b);
    }
  }

 private:
  void Finish(Entity& e, const Common& c, const Box& bounds) {
    e.bounds = bounds;
    e.layer = c.layer;
    e.colour = c.colour;
    e.handle = c.handle;
    doc_.entities.push_back(e);
    doc_.layers[c.layer].entityCount++;
    doc_.extent.Add(bounds);
  }

  void AddVertices(EntityKind kind, OGRGeometryH g, const Common& c) {
    const int n = OGR_G_GetPointCount(g);
    if (n <= 0) return;
    const std::size_t first = doc_.vertices.size();
    doc_.vertices.resize(first + static_cast<std::size_t>(n));
    Point* out = doc_.vertices.data() + first;
    OGR_G_GetPoints(g, &out->x, sizeof(Point), &out->y, sizeof(Point), nullptr, 0);
    Box b;
    for (int i = 0; i < n; ++i) {
      if (!std::isfinite(out[i].x) || !std::isfinite(out[i].y)) {
        doc_.vertices.resize(first);
        return;
      }
      b.Add(out[i]);
    }
    Entity e;
    e.kind = n == 1 ? EntityKind::Point : kind;
    e.first = static_cast<std::uint32_t>(first);
    e.count = static_cast<std::uint32_t>(n);
    Finish(e, c, b);
  }

  void AddArc(const ArcData& arc, bool full, const Common& c) {
    Entity e;
    e.kind = full ? EntityKind::Circle : EntityKind::Arc;
    e.first = static_cast<std::uint32_t>(doc_.arcs.size());
    doc_.arcs.push_back(arc);
    Box b;
    if (full) {
      b = Box::Of(arc.centre.x - arc.radius, arc.centre.y - arc.radius, arc.centre.x + arc.radius,
                  arc.centre.y + arc.radius);
    } else {
      const auto at = [&](double a) {
        return Point{arc.centre.x + arc.radius * std::cos(a), arc.centre.y + arc.radius * std::sin(a)};
      };
      b.Add(at(arc.start));
      b.Add(at(arc.start + arc.end));
      // The quadrant points that the sweep passes.
      for (int q = 0; q < 8; ++q) {
        const double a = q * std::numbers::pi / 2;
        if (AnticlockwiseFrom(arc.start, a) <= arc.end) b.Add(at(a));
      }
    }
    Finish(e, c, b);
  }

  // DXF arcs and circles arrive as points on the curve; the curve is found
  // again from them, so it is kept as three numbers instead of ninety points.
  // Without the entity's word for it (files without subclass markers), only
  // points that stand as closely as the reader places them are taken for a
  // curve, so that a square is not read as its circumscribed circle.
  bool AddFittedArc(OGRGeometryH g, const Common& c, bool known) {
    const int n = OGR_G_GetPointCount(g);
    if (n < (known ? 4 : 8)) return false;
    std::vector<Point>& pts = scratch_;
    pts.resize(static_cast<std::size_t>(n));
    OGR_G_GetPoints(g, &pts[0].x, sizeof(Point), &pts[0].y, sizeof(Point), nullptr, 0);
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
    AddArc(arc, full, c);
    return true;
  }

  bool AddCircularString(OGRGeometryH g, const Common& c) {
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
    AddArc(arc, full, c);
    return true;
  }

  DrawingDocument& doc_;
  std::unordered_map<std::string, std::uint16_t> index_;
  std::string lastName_;
  std::uint16_t last_ = 0;
  bool hasLast_ = false;
  std::vector<Point> scratch_;
  std::vector<std::uint32_t> longest_;
};

struct Fields {
  int layer = -1, paperSpace = -1, subClasses = -1, handle = -1, text = -1, level = -1,
      cadType = -1, cadText = -1;
};

Fields FieldsOf(OGRFeatureDefnH defn) {
  Fields f;
  f.layer = OGR_FD_GetFieldIndex(defn, "Layer");
  f.paperSpace = OGR_FD_GetFieldIndex(defn, "PaperSpace");
  f.subClasses = OGR_FD_GetFieldIndex(defn, "SubClasses");
  f.handle = OGR_FD_GetFieldIndex(defn, "EntityHandle");
  f.text = OGR_FD_GetFieldIndex(defn, "Text");
  f.level = OGR_FD_GetFieldIndex(defn, "Level");
  f.cadType = OGR_FD_GetFieldIndex(defn, "cadgeom_type");
  f.cadText = OGR_FD_GetFieldIndex(defn, "text");
  return f;
}

const char* FieldText(OGRFeatureH feature, int index) {
  if (index < 0 || !OGR_F_IsFieldSetAndNotNull(feature, index)) return "";
  return OGR_F_GetFieldAsString(feature, index);
}

bool IsCadText(const char* type) {
  return std::strcmp(type, "CADText") == 0 || std::strcmp(type, "CADMText") == 0 ||
         std::strcmp(type, "CADAttdef") == 0 || std::strcmp(type, "CADAttrib") == 0;
}

void ReadLayer(OGRLayerH layer, DrawingFormat format, Reader& reader, std::uint64_t& counter) {
  const Fields f = FieldsOf(OGR_L_GetLayerDefn(layer));
  const std::string cadLayerName = EnsureUtf8(OGR_L_GetName(layer));
  OGR_L_ResetReading(layer);
  std::string levelName;
  while (FeaturePtr feature{OGR_L_GetNextFeature(layer)}) {
    OGRFeatureH ft = feature.get();
    if (f.paperSpace >= 0 && OGR_F_IsFieldSetAndNotNull(ft, f.paperSpace) &&
        OGR_F_GetFieldAsInteger(ft, f.paperSpace) != 0) {
      continue;  // the sheet layouts, not the drawing
    }
    const Style style = ParseStyle(OGR_F_GetStyleString(ft));
    Common c;
    c.colour = style.hasColour ? style.colour : Rgb{255, 255, 255};
    switch (format) {
      case DrawingFormat::Dxf:
        c.layer = reader.LayerFor(FieldText(ft, f.layer), c.colour);
        c.handle = ParseHandle(FieldText(ft, f.handle));
        if (c.handle == 0) c.handle = ++counter;
        break;
      case DrawingFormat::Dgn:
        levelName = FieldText(ft, f.level);
        c.layer = reader.LayerFor(levelName, c.colour);
        c.handle = ++counter;
        break;
      default:
        c.layer = reader.LayerFor(cadLayerName, c.colour);
        c.handle = ++counter;
        break;
    }
    OGRGeometryH g = OGR_F_GetGeometryRef(ft);
    const char* text = "";
    if (format == DrawingFormat::Dwg) {
      if (IsCadText(FieldText(ft, f.cadType))) text = FieldText(ft, f.cadText);
    } else {
      text = FieldText(ft, f.text);
    }
    if (*text != '\0') {
      std::string raw = EnsureUtf8(text);
      std::string shown = format == DrawingFormat::Dgn ? raw : ShownTextOf(raw);
      reader.AddText(g, c, std::move(raw), std::move(shown), style);
      continue;
    }
    const bool arcHint = format == DrawingFormat::Dxf &&
                         std::strstr(FieldText(ft, f.subClasses), "AcDbCircle") != nullptr;
    reader.AddGeometry(g, c, arcHint);
  }
}

std::string ReadHead(const std::string& path, bool& opened) {
  std::ifstream in(path, std::ios::binary);
  opened = static_cast<bool>(in);
  std::string head(16384, '\0');
  if (!opened) return {};
  in.read(head.data(), static_cast<std::streamsize>(head.size()));
  head.resize(static_cast<std::size_t>(in.gcount()));
  return head;
}

}  // namespace

LoadResult LoadDrawing(const std::string& path) {
  LoadResult result;
  try {
    bool opened = false;
    const std::string head = ReadHead(path, opened);
    if (!opened) {
      result.detail = "the file cannot be opened";
      return result;
    }
    const FormatGuess guess = GuessFormat(path, head);
    if (!guess.readable) {
      result.detail = guess.detail;
      return result;
    }
    RegisterDrivers();
    QuietErrors quiet;
    ConfigScope escapes("DXF_TRANSLATE_ESCAPE_SEQUENCES", "FALSE");
    ConfigScope encoding("DXF_ENCODING", DxfTextIsUtf8(guess.version) ? "UTF-8" : nullptr);
    const char* dxf[] = {"DXF", nullptr};
    const char* cad[] = {"CAD", nullptr};
    const char* dgn[] = {"DGN", nullptr};
    const char* const* allowed = guess.format == DrawingFormat::Dxf   ? dxf
                                 : guess.format == DrawingFormat::Dwg ? cad
                                                                      : dgn;
    DatasetPtr ds(GDALOpenEx(path.c_str(), GDAL_OF_VECTOR | GDAL_OF_READONLY, allowed, nullptr,
                             nullptr));
    if (!ds) {
      const char* message = CPLGetLastErrorMsg();
      result.detail = (message && *message) ? message : "the drawing cannot be read";
      return result;
    }
    auto doc = std::make_unique<DrawingDocument>();
    doc->format = guess.format;
    doc->path = path;
    Reader reader(*doc);
    if (guess.format == DrawingFormat::Dxf) {
      std::ifstream in(path, std::ios::binary);
      reader.SeedLayers(ReadDxfLayerTable(in));
    }
    std::uint64_t counter = 0;
    const int layerCount = GDALDatasetGetLayerCount(ds.get());
    for (int i = 0; i < layerCount; ++i) {
      ReadLayer(GDALDatasetGetLayer(ds.get(), i), guess.format, reader, counter);
    }
    reader.FinishTexts();
    if (guess.format == DrawingFormat::Dgn) SortLevels(*doc);
    doc->vertices.shrink_to_fit();
    doc->entities.shrink_to_fit();
    doc->texts.shrink_to_fit();
    doc->arcs.shrink_to_fit();
    doc->pool.shrink_to_fit();
    result.document = std::move(doc);
  } catch (const std::exception& e) {
    result.document.reset();
    result.detail = e.what();
  }
  return result;
}

long long ReadFeaturesOnly(const std::string& path) {
  bool opened = false;
  const std::string head = ReadHead(path, opened);
  const FormatGuess guess = GuessFormat(path, head);
  if (!opened || !guess.readable) return -1;
  RegisterDrivers();
  QuietErrors quiet;
  ConfigScope escapes("DXF_TRANSLATE_ESCAPE_SEQUENCES", "FALSE");
  ConfigScope encoding("DXF_ENCODING", DxfTextIsUtf8(guess.version) ? "UTF-8" : nullptr);
  DatasetPtr ds(GDALOpenEx(path.c_str(), GDAL_OF_VECTOR | GDAL_OF_READONLY, nullptr, nullptr, nullptr));
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
