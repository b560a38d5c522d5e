#include "drawing/drawing_format.h"

#include <algorithm>
#include <cctype>
#include <filesystem>
#include <fstream>

#include "drawing/messages.h"

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

// A DWG file starts with its version: "AC" and four digits (the oldest
// versions have a point among them, "AC1.50").
bool IsDwgVersion(std::string_view head) {
  if (head.size() < 6 || !StartsWith(head, "AC")) return false;
  return std::all_of(head.begin() + 2, head.begin() + 6,
                     [](char c) { return (c >= '0' && c <= '9') || c == '.'; });
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

struct DwgVersion {
  const char* code;
  const char* name;
};

// The versions of DWG by the first six bytes of the file, oldest first.
constexpr DwgVersion kDwgVersions[] = {
    {"AC1.40", "R1.4"},   {"AC1.50", "R2.0"},  {"AC2.10", "R2.10"}, {"AC1001", "R2.2"},
    {"AC1002", "R2.5"},   {"AC1003", "R2.6"},  {"AC1004", "R9"},    {"AC1006", "R10"},
    {"AC1009", "R11/R12"}, {"AC1012", "R13"},  {"AC1014", "R14"},   {"AC1015", "2000"},
    {"AC1018", "2004"},   {"AC1021", "2007"},  {"AC1024", "2010"},  {"AC1027", "2013"},
    {"AC1032", "2018"}};

constexpr std::string_view kOldestReadable = "AC1012";
constexpr std::string_view kNewestReadable = "AC1032";

}  // namespace

std::string DwgVersionName(std::string_view code) {
  for (const DwgVersion& v : kDwgVersions) {
    if (code == v.code) return std::string(v.name) + " (" + v.code + ")";
  }
  return std::string(code);
}

std::string_view FormatName(DrawingFormat format) {
  switch (format) {
    case DrawingFormat::Dxf: return "DXF";
    case DrawingFormat::Dwg: return "DWG";
    case DrawingFormat::Dgn: return "DGN";
    case DrawingFormat::Unknown: break;
  }
  return "unknown";
}

std::string ReadHead(const std::string& path, bool& opened) {
  std::error_code ec;
  std::ifstream in;
  if (!std::filesystem::is_directory(path, ec)) in.open(path, std::ios::binary);
  opened = in.is_open();
  std::string head(16384, '\0');
  if (!opened) return {};
  in.read(head.data(), static_cast<std::streamsize>(head.size()));
  head.resize(static_cast<std::size_t>(in.gcount()));
  return head;
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
    const bool old = guess.version.find('.') != std::string::npos || guess.version < kOldestReadable;
    const bool recent = !old && guess.version > kNewestReadable;
    guess.readable = !old && !recent;
    if (!guess.readable) {
      guess.detail = messages::ReasonDwgVersion + DwgVersionName(guess.version) +
                     (old ? messages::ReasonDwgTooOld : messages::ReasonDwgTooNew) +
                     messages::SaveAsAdvice;
    }
  } else if (IsDgnV7(head)) {
    guess.format = DrawingFormat::Dgn;
    guess.version = "V7";
    guess.readable = true;
  } else if (IsCompoundFile(head)) {
    guess.format = ext == "dwg" ? DrawingFormat::Dwg : DrawingFormat::Dgn;
    guess.detail = messages::ReasonDgnV8;
  } else if (StartsWith(head, "AutoCAD Binary DXF")) {
    guess.format = DrawingFormat::Dxf;
    guess.detail = messages::ReasonBinaryDxf;
  } else if (IsAsciiDxf(head)) {
    guess.format = DrawingFormat::Dxf;
    guess.version = DxfVersion(head);
    guess.readable = true;
  } else {
    if (ext == "dxf") guess.format = DrawingFormat::Dxf;
    else if (ext == "dwg") guess.format = DrawingFormat::Dwg;
    else guess.format = DrawingFormat::Dgn;
    guess.detail = head.empty() ? messages::ReasonEmpty : messages::ReasonNotADrawing;
  }
  return guess;
}

}  // namespace parvenna::drawing
