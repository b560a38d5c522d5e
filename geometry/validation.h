#pragma once

#include "geometry/course.h"
#include "geometry/settings.h"
#include "platform/prompter.h"

namespace parvenna {

// The checks of a parcel's courses before it is stored, after its name has
// been checked: at least one course, the curve signs, the curves, the
// tangency, then every bearing. A refusal does not stop the later checks, so
// the surveyor meets every box in a row; the bearings come last and end at
// the first bad one. True when the parcel may be stored.
bool ValidateCourses(CourseGrid& grid, const GeometrySettings& settings, ParcelState& state,
                     Prompter& prompter);

}  // namespace parvenna
