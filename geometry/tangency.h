#pragma once

#include <string>
#include <string_view>

#include "geometry/course.h"
#include "geometry/settings.h"
#include "platform/prompter.h"

namespace parvenna {

// The break between two directions in degrees, sense of travel ignored; can be
// negative when they differ by more than 180.
double TangentDifference(const Notation& notation, std::string_view a, std::string_view b);

// The tangent direction of a curve row at its start (end 0) or end (end 1);
// empty when the chord exceeds the diameter. Reads Coord, which the caller
// has filled with CalCoord.
std::string TangentBearingOfCurve(const CourseGrid& grid, const GeometrySettings& settings,
                                  const ParcelState& state, int row, int end);

// Names each joint with a curve whose break lies strictly between the two
// limits. True when the save may go on.
bool CheckTangency(const CourseGrid& grid, const GeometrySettings& settings, ParcelState& state,
                   Prompter& prompter);

}  // namespace parvenna
