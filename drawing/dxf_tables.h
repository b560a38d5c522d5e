#pragma once

#include <iosfwd>
#include <optional>
#include <string>
#include <vector>

#include "platform/colour.h"

// The layer table of an ASCII DXF, read from the file's TABLES section. The
// entity reader gives only the layers that hold entities, and not whether
// they are off or frozen.
namespace parvenna::drawing {

struct DxfLayerEntry {
  std::string name;
  int colour = 7;  // colour number; negative in the file when the layer is off
  bool off = false;
  bool frozen = false;
  std::optional<Rgb> trueColour;
};

// Reads until the end of the TABLES section; an empty list when there is none.
std::vector<DxfLayerEntry> ReadDxfLayerTable(std::istream& in);

// RGB of a colour number of the CAD palette (1 to 255); 7, black or white
// by background, is given as white.
Rgb AciColour(int number);

}  // namespace parvenna::drawing
