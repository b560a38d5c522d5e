#include "ui/painter_canvas.h"

#include <algorithm>
#include <cmath>
#include <numbers>

#include <QPainter>
#include <QPainterPath>

#include "ui/twips.h"

namespace parvenna::ui {
namespace {

const QColor kPaper = Qt::white;

QPen PenOf(Rgb colour) {
  QPen pen(ToQColor(colour));
  pen.setWidthF(1.0);
  return pen;
}

// Picture positions name pixels; the painter's integer points lie between
// them, so lines are drawn through the pixel centres to stay crisp.
QPointF At(double x, double y) { return {PxF(x) + 0.5, PxF(y) + 0.5}; }

// Arcs whose circle is far bigger than any screen are drawn as their chord:
// the painter loses precision long before they would look curved.
constexpr double kLargestRadiusPx = 1e6;

}  // namespace

PainterCanvas::PainterCanvas(double width, double height) { SetSize(width, height); }

void PainterCanvas::SetSize(double width, double height) {
  width_ = width;
  height_ = height;
  strokes_.SetSize(width, height);
  image_ = QImage(std::max(1, Px(width)), std::max(1, Px(height)), QImage::Format_RGB32);
  image_.fill(kPaper);
  ++generation_;
}

void PainterCanvas::Cls() {
  strokes_.Cls();
  image_.fill(kPaper);
  ++generation_;
}

void PainterCanvas::Line(double x1, double y1, double x2, double y2, Rgb colour) {
  strokes_.Line(x1, y1, x2, y2, colour);
  QPainter p(&image_);
  p.setRenderHint(QPainter::Antialiasing);
  p.setPen(PenOf(colour));
  p.drawLine(At(x1, y1), At(x2, y2));
  ++generation_;
}

void PainterCanvas::Box(double x1, double y1, double x2, double y2, Rgb colour) {
  strokes_.Box(x1, y1, x2, y2, colour);
  QPainter p(&image_);
  p.setPen(PenOf(colour));
  // Pixel centres, so that a box of the picture's own size stays inside it.
  p.drawRect(QRectF(QPointF(PxF(std::min(x1, x2)) + 0.5, PxF(std::min(y1, y2)) + 0.5),
                    QPointF(PxF(std::max(x1, x2)) - 0.5, PxF(std::max(y1, y2)) - 0.5)));
  ++generation_;
}

void PainterCanvas::Circle(double cx, double cy, double radius, Rgb colour, double startAngle,
                           double endAngle) {
  strokes_.Circle(cx, cy, radius, colour, startAngle, endAngle);
  const double r = PxF(radius);
  if (!std::isfinite(r) || !std::isfinite(startAngle) || !std::isfinite(endAngle) || r <= 0 ||
      r > kLargestRadiusPx) {
    return;
  }
  // Anticlockwise on the screen from start to end, through 0 when end < start;
  // equal angles make the whole circle.
  constexpr double twoPi = 2 * std::numbers::pi;
  double span = std::fmod(endAngle - startAngle, twoPi);
  if (span <= 0) span += twoPi;
  const QPointF centre = At(cx, cy);
  const QRectF rect(centre.x() - r, centre.y() - r, 2 * r, 2 * r);
  const double startDeg = startAngle * 180 / std::numbers::pi;
  const double spanDeg = span * 180 / std::numbers::pi;
  QPainterPath path;
  path.arcMoveTo(rect, startDeg);
  path.arcTo(rect, startDeg, spanDeg);
  QPainter p(&image_);
  p.setRenderHint(QPainter::Antialiasing);
  p.setPen(PenOf(colour));
  p.drawPath(path);
  ++generation_;
}

}  // namespace parvenna::ui
