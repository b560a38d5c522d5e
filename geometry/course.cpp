#include "geometry/course.h"

#include <cmath>
#include <utility>

#include "geometry/bearing_text.h"
#include "geometry/numbers.h"

namespace parvenna {

const std::string& Course::Field(CourseField field) const {
  switch (field) {
    case CourseField::BearingLine: return BearingLine;
    case CourseField::DistanceLine: return DistanceLine;
    case CourseField::BearingArc: return BearingArc;
    case CourseField::Arc: return Arc;
    case CourseField::Radius: return Radius;
    case CourseField::Chord: return Chord;
  }
  return BearingLine;
}

std::string& Course::Field(CourseField field) {
  return const_cast<std::string&>(std::as_const(*this).Field(field));
}

namespace {

bool IsComplete(const CourseGrid& grid, int row) {
  auto has = [&](CourseField f) { return !grid.Text(row, f).empty(); };
  if (grid.Kind(row) == CourseKind::Line) {
    return has(CourseField::BearingLine) && has(CourseField::DistanceLine);
  }
  return has(CourseField::BearingArc) && has(CourseField::Arc) && has(CourseField::Chord) &&
         has(CourseField::Radius);
}

}  // namespace

int FindLastLine(const CourseGrid& grid) {
  int last = -1;
  for (int row = 0; row < CourseLimit && IsComplete(grid, row); ++row) last = row;
  return last;
}

void CalCoord(const CourseGrid& grid, const Notation& notation, int r, ParcelState& state) {
  state.Coord[0] = {0, 0};
  state.Perimeter = 0;
  for (int k = 1; k <= r + 1; ++k) {
    const int row = k - 1;
    const bool curve = grid.Kind(row) == CourseKind::Curve;
    const double length =
        ReadNumber(grid.Text(row, curve ? CourseField::Chord : CourseField::DistanceLine));
    const std::string& direction =
        grid.Text(row, curve ? CourseField::BearingArc : CourseField::BearingLine);
    state.Perimeter = Checked(state.Perimeter + length);
    const double a = BearingToAngle(notation, direction) * Pi / 180;
    state.Coord[k].x = Checked(length * std::cos(a) + state.Coord[k - 1].x);
    state.Coord[k].y = Checked(length * std::sin(a) + state.Coord[k - 1].y);
  }
}

bool CheckSignsSet(CourseGrid& grid) {
  const int last = FindLastLine(grid);
  bool result = true;
  for (int row = 0; row <= last; ++row) {
    if (grid.Kind(row) != CourseKind::Curve) continue;
    if (grid.Sign(row, SignBox::Plus) != SignTicked && grid.Sign(row, SignBox::Minus) != SignTicked) {
      grid.MarkRowButton(row, colours::UnconfirmedColour);
      result = false;
    }
  }
  return result;
}

CourseKind CourseList::Kind(int row) const { return rows.at(row).Kind; }

const std::string& CourseList::Text(int row, CourseField field) const {
  return rows.at(row).Field(field);
}

int CourseList::Sign(int row, SignBox box) const {
  return box == SignBox::Plus ? rows.at(row).SignPlus : rows.at(row).SignMinus;
}

void CourseList::WriteBearing(int row, CourseField field, const std::string& text) {
  std::string& target = rows.at(row).Field(field);
  if (target == text) return;  // an unchanged text raises no Change
  target = text;
  if (onChange) onChange(row, field);
}

void CourseList::MarkField(int row, CourseField field, Rgb colour) {
  marks.push_back({row, false, field, colour});
}

void CourseList::MarkRowButton(int row, Rgb colour) {
  marks.push_back({row, true, CourseField::BearingLine, colour});
}

void CourseList::MoveFocus(int row, CourseField field) {
  focusRow = row;
  focusField = field;
}

}  // namespace parvenna
