#include "ui/report_printer.h"

#include <cmath>
#include <cstdlib>
#include <numbers>

#include <sys/stat.h>
#include <unistd.h>

#include <QFontMetricsF>
#include <QApplication>
#include <QPageLayout>
#include <QPageSize>
#include <QPdfWriter>
#include <QPrinter>

#include "reports/page_flow.h"

namespace parvenna::ui {
namespace {

constexpr int kPdfResolution = 1200;

QColor ColourOf(Rgb c) { return QColor(c.r, c.g, c.b); }

QString TextOf(std::string_view text) {
  return QString::fromUtf8(text.data(), static_cast<qsizetype>(text.size()));
}

}  // namespace

// ---- The picture on the page ----------------------------------------------------

QPen PagePictureCanvas::Pen(Rgb colour) const {
  QPen pen(ColourOf(colour));
  pen.setWidthF(std::max(1.0, rect_.width() / 1000));
  return pen;
}

void PagePictureCanvas::Line(double x1, double y1, double x2, double y2, Rgb colour) {
  painter_.setPen(Pen(colour));
  painter_.drawLine(QPointF(rect_.left() + x1, rect_.top() + y1),
                    QPointF(rect_.left() + x2, rect_.top() + y2));
}

void PagePictureCanvas::Box(double x1, double y1, double x2, double y2, Rgb colour) {
  painter_.setPen(Pen(colour));
  painter_.setBrush(Qt::NoBrush);
  painter_.drawRect(QRectF(QPointF(rect_.left() + std::min(x1, x2), rect_.top() + std::min(y1, y2)),
                           QPointF(rect_.left() + std::max(x1, x2), rect_.top() + std::max(y1, y2))));
}

void PagePictureCanvas::Circle(double cx, double cy, double radius, Rgb colour, double startAngle,
                               double endAngle) {
  if (!std::isfinite(radius) || radius <= 0 || radius > 1e7 || !std::isfinite(startAngle) ||
      !std::isfinite(endAngle)) {
    return;
  }
  constexpr double twoPi = 2 * std::numbers::pi;
  double span = std::fmod(endAngle - startAngle, twoPi);
  if (span <= 0) span += twoPi;
  const QRectF box(rect_.left() + cx - radius, rect_.top() + cy - radius, 2 * radius, 2 * radius);
  painter_.setPen(Pen(colour));
  painter_.setBrush(Qt::NoBrush);
  painter_.drawArc(box, static_cast<int>(std::lround(startAngle * 180 / std::numbers::pi * 16)),
                   static_cast<int>(std::lround(span * 180 / std::numbers::pi * 16)));
}

void PagePictureCanvas::Text(double x, double y, std::string_view text, double height,
                             double angle, Rgb colour) {
  if (!std::isfinite(x) || !std::isfinite(y) || !std::isfinite(angle) || !(height > 0) ||
      height > rect_.height()) {
    return;
  }
  // The height given is a capital's, about 0.72 of the font's pixel size.
  QFont font(QStringLiteral("Arial"));
  font.setPixelSize(std::max(1, static_cast<int>(std::lround(height / 0.72))));
  painter_.save();
  painter_.setFont(font);
  painter_.setPen(ColourOf(colour));
  painter_.translate(rect_.left() + x, rect_.top() + y);
  painter_.rotate(-angle * 180 / std::numbers::pi);
  painter_.drawText(QPointF(0, 0), TextOf(text));
  painter_.restore();
}

// ---- The printer ------------------------------------------------------------------

std::unique_ptr<QtPrinter> QtPrinter::ForPdf(const std::string& path) {
  std::unique_ptr<QtPrinter> p(new QtPrinter);
  p->pdf_ = std::make_unique<QPdfWriter>(QString::fromStdString(path));
  p->pdf_->setResolution(kPdfResolution);
  p->pdf_->setCreator(QStringLiteral("Parvenna"));
  p->pdf_->setPageLayout(QPageLayout(QPageSize(QPageSize::Letter), QPageLayout::Portrait,
                                     QMarginsF(0, 0, 0, 0), QPageLayout::Inch));
  p->device_ = p->pdf_.get();
  p->oneFile_ = true;
  return p;
}

std::unique_ptr<QtPrinter> QtPrinter::ForPrinter(std::unique_ptr<QPrinter> printer) {
  std::unique_ptr<QtPrinter> p(new QtPrinter);
  p->printer_ = std::move(printer);
  p->printer_->setFullPage(true);  // positions from the paper's corner
  p->device_ = p->printer_.get();
  // Each job begun anew on a PDF printer would write the file over.
  p->oneFile_ = p->printer_->outputFormat() == QPrinter::PdfFormat;
  return p;
}

QtPrinter::~QtPrinter() {
  if (painter_.isActive()) painter_.end();
}

double QtPrinter::Dpi() const { return device_ ? device_->logicalDpiY() : 72; }

QFont QtPrinter::CurrentFont() const {
  QFont font(QString::fromStdString(FontName));
  // The columns' font, where the desktop lacks it, is another fixed-pitch one.
  if (FontName == reports::ColumnFont) {
    font.setStyleHint(QFont::TypeWriter);
    font.setFixedPitch(true);
  }
  font.setPointSizeF(FontSize > 0 ? FontSize : 10);
  font.setBold(FontBold);
  font.setUnderline(FontUnderline);
  return font;
}

double QtPrinter::TextWidth(std::string_view text) const {
  return QFontMetricsF(CurrentFont(), device_).horizontalAdvance(TextOf(text)) / Dpi();
}

double QtPrinter::TextHeight() const {
  return QFontMetricsF(CurrentFont(), device_).height() / Dpi();
}

double QtPrinter::ScaleWidth() const {
  return device_ ? device_->pageLayout().fullRect(QPageLayout::Inch).width() : 8.5;
}

double QtPrinter::ScaleHeight() const {
  return device_ ? device_->pageLayout().fullRect(QPageLayout::Inch).height() : 11;
}

void QtPrinter::ApplyOrientation() {
  device_->setPageOrientation(Orientation == 2 ? QPageLayout::Landscape : QPageLayout::Portrait);
}

void QtPrinter::StartDoc() {
  if (painter_.isActive()) {
    // A further job into one file: the file goes on with a new page.
    ApplyOrientation();
    device_->newPage();
    return;
  }
  ApplyOrientation();
  painter_.begin(device_);
}

void QtPrinter::StartPage() {
  ApplyOrientation();
  device_->newPage();
}

void QtPrinter::DrawText(double x, double y, std::string_view text) {
  if (!painter_.isActive()) return;
  const QFont font = CurrentFont();
  painter_.setFont(font);
  painter_.setPen(Qt::black);
  const QFontMetricsF metrics(font, device_);
  painter_.drawText(QPointF(x * Dpi(), y * Dpi() + metrics.ascent()), TextOf(text));
}

void QtPrinter::DrawPicture(const PictureImage& picture, double x, double y, double width,
                            double height) {
  if (!painter_.isActive()) return;
  const QRectF rect(x * Dpi(), y * Dpi(), width * Dpi(), height * Dpi());
  painter_.save();
  painter_.setClipRect(rect);
  painter_.fillRect(rect, ColourOf(picture.BackColor()));
  painter_.setRenderHint(QPainter::Antialiasing);
  PagePictureCanvas canvas(painter_, rect);
  picture.PaintOn(canvas);
  painter_.restore();
}

void QtPrinter::FinishDoc() {
  // Paper sends each job; a PDF keeps the file open for the run's next job.
  if (!oneFile_ && painter_.isActive()) painter_.end();
}

void EnsureApplication() {
  if (QCoreApplication::instance() == nullptr) {
    if (std::getenv("DISPLAY") == nullptr && std::getenv("WAYLAND_DISPLAY") == nullptr &&
        std::getenv("QT_QPA_PLATFORM") == nullptr) {
      setenv("QT_QPA_PLATFORM", "offscreen", 1);
    }
    if (std::getenv("XDG_RUNTIME_DIR") == nullptr) {
      // Qt wants a private runtime directory and complains without one.
      const std::string runtime = "/tmp/parvenna-runtime-" + std::to_string(getuid());
      mkdir(runtime.c_str(), 0700);
      setenv("XDG_RUNTIME_DIR", runtime.c_str(), 1);
    }
    static int argc = 1;
    static char name[] = "parvenna-cli";
    static char* argv[] = {name, nullptr};
    static QApplication* app = new QApplication(argc, argv);
    (void)app;
  }
}

std::unique_ptr<Printer> MakePdfPrinter(const std::string& path) {
  EnsureApplication();
  return QtPrinter::ForPdf(path);
}

}  // namespace parvenna::ui
