#pragma once

#include <iosfwd>
#include <optional>
#include <cstdint>
#include <string>
#include <utility>
#include <vector>

#include "platform/colour.h"

// What GDAL's reader of an ASCII DXF does not tell: the layer table (it
// gives only the layers that hold entities, and not whether they are off or
// frozen) and the entities of the file by type.
namespace parvenna::drawing {

struct DxfLayerEntry {
  std::string name;
  int colour = 7;  // colour number; negative in the file when the layer is off
  bool off = false;
  bool frozen = false;
  std::optional<Rgb> trueColour;
};

// The layer table, and the entities of the model space by type as the file
// names them ("TEXT", "INSERT", ...), sorted by type. Reads to the end of the
// ENTITIES section.
struct DxfTables {
  std::vector<DxfLayerEntry> layers;
  std::vector<std::pair<std::string, std::uint32_t>> entityCounts;
};
DxfTables ReadDxfTables(std::istream& in);

// RGB of a colour number of the CAD palette (1 to 255); 7, black or white
// by background, is given as white.
Rgb AciColour(int number);

}  // namespace parvenna::drawing
