#include "ui/drawing_canvas.h"

#include <algorithm>
#include <cmath>
#include <numbers>

#include <QFontMetricsF>
#include <QPainter>
#include <QPainterPath>

#include "drawing/drawing_document.h"
#include "ui/twips.h"

namespace parvenna::ui {
namespace {

// How far outside the picture a clipped line may still reach, in pixels.
constexpr double kClipMargin = 64;
// Circles larger than this are drawn as their chord: the painter loses
// precision long before they would look curved.
constexpr double kLargestRadius = 1e6;
// Texts taller than this many pixels show only as far as the picture goes,
// and a glyph this large is no use to read: they are left out.
constexpr double kLargestText = 4000;
// Arcs up to this radius in pixels are painted as chords straight into the
// pixels, which stray from the arc by at most kArcTolerance.
constexpr double kLargestDirectArc = 64;
constexpr double kArcTolerance = 0.125;

std::uint32_t Argb(Rgb c) {
  return 0xFF000000u | (std::uint32_t{c.r} << 16) | (std::uint32_t{c.g} << 8) | c.b;
}

// The painter paints on a 32-bit image as it is, or moved by whole pixels
// (an image that holds some rows of a larger picture): no other transform,
// no clip, each pixel's colour laid over it.
bool PlainImage(QPainter& painter) {
  QPaintDevice* device = painter.device();
  if (!device || device->devType() != QInternal::Image) return false;
  const QImage& image = *static_cast<QImage*>(device);
  const QTransform& t = painter.worldTransform();
  return (image.format() == QImage::Format_RGB32 ||
          image.format() == QImage::Format_ARGB32_Premultiplied) &&
         image.devicePixelRatio() == 1 && t.type() <= QTransform::TxTranslate &&
         t.dx() == std::round(t.dx()) && t.dy() == std::round(t.dy()) && !painter.hasClipping() &&
         painter.opacity() == 1 && painter.compositionMode() == QPainter::CompositionMode_SourceOver;
}

}  // namespace

DrawingCanvas::DrawingCanvas(QPainter& painter, double width, double height, Lines lines)
    : painter_(painter), width_(width), height_(height) {
  if (lines == Lines::Direct && PlainImage(painter)) {
    // The painter has the image already: its pixels are not shared, and
    // bits() does not move them.
    QImage& image = *static_cast<QImage*>(painter.device());
    LineRaster::Pixels pixels;
    pixels.first = reinterpret_cast<std::uint32_t*>(image.bits());
    pixels.stride = image.bytesPerLine() / 4;
    pixels.left = -static_cast<int>(painter.worldTransform().dx());
    pixels.top = -static_cast<int>(painter.worldTransform().dy());
    pixels.width = image.width();
    pixels.height = image.height();
    raster_.emplace(pixels, static_cast<int>(std::ceil(width)), static_cast<int>(std::ceil(height)));
  }
  font_.setFamily("DejaVu Sans");
  font_.setStyleHint(QFont::SansSerif);
  font_.setPixelSize(100);
  const double cap = QFontMetricsF(font_).capHeight();
  if (cap > 0) capRatio_ = cap / 100;
  painter_.setRenderHint(QPainter::Antialiasing);
  painter_.setBrush(Qt::NoBrush);
}

void DrawingCanvas::SetSize(double width, double height) {
  width_ = width;
  height_ = height;
}

void DrawingCanvas::Cls() { Clear(colours::White); }

void DrawingCanvas::Clear(Rgb background) {
  painter_.fillRect(QRectF(0, 0, width_, height_), ToQColor(background));
}

void DrawingCanvas::ClearForStrokes(Rgb background) {
  if (raster_) raster_->Fill(Argb(background));
  else Clear(background);
}

void DrawingCanvas::Pen(Rgb colour) {
  if (penSet_ && colour == pen_) return;
  QPen pen(ToQColor(colour));
  pen.setWidthF(1.0);
  pen.setCosmetic(true);
  painter_.setPen(pen);
  pen_ = colour;
  penSet_ = true;
}

// Liang-Barsky against the picture grown by the margin.
bool DrawingCanvas::Clip(double& x1, double& y1, double& x2, double& y2) const {
  const double minX = -kClipMargin, minY = -kClipMargin;
  const double maxX = width_ + kClipMargin, maxY = height_ + kClipMargin;
  if (!std::isfinite(x1) || !std::isfinite(y1) || !std::isfinite(x2) || !std::isfinite(y2)) {
    return false;
  }
  const double dx = x2 - x1, dy = y2 - y1;
  double t0 = 0, t1 = 1;
  const double p[4] = {-dx, dx, -dy, dy};
  const double q[4] = {x1 - minX, maxX - x1, y1 - minY, maxY - y1};
  for (int i = 0; i < 4; ++i) {
    if (p[i] == 0) {
      if (q[i] < 0) return false;
      continue;
    }
    const double r = q[i] / p[i];
    if (p[i] < 0) t0 = std::max(t0, r);
    else t1 = std::min(t1, r);
    if (t0 > t1) return false;
  }
  const double ox = x1, oy = y1;
  x1 = ox + t0 * dx;
  y1 = oy + t0 * dy;
  x2 = ox + t1 * dx;
  y2 = oy + t1 * dy;
  return true;
}

void DrawingCanvas::Line(double x1, double y1, double x2, double y2, Rgb colour) {
  if (raster_) {
    // The raster follows lines from their true ends and cuts them itself.
    raster_->SetColour(Argb(colour));
    if (x1 == x2 && y1 == y2) raster_->Dot(x1, y1);
    else raster_->Segment(x1, y1, x2, y2, LineRaster::CapStart | LineRaster::CapEnd);
    return;
  }
  if (!Clip(x1, y1, x2, y2)) return;
  Pen(colour);
  if (x1 == x2 && y1 == y2) {
    painter_.drawPoint(QPointF(x1, y1));
    return;
  }
  painter_.drawLine(QPointF(x1, y1), QPointF(x2, y2));
}

void DrawingCanvas::Box(double x1, double y1, double x2, double y2, Rgb colour) {
  Line(x1, y1, x2, y1, colour);
  Line(x2, y1, x2, y2, colour);
  Line(x2, y2, x1, y2, colour);
  Line(x1, y2, x1, y1, colour);
}

void DrawingCanvas::Circle(double cx, double cy, double radius, Rgb colour, double startAngle,
                           double endAngle) {
  if (!std::isfinite(cx) || !std::isfinite(cy) || !std::isfinite(radius) || radius <= 0 ||
      !std::isfinite(startAngle) || !std::isfinite(endAngle)) {
    return;
  }
  // Wholly outside the picture.
  if (cx + radius < -kClipMargin || cx - radius > width_ + kClipMargin ||
      cy + radius < -kClipMargin || cy - radius > height_ + kClipMargin) {
    return;
  }
  constexpr double twoPi = 2 * std::numbers::pi;
  double span = std::fmod(endAngle - startAngle, twoPi);
  if (span <= 0) span += twoPi;
  if (radius > kLargestRadius) {
    Line(cx + radius * std::cos(startAngle), cy - radius * std::sin(startAngle),
         cx + radius * std::cos(startAngle + span), cy - radius * std::sin(startAngle + span),
         colour);
    return;
  }
  if (raster_ && radius <= kLargestDirectArc) {
    DirectArc(cx, cy, radius, startAngle, span, colour);
    return;
  }
  Pen(colour);
  const QRectF rect(cx - radius, cy - radius, 2 * radius, 2 * radius);
  if (span >= twoPi - 1e-12) {
    painter_.drawEllipse(rect);
    return;
  }
  const double startDeg = startAngle * 180 / std::numbers::pi;
  QPainterPath path;
  path.arcMoveTo(rect, startDeg);
  path.arcTo(rect, startDeg, span * 180 / std::numbers::pi);
  painter_.drawPath(path);
}

void DrawingCanvas::DirectArc(double cx, double cy, double radius, double start, double span,
                              Rgb colour) {
  constexpr double twoPi = 2 * std::numbers::pi;
  const bool closed = span >= twoPi - 1e-12;
  // Chords of angle 2 sqrt(2 t / r) stray a little less than t from the arc
  // at their middle (the arc's cosine, to its second term).
  const double chord = 2 * std::sqrt(2 * kArcTolerance / radius);
  const int pieces = std::clamp(static_cast<int>(std::ceil(span / chord)), closed ? 3 : 1, 512);
  raster_->SetColour(Argb(colour));
  // The points turn by one chord's angle each, anticlockwise on the screen.
  const double stepCos = std::cos(span / pieces), stepSin = std::sin(span / pieces);
  double u = std::cos(start), v = std::sin(start);
  const CanvasPoint first{cx + radius * u, cy - radius * v};
  CanvasPoint from = first;
  for (int k = 1; k <= pieces; ++k) {
    const double nu = u * stepCos - v * stepSin;
    v = u * stepSin + v * stepCos;
    u = nu;
    const CanvasPoint to = k == pieces && closed ? first : CanvasPoint{cx + radius * u, cy - radius * v};
    int caps = LineRaster::NoCaps;
    if (!closed && k == 1) caps |= LineRaster::CapStart;
    if (!closed && k == pieces) caps |= LineRaster::CapEnd;
    raster_->Segment(from.x, from.y, to.x, to.y, caps);
    from = to;
  }
}

void DrawingCanvas::Polyline(std::span<const CanvasPoint> points, Rgb colour) {
  if (points.empty()) return;
  if (raster_) {
    // As the painter strokes a polyline: caps only at the ends of an open one.
    const bool closed = points.front().x == points.back().x && points.front().y == points.back().y;
    raster_->SetColour(Argb(colour));
    if (points.size() == 1) raster_->Dot(points[0].x, points[0].y);
    for (std::size_t i = 1; i < points.size(); ++i) {
      int caps = LineRaster::NoCaps;
      if (!closed && i == 1) caps |= LineRaster::CapStart;
      if (!closed && i + 1 == points.size()) caps |= LineRaster::CapEnd;
      raster_->Segment(points[i - 1].x, points[i - 1].y, points[i].x, points[i].y, caps);
    }
    return;
  }
  bool inside = true;
  for (const CanvasPoint& p : points) {
    if (!(p.x >= -kClipMargin && p.x <= width_ + kClipMargin && p.y >= -kClipMargin &&
          p.y <= height_ + kClipMargin)) {
      inside = false;
      break;
    }
  }
  if (!inside || points.size() == 1) {
    // Each piece on its own, clipped.
    if (points.size() == 1) Line(points[0].x, points[0].y, points[0].x, points[0].y, colour);
    for (std::size_t i = 1; i < points.size(); ++i) {
      Line(points[i - 1].x, points[i - 1].y, points[i].x, points[i].y, colour);
    }
    return;
  }
  Pen(colour);
  QPolygonF polygon;
  polygon.reserve(static_cast<qsizetype>(points.size()));
  for (const CanvasPoint& p : points) polygon.append(QPointF(p.x, p.y));
  painter_.drawPolyline(polygon);
}

void DrawingCanvas::Text(double x, double y, std::string_view text, double height, double angle,
                         Rgb colour) {
  const QString shown = QString::fromUtf8(text.data(), static_cast<qsizetype>(text.size()));
  // The drawing's own measure of the text, by which clicks find it.
  const double width = drawing::kCharacterWidth * height * static_cast<double>(shown.toUcs4().size());
  StretchedText(x, y, text, height, width, angle, colour);
}

void DrawingCanvas::StretchedText(double x, double y, std::string_view text, double height,
                                  double width, double angle, Rgb colour) {
  if (text.empty() || !std::isfinite(x) || !std::isfinite(y) || !std::isfinite(angle) ||
      !std::isfinite(width) || !(height >= 1) || height > kLargestText) {
    return;
  }
  // Texts whose box cannot meet the picture are left out.
  const double reach = std::abs(width) + height * 2;
  if (x + reach < 0 || x - reach > width_ || y + reach < 0 || y - reach > height_) return;

  const QString shown = QString::fromUtf8(text.data(), static_cast<qsizetype>(text.size()));
  font_.setPixelSize(std::max(1, static_cast<int>(std::lround(height / capRatio_))));
  const double natural = QFontMetricsF(font_).horizontalAdvance(shown);
  painter_.save();
  painter_.setFont(font_);
  painter_.setPen(ToQColor(colour));
  penSet_ = false;
  painter_.translate(x, y);
  painter_.rotate(-angle * 180 / std::numbers::pi);
  if (natural > 0 && width > 0) painter_.scale(width / natural, 1);
  painter_.drawText(QPointF(0, 0), shown);
  painter_.restore();
}

void DrawingCanvas::Fill(std::span<const CanvasPoint> points, std::span<const std::size_t> ringEnds,
                         Rgb colour) {
  QPainterPath path;
  path.setFillRule(Qt::OddEvenFill);
  std::size_t start = 0;
  for (const std::size_t end : ringEnds) {
    if (end > points.size() || end <= start) break;
    QPolygonF ring;
    ring.reserve(static_cast<qsizetype>(end - start));
    for (std::size_t i = start; i < end; ++i) {
      const CanvasPoint& p = points[i];
      if (!std::isfinite(p.x) || !std::isfinite(p.y)) return;
      // Far outside the picture the painter loses precision; the ring is
      // held to a wide margin around it, which keeps the shape inside.
      ring.append(QPointF(std::clamp(p.x, -1e6, 1e6), std::clamp(p.y, -1e6, 1e6)));
    }
    path.addPolygon(ring);
    path.closeSubpath();
    start = end;
  }
  painter_.fillPath(path, ToQColor(colour));
}

}  // namespace parvenna::ui
