#pragma once

#include <vector>

#include "platform/canvas.h"
#include "reports/mapcheck_text.h"

// The sketch of a parcel on the mapcheck's page: the courses to scale, each
// curve drawn as its arc, the number of each course beside it, the point of
// beginning, a north arrow and a scale bar, in a frame.
namespace parvenna::reports {

// A point of the parcel in survey units: easting and northing.
struct SurveyPoint {
  double east = 0;
  double north = 0;
};

// The path of a course from its start to its end: two points for a line, the
// arc in short steps for a curve whose side is known, its chord otherwise.
std::vector<SurveyPoint> CoursePath(const SurveyPoint& start, const MapcheckCourse& course);

// Draws the parcel fitted into the canvas, y growing downwards.
void DrawMapcheckSketch(const MapcheckHeader& header, const MapcheckParcel& parcel, Canvas& canvas);

// The length of the scale bar: 1, 2 or 5 times a power of ten, the longest
// such that is not longer than `longest`.
double ScaleBarLength(double longest);

}  // namespace parvenna::reports
