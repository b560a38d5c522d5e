#pragma once

// Small builders shared by the geometry tests: notations, parcels typed row by
// row, and a tolerance check for survey coordinates.

#include <gtest/gtest.h>

#include <initializer_list>
#include <string>

#include "geometry/course.h"
#include "geometry/notation.h"
#include "platform/run_error.h"

namespace parvenna::testing {

inline const std::string Deg = "\u00B0";

inline Notation Quadrant() { return Notation{true, "%%D"}; }
inline Notation Azimuth() { return Notation{false, "%%D"}; }

struct LineRow {
  std::string bearing;
  std::string distance;
};

inline void SetLine(CourseList& list, int row, std::string bearing, std::string distance) {
  Course& c = list.rows.at(row);
  c.Kind = CourseKind::Line;
  c.BearingLine = std::move(bearing);
  c.DistanceLine = std::move(distance);
}

inline void SetCurve(CourseList& list, int row, std::string chordBearing, std::string arc,
                     std::string radius, std::string chord, int plus = SignClear,
                     int minus = SignClear) {
  Course& c = list.rows.at(row);
  c.Kind = CourseKind::Curve;
  c.BearingArc = std::move(chordBearing);
  c.Arc = std::move(arc);
  c.Radius = std::move(radius);
  c.Chord = std::move(chord);
  c.SignPlus = plus;
  c.SignMinus = minus;
}

inline CourseList Lines(std::initializer_list<LineRow> rows) {
  CourseList list;
  int row = 0;
  for (const LineRow& r : rows) SetLine(list, row++, r.bearing, r.distance);
  return list;
}

// Survey coordinates carry the small errors of the trigonometry.
inline ::testing::AssertionResult PointNear(const Point& p, double x, double y,
                                            double tolerance = 1e-9) {
  if (std::abs(p.x - x) <= tolerance && std::abs(p.y - y) <= tolerance) {
    return ::testing::AssertionSuccess();
  }
  return ::testing::AssertionFailure() << "point (" << p.x << ", " << p.y << ") is not near ("
                                       << x << ", " << y << ")";
}

// The number a RunError carries, or 0 when the call raised nothing.
template <class Call>
int ErrorNumberOf(Call&& call) {
  try {
    call();
  } catch (const RunError& e) {
    return e.Code();
  }
  return 0;
}

}  // namespace parvenna::testing
