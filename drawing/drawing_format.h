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
  std::string detail;   // why it cannot be read and what to do, in the user's words
};

// "2018 (AC1032)" for a DWG version code; the code itself when unknown.
std::string DwgVersionName(std::string_view code);

// head: the first bytes of the file (a few kilobytes are plenty; a DXF's
// version is looked for in them).
FormatGuess GuessFormat(std::string_view path, std::string_view head);

// The first bytes of a file, enough for GuessFormat; opened is false when
// the file cannot be opened.
std::string ReadHead(const std::string& path, bool& opened);

// True for DXF versions whose text is UTF-8 whatever the header's code page
// says (R2007, AC1021, and later).
bool DxfTextIsUtf8(std::string_view version);

}  // namespace parvenna::drawing
