#include "drawing/curves.h"

#include <algorithm>
#include <cmath>
#include <numbers>

namespace parvenna::drawing {
namespace {

constexpr double kStep = 4 * std::numbers::pi / 180;  // the longest step along a curve
constexpr int kMostSteps = 1024;
constexpr int kSplineStepsPerSpan = 16;

int StepsFor(double sweep) {
  const double n = std::ceil(std::abs(sweep) / kStep);
  return static_cast<int>(std::clamp(n, 1.0, static_cast<double>(kMostSteps)));
}

void ArcPoints(std::vector<Point>& out, Point centre, double radius, double start, double sweep,
               int from) {
  const int n = StepsFor(sweep);
  for (int i = from; i <= n; ++i) {
    const double t = start + sweep * i / n;
    out.push_back({centre.x + radius * std::cos(t), centre.y + radius * std::sin(t)});
  }
}

}  // namespace

Affine Affine::Rotation(double angle) {
  const double c = std::cos(angle), s = std::sin(angle);
  return {c, s, -s, c, 0, 0};
}

Affine Affine::operator*(const Affine& o) const {
  return {a * o.a + c * o.b,       b * o.a + d * o.b,       a * o.c + c * o.d,
          b * o.c + d * o.d,       a * o.e + c * o.f + e,   b * o.e + d * o.f + f};
}

bool Affine::Conformal() const {
  const double x = std::hypot(a, b), y = std::hypot(c, d);
  const double dot = a * c + b * d;
  const double tolerance = 1e-9 * std::max(x, y);
  return std::abs(x - y) <= tolerance && std::abs(dot) <= tolerance * std::max(x, y);
}

double Affine::Scale() const { return std::sqrt(std::abs(Determinant())); }

void AppendArc(std::vector<Point>& out, Point centre, double radius, double start, double sweep) {
  ArcPoints(out, centre, radius, start, sweep, 0);
}

void AppendBulge(std::vector<Point>& out, Point a, Point b, double bulge) {
  const double chord = std::hypot(b.x - a.x, b.y - a.y);
  if (!std::isfinite(bulge) || std::abs(bulge) < 1e-12 || chord == 0) {
    out.push_back(b);
    return;
  }
  const double sweep = 4 * std::atan(bulge);  // anticlockwise when positive
  const double radius = chord / (2 * std::sin(std::abs(sweep) / 2));
  // The centre stands off the chord's middle: to the left of a to b for an
  // anticlockwise arc of less than a half turn, to the right for more.
  const double offset = radius * std::cos(sweep / 2) * (bulge > 0 ? 1 : -1);
  const Point centre{(a.x + b.x) / 2 - (b.y - a.y) / chord * offset,
                     (a.y + b.y) / 2 + (b.x - a.x) / chord * offset};
  ArcPoints(out, centre, radius, std::atan2(a.y - centre.y, a.x - centre.x), sweep, 1);
  out.back() = b;
}

void AppendEllipse(std::vector<Point>& out, Point centre, Point major, double ratio, double start,
                   double end, double side) {
  double sweep = end - start;
  if (sweep <= 0) sweep += 2 * std::numbers::pi;
  const Point minor{-major.y * ratio * side, major.x * ratio * side};
  const int n = StepsFor(sweep);
  for (int i = 0; i <= n; ++i) {
    const double t = start + sweep * i / n;
    const double c = std::cos(t), s = std::sin(t);
    out.push_back({centre.x + major.x * c + minor.x * s, centre.y + major.y * c + minor.y * s});
  }
}

void AppendSpline(std::vector<Point>& out, int degree, std::span<const double> knots,
                  std::span<const Point> control, std::span<const double> weights) {
  const std::size_t n = control.size();
  if (degree < 1 || degree > 11 || n <= static_cast<std::size_t>(degree) ||
      knots.size() != n + static_cast<std::size_t>(degree) + 1) {
    return;
  }
  const auto p = static_cast<std::size_t>(degree);
  const auto weight = [&](std::size_t i) {
    return i < weights.size() && weights[i] > 0 ? weights[i] : 1.0;
  };
  std::vector<double> x(p + 1), y(p + 1), w(p + 1);
  // De Boor's recursion on the homogeneous points, span by span.
  for (std::size_t k = p; k < n; ++k) {
    const double u0 = knots[k], u1 = knots[k + 1];
    if (!(u1 > u0)) continue;
    for (int s = out.empty() ? 0 : 1; s <= kSplineStepsPerSpan; ++s) {
      const double u = u0 + (u1 - u0) * s / kSplineStepsPerSpan;
      for (std::size_t j = 0; j <= p; ++j) {
        const std::size_t i = j + k - p;
        w[j] = weight(i);
        x[j] = control[i].x * w[j];
        y[j] = control[i].y * w[j];
      }
      for (std::size_t r = 1; r <= p; ++r) {
        for (std::size_t j = p; j >= r; --j) {
          const std::size_t i = j + k - p;
          const double span = knots[i + p - r + 1] - knots[i];
          const double alpha = span > 0 ? (u - knots[i]) / span : 0;
          x[j] = (1 - alpha) * x[j - 1] + alpha * x[j];
          y[j] = (1 - alpha) * y[j - 1] + alpha * y[j];
          w[j] = (1 - alpha) * w[j - 1] + alpha * w[j];
        }
      }
      if (w[p] != 0) out.push_back({x[p] / w[p], y[p] / w[p]});
    }
  }
}

}  // namespace parvenna::drawing
