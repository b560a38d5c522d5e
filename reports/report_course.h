#pragma once

#include <array>
#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <vector>

#include "geometry/course.h"
#include "geometry/notation.h"
#include "store/project_state.h"
#include "store/value.h"

// The reports' own course record, read from tblMeasurements, and the walk
// that gives coordinates, total and area from it. The reports never ask the
// editor: they recompute everything from the stored rows.
namespace parvenna::reports {

// One row of tblMeasurements.
struct ReportCourse {
  std::int16_t RowNo = 0;
  std::int16_t RowType = 0;  // 1 a line, any other value a curve
  double Length = 0;         // a line's distance, a curve's chord
  std::string Direction;     // bearing or azimuth text; of the chord for a curve
  double Arc = 0;
  double Radius = 0;
  std::int16_t Plus = 0;  // 0 the segment is added, anything else subtracted

  bool IsLine() const { return RowType == 1; }
};

// Fifty records indexed by RowNo. The table is not cleared between parcels:
// a record that a parcel does not fill keeps what the former parcel put there.
using ReportCourseTable = std::array<ReportCourse, CourseLimit>;
// Point 0 at the origin, point i the end of course i - 1.
using ReportCoordTable = std::array<Point, CourseLimit + 1>;

// The settings the reports read, copied from the open project.
struct ReportSettings {
  int Decimal = 2;
  bool UnitFeet = true;
  Notation notation;
  double ClosureTolerance = 0.01;
  std::string DrawingFile;
  std::string DirectionLabel = "BEARING";

  static ReportSettings Of(const store::ProjectState& project);
};

// One stored row, each field as the record's field takes it: a field that is
// Null, or that does not read as the record's type (a text that is no
// number, a number too wide), is empty and leaves the record's former value.
struct MeasurementRow {
  std::optional<std::int16_t> RowNo;
  std::optional<std::int16_t> RowType;
  std::optional<double> Length;
  std::optional<std::string> Direction;
  std::optional<double> Arc;
  std::optional<double> Radius;
  std::optional<std::int16_t> Plus;
  double order = 0;  // RowNo as the query orders it: a Null first, a text that is no number last
};

// What the builders keep from parcel to parcel and from report to report:
// the record table, the coordinates, the total, and the index of the reading
// loop, which a row whose RowNo cannot be read leaves where it was.
struct ReportWork {
  ReportCourseTable rows{};
  ReportCoordTable coords{};
  double ReportTotalDistance = 0;
  int index = 0;
};

// Reads a parcel's rows into the table, each field its own statement: a
// field that fails to read (a Null, a number too wide) keeps the record's
// former value, and a RowNo of 50 or more, or below 0, fills nothing; a RowNo
// that fails leaves the row in the record the row before it filled. Every
// row counts. Returns the count.
int ReadCourses(std::span<const MeasurementRow* const> stored, ReportWork& work);

// Fills the coordinates and the total from the first `count` records. The
// total takes a curve's arc although the walk follows its chord. A direction
// that cannot be read, or a count beyond the table, fails here, with the
// points and the total filled so far left in place.
void ReportCoords(const Notation& notation, const ReportCourseTable& rows, int count,
                  ReportCoordTable& coords, double& total);

// The area along the chords, each term rounded before it is summed, then the
// curves' segments added or subtracted. Every statement runs on its own: a
// curve with a radius of 0 adds nothing, and the others still count.
void ReportArea(const ReportCourseTable& rows, int count, const ReportCoordTable& coords,
                double& area, int decimals);

}  // namespace parvenna::reports
