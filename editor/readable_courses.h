#pragma once

#include <string>

#include "geometry/notation.h"
#include "platform/course_grid.h"

namespace parvenna::editor {

// The courses of a grid as far as their texts can be read as numbers: the
// rows from `end` on read as not entered. The sketch of a parcel with a text
// that is no number is drawn through this view, and so ends before the
// course that cannot be read.
class ReadableCourses : public CourseGrid {
 public:
  ReadableCourses(CourseGrid& grid, int end) : grid_(grid), end_(end) {}

  CourseKind Kind(int row) const override { return grid_.Kind(row); }
  const std::string& Text(int row, CourseField field) const override;
  int Sign(int row, SignBox box) const override { return grid_.Sign(row, box); }
  void WriteBearing(int row, CourseField field, const std::string& text) override {
    grid_.WriteBearing(row, field, text);
  }
  void MarkField(int row, CourseField field, Rgb colour) override {
    grid_.MarkField(row, field, colour);
  }
  void MarkRowButton(int row, Rgb colour) override { grid_.MarkRowButton(row, colour); }
  void MoveFocus(int row, CourseField field) override { grid_.MoveFocus(row, field); }

 private:
  CourseGrid& grid_;
  int end_;
};

// The first row of the counted courses whose texts cannot be walked (a
// distance with two points, a bearing of one letter), or one past the last
// course when every course reads.
int FirstUnreadableRow(const CourseGrid& grid, const Notation& notation);

}  // namespace parvenna::editor
