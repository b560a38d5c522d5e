#include "drawing/drawing_format.h"

#include <algorithm>
#include <cctype>

namespace parvenna::drawing {
namespace {

std::string LowerExtension(std::string_view path) {
  const auto slash = path.find_last_of("/\\");
  const auto dot = path.find_last_of('.');
  if (dot == std::string_view::npos || (slash != std::string_view::npos && dot < slash)) return {};
  std::string ext(path.substr(dot + 1));
  for (char& c : ext) c = static_cast<char>(std::tolower(static_cast<unsigned char>(c)));
  return ext;
}

bool StartsWith(std::string_view text, std::string_view prefix) {
  return text.substr(0, prefix.size()) == prefix;
}

// A DWG file starts with its version: "AC" and four digits.
bool IsDwgVersion(std::string_view head) {
  if (head.size() < 6 || !StartsWith(head, "AC")) return false;
  return std::all_of(head.begin() + 2, head.begin() + 6,
                     [](char c) { return c >= '0' && c <= '9'; });
}

// The first element of a DGN v7 file is a type 9 header: bytes 08 09 FE 02
// (2D) or C8 09 FE 02 (3D).
bool IsDgnV7(std::string_view head) {
  if (head.size() < 4) return false;
  const auto b = [&](std::size_t i) { return static_cast<unsigned char>(head[i]); };
  return (b(0) == 0x08 || b(0) == 0xC8) && b(1) == 0x09 && b(2) == 0xFE && b(3) == 0x02;
}

bool IsCompoundFile(std::string_view head) {
  return StartsWith(head, std::string_view("\xD0\xCF\x11\xE0\xA1\xB1\x1A\xE1", 8));
}

// An ASCII DXF opens with group code 0 and SECTION, or with a 999 comment.
bool IsAsciiDxf(std::string_view head) {
  std::size_t at = head.find_first_not_of(" \t\r\n");
  if (at == std::string_view::npos) return false;
  head.remove_prefix(at);
  if (StartsWith(head, "999")) return true;
  if (!StartsWith(head, "0")) return false;
  head.remove_prefix(1);
  at = head.find_first_not_of(" \t\r\n");
  return at != std::string_view::npos && StartsWith(head.substr(at), "SECTION");
}

std::string DxfVersion(std::string_view head) {
  const auto at = head.find("$ACADVER");
  if (at == std::string_view::npos) return {};
  const auto ac = head.find("AC", at + 8);
  if (ac == std::string_view::npos || ac > at + 40 || ac + 6 > head.size()) return {};
  return std::string(head.substr(ac, 6));
}

}  // namespace

std::string_view FormatName(DrawingFormat format) {
  switch (format) {
    case DrawingFormat::Dxf: return "DXF";
    case DrawingFormat::Dwg: return "DWG";
    case DrawingFormat::Dgn: return "DGN";
    case DrawingFormat::Unknown: break;
  }
  return "unknown";
}

bool DxfTextIsUtf8(std::string_view version) {
  return version.size() == 6 && StartsWith(version, "AC") && version >= "AC1021";
}

FormatGuess GuessFormat(std::string_view path, std::string_view head) {
  FormatGuess guess;
  const std::string ext = LowerExtension(path);
  if (IsDwgVersion(head)) {
    guess.format = DrawingFormat::Dwg;
    guess.version = std::string(head.substr(0, 6));
    guess.readable = guess.version == "AC1015";
    if (!guess.readable) {
      guess.detail = "DWG version " + guess.version + " cannot be read; only R2000 (AC1015) can";
    }
  } else if (IsDgnV7(head)) {
    guess.format = DrawingFormat::Dgn;
    guess.version = "V7";
    guess.readable = true;
  } else if (IsCompoundFile(head)) {
    guess.format = ext == "dwg" ? DrawingFormat::Dwg : DrawingFormat::Dgn;
    guess.detail = "a DGN v8 (compound) file cannot be read; only DGN v7 can";
  } else if (StartsWith(head, "AutoCAD Binary DXF")) {
    guess.format = DrawingFormat::Dxf;
    guess.detail = "binary DXF cannot be read";
  } else if (IsAsciiDxf(head)) {
    guess.format = DrawingFormat::Dxf;
    guess.version = DxfVersion(head);
    guess.readable = true;
  } else {
    if (ext == "dxf") guess.format = DrawingFormat::Dxf;
    else if (ext == "dwg") guess.format = DrawingFormat::Dwg;
    else guess.format = DrawingFormat::Dgn;
    guess.detail = head.empty() ? "the file is empty" : "the file is no drawing of a known kind";
  }
  return guess;
}

}  // namespace parvenna::drawing
