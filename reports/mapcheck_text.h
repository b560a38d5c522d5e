#pragma once

#include <string>
#include <vector>

#include "geometry/notation.h"
#include "reports/mapcheck.h"

// The mapcheck written out: the lines of the preview and of the printed
// pages, and the CSV rows of the parcels and of their courses.
namespace parvenna::reports {

// What the head of every parcel states.
struct MapcheckHeader {
  std::string projectFile;
  std::string drawingFile;
  std::string date;
  bool unitFeet = true;
  Notation notation;
  int decimals = 2;
  double tolerance = 0.01;
  MapcheckOptions options;
};

struct MapcheckDocument {
  MapcheckHeader header;
  std::vector<MapcheckParcel> parcels;
};

// Degrees, minutes and whole seconds, rounded and carried: 90°0'0".
std::string AngleText(double degrees);
// An azimuth in the project's notation, seconds rounded: N12°30'15"E or 192°30'15".
std::string DirectionText(const Notation& notation, double azimuth);
// The precision as 1:N, N cut to a whole number so that a ratio shown as
// 1:10,000 has reached 10,000; "Perfect" for a closure of nil.
std::string PrecisionText(const MapcheckParcel& parcel);
// Today's date, YYYY-MM-DD.
std::string TodayText();

// The lines of one parcel's section. A course is one line, a curve four;
// each course's lines belong together.
struct ParcelSection {
  std::vector<std::string> head;
  std::string tableHead;
  std::vector<std::vector<std::string>> courses;
  std::vector<std::string> closure;
  std::vector<std::string> findings;
};
ParcelSection SectionOf(const MapcheckHeader& header, const MapcheckParcel& parcel);

// The summary of all parcels: head, table and totals.
std::vector<std::string> SummaryLines(const MapcheckDocument& document);

// The preview: the summary, then each parcel's section. Lines end in CR LF.
std::string MapcheckText(const MapcheckDocument& document);

// One row a parcel: name, courses, perimeter, area in two units, the error's
// components, closure, direction, precision and the verdicts.
std::string ParcelsCsv(const MapcheckDocument& document);
// One row a course, the curves with their full data.
std::string CoursesCsv(const MapcheckDocument& document);

}  // namespace parvenna::reports
