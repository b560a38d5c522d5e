#pragma once

#include <optional>

#include <QFont>
#include <QRect>

#include "platform/canvas.h"
#include "ui/line_raster.h"

class QPainter;

namespace parvenna::ui {

// A Canvas over a QPainter in pixels: what a drawing view paints its frame
// on. One is made for each frame around the painter of the frame's image.
// Texts are stretched to the width the drawing measures them with (three
// quarters of their height a character, times their width factor), so that
// what shows matches what a click finds. Coordinates far outside the picture are clipped here, since
// a deep zoom puts the ends of long lines millions of pixels away.
//
// Lines, dots and arcs up to kLargestDirectArc pixels in radius go straight
// into the pixels when the painter paints on a 32-bit image as it is, or on
// one that holds some rows of the picture, moved by whole pixels (LineRaster:
// the painter's own pixels, without its cost per call); arcs are then
// followed in chords that stray less than an eighth of a pixel. Texts, areas,
// larger arcs and any other painter go through the painter.
class DrawingCanvas : public Canvas {
 public:
  enum class Lines { Direct, Painter };
  // width and height are the whole picture's, whatever part the painter's
  // image holds.
  DrawingCanvas(QPainter& painter, double width, double height, Lines lines = Lines::Direct);

  double Width() const override { return width_; }
  double Height() const override { return height_; }
  void SetSize(double width, double height) override;
  void Cls() override;
  void Clear(Rgb background) override;
  // As Clear, with plain stores that leave the pixels at hand for the many
  // strokes to follow; the painter's fill bypasses the processor's cache,
  // which is quicker when few follow.
  void ClearForStrokes(Rgb background);
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
  void DirectArc(double cx, double cy, double radius, double start, double span, Rgb colour);

  QPainter& painter_;
  double width_;
  double height_;
  std::optional<LineRaster> raster_;
  Rgb pen_{};
  bool penSet_ = false;
  QFont font_;
  double capRatio_ = 0.7;  // cap height over pixel size of font_
};

}  // namespace parvenna::ui
