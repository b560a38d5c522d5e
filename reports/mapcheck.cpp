#include "reports/mapcheck.h"

#include <cmath>

#include "geometry/bearing_text.h"
#include "geometry/closure.h"
#include "geometry/curve_check.h"
#include "geometry/messages.h"
#include "geometry/numbers.h"
#include "geometry/tangency.h"
#include "reports/messages.h"

namespace parvenna::reports {
namespace {

namespace mc = messages::mapcheck;

constexpr double kRadiansPerDegree = 3.14159265358979323846 / 180;

// The walk's direction as an azimuth from 0 up to 360: the editor turns text
// into degrees anticlockwise from east.
double AzimuthOf(const Notation& notation, const std::string& text) {
  double az = std::fmod(90 - BearingToAngle(notation, text), 360.0);
  if (az < 0) az += 360;
  return az;
}

double Normalised(double azimuth) {
  double az = std::fmod(azimuth, 360.0);
  return az < 0 ? az + 360 : az;
}

// A picture box that keeps nothing: the editor's computation draws its sketch
// first, and the mapcheck draws its own.
class NoPicture : public Canvas {
 public:
  double Width() const override { return 4995; }
  double Height() const override { return 4995; }
  void SetSize(double, double) override {}
  void Cls() override {}
  void Line(double, double, double, double, Rgb) override {}
  void Box(double, double, double, double, Rgb) override {}
  void Circle(double, double, double, Rgb, double, double) override {}
};

// The boxes that the checks before a save would show, kept as findings: a
// question loses its "Would you like to save it?", and is answered Yes so
// that every check goes on to the end.
class FindingPrompter : public Prompter {
 public:
  explicit FindingPrompter(std::vector<std::string>& findings) : findings_(findings) {}
  MsgAnswer MsgBox(const Message& message) override {
    std::string text = message.Prompt;
    const std::string question = parvenna::messages::WouldYouSave;
    if (text.size() >= question.size() &&
        text.compare(text.size() - question.size(), question.size(), question) == 0) {
      text.resize(text.size() - question.size());
      text += '.';
    }
    findings_.push_back(std::move(text));
    return message.Buttons == MsgButtons::OK ? MsgAnswer::OK : MsgAnswer::Yes;
  }

 private:
  std::vector<std::string>& findings_;
};

std::string CourseName(int row) { return mc::CourseWord + std::to_string(row + 1); }

CurveFigures FiguresOfCurve(const CourseList& grid, int row, double chordAzimuth) {
  CurveFigures f;
  f.radius = ReadNumber(grid.Text(row, CourseField::Radius));
  f.arc = ReadNumber(grid.Text(row, CourseField::Arc));
  f.chord = ReadNumber(grid.Text(row, CourseField::Chord));
  f.chordAzimuth = chordAzimuth;
  // A curve that adds area turns right, with its centre on the walker's
  // right hand; one that subtracts turns left. The plus box is read first,
  // as the tangency check reads it.
  if (grid.Sign(row, SignBox::Plus) == SignTicked) f.turn = Turn::Right;
  else if (grid.Sign(row, SignBox::Minus) == SignTicked) f.turn = Turn::Left;
  if (f.radius > 0) {
    const double delta = f.arc / f.radius / kRadiansPerDegree;
    f.delta = delta;
    if (delta < 180) f.tangent = f.radius * std::tan(delta / 2 * kRadiansPerDegree);
    if (f.turn != Turn::Unknown) {
      const double half = (f.turn == Turn::Right ? delta : -delta) / 2;
      f.tangentIn = Normalised(chordAzimuth - half);
      f.tangentOut = Normalised(chordAzimuth + half);
    }
  }
  return f;
}

// The checks of a save, as findings: the sign boxes, the curves against
// their radius and chord, the joints against the tangency limits, and each
// direction that the editor would refuse.
void AddFindings(CourseList& grid, const GeometrySettings& settings, ParcelState& state,
                 int last, MapcheckParcel& parcel) {
  std::vector<std::string>& findings = parcel.findings;
  for (int row = 0; row <= last; ++row) {
    const bool curve = grid.Kind(row) == CourseKind::Curve;
    std::string direction =
        grid.Text(row, curve ? CourseField::BearingArc : CourseField::BearingLine);
    bool valid = false;
    ResumeNext([&] { valid = IsValidBearing(settings.notation, direction); });
    if (!valid) {
      findings.push_back(CourseName(row) + ": \"" +
                         grid.Text(row, curve ? CourseField::BearingArc : CourseField::BearingLine) +
                         "\" " + mc::NotADirection);
    }
    if (curve && grid.Sign(row, SignBox::Plus) != SignTicked &&
        grid.Sign(row, SignBox::Minus) != SignTicked) {
      findings.push_back(CourseName(row) + ": " + mc::SignNotConfirmed);
    }
  }
  FindingPrompter prompter(findings);
  if (!ResumeNext([&] { CheckCurves(grid, prompter); })) {
    findings.push_back(mc::CurvesNotChecked);
  }
  // The tangency check informs rather than asks when told so.
  GeometrySettings informing = settings;
  informing.TangentCheck = false;
  if (!ResumeNext([&] { CheckTangency(grid, informing, state, prompter); })) {
    findings.push_back(mc::TangencyNotChecked);
  }
}

}  // namespace

double WholePrecision(double precision) { return std::floor(precision * (1 + 1e-9)); }

CourseList CoursesOfRows(std::span<const MeasurementRow* const> rows) {
  CourseList grid;
  // A number the field could not hold and compute with (a negative one)
  // is a field not keyed, as the editor loads it.
  const auto text = [](const std::optional<double>& v) -> std::string {
    if (!v) return "";
    const std::string shown = PlainNumber(*v);
    return ResumeNext([&] { ReadNumber(shown); }) ? shown : "";
  };
  for (std::size_t i = 0; i < rows.size() && i < grid.rows.size(); ++i) {
    const MeasurementRow& stored = *rows[i];
    Course& c = grid.rows[i];
    const std::string direction = stored.Direction.value_or("");
    // A type that does not read is told by the curve's own fields.
    const bool line = stored.RowType ? *stored.RowType == 1 : !stored.Arc && !stored.Radius;
    if (line) {
      c.Kind = CourseKind::Line;
      c.BearingLine = direction;
      c.DistanceLine = text(stored.Length);
    } else {
      c.Kind = CourseKind::Curve;
      c.BearingArc = direction;
      c.Arc = text(stored.Arc);
      c.Radius = text(stored.Radius);
      c.Chord = text(stored.Length);
      const int plus = stored.Plus.value_or(2);
      c.SignPlus = plus == 0 ? SignTicked : plus == 1 ? SignClear : SignGrey;
      c.SignMinus = plus == 0 ? SignClear : plus == 1 ? SignTicked : SignGrey;
    }
  }
  return grid;
}

MapcheckParcel CheckParcel(const std::string& name, std::span<const MeasurementRow* const> rows,
                           const GeometrySettings& settings, const MapcheckOptions& options) {
  MapcheckParcel parcel;
  parcel.name = name;
  parcel.storedCourses = static_cast<int>(rows.size());
  CourseList grid = CoursesOfRows(rows);
  const Notation& notation = settings.notation;
  const int last = FindLastLine(grid);
  if (parcel.storedCourses > CourseLimit) {
    parcel.findings.push_back(mc::TooManyStart + std::to_string(parcel.storedCourses) +
                              mc::TooManyEnd);
  }
  if (last + 1 < std::min(parcel.storedCourses, CourseLimit)) {
    parcel.findings.push_back(mc::IncompleteStart + std::to_string(last + 2) +
                              mc::IncompleteEnd);
  }
  if (last < 0) {
    parcel.failure = mc::NoCourses;
    return parcel;
  }

  ParcelState state;
  ResultPanel panel;
  NoPicture picture;
  try {
    // The editor's own computation: its area, its rounded closure, its walk.
    CalculateAndDraw(grid, settings, state, panel, picture);
    for (int row = 0; row <= last; ++row) {
      const bool curve = grid.Kind(row) == CourseKind::Curve;
      MapcheckCourse c;
      c.number = row + 1;
      c.curve = curve;
      c.direction = grid.Text(row, curve ? CourseField::BearingArc : CourseField::BearingLine);
      c.length = ReadNumber(grid.Text(row, curve ? CourseField::Chord : CourseField::DistanceLine));
      c.azimuth = AzimuthOf(notation, c.direction);
      if (curve) c.curveData = FiguresOfCurve(grid, row, c.azimuth);
      const Point& end = state.Coord[static_cast<std::size_t>(row + 1)];
      c.north = options.pobNorth + end.y;
      c.east = options.pobEast + end.x;
      parcel.perimeter += curve ? c.curveData.arc : c.length;
      parcel.courses.push_back(std::move(c));
    }
  } catch (const RunError& e) {
    parcel.courses.clear();
    parcel.failure = mc::CannotWalk + std::string(e.what());
    return parcel;
  }

  const Point end = state.Coord[static_cast<std::size_t>(last + 1)];
  parcel.errorNorth = end.y;
  parcel.errorEast = end.x;
  parcel.closure = std::hypot(end.x, end.y);
  parcel.closureRounded = state.Closure;
  // A closure of a thousand millionth of the perimeter is the noise of the
  // arithmetic: nil, with no direction.
  if (parcel.closure > 0 && parcel.perimeter / parcel.closure < PerfectPrecision) {
    parcel.precision = parcel.perimeter / parcel.closure;
    parcel.closureAzimuth = Normalised(std::atan2(-end.x, -end.y) / kRadiansPerDegree);
  }
  parcel.area = state.Area;
  parcel.areaGood = state.AreaGood;

  parcel.passTolerance = parcel.closureRounded <= settings.ClosureTolerance;
  parcel.passRatio = !parcel.precision || WholePrecision(*parcel.precision) >= options.ratio;
  AddFindings(grid, settings, state, last, parcel);
  return parcel;
}

}  // namespace parvenna::reports
