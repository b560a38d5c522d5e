#pragma once

#include <array>
#include <functional>
#include <string>
#include <vector>

#include "geometry/notation.h"
#include "platform/course_grid.h"

namespace parvenna {

// One leg of a parcel, as typed. Both halves are kept; Kind says which counts.
struct Course {
  CourseKind Kind = CourseKind::Line;
  std::string BearingLine;
  std::string DistanceLine;
  std::string BearingArc;
  std::string Arc;
  std::string Radius;
  std::string Chord;
  int SignPlus = SignClear;
  int SignMinus = SignClear;

  const std::string& Field(CourseField field) const;
  std::string& Field(CourseField field);
};

struct Point {
  double x = 0;  // easting
  double y = 0;  // northing
};

// Point k is the end of row k - 1; point 0 is the beginning at the origin.
using CoordTable = std::array<Point, CourseLimit + 1>;

// The working values of the parcel on show, replaced by each computation.
struct ParcelState {
  // Set while a parcel's rows are being filled, so that their changes do not
  // each recompute.
  bool RecalcSuspended = false;
  // While clear, CalculateAndDraw does nothing at all.
  bool CalcEnabled = true;
  // The senses were set by hand: the automatic inversion keeps off.
  bool NorthRestored = false;

  int LastCourse = -1;
  // Survey values after CalCoord; picture positions after the sketch.
  CoordTable Coord{};
  double Perimeter = 0;
  double Area = 0;
  bool AreaGood = true;
  double Closure = 0;
  std::string ClosureBearing;
  double Precision = 0;
};

// The last row of the unbroken run of complete rows from row 0, -1 for none.
int FindLastLine(const CourseGrid& grid);

// Fills Coord for points 1 to r + 1 and sets Perimeter; points behind keep
// what they held. A curve enters as its chord.
void CalCoord(const CourseGrid& grid, const Notation& notation, int r, ParcelState& state);

// True when every counted curve has a sign ticked; paints the row button of
// each offender with UnconfirmedColour.
bool CheckSignsSet(CourseGrid& grid);

// A grid of plain Course records: the parcel of the command-line tool, the
// reports and the tests. A write of a bearing calls onChange, as the editor's
// Change does.
class CourseList : public CourseGrid {
 public:
  std::array<Course, CourseLimit> rows{};
  std::function<void(int row, CourseField field)> onChange;

  CourseKind Kind(int row) const override;
  const std::string& Text(int row, CourseField field) const override;
  int Sign(int row, SignBox box) const override;
  void WriteBearing(int row, CourseField field, const std::string& text) override;
  void MarkField(int row, CourseField field, Rgb colour) override;
  void MarkRowButton(int row, Rgb colour) override;
  void MoveFocus(int row, CourseField field) override;

  // What the marks and the focus were last set to, for those who report them.
  struct Mark {
    int row;
    bool rowButton;
    CourseField field;
    Rgb colour;
  };
  std::vector<Mark> marks;
  int focusRow = -1;
  CourseField focusField = CourseField::BearingLine;
};

}  // namespace parvenna
