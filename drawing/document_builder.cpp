#include "drawing/document_builder.h"

#include <algorithm>
#include <cmath>
#include <numbers>
#include <unordered_set>

#include "drawing/cad_text.h"

namespace parvenna::drawing {
namespace {

bool Finite(Point p) { return std::isfinite(p.x) && std::isfinite(p.y); }

double AnticlockwiseFrom(double from, double to) {
  double d = std::fmod(to - from, 2 * std::numbers::pi);
  if (d < 0) d += 2 * std::numbers::pi;
  return d;
}

}  // namespace

void DocumentBuilder::SeedLayer(const std::string& name, bool on, Rgb colour) {
  if (index_.contains(name) || doc_.layers.size() >= 0xFFFF) return;
  index_.emplace(name, static_cast<std::uint16_t>(doc_.layers.size()));
  doc_.layers.push_back({name, on, colour, 0});
}

std::uint16_t DocumentBuilder::LayerFor(std::string_view name, Rgb colour) {
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

void DocumentBuilder::Add(Entity& e, const EntityStyle& style, const Box& bounds) {
  e.bounds = bounds;
  e.layer = style.layer;
  e.colour = style.colour;
  e.handle = style.handle;
  doc_.entities.push_back(e);
  doc_.layers[style.layer].entityCount++;
  doc_.extent.Add(bounds);
}

void DocumentBuilder::AddPoints(std::span<const Point> points, const EntityStyle& style,
                                EntityKind twoPoints) {
  if (points.empty() || !std::all_of(points.begin(), points.end(), Finite)) return;
  Box b;
  for (const Point& p : points) b.Add(p);
  Entity e;
  e.kind = points.size() == 1 ? EntityKind::Point
           : points.size() == 2 ? twoPoints
                                : EntityKind::Polyline;
  e.first = static_cast<std::uint32_t>(doc_.vertices.size());
  e.count = static_cast<std::uint32_t>(points.size());
  doc_.vertices.insert(doc_.vertices.end(), points.begin(), points.end());
  Add(e, style, b);
}

void DocumentBuilder::AddArc(const ArcData& arc, bool full, const EntityStyle& style) {
  if (!Finite(arc.centre) || !std::isfinite(arc.radius) || !(arc.radius > 0) ||
      !std::isfinite(arc.start) || !std::isfinite(arc.end)) {
    return;
  }
  Entity e;
  e.kind = full ? EntityKind::Circle : EntityKind::Arc;
  e.first = static_cast<std::uint32_t>(doc_.arcs.size());
  doc_.arcs.push_back(arc);
  if (full) doc_.arcs.back().end = 2 * std::numbers::pi;
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
  Add(e, style, b);
}

void DocumentBuilder::AddText(TextData t, std::string_view raw, const EntityStyle& style) {
  if (!Finite(t.insertion) || raw.empty()) return;
  // A height beyond what a float holds is no height; one is made up later.
  if (!(std::isfinite(t.height) && t.height > 0)) t.height = 0;
  if (!std::isfinite(t.rotation)) t.rotation = 0;
  if (!(std::isfinite(t.widthFactor) && t.widthFactor > 0)) t.widthFactor = 1;
  if (!(std::isfinite(t.spacing) && t.spacing > 0)) t.spacing = 1;
  const std::string shown = ShownTextOf(raw, t.codes);
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
  doc_.texts.push_back(t);
  Add(e, style, Box::Of(t.insertion.x, t.insertion.y, t.insertion.x, t.insertion.y));
}

void DocumentBuilder::AddHatch(const std::vector<std::vector<Point>>& rings, bool filled,
                               const EntityStyle& style) {
  const std::size_t first = doc_.vertices.size();
  Box b;
  for (const std::vector<Point>& ring : rings) {
    if (ring.size() < 2 || !std::all_of(ring.begin(), ring.end(), Finite)) continue;
    for (const Point& p : ring) b.Add(p);
    doc_.vertices.insert(doc_.vertices.end(), ring.begin(), ring.end());
    doc_.vertices.push_back({std::nan(""), std::nan("")});
  }
  if (doc_.vertices.size() == first) return;
  Entity e;
  e.kind = EntityKind::Hatch;
  e.flags = filled ? kFilled : 0;
  e.first = static_cast<std::uint32_t>(first);
  e.count = static_cast<std::uint32_t>(doc_.vertices.size() - first);
  Add(e, style, b);
}

void DocumentBuilder::Finish() {
  const Box extent = doc_.extent;
  const double size = std::max(extent.Width(), extent.Height());
  const float fallback = static_cast<float>(size > 0 ? size / 200 : 1.0);
  for (std::size_t i = 0; i < doc_.texts.size(); ++i) {
    TextData& t = doc_.texts[i];
    if (!(t.height > 0)) t.height = fallback;
    t.width = static_cast<float>(kCharacterWidth * t.height * t.widthFactor * longest_[i]);
  }
  std::uint64_t largest = 0;
  for (const Entity& e : doc_.entities) largest = std::max(largest, e.handle);
  std::unordered_set<std::uint64_t> seen;
  seen.reserve(doc_.entities.size());
  for (Entity& e : doc_.entities) {
    if (e.handle == 0 || !seen.insert(e.handle).second) e.handle = ++largest;
    if (e.kind != EntityKind::Text) continue;
    Box b;
    for (const Point& p : TextCorners(doc_.texts[e.first])) b.Add(p);
    e.bounds = b;
    doc_.extent.Add(b);
  }
  doc_.vertices.shrink_to_fit();
  doc_.entities.shrink_to_fit();
  doc_.texts.shrink_to_fit();
  doc_.arcs.shrink_to_fit();
  doc_.pool.shrink_to_fit();
}

}  // namespace parvenna::drawing
