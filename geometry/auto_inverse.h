#pragma once

#include "geometry/course.h"
#include "geometry/settings.h"
#include "platform/prompter.h"

namespace parvenna {

// Turns the courses, greedily and one by one, so that the figure closes.
// Writes go through the grid. Returns false when the pass refused to start
// because a quadrant bearing lacks a field it needs (the box says which).
bool AutoInverse(CourseGrid& grid, const GeometrySettings& settings, ParcelState& state,
                 Prompter& prompter);

// Turns every counted course to point north (quadrant) or into the northern
// half (azimuth), and sets NorthRestored.
void RestoreNorth(CourseGrid& grid, const GeometrySettings& settings, ParcelState& state);

}  // namespace parvenna
