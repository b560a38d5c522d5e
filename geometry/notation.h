#pragma once

#include <string>

namespace parvenna {

// The two project settings that every direction routine consults.
struct Notation {
  // true: quadrant bearings (N12°30'15"E); false: azimuths (192°30'15").
  bool BearingMode = true;
  // How a degree mark is written in text grabbed from a drawing.
  std::string DegreeSymbolText = "%%D";
};

}  // namespace parvenna
