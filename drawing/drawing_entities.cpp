#include <algorithm>
#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <numeric>

#include "drawing/cad_text.h"
#include "drawing/drawing_document.h"

namespace parvenna::drawing {

std::string_view KindName(EntityKind kind) {
  switch (kind) {
    case EntityKind::Point: return "POINT";
    case EntityKind::Line: return "LINE";
    case EntityKind::Polyline: return "POLYLINE";
    case EntityKind::Arc: return "ARC";
    case EntityKind::Circle: return "CIRCLE";
    case EntityKind::Text: return "TEXT";
    case EntityKind::Hatch: return "HATCH";
  }
  return "";
}

std::string DrawingDocument::HandleText(const Entity& entity) const {
  char buffer[24];
  std::snprintf(buffer, sizeof buffer, "%llX", static_cast<unsigned long long>(entity.handle));
  return buffer;
}

std::uint64_t ParseHandle(std::string_view text) {
  if (text.empty() || text.size() > 16) return 0;
  std::uint64_t v = 0;
  for (char ch : text) {
    int d = -1;
    if (ch >= '0' && ch <= '9') d = ch - '0';
    else if (ch >= 'a' && ch <= 'f') d = ch - 'a' + 10;
    else if (ch >= 'A' && ch <= 'F') d = ch - 'A' + 10;
    if (d < 0) return 0;
    v = v * 16 + static_cast<std::uint64_t>(d);
  }
  return v;
}

std::string DrawingDocument::PickText(const TextData& text) const {
  return PickTextOf(RawText(text), text.codes);
}

std::uint32_t DrawingDocument::FileCountOf(std::string_view type) const {
  for (const FileCount& c : fileCounts) {
    if (c.type == type) return c.count;
  }
  return 0;
}

std::size_t DrawingDocument::MemoryBytes() const {
  std::size_t bytes = sizeof(*this) + entities.capacity() * sizeof(Entity) +
                      vertices.capacity() * sizeof(Point) + arcs.capacity() * sizeof(ArcData) +
                      texts.capacity() * sizeof(TextData) + pool.capacity();
  for (const Layer& layer : layers) bytes += sizeof(Layer) + layer.name.capacity();
  for (const FileCount& c : fileCounts) bytes += sizeof(FileCount) + c.type.capacity();
  return bytes;
}

std::array<Point, 4> TextCorners(const TextData& text) {
  const double h = text.height;
  const double w = text.width;
  const double below = (text.lines - 1) * kLineSpacing * text.spacing * h;  // under the first baseline
  double x0 = 0;
  if (text.halign == HAlign::Centre) x0 = -w / 2;
  if (text.halign == HAlign::Right) x0 = -w;
  // Box from the lowest baseline to the top of the first line, in local units.
  double y0 = -below, y1 = h;
  const double total = h + below;
  switch (text.valign) {
    case VAlign::Baseline: break;
    case VAlign::Top: y0 = -total; y1 = 0; break;
    case VAlign::Middle: y0 = -total / 2; y1 = total / 2; break;
    case VAlign::Bottom: y0 = 0; y1 = total; break;
  }
  const double c = std::cos(text.rotation), s = std::sin(text.rotation);
  const auto place = [&](double x, double y) {
    return Point{text.insertion.x + x * c - y * s, text.insertion.y + x * s + y * c};
  };
  return {place(x0, y0), place(x0 + w, y0), place(x0 + w, y1), place(x0, y1)};
}

void SortLevels(DrawingDocument& document) {
  auto& layers = document.layers;
  std::vector<std::uint16_t> order(layers.size());
  std::iota(order.begin(), order.end(), std::uint16_t{0});
  std::stable_sort(order.begin(), order.end(), [&](std::uint16_t a, std::uint16_t b) {
    return std::atol(layers[a].name.c_str()) < std::atol(layers[b].name.c_str());
  });
  std::vector<std::uint16_t> newIndex(layers.size());
  std::vector<Layer> sorted;
  sorted.reserve(layers.size());
  for (std::size_t i = 0; i < order.size(); ++i) {
    newIndex[order[i]] = static_cast<std::uint16_t>(i);
    sorted.push_back(std::move(layers[order[i]]));
  }
  layers = std::move(sorted);
  for (Entity& e : document.entities) e.layer = newIndex[e.layer];
}

}  // namespace parvenna::drawing
