#include "geometry/auto_inverse.h"

#include <cmath>
#include <cctype>
#include <cstdlib>

#include "geometry/bearing_text.h"
#include "geometry/messages.h"
#include "geometry/numbers.h"

namespace parvenna {
namespace {

CourseField BearingFieldOf(const CourseGrid& grid, int row) {
  return grid.Kind(row) == CourseKind::Line ? CourseField::BearingLine : CourseField::BearingArc;
}

// The bearing that seeds the pass: the line's, else the curve's, if typed.
bool SeedField(const CourseGrid& grid, int row, CourseField& field) {
  field = BearingFieldOf(grid, row);
  return !grid.Text(row, field).empty();
}

void Reverse(CourseGrid& grid, const Notation& notation, int row, CourseField field) {
  grid.WriteBearing(row, field, ReverseBearing(notation, grid.Text(row, field)));
}

int DegreesOfAzimuth(const Notation& notation, const std::string& text) {
  DmsTriple dms;
  SplitDms(notation, text, dms);
  return ReadLong(dms[DmsDegrees]);
}

// The doubling-back test weighs each course against the one before through
// the angle of its quadrant bearing, which needs degrees, minutes and seconds.
// A bearing without them would leave the pass unable to decide for that
// course, so the pass refuses before it changes anything. Reversing only
// turns letters, so what is checked here holds through the whole pass.
int FirstRowLackingFields(const CourseGrid& grid, int last) {
  for (int row = 1; row <= last; ++row) {
    try {
      AngleFromEast(grid.Text(row, BearingFieldOf(grid, row)));
    } catch (const RunError&) {
      return row;
    }
  }
  return -1;
}

}  // namespace

bool AutoInverse(CourseGrid& grid, const GeometrySettings& settings, ParcelState& state,
                 Prompter& prompter) {
  const Notation& notation = settings.notation;
  if (state.NorthRestored) return true;
  const int last = FindLastLine(grid);
  if (last > 9) Inform(prompter, messages::RecommendManualClose, MsgIcon::Exclamation);
  if (last < 2) return true;

  if (const int row = FirstRowLackingFields(grid, last); row != -1) {
    const CourseField field = BearingFieldOf(grid, row);
    grid.MoveFocus(row, field);
    grid.MarkField(row, field, colours::MarkColour);
    Inform(prompter,
           messages::AutoInverseNeedsFullBearingStart + std::to_string(row + 1) +
               messages::AutoInverseNeedsFullBearingEnd,
           MsgIcon::Exclamation);
    return false;
  }

  CourseField field;
  if (notation.BearingMode) {
    // Row 0 stands as typed; row 1 is turned to run east.
    if (!SeedField(grid, 1, field)) return true;
    const std::string& b = grid.Text(1, field);
    if (std::toupper(static_cast<unsigned char>(b.back())) != 'E') Reverse(grid, notation, 1, field);
  } else {
    if (!SeedField(grid, 0, field)) return true;
    const int deg0 = DegreesOfAzimuth(notation, grid.Text(0, field));
    if (deg0 >= 90 && deg0 < 270) {
      // A curve in row 0 has its turn applied to row 1's chord bearing: older
      // versions did so, and parcels checked with them must come out the same.
      if (field == CourseField::BearingArc) Reverse(grid, notation, 1, CourseField::BearingArc);
      else Reverse(grid, notation, 0, field);
    }
    if (!SeedField(grid, 1, field)) return true;
    if (DegreesOfAzimuth(notation, grid.Text(1, field)) >= 180) Reverse(grid, notation, 1, field);
  }

  CoordTable& c = state.Coord;
  for (int i = 2; i <= last; ++i) {
    CalCoord(grid, notation, i, state);
    const double d1 = SquareRoot(Square(c[i + 1].y) + Square(c[i + 1].x));

    const bool line = grid.Kind(i) == CourseKind::Line;
    field = line ? CourseField::BearingLine : CourseField::BearingArc;
    const double length =
        TextToDouble(grid.Text(i, line ? CourseField::DistanceLine : CourseField::Chord));
    const std::string reversed = ReverseBearing(notation, grid.Text(i, field));
    const double a = BearingToAngle(notation, reversed) * Pi / 180;
    const double x = length * std::cos(a) + c[i].x;
    const double y = length * std::sin(a) + c[i].y;
    const double d2 = SquareRoot(Square(x) + Square(y));
    if (d2 < d1) {  // a tie keeps the course as it stands
      grid.WriteBearing(i, field, reversed);
      CalCoord(grid, notation, i, state);
    }

    // A course that runs straight back along the one before is turned again.
    const double previous = AngleFromEast(grid.Text(i - 1, BearingFieldOf(grid, i - 1)));
    const double current = AngleFromEast(grid.Text(i, field));
    const long back = static_cast<long>(std::nearbyint(previous + 180)) % 360;
    if (std::fabs(current - static_cast<double>(back)) < 45) Reverse(grid, notation, i, field);
  }
  return true;
}

void RestoreNorth(CourseGrid& grid, const GeometrySettings& settings, ParcelState& state) {
  const Notation& notation = settings.notation;
  const int last = FindLastLine(grid);
  for (int row = 0; row <= last; ++row) {
    const CourseField field = BearingFieldOf(grid, row);
    if (notation.BearingMode) {
      std::string text = grid.Text(row, field);
      const std::size_t first = text.find_first_not_of(' ');
      text = first == std::string::npos ? "" : text.substr(first, text.find_last_not_of(' ') - first + 1);
      for (char& ch : text) ch = static_cast<char>(std::toupper(static_cast<unsigned char>(ch)));
      grid.WriteBearing(row, field, text);
      if (text.empty() || text.front() != 'N') Reverse(grid, notation, row, field);
    } else {
      const int deg = DegreesOfAzimuth(notation, grid.Text(row, field));
      if (deg >= 90 && deg < 270) Reverse(grid, notation, row, field);
    }
  }
  state.NorthRestored = true;
}

}  // namespace parvenna
