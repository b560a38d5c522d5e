#pragma once

#include "geometry/course.h"
#include "geometry/settings.h"
#include "platform/prompter.h"

namespace parvenna {

// Holds each counted curve's arc against its chord and radius, showing a box
// for each fault in row order. True when the parcel may go on to be saved.
bool CheckCurves(CourseGrid& grid, Prompter& prompter);

}  // namespace parvenna
