#pragma once

#include <memory>
#include <string>

#include <QFont>
#include <QPainter>

#include "platform/canvas.h"
#include "platform/printer.h"

class QPagedPaintDevice;
class QPdfWriter;
class QPrinter;

namespace parvenna::ui {

// A picture placed on a page: the strokes of a sketch, in the rectangle the
// page gives it, at the printer's own resolution.
class PagePictureCanvas : public Canvas {
 public:
  PagePictureCanvas(QPainter& painter, const QRectF& rect) : painter_(painter), rect_(rect) {}
  double Width() const override { return rect_.width(); }
  double Height() const override { return rect_.height(); }
  void SetSize(double, double) override {}
  void Cls() override {}
  void Line(double x1, double y1, double x2, double y2, Rgb colour) override;
  void Box(double x1, double y1, double x2, double y2, Rgb colour) override;
  void Circle(double cx, double cy, double radius, Rgb colour, double startAngle,
              double endAngle) override;
  void Text(double x, double y, std::string_view text, double height, double angle,
            Rgb colour) override;

 private:
  QPen Pen(Rgb colour) const;
  QPainter& painter_;
  QRectF rect_;
};

// The Printer port on Qt: paper through a QPrinter the print dialog set up,
// or a PDF file, made here or chosen in the dialog ("Print to File").
// Positions are inches from the paper's corner. A PDF keeps every job of a
// run in one file, a job after the other, and is complete when the printer
// goes; on paper each EndDoc sends its job.
class QtPrinter : public Printer {
 public:
  static std::unique_ptr<QtPrinter> ForPdf(const std::string& path);
  static std::unique_ptr<QtPrinter> ForPrinter(std::unique_ptr<QPrinter> printer);
  ~QtPrinter() override;

  double TextWidth(std::string_view text) const override;
  double TextHeight() const override;
  double ScaleWidth() const override;
  double ScaleHeight() const override;

 protected:
  void StartDoc() override;
  void StartPage() override;
  void DrawText(double x, double y, std::string_view text) override;
  void DrawPicture(const PictureImage& picture, double x, double y, double width,
                   double height) override;
  void FinishDoc() override;

 private:
  QtPrinter() = default;
  QFont CurrentFont() const;
  double Dpi() const;
  void ApplyOrientation();

  std::unique_ptr<QPrinter> printer_;
  std::unique_ptr<QPdfWriter> pdf_;
  QPagedPaintDevice* device_ = nullptr;
  QPainter painter_;
  bool oneFile_ = false;  // a PDF: the jobs go on in one file
};

// A PDF printer for the command-line tool: makes the application object that
// Qt's fonts need, off screen when there is no display.
void EnsureApplication();
std::unique_ptr<Printer> MakePdfPrinter(const std::string& path);

}  // namespace parvenna::ui
