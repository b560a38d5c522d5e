#pragma once

#include <array>
#include <string>

#include "geometry/closure.h"
#include "platform/canvas.h"

namespace parvenna::cli {

// A picture that keeps what was painted since the last Cls as SVG elements.
// Units are the picture's own (twips); the document shows them at 15 to a pixel.
class SvgCanvas : public Canvas {
 public:
  SvgCanvas(double width, double height) : width_(width), height_(height) {}

  double Width() const override { return width_; }
  double Height() const override { return height_; }
  void SetSize(double width, double height) override;
  void Cls() override { body_.clear(); }
  void Line(double x1, double y1, double x2, double y2, Rgb colour) override;
  void Box(double x1, double y1, double x2, double y2, Rgb colour) override;
  void Circle(double cx, double cy, double radius, Rgb colour, double startAngle,
              double endAngle) override;

  // The whole document, with the course numbers that lie on the picture.
  std::string Document(const std::array<Label, CourseLimit>& lblLineNo) const;

 private:
  double width_;
  double height_;
  std::string body_;
};

}  // namespace parvenna::cli
