#include "drawing/dwg_reader.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <limits>
#include <numbers>
#include <string>
#include <vector>

#include "drawing/cad_text.h"
#include "drawing/curves.h"
#include "drawing/document_builder.h"
#include "drawing/dxf_tables.h"

namespace parvenna::drawing {
namespace {

constexpr double kTwoPi = 2 * std::numbers::pi;
// Block references inside blocks: deeper than this is a loop in the file.
constexpr int kDeepestBlock = 16;
// Copies of one reference (columns times rows of a multiple insert).
constexpr double kMostCopies = 10000;
// Entities, beyond which the contents of blocks are no longer drawn in
// place: a small file can ask for billions. The model space's own entities
// are all read.
constexpr std::size_t kMostEntities = 4'000'000;

// Where the records of a block land, and what its contents inherit.
struct Place {
  Affine transform;
  std::string layer0;  // the layer that layer "0" stands for; empty in the model space
  Rgb byBlock{255, 255, 255};
  int depth = 0;
};

double Sweep(double start, double end) {
  double sweep = std::fmod(end - start, kTwoPi);
  if (sweep <= 1e-12) sweep += kTwoPi;
  return sweep;
}

bool ParseHexColour(std::string_view word, Rgb& out) {
  if (word.size() != 7 || word[0] != '#') return false;
  unsigned value = 0;
  for (char c : word.substr(1)) {
    const int d = c >= '0' && c <= '9' ? c - '0' : c >= 'a' && c <= 'f' ? c - 'a' + 10 : -1;
    if (d < 0) return false;
    value = value * 16 + static_cast<unsigned>(d);
  }
  out = {static_cast<std::uint8_t>(value >> 16), static_cast<std::uint8_t>(value >> 8),
         static_cast<std::uint8_t>(value)};
  return true;
}

// A colour number or #rrggbb; anything else is colour 7.
Rgb ColourOf(std::string_view word) {
  Rgb rgb;
  if (ParseHexColour(word, rgb)) return rgb;
  int number = 7;
  const auto [ptr, ec] = std::from_chars(word.data(), word.data() + word.size(), number);
  if (ec != std::errc() || ptr != word.data() + word.size()) number = 7;
  return AciColour(number);
}


// The angle of a direction after a placement.
double AngleAfter(const Affine& t, double angle) {
  const Point v = t.Along({std::cos(angle), std::sin(angle)});
  return std::atan2(v.y, v.x);
}

HAlign HAlignOf(int column) {
  return column == 1 ? HAlign::Centre : column == 2 ? HAlign::Right : HAlign::Left;
}

class Reader {
 public:
  Reader(const DwgRecords& records, DrawingDocument& doc) : records_(records), doc_(doc), builder_(doc) {}

  void Read() {
    for (std::size_t r : records_.Layers()) {
      FieldReader f(records_, r);
      const std::string name = f.Text();
      const Rgb colour = ColourOf(f.Word());
      const bool off = f.Flag(), frozen = f.Flag();
      if (f.ok() && !name.empty()) builder_.SeedLayer(name, !off && !frozen, colour);
    }
    const auto [begin, end] = records_.Model();
    const Place model;
    for (std::size_t r = begin; r < end; ++r) Entity(r, model);
    for (std::size_t r : records_.Counts()) {
      FieldReader f(records_, r);
      std::string type = f.Text();
      const double n = f.Number();
      // A count beyond what the file could hold is no count.
      if (f.ok() && n >= 0 && n <= std::numeric_limits<std::uint32_t>::max()) {
        doc_.fileCounts.push_back({std::move(type), static_cast<std::uint32_t>(n)});
      }
    }
    std::sort(doc_.fileCounts.begin(), doc_.fileCounts.end(),
              [](const FileCount& a, const FileCount& b) { return a.type < b.type; });
    builder_.Finish();
  }

 private:
  // The fields every entity starts with: kind, handle, layer, colour.
  EntityStyle StyleOf(FieldReader& f, const Place& place, std::string* layerName = nullptr) {
    EntityStyle style;
    style.handle = ParseHandle(f.Word());
    std::string layer = f.Text();
    if (layer.empty() || (layer == "0" && !place.layer0.empty())) {
      layer = place.layer0.empty() ? "0" : place.layer0;
    }
    style.layer = builder_.LayerFor(layer, AciColour(7));
    const std::string_view colour = f.Word();
    if (colour == "L") style.colour = builder_.LayerColour(style.layer);
    else if (colour == "B") style.colour = place.byBlock;
    else style.colour = ColourOf(colour);
    if (layerName) *layerName = std::move(layer);
    return style;
  }

  void Points(std::vector<Point>& points, const Affine& t, const EntityStyle& style) {
    for (Point& p : points) p = t(p);
    builder_.AddPoints(points, style);
  }

  // Mirrored when the entity's extrusion points down.
  static Affine Own(const Place& place, bool mirrored) {
    return mirrored ? place.transform * Affine::Mirror() : place.transform;
  }

  void Entity(std::size_t r, const Place& place) {
    if (place.depth > 0 && doc_.entities.size() >= kMostEntities) return;
    const std::string_view kind = records_.Kind(r);
    FieldReader f(records_, r);
    std::string layerName;
    const EntityStyle style = StyleOf(f, place, &layerName);
    if (!f.ok()) return;
    if (kind == "point" || kind == "line") {
      std::vector<Point> points;
      points.push_back({f.Number(), f.Number()});
      if (kind == "line") points.push_back({f.Number(), f.Number()});
      if (f.ok()) Points(points, place.transform, style);
    } else if (kind == "poly") {
      const Affine t = Own(place, f.Flag());
      std::vector<Point> points;
      if (PolyPoints(f, points) && f.ok()) Points(points, t, style);
    } else if (kind == "arc" || kind == "circle") {
      Arc(f, kind == "circle", place, style);
    } else if (kind == "ellipse") {
      const bool mirrored = f.Flag();
      const Point centre{f.Number(), f.Number()}, major{f.Number(), f.Number()};
      const double ratio = f.Number(), start = f.Number(), end = f.Number();
      std::vector<Point> points;
      if (!f.ok()) return;
      AppendEllipse(points, centre, major, ratio, start, end, mirrored ? -1 : 1);
      Points(points, place.transform, style);
    } else if (kind == "spline") {
      Spline(f, place, style);
    } else if (kind == "text") {
      Text(f, place, style);
    } else if (kind == "mtext") {
      MText(f, place, style);
    } else if (kind == "insert") {
      Insert(f, place, style, layerName);
    } else if (kind == "dimension") {
      const std::string_view name = f.Word();
      if (f.ok()) Block(name, place.transform, place, style, layerName);
    } else if (kind == "solid") {
      const Affine t = Own(place, f.Flag());
      const std::size_t n = f.Count(2);
      std::vector<std::vector<Point>> rings(1);
      for (std::size_t i = 0; i < n; ++i) rings[0].push_back(t({f.Number(), f.Number()}));
      if (f.ok() && n >= 3) builder_.AddHatch(rings, true, style);
    } else if (kind == "hatch") {
      Hatch(f, place, style);
    }
  }

  // CLOSED N (X Y BULGE)*N, the bulges drawn as their arcs.
  static bool PolyPoints(FieldReader& f, std::vector<Point>& points) {
    const bool closed = f.Flag();
    const std::size_t n = f.Count(3);
    if (!f.ok() || n == 0) return false;
    std::vector<Point> vertex(n);
    std::vector<double> bulge(n);
    for (std::size_t i = 0; i < n; ++i) {
      vertex[i] = {f.Number(), f.Number()};
      bulge[i] = f.Number();
    }
    points.push_back(vertex[0]);
    for (std::size_t i = 1; i < n; ++i) AppendBulge(points, vertex[i - 1], vertex[i], bulge[i - 1]);
    if (closed && n > 1) AppendBulge(points, vertex[n - 1], vertex[0], bulge[n - 1]);
    return true;
  }

  void Arc(FieldReader& f, bool full, const Place& place, const EntityStyle& style) {
    const Affine t = Own(place, f.Flag());
    const Point centre{f.Number(), f.Number()};
    const double radius = f.Number();
    const double start = full ? 0 : f.Number();
    const double sweep = full ? kTwoPi : Sweep(start, f.Number());
    if (!f.ok() || !(radius > 0)) return;
    if (!t.Conformal()) {
      std::vector<Point> points;
      AppendArc(points, centre, radius, start, sweep);
      Points(points, t, style);
      return;
    }
    ArcData arc;
    arc.centre = t(centre);
    arc.radius = radius * t.Scale();
    arc.end = sweep;
    // A mirroring placement runs the arc the other way: it starts at its end.
    arc.start = AngleAfter(t, t.Determinant() < 0 ? start + sweep : start);
    builder_.AddArc(arc, full, style);
  }

  // DEGREE NK K*NK NC (X Y W)*NC; false when it does not read.
  static bool SplineFields(FieldReader& f, int& degree, std::vector<double>& knots,
                           std::vector<Point>& control, std::vector<double>& weights) {
    degree = f.Whole(0, 12);  // the curves take 1 to 11
    knots.resize(f.Count(1));
    for (double& k : knots) k = f.Number();
    const std::size_t n = f.Count(3);
    control.resize(n);
    weights.resize(n);
    for (std::size_t i = 0; i < n; ++i) {
      control[i] = {f.Number(), f.Number()};
      weights[i] = f.Number();
    }
    return f.ok();
  }

  void Spline(FieldReader& f, const Place& place, const EntityStyle& style) {
    const bool closed = f.Flag();
    int degree = 0;
    std::vector<double> knots, weights;
    std::vector<Point> control, points;
    if (!SplineFields(f, degree, knots, control, weights)) return;
    const std::size_t fits = f.Count(2);
    std::vector<Point> fit(fits);
    for (Point& p : fit) p = {f.Number(), f.Number()};
    if (!f.ok()) return;
    AppendSpline(points, degree, knots, control, weights);
    if (points.size() < 2) points = fit.size() >= 2 ? fit : control;
    if (closed && points.size() > 2) points.push_back(points.front());
    Points(points, place.transform, style);
  }

  // KIND M X Y HEIGHT ROTATION WIDTH HALIGN VALIGN X2 Y2 STRING
  void Text(FieldReader& f, const Place& place, const EntityStyle& style) {
    f.Word();  // TEXT, ATTRIB or ATTDEF: all read alike
    const Affine t = Own(place, f.Flag());
    const Point first{f.Number(), f.Number()};
    const double height = f.Number(), rotation = f.Number(), width = f.Number();
    const int halign = f.Whole(-1, 6), valign = f.Whole(-1, 4);  // 0 to 5 and 0 to 3 mean something
    const Point second{f.Number(), f.Number()};
    const std::string raw = f.Text();
    if (!f.ok()) return;
    TextData text;
    text.codes = TextCodes::Single;
    text.height = static_cast<float>(height);
    text.widthFactor = static_cast<float>(width);
    double angle = rotation;
    Point anchor = first;
    if (valign == 0 && (halign == 3 || halign == 5)) {
      // Aligned and fitted text run from the first point to the second: the
      // first keeps the height and sets the width, the second the reverse.
      const double length = std::hypot(second.x - first.x, second.y - first.y);
      const double characters =
          static_cast<double>(MeasureText(ShownTextOf(raw, TextCodes::Single)).longest);
      if (length > 0 && characters > 0) {
        angle = std::atan2(second.y - first.y, second.x - first.x);
        const double natural = kCharacterWidth * characters;
        if (halign == 3) text.height = static_cast<float>(length / (natural * std::max(width, 1e-9)));
        else if (height > 0) text.widthFactor = static_cast<float>(length / (natural * height));
      }
    } else if (halign != 0 || valign != 0) {
      anchor = second;
      text.halign = halign == 4 ? HAlign::Centre : HAlignOf(halign);
      text.valign = halign == 4 || valign == 2 ? VAlign::Middle
                    : valign == 1              ? VAlign::Bottom
                    : valign == 3              ? VAlign::Top
                                               : VAlign::Baseline;
    }
    PlaceText(text, t, anchor, angle);
    builder_.AddText(text, raw, style);
  }

  // X Y HEIGHT ROTATION ATTACHMENT SPACING STRING
  void MText(FieldReader& f, const Place& place, const EntityStyle& style) {
    const Point at{f.Number(), f.Number()};
    const double height = f.Number(), rotation = f.Number();
    const int attachment = f.Whole(1, 9);
    const double spacing = f.Number();
    const std::string raw = f.Text();
    if (!f.ok()) return;
    TextData text;
    text.codes = TextCodes::MText;
    text.height = static_cast<float>(height);
    text.spacing = static_cast<float>(spacing);
    text.halign = HAlignOf((attachment - 1) % 3);
    const int row = (attachment - 1) / 3;
    text.valign = row == 0 ? VAlign::Top : row == 1 ? VAlign::Middle : VAlign::Bottom;
    PlaceText(text, place.transform, at, rotation);
    builder_.AddText(text, raw, style);
  }

  // A text's anchor, angle and size after its placement: the height follows
  // the placement's scale across the baseline, the width along it.
  static void PlaceText(TextData& text, const Affine& t, Point anchor, double angle) {
    const Point along = t.Along({std::cos(angle), std::sin(angle)});
    const Point across = t.Along({-std::sin(angle), std::cos(angle)});
    const double x = std::hypot(along.x, along.y), y = std::hypot(across.x, across.y);
    text.insertion = t(anchor);
    text.rotation = static_cast<float>(std::atan2(along.y, along.x));
    if (y > 0) {
      text.height = static_cast<float>(text.height * y);
      text.widthFactor = static_cast<float>(text.widthFactor * x / y);
    }
  }

  // M NAME X Y SX SY ROTATION COLUMNS ROWS COLUMNGAP ROWGAP
  void Insert(FieldReader& f, const Place& place, const EntityStyle& style, const std::string& layer) {
    const Affine t = Own(place, f.Flag());
    const std::string_view name = f.Word();
    const Point at{f.Number(), f.Number()};
    const double sx = f.Number(), sy = f.Number(), rotation = f.Number();
    const double columns = std::max(1.0, f.Number()), rows = std::max(1.0, f.Number());
    const double columnGap = f.Number(), rowGap = f.Number();
    if (!f.ok() || sx == 0 || sy == 0 || columns * rows > kMostCopies) return;
    const Affine base = t * Affine::Translation(at.x, at.y) * Affine::Rotation(rotation);
    for (int i = 0; i < static_cast<int>(columns); ++i) {
      for (int j = 0; j < static_cast<int>(rows); ++j) {
        const Affine copy = base * Affine::Translation(i * columnGap, j * rowGap) * Affine::Scaling(sx, sy);
        Block(name, copy, place, style, layer);
      }
    }
  }

  // The block's entities drawn with this placement (its base point first
  // brought to the origin).
  void Block(std::string_view name, const Affine& placement, const Place& outer,
             const EntityStyle& style, const std::string& layer) {
    std::size_t header = 0;
    DwgRecords::Range range;
    if (outer.depth >= kDeepestBlock || !records_.Block(name, header, range)) return;
    FieldReader f(records_, header, 2);
    const Point base{f.Number(), f.Number()};
    Place inner;
    inner.transform = placement * Affine::Translation(-base.x, -base.y);
    inner.layer0 = layer;
    inner.byBlock = style.colour;
    inner.depth = outer.depth + 1;
    for (std::size_t r = range.first; r < range.second; ++r) Entity(r, inner);
  }

  // M SOLID NLOOPS, each loop NEDGES and its edges.
  void Hatch(FieldReader& f, const Place& place, const EntityStyle& style) {
    const Affine t = Own(place, f.Flag());
    const bool solid = f.Flag();
    const std::size_t loops = f.Count(1);
    std::vector<std::vector<Point>> rings;
    for (std::size_t l = 0; l < loops && f.ok(); ++l) {
      std::vector<Point> ring;
      const std::size_t edges = f.Count(1);
      for (std::size_t k = 0; k < edges && f.ok(); ++k) Edge(f, ring);
      if (ring.size() >= 2 && (ring.front().x != ring.back().x || ring.front().y != ring.back().y)) {
        ring.push_back(ring.front());
      }
      for (Point& p : ring) p = t(p);
      rings.push_back(std::move(ring));
    }
    if (f.ok()) builder_.AddHatch(rings, solid, style);
  }

  static void Edge(FieldReader& f, std::vector<Point>& ring) {
    const std::string_view type = f.Word();
    std::vector<Point> points;
    if (type == "L") {
      points.push_back({f.Number(), f.Number()});
      points.push_back({f.Number(), f.Number()});
    } else if (type == "A" || type == "E") {
      const Point centre{f.Number(), f.Number()};
      Point major{f.Number(), 0};
      if (type == "E") major.y = f.Number();
      const double ratio = type == "E" ? f.Number() : 1;
      double start = f.Number(), end = f.Number();
      const bool anticlockwise = f.Flag();
      // A clockwise edge keeps its angles as seen from below the plane.
      if (!anticlockwise) {
        start = -start;
        end = -end;
      }
      const double sweep = anticlockwise ? Sweep(start, end) : -Sweep(end, start);
      if (type == "A") {
        AppendArc(points, centre, major.x, start, sweep);
      } else if (anticlockwise) {
        AppendEllipse(points, centre, major, ratio, start, start + sweep);
      } else {
        AppendEllipse(points, centre, major, ratio, end, start);
        std::reverse(points.begin(), points.end());
      }
    } else if (type == "S") {
      int degree = 0;
      std::vector<double> knots, weights;
      std::vector<Point> control;
      if (SplineFields(f, degree, knots, control, weights)) AppendSpline(points, degree, knots, control, weights);
    } else if (type == "P") {
      PolyPoints(f, points);
    } else {
      f.Fail();  // an edge of no known kind
      return;
    }
    if (!f.ok() || points.empty()) return;
    const bool joins = !ring.empty() && ring.back().x == points.front().x && ring.back().y == points.front().y;
    ring.insert(ring.end(), points.begin() + (joins ? 1 : 0), points.end());
  }

  const DwgRecords& records_;
  DrawingDocument& doc_;
  DocumentBuilder builder_;
};

}  // namespace

void ReadDwgRecords(const DwgRecords& records, DrawingDocument& document) {
  Reader(records, document).Read();
}

}  // namespace parvenna::drawing
