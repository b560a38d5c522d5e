#include "geometry/tangency.h"

#include <algorithm>
#include <array>
#include <cmath>

#include "geometry/bearing_text.h"
#include "geometry/messages.h"
#include "geometry/numbers.h"

namespace parvenna {

double TangentDifference(const Notation& notation, std::string_view a, std::string_view b) {
  const double angleA = BearingToAngle(notation, a);
  const double angleB = BearingToAngle(notation, b);
  const double lo = angleA < angleB ? angleA : angleB;
  const double hi = angleA < angleB ? angleB : angleA;
  // Past 180 apart the middle term goes negative and wins: such a joint is
  // never reported.
  return std::min({std::fabs(angleB - angleA), lo + 180 - hi, lo + 360 - hi});
}

std::string TangentBearingOfCurve(const CourseGrid& grid, const GeometrySettings& settings,
                                  const ParcelState& state, int row, int end) {
  const Notation& notation = settings.notation;
  const std::string& b = grid.Text(row, CourseField::BearingArc);
  const double c = ReadNumber(grid.Text(row, CourseField::Chord));
  const double r = ReadNumber(grid.Text(row, CourseField::Radius));

  // From the middle of the chord towards the centre: on the walker's right for
  // a curve that adds area, on the left otherwise.
  std::string radial = PerpendicularBearing(notation, b);
  if (grid.Sign(row, SignBox::Plus) == SignTicked) radial = ReverseBearing(notation, radial);
  if (c / 2 > r) return "";

  const double t = BearingToAngle(notation, radial) * Pi / 180;
  const double h = SquareRoot(Square(r) - Square(c / 2));
  const Point& from = state.Coord[row];
  const Point& to = state.Coord[row + 1];
  // Only the offset is rounded, not the sum.
  const double cx = RoundHalfEven(std::cos(t) * h, settings.ErrDecimal) + (to.x + from.x) / 2;
  const double cy = RoundHalfEven(std::sin(t) * h, settings.ErrDecimal) + (to.y + from.y) / 2;
  const Point& p = end == 0 ? from : to;
  return PerpendicularBearing(notation, BearingFromPoints(notation, p.x, p.y, cx, cy));
}

bool CheckTangency(const CourseGrid& grid, const GeometrySettings& settings, ParcelState& state,
                   Prompter& prompter) {
  const Notation& notation = settings.notation;
  const std::string word = notation.BearingMode ? "bearing" : "azimuth";
  bool result = true;
  const int last = FindLastLine(grid);
  if (last == -1) return true;
  CalCoord(grid, notation, last, state);

  std::array<std::array<std::string, 2>, CourseLimit + 1> ends;
  auto isCurve = [&](int row) { return grid.Kind(row) == CourseKind::Curve; };
  for (int row = 0; row <= last; ++row) {
    if (isCurve(row)) {
      ends[row][0] = TangentBearingOfCurve(grid, settings, state, row, 0);
      ends[row][1] = TangentBearingOfCurve(grid, settings, state, row, 1);
    } else {
      ends[row][0] = ends[row][1] = grid.Text(row, CourseField::BearingLine);
    }
  }

  auto breaks = [&](double d) {
    return d < settings.WarningRange && d > settings.TangentTolerance;
  };
  auto report = [&](const std::string& first, const std::string& second) {
    const std::string check = messages::PleaseCheck + first + second;
    if (settings.TangentCheck) {
      result = AskYesNo(prompter, check + messages::WouldYouSave);  // the last answer counts
    } else {
      Inform(prompter, check);
    }
  };
  auto tangential = [&](const std::string& bearing) {
    return "the tangential " + word + " (" + bearing + ") of ";
  };
  const std::string plain = "the " + word + " of ";

  // The closing joint, only between a line and a curve.
  if (isCurve(0) != isCurve(last)) {
    const double d = TangentDifference(notation, ends[0][0], ends[last][1]);
    if (breaks(d)) {
      report(isCurve(0) ? tangential(ends[0][0]) + "first arc and " : plain + "first line and ",
             isCurve(last) ? tangential(ends[last][1]) + "last arc" : plain + "last line");
    }
  }
  for (int i = 1; i <= last; ++i) {
    if (!isCurve(i - 1) && !isCurve(i)) continue;
    const double d = TangentDifference(notation, ends[i - 1][1], ends[i][0]);
    if (!breaks(d)) continue;
    const std::string before = std::to_string(i) + "th ";
    const std::string after = std::to_string(i + 1) + "th ";
    report(isCurve(i - 1) ? tangential(ends[i - 1][1]) + before + "arc and "
                          : plain + before + "line and ",
           isCurve(i) ? tangential(ends[i][0]) + after + "arc." : plain + after + "line.");
  }
  return result;
}

}  // namespace parvenna
