#pragma once

#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "geometry/course.h"
#include "geometry/settings.h"
#include "reports/report_filter.h"
#include "reports/report_source.h"

// The examiner's mapcheck of one parcel: every course with the point it ends
// at, the full data of each curve, the closure unrounded with its north and
// east components, the perimeter along the arcs, the precision, the area in
// two units, the verdict against the project's closure tolerance and against
// a precision ratio, and the checks a save would ask about, as findings.
//
// The walk, the area and the checks are the editor's own routines run over
// the stored rows loaded as the editor loads them, so that the figures agree
// with what the editor shows; what the editor never shows (delta, tangent,
// tangent directions, components, the unrounded precision) is worked out here
// from the same rows.
namespace parvenna::reports {

// What the examiner asks of a mapcheck.
struct MapcheckOptions {
  double ratio = 10000;       // the precision asked for, 1:ratio
  double pobNorth = 0;        // the point of beginning
  double pobEast = 0;
};

enum class Turn { Right, Left, Unknown };

// The data of a curve beyond what was typed. Directions are azimuths in
// decimal degrees, clockwise from north.
struct CurveFigures {
  double radius = 0, arc = 0, chord = 0;
  double chordAzimuth = 0;
  std::optional<double> delta;       // degrees, arc / radius; none for a radius of 0
  std::optional<double> tangent;     // radius x tan(delta / 2); none from a half circle up
  Turn turn = Turn::Unknown;         // from the sign boxes
  std::optional<double> tangentIn;   // the direction of travel where the curve begins
  std::optional<double> tangentOut;  // and where it ends
};

struct MapcheckCourse {
  int number = 0;  // from 1
  bool curve = false;
  std::string direction;  // as typed: a line's, or a curve's chord
  double length = 0;      // a line's distance, a curve's chord
  double azimuth = 0;     // of the line or chord, as the walk takes it
  CurveFigures curveData;
  double north = 0, east = 0;  // the point the course ends at, from the beginning
};

struct MapcheckParcel {
  std::string name;
  int storedCourses = 0;  // rows in the project file
  std::vector<MapcheckCourse> courses;  // those that count
  // The walk could not be made: why, and nothing below is set.
  std::string failure;

  double errorNorth = 0, errorEast = 0;  // end minus beginning
  double closure = 0;                    // unrounded
  double closureRounded = 0;             // as the editor judges it
  std::optional<double> closureAzimuth;  // from the end back to the beginning
  double perimeter = 0;                  // along the courses, arcs for curves
  std::optional<double> precision;       // 1:N, none when the closure is nil
  bool areaGood = true;
  double area = 0;

  bool passTolerance = false;
  bool passRatio = false;
  bool Pass() const { return failure.empty() && passTolerance && passRatio; }

  std::vector<std::string> findings;
};

// The stored rows of a parcel as the editor loads them into its grid: in the
// order of RowNo, gaps closed, numbers as the store gives them back as text
// (one that is no number the field could hold left empty), the sign boxes
// from Plus. Rows past the fiftieth are left out.
CourseList CoursesOfRows(std::span<const MeasurementRow* const> rows);

// The mapcheck of one parcel.
MapcheckParcel CheckParcel(const std::string& name, std::span<const MeasurementRow* const> rows,
                           const GeometrySettings& settings, const MapcheckOptions& options);

// Precisions from one in a thousand million up count as a closure of nil.
inline constexpr double PerfectPrecision = 1e9;

// The precision as the whole N of 1:N: cut, so that 1:10,000 shown has
// reached 10,000, after the last digits of the arithmetic's noise are let go
// (a closure of 0.01 over 199.99 is 1:19,999, though the double falls short).
double WholePrecision(double precision);

// The precision asked for, from its text: a whole number from 1 to a
// thousand million, thousands commas allowed ("10,000"); none for anything
// else.
std::optional<double> RatioOfText(std::string_view text);

// The rows of the parcels that the filter takes, each checked; parcels in
// the order of their names. False when the project has no parcel at all.
bool WriteMapcheck(store::Database& db, const FilterChoice& choice,
                   const GeometrySettings& settings, const MapcheckOptions& options,
                   std::vector<MapcheckParcel>& parcels);

}  // namespace parvenna::reports
