#include "editor/readable_courses.h"

#include "geometry/course.h"
#include "geometry/numbers.h"

namespace parvenna::editor {

const std::string& ReadableCourses::Text(int row, CourseField field) const {
  static const std::string notEntered;
  return row < end_ ? grid_.Text(row, field) : notEntered;
}

int FirstUnreadableRow(const CourseGrid& grid, const Notation& notation) {
  const int last = FindLastLine(grid);
  ParcelState scratch;
  for (int row = 0; row <= last; ++row) {
    if (!ResumeNext([&] { CalCoord(grid, notation, row, scratch); })) return row;
  }
  return last + 1;
}

}  // namespace parvenna::editor
