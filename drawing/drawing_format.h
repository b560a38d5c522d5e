#pragma once

#include <string>
#include <string_view>

// Which reader a drawing file needs, told by its first bytes and, when they
// say nothing, by its name.
namespace parvenna::drawing {

enum class DrawingFormat { Unknown, Dxf, Dwg, Dgn };

std::string_view FormatName(DrawingFormat format);

struct FormatGuess {
  DrawingFormat format = DrawingFormat::Unknown;
  bool readable = false;
  std::string version;  // "AC1015" for a DWG or a DXF whose header says so
  std::string detail;   // why it cannot be read
};

// head: the first bytes of the file (a few kilobytes are plenty; a DXF's
// version is looked for in them).
FormatGuess GuessFormat(std::string_view path, std::string_view head);

// True for DXF versions whose text is UTF-8 whatever the header's code page
// says (R2007, AC1021, and later).
bool DxfTextIsUtf8(std::string_view version);

}  // namespace parvenna::drawing
