#pragma once

#include <string>
#include <vector>

#include "platform/canvas.h"
#include "platform/printer.h"

namespace parvenna::reports {

// A picture box that keeps its strokes instead of pixels, so that a page
// receives the sketch at the printer's resolution. It is the editor's canvas
// when the editor serves as the print source without a screen.
class RecordedPicture : public Canvas, public PictureImage {
 public:
  explicit RecordedPicture(double width = 4995, double height = 4995)
      : width_(width), height_(height) {}

  double Width() const override { return width_; }
  double Height() const override { return height_; }
  void SetSize(double width, double height) override {
    width_ = width;
    height_ = height;
  }
  void Cls() override { strokes_.clear(); }
  void Line(double x1, double y1, double x2, double y2, Rgb colour) override {
    strokes_.push_back({Kind::Line, x1, y1, x2, y2, colour});
  }
  void Box(double x1, double y1, double x2, double y2, Rgb colour) override {
    strokes_.push_back({Kind::Box, x1, y1, x2, y2, colour});
  }
  void Circle(double cx, double cy, double radius, Rgb colour, double start,
              double end) override {
    strokes_.push_back({Kind::Circle, cx, cy, radius, 0, colour, start, end});
  }
  void Text(double x, double y, std::string_view text, double height, double angle,
            Rgb colour) override {
    strokes_.push_back({Kind::Text, x, y, height, angle, colour, 0, 0, std::string(text)});
  }

  Rgb BackColor() const override { return back_; }
  void SetBackColor(Rgb colour) override { back_ = colour; }
  void PaintOn(Canvas& target) const override;

  std::size_t StrokeCount() const { return strokes_.size(); }

 private:
  enum class Kind { Line, Box, Circle, Text };
  struct Stroke {
    Kind kind;
    double a, b, c, d;
    Rgb colour;
    double start = 0, end = 0;
    std::string text = {};  // of a text: at (a, b), c high, turned by d
  };
  double width_;
  double height_;
  Rgb back_ = colours::White;
  std::vector<Stroke> strokes_;
};

}  // namespace parvenna::reports
