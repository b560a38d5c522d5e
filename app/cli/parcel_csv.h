#pragma once

#include <istream>
#include <ostream>
#include <stdexcept>
#include <string>
#include <vector>

#include "geometry/course.h"

namespace parvenna::cli {

// A parcel written as CSV, one course a row in grid order, under the header
//   kind,bearing,distance,arc,radius,chord,plus,minus
// kind is "line" or "curve"; the texts are taken exactly as typed (a field
// starting with a double quote is a quoted CSV field, anything else is taken
// raw, so N12°30'15"E needs no quoting); plus and minus are the sign boxes'
// values 0, 1 or 2, empty for 0.
class ParcelCsvError : public std::runtime_error {
 public:
  ParcelCsvError(int line, const std::string& what)
      : std::runtime_error("line " + std::to_string(line) + ": " + what), line_(line) {}
  int Line() const { return line_; }

 private:
  int line_;
};

CourseList ReadParcelCsv(std::istream& in);
// The same, as the list of the courses the file holds, in order.
std::vector<Course> ReadParcelCourses(std::istream& in);

// Courses written in that CSV, under its header, so that ReadParcelCsv reads
// them back as they are. A field that starts with a double quote, or holds a
// comma or a line break, is quoted. A line's sign boxes are written as 0.
void WriteParcelCsv(std::ostream& out, const std::vector<Course>& courses);

}  // namespace parvenna::cli
