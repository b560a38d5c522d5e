#include "app/cli/svg_canvas.h"

#include <cmath>
#include <cstdio>

namespace parvenna::cli {
namespace {

std::string Number(double v) {
  char buffer[32];
  std::snprintf(buffer, sizeof buffer, "%.2f", v);
  std::string text(buffer);
  while (text.back() == '0') text.pop_back();
  if (text.back() == '.') text.pop_back();
  return text == "-0" ? "0" : text;
}

std::string Colour(Rgb c) {
  char buffer[8];
  std::snprintf(buffer, sizeof buffer, "#%02x%02x%02x", c.r, c.g, c.b);
  return buffer;
}

}  // namespace

void SvgCanvas::SetSize(double width, double height) {
  width_ = width;
  height_ = height;
}

void SvgCanvas::Line(double x1, double y1, double x2, double y2, Rgb colour) {
  body_ += "  <line x1=\"" + Number(x1) + "\" y1=\"" + Number(y1) + "\" x2=\"" + Number(x2) +
           "\" y2=\"" + Number(y2) + "\" stroke=\"" + Colour(colour) + "\"/>\n";
}

void SvgCanvas::Box(double x1, double y1, double x2, double y2, Rgb colour) {
  body_ += "  <rect x=\"" + Number(std::fmin(x1, x2)) + "\" y=\"" + Number(std::fmin(y1, y2)) +
           "\" width=\"" + Number(std::fabs(x2 - x1)) + "\" height=\"" +
           Number(std::fabs(y2 - y1)) + "\" fill=\"none\" stroke=\"" + Colour(colour) + "\"/>\n";
}

void SvgCanvas::Circle(double cx, double cy, double radius, Rgb colour, double startAngle,
                       double endAngle) {
  // Angles run anticlockwise as seen on the screen, where y grows downwards.
  const double twoPi = 2 * std::acos(-1.0);
  double sweep = std::fmod(endAngle - startAngle, twoPi);
  if (sweep < 0) sweep += twoPi;
  const std::string stroke = "\" fill=\"none\" stroke=\"" + Colour(colour) + "\"/>\n";
  if (sweep == 0) {
    body_ += "  <circle cx=\"" + Number(cx) + "\" cy=\"" + Number(cy) + "\" r=\"" +
             Number(radius) + stroke;
    return;
  }
  const double x1 = cx + radius * std::cos(startAngle), y1 = cy - radius * std::sin(startAngle);
  const double x2 = cx + radius * std::cos(endAngle), y2 = cy - radius * std::sin(endAngle);
  body_ += "  <path d=\"M " + Number(x1) + " " + Number(y1) + " A " + Number(radius) + " " +
           Number(radius) + " 0 " + (sweep > twoPi / 2 ? "1" : "0") + " 0 " + Number(x2) + " " +
           Number(y2) + stroke;
}

std::string SvgCanvas::Document(const std::array<Label, CourseLimit>& lblLineNo) const {
  std::string doc = "<svg xmlns=\"http://www.w3.org/2000/svg\" width=\"" + Number(width_ / 15) +
                    "\" height=\"" + Number(height_ / 15) + "\" viewBox=\"0 0 " +
                    Number(width_) + " " + Number(height_) + "\">\n";
  doc += "  <rect width=\"100%\" height=\"100%\" fill=\"#ffffff\"/>\n";
  doc += "  <g stroke-width=\"15\">\n" + body_ + "  </g>\n";
  for (std::size_t i = 0; i < lblLineNo.size(); ++i) {
    const Label& label = lblLineNo[i];
    if (!label.Visible) continue;
    // A label's Left and Top are its upper left corner; 180 twips wide.
    doc += "  <text x=\"" + Number(label.Left + 90) + "\" y=\"" + Number(label.Top + 150) +
           "\" font-family=\"sans-serif\" font-size=\"160\" text-anchor=\"middle\">" +
           std::to_string(i + 1) + "</text>\n";
  }
  doc += "</svg>\n";
  return doc;
}

}  // namespace parvenna::cli
