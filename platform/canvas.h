#pragma once

#include "platform/colour.h"

namespace parvenna {

// A picture box: the sketch of a parcel is painted through this port.
// Units are the picture's own (twips on the editor), y grows downwards.
class Canvas {
 public:
  virtual ~Canvas() = default;

  virtual double Width() const = 0;
  virtual double Height() const = 0;
  // The zoom of the sketch resizes the picture; the next Cls starts afresh.
  virtual void SetSize(double width, double height) = 0;

  virtual void Cls() = 0;
  virtual void Line(double x1, double y1, double x2, double y2, Rgb colour) = 0;
  // An outline box with corners (x1, y1) and (x2, y2).
  virtual void Box(double x1, double y1, double x2, double y2, Rgb colour) = 0;
  // An arc of a circle, drawn anticlockwise as seen on the screen from
  // startAngle to endAngle; angles in radians from the x axis.
  virtual void Circle(double cx, double cy, double radius, Rgb colour, double startAngle,
                      double endAngle) = 0;
};

}  // namespace parvenna
