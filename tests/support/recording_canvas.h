#pragma once

#include <string>
#include <vector>

#include "platform/canvas.h"

namespace parvenna::testing {

// Keeps every call made on it, in order.
class RecordingCanvas : public Canvas {
 public:
  enum class Op { Cls, Line, Box, Circle, Polyline, Text, Fill };
  struct Call {
    Op op;
    double a, b, c, d;      // Line/Box: x1 y1 x2 y2; Circle: cx cy radius 0
    Rgb colour;
    double start = 0, end = 0;  // Circle only; Text: height and angle
    std::string text = {};                 // Text only
    std::vector<CanvasPoint> points = {};  // Polyline and Fill
    std::vector<std::size_t> ringEnds = {};  // Fill only
  };

  explicit RecordingCanvas(double width = 4000, double height = 4000)
      : width_(width), height_(height) {}

  double Width() const override { return width_; }
  double Height() const override { return height_; }
  void SetSize(double width, double height) override {
    width_ = width;
    height_ = height;
  }
  void Cls() override { calls.push_back({Op::Cls, 0, 0, 0, 0, {}}); }
  void Line(double x1, double y1, double x2, double y2, Rgb colour) override {
    calls.push_back({Op::Line, x1, y1, x2, y2, colour});
  }
  void Box(double x1, double y1, double x2, double y2, Rgb colour) override {
    calls.push_back({Op::Box, x1, y1, x2, y2, colour});
  }
  void Circle(double cx, double cy, double radius, Rgb colour, double start, double end) override {
    calls.push_back({Op::Circle, cx, cy, radius, 0, colour, start, end});
  }
  // Clear records a Cls with the background in its colour.
  void Clear(Rgb background) override { calls.push_back({Op::Cls, 0, 0, 0, 0, background}); }
  void Polyline(std::span<const CanvasPoint> points, Rgb colour) override {
    Call call{Op::Polyline, 0, 0, 0, 0, colour};
    call.points.assign(points.begin(), points.end());
    calls.push_back(std::move(call));
  }
  void Fill(std::span<const CanvasPoint> points, std::span<const std::size_t> ringEnds,
            Rgb colour) override {
    Call call{Op::Fill, 0, 0, 0, 0, colour};
    call.points.assign(points.begin(), points.end());
    call.ringEnds.assign(ringEnds.begin(), ringEnds.end());
    calls.push_back(std::move(call));
  }
  void Text(double x, double y, std::string_view text, double height, double angle,
            Rgb colour) override {
    Call call{Op::Text, x, y, 0, 0, colour, height, angle};
    call.text = std::string(text);
    calls.push_back(std::move(call));
  }

  // The calls since the last Cls.
  std::vector<Call> Picture() const;
  std::size_t Count(Op op) const;
  void Clear() { calls.clear(); }

  std::vector<Call> calls;

 private:
  double width_;
  double height_;
};

}  // namespace parvenna::testing
