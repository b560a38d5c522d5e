#include "drawing/entity_painter.h"

#include <algorithm>
#include <cmath>
#include <string_view>

#include "drawing/viewer.h"

namespace parvenna::drawing {
namespace {

constexpr double kSmallestReadableText = 2.0;  // picture units

std::size_t Characters(std::string_view line) {
  std::size_t n = 0;
  for (char c : line) n += (static_cast<unsigned char>(c) & 0xC0) != 0x80;
  return n;
}

}  // namespace

Rgb ContrastOf(Rgb back) {
  const int luminance = (299 * back.r + 587 * back.g + 114 * back.b) / 1000;
  return luminance > 127 ? colours::Black : colours::White;
}

EntityPainter::EntityPainter(const DrawingDocument& document, Canvas& canvas,
                             const PaintTransform& transform, Rgb back, int foreNumber,
                             PaintScratch& scratch, PicturePart part)
    : doc_(document), canvas_(canvas), t_(transform), back_(back), contrast_(ContrastOf(back)),
      markColour_(UsedMarkColour), scratch_(scratch), part_(part) {
  override_ = true;
  switch (foreNumber) {
    case ForeWhite: fore_ = colours::White; break;
    case ForeBlack: fore_ = colours::Black; break;
    case ForeYellow: fore_ = colours::Yellow; break;
    case ForeBlue: fore_ = Rgb{0, 0, 255}; break;
    default: override_ = false; break;
  }
  if (part_.Empty()) {
    part_ = {0, 0, static_cast<int>(std::clamp(std::ceil(canvas.Width()), 0.0, 16384.0)),
             static_cast<int>(std::clamp(std::ceil(canvas.Height()), 0.0, 16384.0))};
  }
  partWidth_ = part_.Empty() ? 0 : static_cast<std::size_t>(part_.right - part_.left);
  const std::size_t height = part_.Empty() ? 0 : static_cast<std::size_t>(part_.bottom - part_.top);
  scratch_.dots.assign((partWidth_ * height + 63) / 64, 0);
}

// A dot is the one pixel nearest to its point, as the canvas paints it.
void EntityPainter::Dot(CanvasPoint p, Rgb colour) {
  const double x = std::floor(p.x + 0.5) - part_.left, y = std::floor(p.y + 0.5) - part_.top;
  if (!(x >= 0 && y >= 0 && x < part_.right - part_.left && y < part_.bottom - part_.top)) return;
  const std::size_t bit = static_cast<std::size_t>(y) * partWidth_ + static_cast<std::size_t>(x);
  std::uint64_t& word = scratch_.dots[bit / 64];
  const std::uint64_t mask = std::uint64_t{1} << (bit % 64);
  if (word & mask) return;
  word |= mask;
  canvas_.Line(p.x, p.y, p.x, p.y, colour);
}

void EntityPainter::Paint(const Entity& e, bool marked) {
  const Rgb colour = ColourOf(e, marked);
  const double sw = e.bounds.Width() * t_.scale, sh = e.bounds.Height() * t_.scale;
  if (sw < 1 && sh < 1) {
    Dot(t_.To(e.bounds.Centre()), colour);
    return;
  }
  switch (e.kind) {
    case EntityKind::Point:
      Dot(t_.To(doc_.vertices[e.first]), colour);
      return;
    case EntityKind::Line: {
      const CanvasPoint a = t_.To(doc_.vertices[e.first]), b = t_.To(doc_.vertices[e.first + 1]);
      canvas_.Line(a.x, a.y, b.x, b.y, colour);
      return;
    }
    case EntityKind::Polyline: {
      auto& pts = scratch_.points;
      pts.clear();
      const auto vertices = doc_.VerticesOf(e);
      for (std::size_t k = 0; k < vertices.size(); ++k) {
        const CanvasPoint p = t_.To(vertices[k]);
        if (!pts.empty() && k + 1 < vertices.size() && std::abs(p.x - pts.back().x) < 0.5 &&
            std::abs(p.y - pts.back().y) < 0.5) {
          continue;
        }
        pts.push_back(p);
      }
      canvas_.Polyline(pts, colour);
      return;
    }
    case EntityKind::Arc:
    case EntityKind::Circle: {
      const ArcData& a = doc_.ArcOf(e);
      const CanvasPoint c = t_.To(a.centre);
      const double end = e.kind == EntityKind::Circle ? a.start : a.start + a.end;
      canvas_.Circle(c.x, c.y, a.radius * t_.scale, colour, a.start, end);
      return;
    }
    case EntityKind::Text:
      PaintText(e, colour);
      return;
    case EntityKind::Hatch:
      PaintHatch(e, colour);
      return;
  }
}

void EntityPainter::PaintHatch(const Entity& e, Rgb colour) {
  auto& pts = scratch_.points;
  pts.clear();
  scratch_.ringEnds.clear();
  ForEachRing(doc_.VerticesOf(e), [&](std::span<const Point> ring) {
    for (const Point& p : ring) pts.push_back(t_.To(p));
    scratch_.ringEnds.push_back(pts.size());
  });
  if (e.flags & kFilled) {
    canvas_.Fill(pts, scratch_.ringEnds, colour);
    return;
  }
  std::size_t start = 0;
  for (const std::size_t end : scratch_.ringEnds) {
    canvas_.Polyline(std::span<const CanvasPoint>(pts).subspan(start, end - start), colour);
    start = end;
  }
}

void EntityPainter::PaintText(const Entity& e, Rgb colour) {
  const TextData& text = doc_.TextOf(e);
  const double h = text.height;
  if (h * t_.scale < kSmallestReadableText) {
    const auto corners = TextCorners(text);
    const CanvasPoint a = t_.To(corners[0]), b = t_.To(corners[1]);
    canvas_.Line(a.x, a.y, b.x, b.y, colour);
    return;
  }
  const std::string_view shown = doc_.ShownText(text);
  const double spacing = kLineSpacing * text.spacing * h;
  const double total = h + (text.lines - 1) * spacing;
  double firstBaseline = 0;
  switch (text.valign) {
    case VAlign::Baseline: firstBaseline = 0; break;
    case VAlign::Top: firstBaseline = -h; break;
    case VAlign::Middle: firstBaseline = total / 2 - h; break;
    case VAlign::Bottom: firstBaseline = total - h; break;
  }
  const double c = std::cos(text.rotation), s = std::sin(text.rotation);
  std::size_t start = 0;
  for (int line = 0; start <= shown.size(); ++line) {
    std::size_t end = shown.find('\n', start);
    if (end == std::string_view::npos) end = shown.size();
    const std::string_view part = shown.substr(start, end - start);
    if (!part.empty()) {
      const double w = kCharacterWidth * h * text.widthFactor * static_cast<double>(Characters(part));
      const double x = text.halign == HAlign::Left ? 0 : text.halign == HAlign::Centre ? -w / 2 : -w;
      const double y = firstBaseline - line * spacing;
      const Point at{text.insertion.x + x * c - y * s, text.insertion.y + x * s + y * c};
      const CanvasPoint p = t_.To(at);
      canvas_.StretchedText(p.x, p.y, part, h * t_.scale, w * t_.scale, text.rotation, colour);
    }
    start = end + 1;
  }
}

}  // namespace parvenna::drawing
