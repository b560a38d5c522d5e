#include "geometry/sketch.h"

#include <algorithm>
#include <cmath>

#include "geometry/bearing_text.h"
#include "geometry/messages.h"
#include "geometry/numbers.h"

namespace parvenna {
namespace {

struct Fit {
  double scale;   // picture units per survey unit
  int decimals;   // the centre's offsets are rounded like the project's distances
};

// The angle of a picture point about a centre, from 0 to 2 pi with the
// screen's y turned upwards. A point straight above or below the centre is a
// division failure, which ends the drawing.
double AngleAbout(double cx, double cy, double px, double py) {
  double q = std::atan(Divide(cy - py, px - cx));
  if (py < cy) {
    if (q < 0) q += Pi;
  } else {
    q += q < 0 ? TwoPi : Pi;
  }
  return q;
}

// Draws one curve course from point k - 1 to point k (picture positions).
// False when the drawing has to stop here.
bool DrawCurve(const CourseGrid& grid, const Notation& notation, const Fit& fit, int row,
               const std::string& chordBearing, Point from, Point to, Canvas& pic) {
  const double c = ReadNumber(grid.Text(row, CourseField::Chord));
  const double radius = ReadNumber(grid.Text(row, CourseField::Radius));
  const double arc = ReadNumber(grid.Text(row, CourseField::Arc));

  // A curve that adds area has its centre on the walker's right.
  Rgb colour = colours::Green;
  std::string b = chordBearing;
  if (grid.Sign(row, SignBox::Plus) != SignTicked) {
    b = ReverseBearing(notation, b);
    colour = colours::Red;
  }
  if (c / 2 > radius) return false;

  const double t = BearingToAngle(notation, b) * Pi / 180;
  const double h = SquareRoot(Square(radius) - Square(c / 2));
  const double mx = (from.x + to.x) / 2;
  const double my = (from.y + to.y) / 2;
  const double ox = RoundHalfEven(h * fit.scale * std::sin(t), fit.decimals);
  const double oy = RoundHalfEven(h * fit.scale * std::cos(t), fit.decimals);
  const bool shortArc = radius * Pi > arc;
  const double cx = shortArc ? mx + ox : mx - ox;
  const double cy = shortArc ? my + oy : my - oy;

  const double q1 = AngleAbout(cx, cy, from.x, from.y);
  const double q2 = AngleAbout(cx, cy, to.x, to.y);
  const double a1 = std::min(q1, q2);
  const double a2 = std::max(q1, q2);
  const double r = radius * fit.scale;

  // Of the two arcs between a1 and a2, the one that agrees with the typed arc.
  if (shortArc) {
    if (Divide(radius - h, c / 2) <= 0.02) {  // flat curves are not worth a circle
      pic.Line(from.x, from.y, to.x, to.y, colour);
    } else if (a2 - a1 > Pi) {
      pic.Circle(cx, cy, r, colour, a2, a1);
    } else {
      pic.Circle(cx, cy, r, colour, a1, a2);
    }
  } else if (a2 - a1 < Pi) {
    pic.Circle(cx, cy, r, colour, a2, a1);
  } else {
    pic.Circle(cx, cy, r, colour, a1, a2);
  }
  return true;
}

void HideLineNumbers(std::array<Label, CourseLimit>& lblLineNo) {
  for (Label& label : lblLineNo) label.Visible = false;
}

}  // namespace

void Drawing(const CourseGrid& grid, const GeometrySettings& settings, ParcelState& state,
             std::array<Label, CourseLimit>& lblLineNo, Canvas& pic) {
  const Notation& notation = settings.notation;
  const int n = FindLastLine(grid);
  if (n == -1) {
    HideLineNumbers(lblLineNo);
    pic.Cls();
    return;
  }
  CalCoord(grid, notation, n, state);
  HideLineNumbers(lblLineNo);
  pic.Cls();

  CoordTable& coord = state.Coord;
  double minX = 0, minY = 0, maxX = 0, maxY = 0;
  for (int k = 0; k <= n + 1; ++k) {
    minX = std::min(minX, coord[k].x);
    maxX = std::max(maxX, coord[k].x);
    minY = std::min(minY, coord[k].y);
    maxY = std::max(maxY, coord[k].y);
  }
  const double w = pic.Width();
  const double h = pic.Height();
  const double side = std::min(w, h) - 400;
  double scale = 0;
  try {
    const double sx = std::fabs(Divide(side, maxX - minX));
    const double sy = std::fabs(Divide(side, maxY - minY));
    scale = std::min(sx, sy);
  } catch (const RunError&) {
    return;  // a figure with no extent one way: nothing to draw
  }
  const double offsetX = w / 2 - (minX + maxX) * scale / 2;
  const double offsetY = h / 2 - (minY + maxY) * scale / 2;
  for (int k = 0; k <= n + 1; ++k) {
    coord[k].x = std::nearbyint(scale * coord[k].x + offsetX);
    coord[k].y = std::nearbyint(h - (scale * coord[k].y + offsetY));
  }

  const Fit fit{scale, settings.ErrDecimal};
  for (int k = 1; k <= n + 1; ++k) {
    const int row = k - 1;
    const Point from = coord[k - 1];
    const Point to = coord[k];
    if (grid.Kind(row) == CourseKind::Line) {
      pic.Line(from.x, from.y, to.x, to.y, colours::Black);
      continue;
    }
    if (grid.Sign(row, SignBox::Plus) != SignTicked && grid.Sign(row, SignBox::Minus) != SignTicked) {
      pic.Line(from.x, from.y, to.x, to.y, colours::Cyan);  // no arc until a sign is known
      continue;
    }
    bool drawn = false;
    ResumeNext([&] {
      drawn = DrawCurve(grid, notation, fit, row,
                        RemoveBlanks(grid.Text(row, CourseField::BearingArc)), from, to, pic);
    });
    if (!drawn) return;  // later courses, numbers and frame stay undrawn
  }

  // The numbers are pushed outwards from the middle of each course.
  for (int k = 1; k <= n + 1; ++k) {
    const double mx = (coord[k - 1].x + coord[k].x) / 2;
    const double my = (coord[k - 1].y + coord[k].y) / 2;
    Label& label = lblLineNo[k - 1];
    label.Visible = true;
    label.Left = mx < w / 2 ? mx - 100 : mx + 100;
    label.Top = my < h / 2 ? my - 100 : my + 100;
  }
  pic.Box(0, 0, w - 80, h - 80, colours::Black);
}

void ToggleSketchZoom(SketchBox& picParcel, double formWidth, double formHeight,
                      double normalWidth, double normalHeight) {
  if (picParcel.Width == formWidth) {
    picParcel.Height = normalHeight;
    picParcel.Width = normalWidth;
    picParcel.Top = 0;
    picParcel.Left = SketchNormalLeft;
    picParcel.ToolTipText = messages::ZoomIn;
  } else {
    picParcel.Left = 0;
    picParcel.Top = 0;
    picParcel.Width = formWidth;
    picParcel.Height = formHeight;
    picParcel.ToolTipText = messages::ZoomRestore;
  }
}

}  // namespace parvenna
