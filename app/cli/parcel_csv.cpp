#include "app/cli/parcel_csv.h"

#include <vector>

namespace parvenna::cli {
namespace {

constexpr const char* kHeader = "kind,bearing,distance,arc,radius,chord,plus,minus";
constexpr std::size_t kColumns = 8;

std::vector<std::string> SplitFields(const std::string& text, int lineNumber) {
  std::vector<std::string> fields;
  std::size_t i = 0;
  while (true) {
    std::string field;
    if (i < text.size() && text[i] == '"') {
      ++i;
      bool closed = false;
      while (i < text.size()) {
        if (text[i] == '"') {
          if (i + 1 < text.size() && text[i + 1] == '"') {
            field += '"';
            i += 2;
            continue;
          }
          closed = true;
          ++i;
          break;
        }
        field += text[i++];
      }
      if (!closed) throw ParcelCsvError(lineNumber, "a quoted field is not closed");
      if (i < text.size() && text[i] != ',') {
        throw ParcelCsvError(lineNumber, "text follows a quoted field");
      }
    } else {
      const std::size_t comma = text.find(',', i);
      field = text.substr(i, comma == std::string::npos ? std::string::npos : comma - i);
      i = comma == std::string::npos ? text.size() : comma;
    }
    fields.push_back(std::move(field));
    if (i >= text.size()) break;
    ++i;  // the comma
  }
  return fields;
}

int ReadSign(const std::string& text, const char* column, int lineNumber) {
  if (text.empty() || text == "0") return SignClear;
  if (text == "1") return SignTicked;
  if (text == "2") return SignGrey;
  throw ParcelCsvError(lineNumber, std::string("the ") + column + " sign must be 0, 1 or 2, not \"" +
                                       text + "\"");
}

// The courses of the file into `parcel`; the number of rows read.
int ReadRows(std::istream& in, CourseList& parcel) {
  std::string text;
  int lineNumber = 0;
  bool headerSeen = false;
  int row = 0;
  while (std::getline(in, text)) {
    ++lineNumber;
    if (!text.empty() && text.back() == '\r') text.pop_back();
    if (lineNumber == 1 && text.rfind("\xEF\xBB\xBF", 0) == 0) text.erase(0, 3);
    if (text.find_first_not_of(" \t") == std::string::npos) continue;
    if (!headerSeen) {
      if (text != kHeader) {
        throw ParcelCsvError(lineNumber, std::string("the first line must be the header ") + kHeader);
      }
      headerSeen = true;
      continue;
    }
    std::vector<std::string> fields = SplitFields(text, lineNumber);
    if (fields.size() != kColumns) {
      throw ParcelCsvError(lineNumber, "expected 8 fields, found " + std::to_string(fields.size()));
    }
    if (row == CourseLimit) {
      throw ParcelCsvError(lineNumber, "a parcel has at most 50 courses");
    }
    Course& course = parcel.rows[row];
    if (fields[0] == "line") course.Kind = CourseKind::Line;
    else if (fields[0] == "curve") course.Kind = CourseKind::Curve;
    else throw ParcelCsvError(lineNumber, "unknown kind \"" + fields[0] + "\" (line or curve)");
    (course.Kind == CourseKind::Line ? course.BearingLine : course.BearingArc) = fields[1];
    course.DistanceLine = fields[2];
    course.Arc = fields[3];
    course.Radius = fields[4];
    course.Chord = fields[5];
    course.SignPlus = ReadSign(fields[6], "plus", lineNumber);
    course.SignMinus = ReadSign(fields[7], "minus", lineNumber);
    ++row;
  }
  if (!headerSeen) throw ParcelCsvError(lineNumber == 0 ? 1 : lineNumber, "the file is empty");
  return row;
}

std::string CsvField(const std::string& text) {
  if (text.empty() || (text.front() != '"' && text.find_first_of(",\r\n") == std::string::npos)) {
    return text;
  }
  std::string quoted = "\"";
  for (char c : text) {
    if (c == '"') quoted += '"';
    quoted += c;
  }
  return quoted + "\"";
}

}  // namespace

CourseList ReadParcelCsv(std::istream& in) {
  CourseList parcel;
  ReadRows(in, parcel);
  return parcel;
}

std::vector<Course> ReadParcelCourses(std::istream& in) {
  CourseList parcel;
  const int rows = ReadRows(in, parcel);
  return std::vector<Course>(parcel.rows.begin(), parcel.rows.begin() + rows);
}

void WriteParcelCsv(std::ostream& out, const std::vector<Course>& courses) {
  out << kHeader << '\n';
  for (const Course& c : courses) {
    const bool line = c.Kind == CourseKind::Line;
    out << (line ? "line" : "curve") << ',' << CsvField(line ? c.BearingLine : c.BearingArc) << ','
        << CsvField(c.DistanceLine) << ',' << CsvField(c.Arc) << ',' << CsvField(c.Radius) << ','
        << CsvField(c.Chord) << ',' << (line ? SignClear : c.SignPlus) << ','
        << (line ? SignClear : c.SignMinus) << '\n';
  }
}

}  // namespace parvenna::cli
