#pragma once

#include <QImage>

#include "platform/canvas.h"
#include "platform/printer.h"
#include "reports/recorded_picture.h"

namespace parvenna::ui {

// A picture box painted onto an image, which also keeps its strokes so that
// a printed page receives the sketch at the printer's resolution: the caller works in twips with y
// growing downwards, the image holds 15 twips to a pixel. Each drawing call
// bumps Generation(), so a view knows when to repaint.
class PainterCanvas : public Canvas, public PictureImage {
 public:
  PainterCanvas(double width = 0, double height = 0);

  double Width() const override { return width_; }
  double Height() const override { return height_; }
  void SetSize(double width, double height) override;
  void Cls() override;
  void Line(double x1, double y1, double x2, double y2, Rgb colour) override;
  void Box(double x1, double y1, double x2, double y2, Rgb colour) override;
  void Circle(double cx, double cy, double radius, Rgb colour, double startAngle,
              double endAngle) override;

  Rgb BackColor() const override { return strokes_.BackColor(); }
  void SetBackColor(Rgb colour) override { strokes_.SetBackColor(colour); }
  void PaintOn(Canvas& target) const override { strokes_.PaintOn(target); }

  const QImage& Image() const { return image_; }
  unsigned Generation() const { return generation_; }

 private:
  double width_;
  double height_;
  QImage image_;
  reports::RecordedPicture strokes_;
  unsigned generation_ = 0;
};

}  // namespace parvenna::ui
