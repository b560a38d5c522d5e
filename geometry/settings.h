#pragma once

#include "geometry/notation.h"

namespace parvenna {

// The project settings that the geometry reads, as held for the open project.
struct GeometrySettings {
  Notation notation;
  bool unitfeet = true;
  int ErrDecimal = 2;
  double ClosureTolerance = 0.01;
  bool AddAreaCheck = true;
  bool AutoInvert = false;
  bool TangentCheck = true;
  double WarningRange = 0.0;      // decimal degrees
  double TangentTolerance = 0.0;  // decimal degrees
};

// Degrees, minutes and seconds of the settings as decimal degrees.
inline double DegreesOf(double d, double m, double s) { return d + m / 60 + s / 3600; }

}  // namespace parvenna
