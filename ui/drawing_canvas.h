#pragma once

#include <QFont>

#include "platform/canvas.h"

class QPainter;

namespace parvenna::ui {

// A Canvas over a QPainter in pixels: what a drawing view paints its frame
// on. One is made for each frame around the painter of the frame's image.
// Texts are stretched to the width the drawing measures them with (three
// quarters of their height a character, times their width factor), so that
// what shows matches what a click finds. Coordinates far outside the picture are clipped here, since
// a deep zoom puts the ends of long lines millions of pixels away.
class DrawingCanvas : public Canvas {
 public:
  DrawingCanvas(QPainter& painter, double width, double height);

  double Width() const override { return width_; }
  double Height() const override { return height_; }
  void SetSize(double width, double height) override;
  void Cls() override;
  void Clear(Rgb background) override;
  void Line(double x1, double y1, double x2, double y2, Rgb colour) override;
  void Box(double x1, double y1, double x2, double y2, Rgb colour) override;
  void Circle(double cx, double cy, double radius, Rgb colour, double startAngle,
              double endAngle) override;
  void Polyline(std::span<const CanvasPoint> points, Rgb colour) override;
  void Text(double x, double y, std::string_view text, double height, double angle,
            Rgb colour) override;
  void StretchedText(double x, double y, std::string_view text, double height, double width,
                     double angle, Rgb colour) override;
  void Fill(std::span<const CanvasPoint> points, std::span<const std::size_t> ringEnds,
            Rgb colour) override;

 private:
  void Pen(Rgb colour);
  // Clips a segment to the picture with a margin; false when none is left.
  bool Clip(double& x1, double& y1, double& x2, double& y2) const;

  QPainter& painter_;
  double width_;
  double height_;
  Rgb pen_{};
  bool penSet_ = false;
  QFont font_;
  double capRatio_ = 0.7;  // cap height over pixel size of font_
};

}  // namespace parvenna::ui
