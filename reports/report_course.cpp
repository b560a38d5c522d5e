#include "reports/report_course.h"

#include <cmath>

#include "geometry/bearing_text.h"
#include "geometry/numbers.h"
#include "reports/messages.h"

namespace parvenna::reports {
namespace {

void CheckIndex(int index, std::size_t size) {
  if (index < 0 || static_cast<std::size_t>(index) >= size) {
    throw RunError(ErrorNumber::SubscriptOutOfRange,
                   "Subscript out of range: " + std::to_string(index));
  }
}

}  // namespace

ReportSettings ReportSettings::Of(const store::ProjectState& project) {
  ReportSettings s;
  s.Decimal = project.ErrDecimals;
  s.UnitFeet = project.UnitIsFeet;
  s.notation = project.notation();
  s.ClosureTolerance = project.ClosureToleranceValue;
  s.DrawingFile = project.DrawingFile;
  s.DirectionLabel = project.BearingMode ? messages::Bearing : messages::Azimuth;
  return s;
}

namespace {

template <class T>
void Assign(T& field, const std::optional<T>& stored) {
  if (stored) field = *stored;
}

}  // namespace

int ReadCourses(std::span<const MeasurementRow* const> stored, ReportWork& work) {
  int count = 0;
  for (const MeasurementRow* row : stored) {
    if (row->RowNo) work.index = *row->RowNo;
    const int i = work.index;
    if (i >= 0 && static_cast<std::size_t>(i) < work.rows.size()) {
      ReportCourse& r = work.rows[static_cast<std::size_t>(i)];
      Assign(r.RowNo, row->RowNo);
      Assign(r.RowType, row->RowType);
      Assign(r.Length, row->Length);
      Assign(r.Direction, row->Direction);
      Assign(r.Arc, row->Arc);
      Assign(r.Radius, row->Radius);
      Assign(r.Plus, row->Plus);
    }
    ++count;
  }
  return count;
}

void ReportCoords(const Notation& notation, const ReportCourseTable& rows, int count,
                  ReportCoordTable& coords, double& total) {
  coords[0] = {0, 0};
  total = 0;
  for (int i = 1; i <= count; ++i) {
    CheckIndex(i - 1, rows.size());
    CheckIndex(i, coords.size());
    const ReportCourse& row = rows[static_cast<std::size_t>(i - 1)];
    total = Checked(total + (row.IsLine() ? row.Length : row.Arc));
    const double a = BearingToAngle(notation, row.Direction) * Pi / 180;
    const Point& last = coords[static_cast<std::size_t>(i - 1)];
    coords[static_cast<std::size_t>(i)] = {Checked(last.x + std::cos(a) * row.Length),
                                           Checked(last.y + std::sin(a) * row.Length)};
  }
}

void ReportArea(const ReportCourseTable& rows, int count, const ReportCoordTable& coords,
                double& area, int decimals) {
  const int n = count;
  auto at = [&](int k) -> const Point& {
    CheckIndex(k, coords.size());
    return coords[static_cast<std::size_t>(k)];
  };
  double s = 0;
  for (int i = 1; i <= n - 1; ++i) {
    ResumeNext([&] {
      s = Checked(s + RoundHalfEven((at(i + 1).y - at(i - 1).y) * at(i).x, decimals));
    });
  }
  ResumeNext([&] {
    area = RoundHalfEven(std::fabs((at(1).y - at(n - 1).y) * at(0).x + s) / 2, decimals);
  });

  // c and t live through the loop: a statement that fails leaves the value
  // of the curve before it, as the older reports do.
  double c = 0;
  double t = 0;
  for (int k = 0; k < n && k < CourseLimit; ++k) {
    const ReportCourse& row = rows[static_cast<std::size_t>(k)];
    if (row.IsLine()) continue;
    const double L = row.Length, A = row.Arc, R = row.Radius;
    ResumeNext([&] { c = std::cos(Divide(A, 2 * R)); });
    ResumeNext([&] { t = RoundHalfEven(Checked((A * R - L * R * c) / 2), decimals); });
    ResumeNext([&] { area = Checked(row.Plus == 0 ? area + t : area - t); });
  }
}

}  // namespace parvenna::reports
