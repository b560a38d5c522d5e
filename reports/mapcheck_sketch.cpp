#include "reports/mapcheck_sketch.h"

#include <algorithm>
#include <cmath>
#include <numbers>

#include "geometry/numbers.h"
#include "reports/messages.h"

namespace parvenna::reports {
namespace {

namespace mc = messages::mapcheck;
constexpr double kPi = std::numbers::pi;
constexpr Rgb kCourse = colours::Black;
constexpr Rgb kUnsure = {0, 160, 160};  // a curve drawn as its chord: its side is not known
constexpr Rgb kMarks = {0, 0, 160};

// From survey units to the canvas: scaled about an origin, north up.
struct Placement {
  double scale = 1;
  double x0 = 0, y0 = 0;      // canvas position of the survey origin
  double X(const SurveyPoint& p) const { return x0 + p.east * scale; }
  double Y(const SurveyPoint& p) const { return y0 - p.north * scale; }
};

// Text centred on a point: its baseline half a capital below, its start half
// its width to the left. The width of a character is taken as 0.6 of the
// capital's height, about what the printer's proportional font gives.
void CentredText(Canvas& canvas, double x, double y, const std::string& text, double height,
                 Rgb colour) {
  const double width = 0.6 * height * static_cast<double>(text.size());
  canvas.Text(x - width / 2, y + height / 2, text, height, 0, colour);
}

void NorthArrow(Canvas& canvas, double x, double top, double length) {
  const double head = length * 0.25;
  canvas.Line(x, top + length, x, top, kMarks);
  canvas.Line(x, top, x - head * 0.5, top + head, kMarks);
  canvas.Line(x, top, x + head * 0.5, top + head, kMarks);
  canvas.Line(x - head * 0.5, top + head, x + head * 0.5, top + head, kMarks);
  CentredText(canvas, x, top - head * 1.4, "N", head, kMarks);
}

void ScaleBar(Canvas& canvas, double x, double y, double ground, double scale, double text,
              const std::string& unit) {
  const double length = ground * scale;
  const double tick = text * 0.6;
  canvas.Line(x, y, x + length, y, kMarks);
  for (double k : {0.0, 0.5, 1.0}) canvas.Line(x + k * length, y - tick, x + k * length, y, kMarks);
  CentredText(canvas, x, y + text * 1.2, "0", text, kMarks);
  CentredText(canvas, x + length, y + text * 1.2, PlainNumber(ground) + unit, text, kMarks);
}

}  // namespace

std::vector<SurveyPoint> CoursePath(const SurveyPoint& start, const MapcheckCourse& course) {
  const SurveyPoint end{course.east, course.north};
  const CurveFigures& k = course.curveData;
  const double halfChord = std::hypot(end.east - start.east, end.north - start.north) / 2;
  if (!course.curve || k.turn == Turn::Unknown || k.radius <= 0 || halfChord == 0 ||
      halfChord > k.radius) {
    return {start, end};
  }
  // The centre lies on the side the curve turns to for an arc shorter than a
  // half circle, on the other side for a longer one.
  const bool longArc = k.radius * Pi <= k.arc;
  const bool right = (k.turn == Turn::Right) != longArc;
  const double ux = (end.east - start.east) / (2 * halfChord);
  const double uy = (end.north - start.north) / (2 * halfChord);
  const double h = std::sqrt(k.radius * k.radius - halfChord * halfChord);
  const double side = right ? 1 : -1;
  const SurveyPoint centre{(start.east + end.east) / 2 + side * uy * h,
                           (start.north + end.north) / 2 - side * ux * h};
  const double a0 = std::atan2(start.north - centre.north, start.east - centre.east);
  const double a1 = std::atan2(end.north - centre.north, end.east - centre.east);
  double sweep = a1 - a0;  // clockwise, negative, for a curve to the right
  if (k.turn == Turn::Right) {
    while (sweep > 0) sweep -= 2 * kPi;
  } else {
    while (sweep < 0) sweep += 2 * kPi;
  }
  const int steps = std::max(8, static_cast<int>(std::ceil(std::fabs(sweep) / (kPi / 72))));
  std::vector<SurveyPoint> path;
  for (int i = 0; i <= steps; ++i) {
    const double a = a0 + sweep * i / steps;
    path.push_back({centre.east + k.radius * std::cos(a), centre.north + k.radius * std::sin(a)});
  }
  path.back() = end;
  return path;
}

double ScaleBarLength(double longest) {
  if (!(longest > 0) || !std::isfinite(longest)) return 0;
  const double power = std::pow(10.0, std::floor(std::log10(longest)));
  for (double m : {5.0, 2.0, 1.0}) {
    if (m * power <= longest) return m * power;
  }
  return power;
}

void DrawMapcheckSketch(const MapcheckHeader& header, const MapcheckParcel& parcel, Canvas& canvas) {
  const double W = canvas.Width(), H = canvas.Height();
  const double unit = std::min(W, H);
  const double text = unit * 0.03;
  canvas.Clear(colours::White);
  // The frame just inside the picture, so that no edge of it is cut off.
  const double inset = unit * 0.004;
  canvas.Box(inset, inset, W - inset, H - inset, kCourse);

  // Every path in survey units, from the point of beginning at the origin.
  const SurveyPoint pob{header.options.pobEast, header.options.pobNorth};
  std::vector<std::vector<SurveyPoint>> paths;
  SurveyPoint at{0, 0};
  for (const MapcheckCourse& c : parcel.courses) {
    MapcheckCourse local = c;
    local.east -= pob.east;
    local.north -= pob.north;
    paths.push_back(CoursePath(at, local));
    at = {local.east, local.north};
  }
  double minE = 0, maxE = 0, minN = 0, maxN = 0;
  for (const auto& path : paths) {
    for (const SurveyPoint& p : path) {
      minE = std::min(minE, p.east), maxE = std::max(maxE, p.east);
      minN = std::min(minN, p.north), maxN = std::max(maxN, p.north);
    }
  }

  // The figure in the frame, with a band on the right for the north arrow
  // and one below for the scale bar.
  const double margin = unit * 0.08;
  const double areaLeft = margin, areaTop = margin;
  const double areaWidth = W - 2 * margin - W * 0.10;
  const double areaHeight = H - 2 * margin - H * 0.10;
  const double extentE = maxE - minE, extentN = maxN - minN;
  Placement place;
  if (extentE > 0 || extentN > 0) {
    place.scale = std::min(extentE > 0 ? areaWidth / extentE : 1e300,
                           extentN > 0 ? areaHeight / extentN : 1e300);
  }
  place.x0 = areaLeft + areaWidth / 2 - (minE + maxE) / 2 * place.scale;
  place.y0 = areaTop + areaHeight / 2 + (minN + maxN) / 2 * place.scale;

  const SurveyPoint middle{(minE + maxE) / 2, (minN + maxN) / 2};
  for (std::size_t i = 0; i < paths.size(); ++i) {
    const auto& path = paths[i];
    const bool unsure = parcel.courses[i].curve && path.size() == 2;
    std::vector<CanvasPoint> points;
    for (const SurveyPoint& p : path) points.push_back({place.X(p), place.Y(p)});
    canvas.Polyline(points, unsure ? kUnsure : kCourse);
    // The number beside the course's middle, pushed away from the middle of
    // the figure so that it stands outside.
    const SurveyPoint& mid = path[path.size() / 2];
    const SurveyPoint half =
        path.size() == 2 ? SurveyPoint{(path[0].east + path[1].east) / 2, (path[0].north + path[1].north) / 2}
                         : mid;
    double dx = place.X(half) - place.X(middle), dy = place.Y(half) - place.Y(middle);
    const double d = std::hypot(dx, dy);
    if (d > 0) dx /= d, dy /= d;
    CentredText(canvas, place.X(half) + dx * text * 1.3, place.Y(half) + dy * text * 1.3,
                std::to_string(parcel.courses[i].number), text, kMarks);
  }

  // The point of beginning.
  const SurveyPoint origin{0, 0};
  canvas.Circle(place.X(origin), place.Y(origin), text * 0.35, kMarks, 0, 2 * kPi);
  canvas.Text(place.X(origin) + text * 0.6, place.Y(origin) - text * 0.6, "POB", text, 0, kMarks);

  NorthArrow(canvas, W - margin - W * 0.04, margin + text, unit * 0.12);
  const double ground = ScaleBarLength(W * 0.3 / place.scale);
  if (ground > 0) {
    ScaleBar(canvas, margin, H - margin * 0.9 - text, ground, place.scale, text,
             header.unitFeet ? mc::FeetShort : mc::MetresShort);
  }
}

}  // namespace parvenna::reports
