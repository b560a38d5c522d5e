#pragma once

#include <cstddef>
#include <span>
#include <string_view>

#include "platform/colour.h"

namespace parvenna {

struct CanvasPoint {
  double x = 0;
  double y = 0;
};

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

  // Clears the picture to a background colour; a picture that keeps its own
  // background only clears.
  virtual void Clear(Rgb background) {
    (void)background;
    Cls();
  }
  // Connected segments through the points, in order.
  virtual void Polyline(std::span<const CanvasPoint> points, Rgb colour) {
    for (std::size_t i = 1; i < points.size(); ++i) {
      Line(points[i - 1].x, points[i - 1].y, points[i].x, points[i].y, colour);
    }
  }
  // One line of text whose baseline starts at (x, y), turned by angle radians
  // anticlockwise as seen on the screen; height is the height of a capital.
  // A picture without text leaves it out.
  virtual void Text(double x, double y, std::string_view text, double height, double angle,
                    Rgb colour) {
    (void)x, (void)y, (void)text, (void)height, (void)angle, (void)colour;
  }
  // As Text, stretched or squeezed along its baseline to width; a picture
  // that cannot stretch text draws it at its own width.
  virtual void StretchedText(double x, double y, std::string_view text, double height, double width,
                             double angle, Rgb colour) {
    (void)width;
    Text(x, y, text, height, angle, colour);
  }
  // An area: rings of points one after the other, ring k ending before
  // ringEnds[k], filled by the even-odd rule so that a ring within another
  // is a hole. A picture that cannot fill draws the rings.
  virtual void Fill(std::span<const CanvasPoint> points, std::span<const std::size_t> ringEnds,
                    Rgb colour) {
    std::size_t start = 0;
    for (const std::size_t end : ringEnds) {
      if (end > points.size() || end <= start) break;
      Polyline(points.subspan(start, end - start), colour);
      if (end - start > 2) {
        Line(points[end - 1].x, points[end - 1].y, points[start].x, points[start].y, colour);
      }
      start = end;
    }
  }
};

}  // namespace parvenna
