#include "geometry/closure.h"

#include <cmath>

#include "geometry/bearing_text.h"
#include "geometry/messages.h"
#include "geometry/numbers.h"
#include "geometry/sketch.h"

namespace parvenna {
namespace {

// The area of the polygon along the chords. Point N + 1, the computed end,
// stands in for point 0 as the neighbour of point N; with x(0) = 0 the closing
// term is always 0 but is kept, so that areas match those of older reports.
double PolygonArea(const CoordTable& c, int n) {
  double s = 0;
  for (int i = 1; i <= n; ++i) s = Checked(c[i].x * (c[i + 1].y - c[i - 1].y) + s);
  return std::fabs(c[0].x * (c[1].y - c[n].y) + s) / 2;
}

// The circular segment between the chord and the arc of a curve row.
double SegmentArea(const CourseGrid& grid, int row) {
  const double a = TextToDouble(grid.Text(row, CourseField::Arc));
  const double r = TextToDouble(grid.Text(row, CourseField::Radius));
  const double c = TextToDouble(grid.Text(row, CourseField::Chord));
  return Checked((a * r - c * r * std::cos(Divide(a, r + r))) / 2);
}

}  // namespace

void CalculateAndDraw(const CourseGrid& grid, const GeometrySettings& settings,
                      ParcelState& state, ResultPanel& panel, Canvas& picParcel) {
  if (!state.CalcEnabled) return;
  panel.cmdZoomEnabled = true;
  bool areaGood = true;

  Drawing(grid, settings, state, panel.lblLineNo, picParcel);

  const int n = FindLastLine(grid);
  state.LastCourse = n;
  if (n == -1) {
    state.ClosureBearing.clear();
    state.AreaGood = true;
    panel.lblArea.Caption = "0";
    panel.lblClosure.Caption = "0";
    panel.lblDirection.Caption.clear();
    panel.lblPrecision.Caption.clear();
    return;  // the closure's colour stays as it was
  }

  const Notation& notation = settings.notation;
  CalCoord(grid, notation, n, state);
  double s = PolygonArea(state.Coord, n);

  // From here on a numeric failure never stops the routine.
  for (int row = 0; row <= n; ++row) {
    if (grid.Kind(row) != CourseKind::Curve) continue;
    const int signMinus = grid.Sign(row, SignBox::Minus);
    const bool rowDone = ResumeNext([&] {
      const double seg = SegmentArea(grid, row);
      if (signMinus == SignClear) s = Checked(s + seg);
      else if (signMinus == SignTicked) s = Checked(s - seg);
    });
    if (!rowDone || signMinus == SignGrey) {
      areaGood = false;
      break;
    }
  }
  state.Area = s;
  state.AreaGood = areaGood;

  const Point end = state.Coord[n + 1];
  ResumeNext([&] {
    state.Closure = RoundHalfEven(SquareRoot(Checked(Square(end.x) + Square(end.y))),
                                  settings.ErrDecimal);
  });
  ResumeNext([&] { state.ClosureBearing = BearingFromPoints(notation, end.x, end.y, 0, 0); });
  ResumeNext([&] {
    state.Precision = state.Perimeter == 0 ? 1.0 : Divide(state.Closure, state.Perimeter);
  });
  ResumeNext([&] {
    panel.lblArea.Caption = areaGood
                                ? PlainNumber(RoundHalfEven(state.Area, settings.ErrDecimal))
                                : messages::NotAvailable;
  });
  ResumeNext([&] {
    panel.lblClosure.Caption = PlainNumber(RoundHalfEven(state.Closure, settings.ErrDecimal));
  });
  panel.lblDirection.Caption = state.ClosureBearing;
  ResumeNext([&] {
    const double p = PrecisionRatio(state.Precision);
    panel.lblPrecision.Caption = p == -1 ? std::string(messages::Perfect)
                                         : messages::RatioPrefix + PlainNumber(RoundHalfEven(p, 0));
  });
  // The caption is what is judged, so a hair above the tolerance counts only
  // if it survives the rounding.
  panel.lblClosure.ForeColor =
      Val(panel.lblClosure.Caption) > settings.ClosureTolerance ? colours::Red : colours::Green;
}

double PrecisionRatio(double precision) {
  if (precision == 0) return -1;
  const double r = 1 / precision;
  return r < 1000000 ? r : -1;
}

std::array<AreaLine, 3> AreaInUnits(double area, bool unitfeet, int errDecimal) {
  const double squareFootInMetres = std::pow(0.3048, 2.0);
  if (unitfeet) {
    return {{{RoundHalfEven(area, errDecimal), errDecimal, " sq.f."},
             {RoundHalfEven(area / 43560, 6), 6, " Acres"},
             {RoundHalfEven(squareFootInMetres * area, 6), 6, " sq.m."}}};
  }
  return {{{RoundHalfEven(area, errDecimal), errDecimal, " sq.m."},
           {RoundHalfEven(area / 10000, 6), 6, " Hectares"},
           {RoundHalfEven(area / squareFootInMetres / 43560, 6), 6, " Acres"}}};
}

}  // namespace parvenna
