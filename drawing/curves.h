#pragma once

#include <span>
#include <vector>

#include "drawing/geometry2d.h"

// Plane geometry the DWG reader needs: the placement of a block's contents
// and the curves that the views draw as points.
namespace parvenna::drawing {

// x' = a x + c y + e, y' = b x + d y + f.
struct Affine {
  double a = 1, b = 0, c = 0, d = 1, e = 0, f = 0;

  static Affine Translation(double dx, double dy) { return {1, 0, 0, 1, dx, dy}; }
  static Affine Rotation(double angle);
  static Affine Scaling(double sx, double sy) { return {sx, 0, 0, sy, 0, 0}; }
  // The entity's own axes when its extrusion points down: x runs to the left.
  static Affine Mirror() { return Scaling(-1, 1); }

  Point operator()(Point p) const { return {a * p.x + c * p.y + e, b * p.x + d * p.y + f}; }
  // A direction, without the translation.
  Point Along(Point v) const { return {a * v.x + c * v.y, b * v.x + d * v.y}; }
  // This after other: (this * other)(p) = this(other(p)).
  Affine operator*(const Affine& o) const;
  double Determinant() const { return a * d - b * c; }
  // True when circles stay circles: the same scale in every direction.
  bool Conformal() const;
  // The scale of lengths, for a conformal placement.
  double Scale() const;
};

// Points on the arc from angle start, anticlockwise by sweep (negative runs
// clockwise), at most about four degrees apart, both ends included.
void AppendArc(std::vector<Point>& out, Point centre, double radius, double start, double sweep);

// The arc of a polyline's segment from a to b with this bulge (the tangent of
// a quarter of its angle, positive anticlockwise): its points after a, b
// included. A bulge of 0 gives b alone.
void AppendBulge(std::vector<Point>& out, Point a, Point b, double bulge);

// Points of an ellipse from parameter start to end (anticlockwise in the
// ellipse's own frame): centre, the end of the major axis relative to it,
// the minor axis as a part of the major, and the side of the minor axis
// (+1 anticlockwise from the major, -1 clockwise).
void AppendEllipse(std::vector<Point>& out, Point centre, Point major, double ratio, double start,
                   double end, double side = 1);

// Points of a rational B-spline of the given degree; the knots, one more
// than points plus degree. Nothing when the data do not make a spline.
void AppendSpline(std::vector<Point>& out, int degree, std::span<const double> knots,
                  std::span<const Point> control, std::span<const double> weights);

}  // namespace parvenna::drawing
