#pragma once

#include <array>
#include <string>

#include "geometry/course.h"
#include "geometry/settings.h"
#include "platform/canvas.h"
#include "platform/controls.h"

namespace parvenna {

// The results area of the editor: the four result labels, the course numbers
// that lie on the sketch, and the zoom button that a computation enables.
struct ResultPanel {
  Label lblClosure;
  Label lblDirection;
  Label lblPrecision;
  Label lblArea;
  std::array<Label, CourseLimit> lblLineNo{};
  bool cmdZoomEnabled = false;
};

// Draws the sketch, walks the courses, and sets the results and the four
// labels. A conversion failure in walking the courses reaches the caller;
// numeric failures in area and closure become "N/A" or leave the previous
// value standing.
void CalculateAndDraw(const CourseGrid& grid, const GeometrySettings& settings,
                      ParcelState& state, ResultPanel& panel, Canvas& picParcel);

// The ratio 1 : r of a precision, or -1 when there is nothing to show as a
// ratio (a closure of 0, or one in a million or better).
double PrecisionRatio(double precision);

// The area in the units of the reports: the project's unit at ErrDecimal
// decimals, then the two others at 6 decimals, each already rounded.
struct AreaLine {
  double value;
  int decimals;
  const char* unit;
};
std::array<AreaLine, 3> AreaInUnits(double area, bool unitfeet, int errDecimal);

}  // namespace parvenna
